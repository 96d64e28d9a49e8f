// Converts a million levels as often as it is told, in a loop: what levels.py is compared with.

#include <rfUtils/units/unitTable.h>

#include <cstddef>
#include <cstdlib>
#include <vector>

#include "analysis/units/levels.h"

int main(int count, char** arguments) {
    constexpr std::size_t kLevels = 1000000;
    std::vector<double> levels(kLevels);
    for (std::size_t i = 0; i < kLevels; ++i) {
        levels[i] = -130.0 + 160.0 * static_cast<double>(i) / (kLevels - 1);
    }
    const int times = count > 1 ? std::atoi(arguments[1]) : 1;
    double last = 0.0;
    for (int i = 0; i < times; ++i) {
        const rfu::LevelPresenter presenter(*rfu::findUnit(u"V"), {});
        std::vector<double> volts(kLevels);
        for (std::size_t k = 0; k < kLevels; ++k) {
            volts[k] = presenter.value(levels[k]);
        }
        last = volts.back();
    }
    return last > 0.0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

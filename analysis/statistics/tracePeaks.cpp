#include "analysis/statistics/tracePeaks.h"

#include <cmath>
#include <limits>

namespace rfu {

namespace {

bool isUp(double from, double to, double excursion) {
    return to > from && to - from >= excursion;
}

}  // namespace

std::vector<std::size_t> peaksOf(const std::vector<double>& levels, double excursion) {
    std::vector<std::size_t> peaks;
    bool hasRisen = false;  // from a valley
    std::size_t top = 0;    // since then
    double valley = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const double level = levels[i];
        if (std::isnan(level)) {
            continue;
        }
        if (!hasRisen && level < valley) {
            valley = level;
        } else if (!hasRisen) {
            hasRisen = isUp(valley, level, excursion);
            top = i;
        } else if (level > levels[top]) {
            top = i;
        } else if (isUp(level, levels[top], excursion)) {
            peaks.push_back(top);
            hasRisen = false;
            valley = level;
        }
    }
    return peaks;
}

}  // namespace rfu

#include "analysis/statistics/tracePeaks.h"

#include <cmath>
#include <optional>

namespace rfu {

namespace {

bool isUp(double from, double to, double excursion) {
    return to > from && to - from >= excursion;
}

}  // namespace

std::vector<std::size_t> peaksOf(const std::vector<double>& levels, double excursion) {
    std::vector<std::size_t> peaks;
    std::optional<std::size_t> top;  // once the trace has risen from a valley
    std::optional<double> valley;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const double level = levels[i];
        if (std::isnan(level)) {
            continue;
        }
        if (!top) {
            if (!valley || level < *valley) {
                valley = level;
            } else if (isUp(*valley, level, excursion)) {
                top = i;
            }
        } else if (level > levels[*top]) {
            top = i;
        } else if (isUp(level, levels[*top], excursion)) {
            peaks.push_back(*top);
            top.reset();
            valley = level;
        }
    }
    return peaks;
}

}  // namespace rfu

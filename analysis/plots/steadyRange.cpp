#include "analysis/plots/steadyRange.h"

#include <algorithm>
#include <cmath>

namespace rfu {

namespace {

constexpr double kRangeStep = 10.0;      // dB
constexpr double kRoom = 2.0;            // dB between the levels and the ends
constexpr double kWorthShrinking = 2.0;  // steps
constexpr double kMostDecibels = 1000.0;

}  // namespace

LevelRange steadyRange(const std::optional<LevelRange>& before, const ValueRange& levels,
                       double origin) {
    const double low = std::clamp(levels.low, -kMostDecibels, kMostDecibels) - origin;
    const double high = std::clamp(levels.high, -kMostDecibels, kMostDecibels) - origin;
    LevelRange range = {std::floor((low - kRoom) / kRangeStep) * kRangeStep + origin,
                        std::ceil((high + kRoom) / kRangeStep) * kRangeStep + origin};
    if (before) {
        const double worth = kWorthShrinking * kRangeStep;
        const bool fitsLow = low + origin >= before->low;
        const bool fitsHigh = high + origin <= before->high;
        range.low = fitsLow && range.low < before->low + worth ? before->low : range.low;
        range.high = fitsHigh && range.high > before->high - worth ? before->high : range.high;
    }
    return range;
}

}  // namespace rfu

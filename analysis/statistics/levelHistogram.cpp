#include "analysis/statistics/levelHistogram.h"

#include <algorithm>
#include <cmath>

namespace rfu {

LevelHistogram::LevelHistogram() : counts_(binOf(std::numeric_limits<PackedLevel>::max()) + 1) {}

void LevelHistogram::add(const PackedLevel* levels, std::size_t count) {
    const std::int64_t before = notMeasured();
    for (std::size_t i = 0; i < count; ++i) {
        ++counts_[binOf(levels[i])];
    }
    measured_ += static_cast<std::int64_t>(count) - (notMeasured() - before);
}

std::optional<PackedLevel> LevelHistogram::percentile(double share) const {
    if (measured_ == 0) {
        return std::nullopt;
    }
    const auto exact = static_cast<std::int64_t>(std::ceil(share * static_cast<double>(measured_)));
    const std::int64_t rank = std::clamp<std::int64_t>(exact, 1, measured_);
    std::int64_t below = 0;
    std::size_t bin = binOf(kNotMeasured);
    while (below < rank) {
        below += counts_[++bin];
    }
    return static_cast<PackedLevel>(static_cast<int>(bin) + int{kNotMeasured});
}

}  // namespace rfu

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "analysis/statistics/packedLevel.h"

namespace rfu {

/// How often each level occurs. Takes half a megabyte whatever the number of levels.
class LevelHistogram {
public:
    LevelHistogram();

    void add(const PackedLevel* levels, std::size_t count);

    /// The number of levels that were measured.
    std::int64_t measured() const { return measured_; }
    std::int64_t notMeasured() const { return counts_[binOf(kNotMeasured)]; }

    /// The smallest level that at least this share of the measured levels does not exceed; nothing
    /// if none was measured.
    /// @param share above 0, at most 1
    std::optional<PackedLevel> percentile(double share) const;

private:
    static std::size_t binOf(PackedLevel level) {
        return static_cast<std::size_t>(int{level} - int{kNotMeasured});
    }

    std::vector<std::int64_t> counts_;  // by level; the first counts kNotMeasured
    std::int64_t measured_ = 0;
};

}  // namespace rfu

#include "analysis/statistics/packedLevel.h"

#include <rfUtils/trace/traceRssiBuffer.h>
#include <algorithm>
#include <cmath>

namespace rfu {

namespace {

PackedLevel pack(double level, double offset) {
    constexpr double kMost = std::numeric_limits<PackedLevel>::max();
    const double hundredths = (level + offset) * kPackedPerDecibel;
    if (!(level > traceRssiBuffer::kNoMeasurement) || std::isnan(hundredths)) {
        return kNotMeasured;
    }
    const double inRange = std::clamp(hundredths, -kMost, kMost);
    return static_cast<PackedLevel>(static_cast<int>(inRange + (inRange < 0.0 ? -0.5 : 0.5)));
}

}  // namespace

void packLevels(const double* levels, const double* offsets, std::size_t count,
                PackedLevel* packed) {
    for (std::size_t i = 0; i < count; ++i) {
        packed[i] = pack(levels[i], offsets == nullptr ? 0.0 : offsets[i]);
    }
}

}  // namespace rfu

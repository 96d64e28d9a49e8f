#pragma once

#include <rfUtils/trace/traceRssiBuffer.h>
#include <optional>

namespace rfu {

/// What one point of the kept sweeps says; levels in dBm. A level is missing when the point was
/// measured in none of them.
struct PointStatistics {
    int count = 0;                  // how often it was measured
    int above = 0;                  // how often above the limit
    std::optional<double> average;  // mean of the dBm numbers
    std::optional<double> maximum;
    std::optional<double> minimum;
};

/// Of the buffer's marker.
PointStatistics summarise(const traceRssiBuffer& buffer, int marker, double limit);

/// What takes the single levels; missing where there is no measured one.
struct LevelDistribution {
    std::optional<double> powerMean;       // dBm: mean of the powers in mW
    std::optional<double> median;          // dBm; of an even count the mean of the middle two
    std::optional<double> deviation;       // dB: standard deviation of the count's dBm numbers
    std::optional<std::size_t> strongest;  // kept sweep with the maximum, the earliest of several
};

/// Of the buffer's marker.
LevelDistribution distributionOf(const traceRssiBuffer& buffer, int marker);

}  // namespace rfu

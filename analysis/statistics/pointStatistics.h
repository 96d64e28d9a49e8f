#pragma once

#include <rfUtils/trace/traceRssiBuffer.h>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

namespace rfu {

class StateReader;
class StateWriter;

/// Statistics of one point over the sweeps; levels in dBm, missing where it was measured in
/// none of them.
struct PointStatistics {
    long long count = 0;            // how often it was measured
    long long above = 0;            // how often above the limit
    std::optional<double> average;  // mean of the dBm numbers
    std::optional<double> maximum;
    std::optional<double> minimum;
};

/// The statistics of one point, level by level from the oldest on. They are bit for bit those of the
/// instrument's markers (traceRssiBuffer) over the same levels.
class PointTally {
public:
    /// @param level  kNoMeasurement counts nowhere; never a NaN
    /// @param limit  dBm, the same for all levels
    void add(double level, double limit) {
        if (level == traceRssiBuffer::kNoMeasurement) {
            return;
        }
        ++count_;
        above_ += level > limit ? 1 : 0;
        sum_ += level;
        widen(level);
    }

    PointStatistics statistics() const;

    void write(StateWriter& writer) const;
    /// Adds the levels of a state. Sums are plain: their last digits depend on how the levels were
    /// split.
    /// @param sweeps of the state
    void merge(StateReader& reader, long long sweeps);

private:
    void widen(double level) {
        // +0.0 counts as larger than -0.0.
        if (level > maximum_ || (level == maximum_ && !std::signbit(level))) {
            maximum_ = level;
        }
        if (level < minimum_ || (level == minimum_ && std::signbit(level))) {
            minimum_ = level;
        }
    }

    long long count_ = 0;
    long long above_ = 0;
    double sum_ = 0.0;
    double maximum_ = -std::numeric_limits<double>::infinity();
    double minimum_ = std::numeric_limits<double>::infinity();
};

/// Statistics that need every level of the point; missing where it was never measured.
struct LevelDistribution {
    std::optional<double> powerMean;       // dBm: mean of the powers in mW
    std::optional<double> median;          // dBm; of an even count the mean of the middle two
    std::optional<double> deviation;       // dB: standard deviation of the count's dBm numbers
    std::optional<std::size_t> strongest;  // index of the maximum, the earliest of several
};

/// @param levels from the oldest on, with kNoMeasurement for none
LevelDistribution distributionOf(std::vector<double> levels);

}  // namespace rfu

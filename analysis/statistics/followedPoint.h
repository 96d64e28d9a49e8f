#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "analysis/statistics/milliwatts.h"
#include "analysis/statistics/pointStatistics.h"
#include "analysis/statistics/traceHistory.h"

namespace rfu {

/// One point of a history, whose levels are followed trace by trace, and their statistics: bit for bit
/// those that SweepStore gives of the same traces.
class FollowedPoint {
public:
    /// Takes what is new in the history. All of it is read again where the point is another, or the history
    /// has forgotten its traces.
    void follow(const TraceHistory& history, std::size_t point);
    /// To be called before another history is followed.
    void clear() { *this = {}; }

    /// @param limit dBm
    PointStatistics statistics(double limit) const;
    /// dBm: mean of the powers in mW; nothing where the point was never measured.
    std::optional<double> powerMean(MilliwattTable& milliwatts) const;

private:
    void dropBefore(std::uint64_t number);

    std::optional<std::size_t> point_;
    std::uint64_t generation_ = 0;
    std::uint64_t next_ = 0;  // number of the trace that comes next
    std::size_t begin_ = 0;   // of the levels that count
    std::vector<double> levels_;
};

}  // namespace rfu

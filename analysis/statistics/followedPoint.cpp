#include "analysis/statistics/followedPoint.h"

#include <rfUtils/trace/traceRssiBuffer.h>

#include <cmath>

namespace rfu {

void FollowedPoint::follow(const TraceHistory& history, std::size_t point) {
    if (point_ != point || generation_ != history.generation()) {
        point_ = point;
        generation_ = history.generation();
        next_ = 0;
        begin_ = 0;
        levels_.clear();
    }
    const std::uint64_t oldest = history.count() - history.size();
    dropBefore(oldest);
    for (; next_ < history.count(); ++next_) {
        const double level = history.level(static_cast<std::size_t>(next_ - oldest), point);
        levels_.push_back(std::isnan(level) ? double{traceRssiBuffer::kNoMeasurement} : level);
    }
}

/// Moves the levels rarely, so that each costs little, and their memory stays.
void FollowedPoint::dropBefore(std::uint64_t number) {
    const std::uint64_t oldest = next_ - (levels_.size() - begin_);
    if (next_ < number) {
        next_ = number;
        begin_ = levels_.size();
    } else if (oldest < number) {
        begin_ += static_cast<std::size_t>(number - oldest);
    }
    if (begin_ > levels_.size() / 2) {
        levels_.erase(levels_.begin(), levels_.begin() + static_cast<std::ptrdiff_t>(begin_));
        begin_ = 0;
    }
}

PointStatistics FollowedPoint::statistics(double limit) const {
    PointTally tally;
    for (std::size_t i = begin_; i < levels_.size(); ++i) {
        tally.add(levels_[i], limit);
    }
    return tally.statistics();
}

std::optional<double> FollowedPoint::powerMean(MilliwattTable& milliwatts) const {
    double power = 0.0;
    long long count = 0;
    for (std::size_t i = begin_; i < levels_.size(); ++i) {
        if (levels_[i] != traceRssiBuffer::kNoMeasurement) {
            power += milliwatts.of(levels_[i]);
            ++count;
        }
    }
    return count == 0 ? std::nullopt : std::optional(dBmOf(power / static_cast<double>(count)));
}

}  // namespace rfu

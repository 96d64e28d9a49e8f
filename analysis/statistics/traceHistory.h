#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "analysis/recordings/sweepReader.h"
#include "analysis/statistics/levelRows.h"
#include "analysis/statistics/packedLevel.h"

namespace rfu {

/// The most recent traces that views show, with their holds and their average. Levels are in dBm; one that
/// was not measured is NaN or traceRssiBuffer::kNoMeasurement where it comes in, and NaN where it goes out.
///
/// The traces kept are rows, 0 being the oldest. Row r is number count() - size() + r of those added, so
/// that a view knows which of them it has already. Once the depth is reached, adding a trace allocates no
/// memory.
class TraceHistory {
public:
    /// @param depth how many traces are kept, at least 1
    explicit TraceHistory(std::size_t depth);

    /// The time of a trace that has none.
    static constexpr std::int64_t kNoTime = std::numeric_limits<std::int64_t>::min();

    /// Keeps the newest of the traces held.
    /// @param depth at least 1
    void setDepth(std::size_t depth);
    /// Forgets everything.
    /// @param axis empty where the frequencies are not known
    void setAxis(const FrequencyAxis& axis);
    /// Has more points from now on; those that are new were not measured so far.
    /// @param former of each point the number that it had; see SweepReader::formerPoints()
    void grow(const FrequencyAxis& axis, const std::vector<std::size_t>& former);

    /// Drops the oldest trace when the history is full. A trace of another length than those before, or than
    /// the axis, forgets everything first, the axis too.
    /// @param levels one for each point; infinite ones were not measured
    /// @param time   microseconds from the fixed day of timeStamp.h
    void add(const std::vector<double>& levels, std::int64_t time = kNoTime);
    /// Forgets the traces and the holds.
    void clear();
    /// Lets the maximum and the minimum start again with the next trace.
    void clearHolds();

    /// Empty where the frequencies are not known.
    const FrequencyAxis& axis() const { return axis_; }
    /// Of the axis, or of the traces so far.
    std::size_t points() const { return newest_.size(); }
    std::size_t depth() const { return depth_; }
    /// How many traces are kept.
    std::size_t size() const { return rows_.size(); }
    /// How many traces were added since everything was forgotten.
    std::uint64_t count() const { return count_; }
    /// Another number after everything was forgotten, or the points have become others: what a view has of the
    /// rows no longer holds.
    std::uint64_t generation() const { return generation_; }

    /// Of each point, as are those that follow.
    const std::vector<double>& newest() const { return newest_; }
    /// Of the traces since clear() or clearHolds(), also of those no longer kept.
    const std::vector<double>& maximum() const { return maximum_; }
    const std::vector<double>& minimum() const { return minimum_; }
    /// Mean of the dBm numbers of the traces kept, to a millionth of a dB. Levels beyond a million dBm count as
    /// that.
    std::vector<double> average() const;

    /// @param packed becomes one level for each point, rounded to hundredths of a dB
    void copyRow(std::size_t row, std::vector<PackedLevel>& packed) const;
    /// Bit for bit as it was added.
    double level(std::size_t row, std::size_t point) const;
    /// @return kNoTime where the trace has none
    std::int64_t time(std::size_t row) const { return times_[(oldestTime_ + row) % times_.size()]; }

private:
    /// What is needed for the mean of a point.
    struct Sum {
        std::int64_t level = 0;  // millionths of a dB
        std::int64_t count = 0;
    };

    void begin(std::size_t points);
    void addToSums(const std::vector<double>& levels, std::int64_t sign);
    void dropOldest();
    void addTime(std::int64_t time);
    void arrangeTimes();

    std::size_t depth_;
    FrequencyAxis axis_;
    LevelRows rows_{0};
    std::vector<std::int64_t> times_;  // of the rows, in a ring
    std::size_t oldestTime_ = 0;       // where it begins
    std::uint64_t count_ = 0;
    std::uint64_t generation_ = 0;
    std::vector<double> newest_;
    std::vector<double> maximum_;
    std::vector<double> minimum_;
    std::vector<Sum> sums_;
    std::vector<double> row_;  // at hand, with kNoMeasurement
};

}  // namespace rfu

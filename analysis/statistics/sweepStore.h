#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "analysis/recordings/stateFile.h"
#include "analysis/recordings/sweepReader.h"
#include "analysis/statistics/levelRows.h"
#include "analysis/statistics/pointStatistics.h"

namespace rfu {

/// What the statistics of a recording's most recent sweeps need, or of all its sweeps. The levels of a
/// sweep are columns: all its points, or some of them.
///
/// Where every sweep counts and no distribution is asked for, the columns are tallied as they come and
/// the memory does not grow with the sweeps. Otherwise the levels are held, up to a bound.
class SweepStore {
public:
    /// As a capacity: every sweep counts.
    static constexpr std::size_t kAll = static_cast<std::size_t>(-1);
    static constexpr std::size_t kMaxBytes = std::size_t{1} << 30U;

    /// @param capacity         how many recent sweeps count
    /// @param hasDistributions whether distribution() will be called
    /// @param limit            dBm, of PointStatistics
    /// @param maxBytes         that levels and times may take
    SweepStore(std::size_t capacity, bool hasDistributions, double limit,
               std::size_t maxBytes = kMaxBytes);

    /// Drops the oldest sweep when the store is full.
    /// @param levels one for each column, as many in every sweep
    /// @return false where the bound forbids it; the store is unchanged
    bool add(const std::string& time, const std::vector<double>& levels);

    /// In rearrange(): a column that was not measured so far.
    static constexpr std::size_t kNewColumn = SweepReader::kNewPoint;
    /// Puts what is held into other columns.
    /// @param former of each column the one that it was
    /// @return false where the bound forbids it; the store is unchanged
    bool rearrange(const std::vector<std::size_t>& former);

    /// How many sweeps were added.
    long long count() const { return count_; }
    /// How many of them count.
    std::size_t kept() const;
    /// Of the sweeps that count, once there is one.
    const std::string& firstTime() const { return times_.front(); }
    const std::string& lastTime() const { return times_.back(); }

    PointStatistics statistics(std::size_t column) const;
    /// Of all columns.
    std::vector<PointTally> tallies() const;

    /// The statistics of all columns. @pre every sweep that was added counts
    void write(StateWriter& writer) const;
    /// Adds later sweeps to a store that tallies columns.
    /// @param columns of all states together
    void merge(StatePart& part, std::size_t columns);

    LevelDistribution distribution(std::size_t column) const;
    /// Of a kept sweep as in LevelDistribution: which sweep of the recording it is, counted from 1.
    long long number(std::size_t index) const;
    const std::string& time(std::size_t index) const { return times_[index]; }

private:
    bool fits(std::size_t sweeps, std::size_t columns) const;

    std::size_t capacity_;
    bool holdsLevels_;
    double limit_;
    std::size_t maxBytes_;
    LevelRows rows_{0};                // where levels are held
    std::vector<PointTally> tallies_;  // elsewhere
    std::deque<std::string> times_;    // of each row; elsewhere of the first and the last sweep
    long long count_ = 0;
};

}  // namespace rfu

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "analysis/recordings/sweepReader.h"
#include "analysis/statistics/levelHistory.h"
#include "analysis/statistics/pointStatistics.h"
#include "analysis/statistics/runs.h"

namespace rfu {

/// Of the levels of a point over the sweeps, in dBm.
enum class PointStatistic { Average, Maximum, Minimum, Median };

/// A statistic of each point of a recording.
class PointLevels {
public:
    explicit PointLevels(PointStatistic statistic) : statistic_(statistic) {}

    void add(const Sweep& sweep);

    /// In dBm, NaN for a point that was never measured.
    std::vector<double> levels();

    /// Within how many dB the levels lie; see LevelHistory.
    double resolution() const { return history_.resolution(); }

private:
    PointStatistic statistic_;
    std::vector<PointTally> tallies_;  // of each point; for the median the history instead
    LevelHistory history_;
};

/// A level for each point.
struct LevelTrace {
    FrequencyAxis axis;  // empty without frequencies
    std::vector<double> levels;
};

/// What keeps the points of two recordings from lying together, such as "100 points, not 512"; nothing
/// if each lies within a hundredth of a bin of its counterpart.
std::optional<std::string> whyApart(const LevelTrace& trace, const LevelTrace& other);

/// The levels at the points of another axis: straight between the middles of bins, level over the outer
/// half of a band's last bins. NaN outside the bands and beside a level that is missing.
/// @param trace with frequencies
/// @param axis  the same
std::vector<double> resampled(const LevelTrace& trace, const FrequencyAxis& axis);

/// Neighbouring points whose levels changed in one direction.
struct LevelChange {
    std::size_t first;
    std::size_t last;
    std::size_t largest;  // point
};

/// Gathers the points whose difference exceeds a threshold, as runsAbove() does; those that rise and
/// those that fall apart.
/// @param differences in dB, NaN for none
/// @param bands       first point of each band, ascending
/// @return ascending in their first point
std::vector<LevelChange> changesAbove(double threshold, const std::vector<double>& differences,
                                      const std::vector<std::size_t>& bands);

}  // namespace rfu

#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "analysis/plots/tracePlot.h"
#include "analysis/recordings/sweepReader.h"
#include "analysis/statistics/limitMask.h"
#include "analysis/statistics/pointStatistics.h"
#include "recordings/levelView.h"

namespace rfu::command {

/// The horizontal axis of a plot over the points of a recording.
struct PlotPlaces {
    std::string name;
    std::vector<double> places;  // of the points
    double end;
    bool areCounted;  // whether they are numbers of points

    PlotPlaces(const FrequencyAxis& axis, std::size_t points);
};

/// Levels in the shown unit.
/// @param levels in dBm, of each point; NaN for none
std::vector<double> shownLevels(const std::vector<double>& levels, const FrequencyAxis& axis,
                                const LevelView& view);

/// Maximum, average and minimum of a recording's points, without title and marks.
/// @param tallies of each point
TracePlot plotOf(const FrequencyAxis& axis, const std::vector<PointTally>& tallies,
                 const LevelView& view);

/// A limit over the whole axis of a plot.
/// @param dBm the limit
TracePlot::Line limitLine(double dBm, const TracePlot& plot, const FrequencyAxis& axis,
                          const LevelView& view);

/// The limits of a mask that have points.
std::vector<TracePlot::Line> linesOf(const LimitMask& mask);

}  // namespace rfu::command

#pragma once

#include <vector>

#include "analysis/plots/tracePlot.h"
#include "analysis/recordings/sweepReader.h"
#include "analysis/statistics/limitMask.h"
#include "analysis/statistics/pointStatistics.h"
#include "recordings/levelView.h"

namespace rfu::command {

/// Maximum, average and minimum of a recording's points, without title and marks.
/// @param tallies of each point
TracePlot plotOf(const FrequencyAxis& axis, const std::vector<PointTally>& tallies,
                 const LevelView& view);

/// A limit over the whole axis of a plot.
/// @param dBm the limit
TracePlot::Line limitLine(double dBm, const TracePlot& plot, const FrequencyAxis& axis,
                          const LevelView& view);

/// The limits of a mask, of which those without a point are left out.
std::vector<TracePlot::Line> linesOf(const LimitMask& mask);

}  // namespace rfu::command

#pragma once

#include <vector>

#include "analysis/plots/tracePlot.h"
#include "analysis/recordings/sweepReader.h"
#include "analysis/statistics/pointStatistics.h"
#include "recordings/levelView.h"

namespace rfu::command {

/// Maximum, average and minimum of a recording's points, without title and marks.
/// @param tallies of each point
TracePlot plotOf(const FrequencyAxis& axis, const std::vector<PointTally>& tallies,
                 const LevelView& view);

}  // namespace rfu::command

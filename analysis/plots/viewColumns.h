#pragma once

#include <cstddef>
#include <vector>

#include "analysis/plots/axis.h"
#include "analysis/plots/decimation.h"
#include "analysis/recordings/sweepReader.h"

namespace rfu {

/// The points of each pixel column of a view on a part of the axis: those whose bins begin in it; where
/// none does, the one whose bin covers it. Columns that no bin covers, such as those between two bands,
/// are left out.
/// @param axis of the points; empty where places are numbers of points
/// @param shown the places at the left and the right edge; low below high, both finite
/// @param width of the view in pixels, not negative
std::vector<ColumnPoints> columnsOfView(const FrequencyAxis& axis, std::size_t points,
                                        const ValueRange& shown, int width);

}  // namespace rfu

#pragma once

#include <cstddef>
#include <vector>

namespace rfu {

/// The points of a trace that stand out: from the valley on either side, which reaches to the next such point or
/// to the end of the trace, it is up by an excursion at least. So a slope that an end cuts is no peak.
/// @param levels    in dBm; those that are NaN count as if they were not there
/// @param excursion dB; with 0 or less, each local maximum stands out
/// @return ascending; of a flat top the first point
std::vector<std::size_t> peaksOf(const std::vector<double>& levels, double excursion);

}  // namespace rfu

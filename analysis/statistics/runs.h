#pragma once

#include <cstddef>
#include <vector>

namespace rfu {

/// Neighbouring points that belong together.
struct Run {
    std::size_t first;
    std::size_t last;
    std::size_t strongest;  // the first of several
};

/// Gathers the points that exceed something. A single point that does not exceed it ends no run, the
/// border between two bands does.
/// @param excess  of each point, above 0 where it exceeds; NaN where there is none
/// @param levels  of each point, by which a run's strongest point is found
/// @param bands   first point of each band, ascending
std::vector<Run> runsAbove(const std::vector<double>& excess, const std::vector<double>& levels,
                           const std::vector<std::size_t>& bands);

}  // namespace rfu

#pragma once

#include <cstddef>
#include <vector>

namespace rfu {

/// Neighbouring points that form one signal.
struct Run {
    std::size_t first;
    std::size_t last;
    std::size_t strongest;  // the first of several
};

/// Gathers the points that exceed a threshold into runs. A single point that does not exceed it does not
/// end a run; the border between two bands does.
/// @param excess  of each point in dB, above 0 where it exceeds the threshold; NaN for no level
/// @param levels  of each point; the largest one makes the strongest point of a run
/// @param bands   first point of each band, ascending
std::vector<Run> runsAbove(const std::vector<double>& excess, const std::vector<double>& levels,
                           const std::vector<std::size_t>& bands);

}  // namespace rfu

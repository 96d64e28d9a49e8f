#pragma once

#include <cstdint>
#include <vector>

namespace rfu {

/// From a time to another, in microseconds from a fixed day.
struct TimeSpan {
    std::int64_t begin;
    std::int64_t end;
};

/// The time that each sweep covers: until the next one begins or, where the recording has a gap, for the
/// usual time from sweep to sweep around it.
/// The usual time is a median. A gap is longer than one and a half times that; where all times are
/// whole seconds it is longer by another second, because they may have been cut.
///
/// Sweeps with the same time stamp share its span evenly; so do sweeps whose clock was set back by a
/// second or less. Where it was set back further, spans overlap.
/// @param begins when the sweeps began
std::vector<TimeSpan> spansOf(const std::vector<std::int64_t>& begins);

/// Whether the recording has a gap, or its clock was set back, between two neighbours of spansOf().
inline bool isGap(const TimeSpan& before, const TimeSpan& next) {
    return before.end != next.begin;
}

}  // namespace rfu

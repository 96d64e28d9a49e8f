#pragma once

#include <QString>
#include <vector>

#include "analysis/recordings/sweepSpans.h"

namespace rfu {

/// A piece of a vertical time axis with one scale; top and bottom in pixels from the top of the picture.
struct TimeStretch {
    TimeSpan time;
    double top;
    double bottom;
};

struct TimeTick {
    double at;      // pixels from the top
    QString label;  // time of day, or the date where ticks are days apart
    QString date;   // where it differs from that of the tick before
};

/// Ticks at round times of day and at the beginning of each stretch behind a gap, which take precedence.
/// There is at least one tick, and the labels do not touch.
/// @param stretches from the top, at least one
std::vector<TimeTick> timeTicks(const std::vector<TimeStretch>& stretches);

}  // namespace rfu

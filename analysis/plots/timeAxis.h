#pragma once

#include <QString>
#include <vector>

#include "analysis/recordings/sweepSpans.h"

namespace rfu {

/// A piece of an upright axis on which time passes evenly; in pixels from the top.
struct TimeStretch {
    TimeSpan time;
    double top;
    double bottom;
};

struct TimeTick {
    double at;      // pixels from the top
    QString label;  // time of day, or the date where ticks are days apart
    QString date;   // where it is another than that of the tick before
};

/// Ticks at round times of day, and where a stretch does not go on from the one before, which takes
/// precedence. There is at least one, and their labels do not touch.
/// @param stretches from the top, at least one
std::vector<TimeTick> timeTicks(const std::vector<TimeStretch>& stretches);

}  // namespace rfu

#pragma once

#include "analysis/recordings/recording.h"
#include "analysis/recordings/stateFile.h"

namespace rfu {

/// Counts a sweep, and notes the first and the last time.
inline void count(const Sweep& sweep, StateHead& head) {
    if (++head.sweeps == 1) {
        head.firstTime = sweep.time;
    }
    head.lastTime = sweep.time;
    head.points = sweep.levels.size();
}

/// Behind the last sweep.
inline void setAxis(const Recording& recording, StateHead& head) {
    head.axis = recording.axis();
}

}  // namespace rfu

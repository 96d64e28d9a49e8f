#pragma once

#include <optional>

#include "analysis/plots/axis.h"
#include "analysis/plots/levelColors.h"

namespace rfu {

/// A range of levels in steps of 10 dB that shows all of them with a little room, and that does not tremble: it grows
/// as soon as levels lie outside, and shrinks at an end only where that saves two steps or more.
/// @param before the range so far; without, one for the levels alone
/// @param levels in dB; beyond 1000 dB they count as that
/// @param origin a level in dB at which a step may be
LevelRange steadyRange(const std::optional<LevelRange>& before, const ValueRange& levels,
                       double origin);

}  // namespace rfu

#pragma once

#include <rfUtils/units/unitTable.h>

#include <vector>

#include "analysis/plots/levelScale.h"
#include "analysis/recordings/sweepReader.h"
#include "analysis/units/levels.h"

namespace rfu {

/// How levels over frequency are shown in a unit. Where the unit depends on the frequency, each point has an offset
/// to a scale that all share.
struct UnitScale {
    LevelScale scale;
    Antenna antenna;  // of the scale; its centre is the end of the axis unless it is given
    std::vector<double> offsets;  // in dB, added to the level of each point; empty without
};

/// @param antenna without a centre frequency each point has its own. A field unit needs one where the axis has no
/// frequencies. A point at 0 MHz has no field: its offset is infinite
UnitScale unitScaleOf(const Unit& unit, const Antenna& antenna, const FrequencyAxis& axis);

}  // namespace rfu

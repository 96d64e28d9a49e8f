#pragma once

#include <rfUtils/units/HMath.h>
#include <rfUtils/units/unitTable.h>

#include <string_view>

#include "analysis/units/levels.h"
#include "analysis/units/unitNames.h"
#include "support/commandLine.h"

namespace rfu::command {

// Units, values and levels of the command line, with its errors.

/// --center and --gain. @throw UsageError for a frequency that is not above zero
Antenna antennaOf(const CommandLine& line);

/// @throw UsageError for --center or --gain without a unit that depends on them
void requireAntennaUnit(const CommandLine& line, const Unit& unit);

/// A unit to read values in. @throw BadValue with the nearest names or the reason
const Unit& unitToRead(std::string_view name);
/// A unit to show levels in. @throw BadValue with the nearest names or the reason
const Unit& unitToShow(std::string_view name);

/// @throw BadValue for a linear value that is not above zero: it has no level
void requireLevel(const Unit& unit, double value);

/// A quantity as a level in dBm, as the instrument computes it from an entry.
/// @throw BadValue for a linear value that is not above zero
/// @throw UsageError for a field unit without centre frequency
double levelOf(HMath& math, const Unit& unit, double value, const Antenna& antenna);

/// Shows levels in one unit.
class LevelPresenter : public rfu::LevelPresenter {
public:
    /// @throw UsageError for a field unit without centre frequency
    LevelPresenter(const Unit& unit, const Antenna& antenna);
};

}  // namespace rfu::command

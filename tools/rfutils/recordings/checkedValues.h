#pragma once

#include <cstddef>
#include <optional>

#include "support/commandLine.h"

namespace rfu::command {

// Values of options that several commands on recordings take.

/// @throw UsageError for a value that is not above zero
double positiveOf(const CommandLine& line, const char* name);

/// --limit in dBm. @throw UsageError for a field without --center
std::optional<double> limitOf(const CommandLine& line);

/// The unit that --center and --gain are for: that of --limit if it depends on the antenna, else the
/// shown one.
const rfu::Unit& antennaUnitOf(const CommandLine& line, const rfu::Unit& shown);

/// --window, in points. @throw UsageError
std::size_t floorWindowOf(const CommandLine& line);

}  // namespace rfu::command

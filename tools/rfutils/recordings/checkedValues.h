#pragma once

#include <cstddef>

#include "support/commandLine.h"

namespace rfu::command {

// Values of options that several commands on recordings take.

/// @throw UsageError for a value that is not above zero
double positiveOf(const CommandLine& line, const char* name);

/// --window, in points. @throw UsageError
std::size_t floorWindowOf(const CommandLine& line);

}  // namespace rfu::command

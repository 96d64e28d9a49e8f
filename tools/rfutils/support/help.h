#pragma once

#include <string>

#include "support/subcommand.h"

namespace rfu::command {

// Texts of at most 80 columns.

/// The list of the subcommands.
std::string overview();

/// Usage, description, options and examples of one.
std::string helpOf(const Subcommand& subcommand);

}  // namespace rfu::command

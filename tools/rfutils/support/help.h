#pragma once

#include <string>
#include <string_view>

#include "support/subcommand.h"

namespace rfu::command {

/// Appends a paragraph of at most 80 columns and a line end. The first line goes on at `column`, where the others begin.
void appendWrapped(std::string& text, std::string_view paragraph, std::size_t column = 0);

// Texts of at most 80 columns.

/// The list of the subcommands.
std::string overview();

/// Usage, description, options and examples of one.
std::string helpOf(const Subcommand& subcommand);

}  // namespace rfu::command

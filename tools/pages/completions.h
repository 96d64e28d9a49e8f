#pragma once

#include <string>
#include <vector>

#include "tools/pages/programs.h"

namespace rfu::pages {

// Completions of the command and of the viewer for one shell each, as its own functions read them.

std::string bashOfCommand(const std::vector<Command>& commands);
std::string bashOfViewer(const Command& viewer);
std::string zshOfCommand(const std::vector<Command>& commands);
std::string zshOfViewer(const Command& viewer);
std::string fishOfCommand(const std::vector<Command>& commands);
std::string fishOfViewer(const Command& viewer);

/// A text as one word of bash and zsh.
std::string shellQuoted(const std::string& text);

/// Reads the CSV of `rfutils catalogue` and writes its first column, as a word for shells.
extern const char kItemsOfCsv[];

}  // namespace rfu::pages

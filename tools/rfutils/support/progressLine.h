#pragma once

#include <string>

namespace rfu::command {

// One line on standard error, where that is a terminal, that says how far the command is. All other
// output takes it away first.

/// Shows another text in the line.
void showProgressLine(const std::string& text);

/// Takes the line away.
void clearProgressLine();

}  // namespace rfu::command

#pragma once

#include <string>
#include <vector>

#include "support/format.h"

namespace rfu::command {

/// Writes the rules of all kinds of files to standardOutput().
void writeRules(Format format);

/// The names of all rules.
std::vector<std::string> ruleNames();

/// What --explain shows of a rule, which stands in docs/check.md too.
/// @param rule one of ruleNames()
std::string explanationOf(const std::string& rule);

}  // namespace rfu::command

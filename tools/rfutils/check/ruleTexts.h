#pragma once

#include <string>

#include "support/format.h"

namespace rfu::command {

/// Writes the rules of all kinds of files to standardOutput().
void writeRules(Format format);

/// What --explain shows of a rule, which stands in docs/check.md too.
/// @throw Failure where there is no such rule
std::string explanationOf(const std::string& rule);

/// @throw UsageError for a name that no rule has
void requireRule(const std::string& name);

}  // namespace rfu::command

#pragma once

#include <string>

namespace rfu::command {

/// The JSON Schema of a kind of files, as --schema prints it.
/// @param kind "catalogue" or "setups"
/// @throw UsageError for another
std::string schemaOf(const std::string& kind);

}  // namespace rfu::command

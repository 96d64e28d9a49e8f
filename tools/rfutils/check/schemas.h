#pragma once

#include <string>
#include <vector>

namespace rfu::command {

/// The kinds of files that have one.
std::vector<std::string> schemaKinds();

/// The JSON Schema of a kind of files, as --schema prints it.
/// @param kind one of schemaKinds()
std::string schemaOf(const std::string& kind);

}  // namespace rfu::command

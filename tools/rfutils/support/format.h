#pragma once

namespace rfu::command {

/// How a table is written.
enum class Format { Text, Csv, Json };

}  // namespace rfu::command

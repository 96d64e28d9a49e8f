#pragma once

#include <optional>

#include "analysis/support/singles.h"
#include "support/tableWriter.h"

namespace rfu::command {

/// A cell with a single-precision number of the library, or with none.
inline TableWriter& addSingle(TableWriter& table, const std::optional<float>& value) {
    return value ? table.number(decimalOf(*value), textOf(*value)) : table.none();
}

}  // namespace rfu::command

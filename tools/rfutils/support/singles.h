#pragma once

#include <optional>

#include "support/tableWriter.h"

// Single-precision numbers of the library in tables.

/// The number that a single stands for in decimal: 0.1 instead of 0.10000000149011612.
double decimalOf(float value);

/// A cell with a single, or with none.
TableWriter& addSingle(TableWriter& table, const std::optional<float>& value);

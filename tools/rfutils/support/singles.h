#pragma once

#include <optional>
#include <string>

#include "support/tableWriter.h"

// Single-precision numbers of the library in tables.

/// The number that a single stands for in decimal: 0.1 instead of 0.10000000149011612.
double decimalOf(float value);

/// The same as a text for people.
std::string textOf(float value);

/// A cell with a single, or with none.
TableWriter& addSingle(TableWriter& table, const std::optional<float>& value);

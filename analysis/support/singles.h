#pragma once

#include <string>

namespace rfu {

// Single-precision numbers of the library in decimal.

/// The number that a single stands for in decimal: 0.1 instead of 0.10000000149011612.
double decimalOf(float value);

/// The same as a text for people.
std::string textOf(float value);

}  // namespace rfu

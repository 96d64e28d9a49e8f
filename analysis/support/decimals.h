#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace rfu {

// Decimal numbers as texts, without the rounding of binary ones. They are read as parseNumber() reads them; powers of ten
// beyond 400 give nothing.

/// `value` less half of `whole`, in all its digits and without a power of ten: "0.1" and "0.3" give "-0.05".
std::optional<std::string> minusHalf(std::string_view value, std::string_view whole);

/// Whether two numbers are the same, however they are written: "30" and "3.0e1".
bool isSameDecimal(std::string_view a, std::string_view b);

}  // namespace rfu

#pragma once

#include <string_view>

namespace rfu {

/// Whether two words differ at most in the case of ASCII letters.
bool isSameWord(std::string_view a, std::string_view b);

}  // namespace rfu

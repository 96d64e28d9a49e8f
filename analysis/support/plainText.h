#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace rfu {

/// A text of UTF-16 with a byte-order mark as UTF-8 without one, and one whose lines end in CR alone, as old systems wrote
/// them, with LF in their place.
/// @return nothing for any other text, and for one that is not certainly UTF-16: of an odd length, with half a
/// surrogate pair or with a NUL
std::optional<std::string> inPlainText(std::string_view bytes);

inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

}  // namespace rfu

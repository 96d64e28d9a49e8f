#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace rfu::command {

/// The columns that a UTF-8 text takes, one per character: "µV" is as wide as "mV".
inline std::size_t widthOf(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0u) != 0x80u;
    }));
}

/// The text, with an ellipsis as its last character if it is wider than `width`.
std::string shortened(std::string_view text, std::size_t width);

/// The text with U+FFFD for invalid UTF-8.
std::string validUtf8(std::string_view text);

/// Valid UTF-8 in which nothing breaks a line or steers a terminal: control characters, line
/// separators and bidirectional controls are escaped as "\n", "\x1b" or "\u202e".
std::string printable(std::string_view text);

/// A text as a JSON string, with its quotes. The same characters are escaped, as "\n" or "\u001b".
std::string jsonString(std::string_view text);

}  // namespace rfu::command

#pragma once

#include <algorithm>
#include <string_view>

namespace rfu::command {

/// The columns that a UTF-8 text takes, one per character: "µV" is as wide as "mV".
inline std::size_t widthOf(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0u) != 0x80u;
    }));
}

}  // namespace rfu::command

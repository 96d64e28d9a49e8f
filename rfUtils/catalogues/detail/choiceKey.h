// Private to the catalogues: not installed, may change in any release.
#pragma once

#include <locale>
#include <string>
#include <string_view>

namespace rfu::detail {

/// Allowed under the classic locale alone, where a to z are the only letters with a capital of one
/// byte.
inline void upperCaseAscii(std::string& text) {
    for (char& byte : text) {
        byte = byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte;
    }
}

/// The key under which a sub-item is filed. Up to 15 bytes fit into the string itself, so that
/// queries by an ordinary id allocate nothing.
inline std::string choiceKey(std::string_view subItemId) {
    std::string key(subItemId);
    const std::locale locale;
    if (locale == std::locale::classic()) {
        upperCaseAscii(key);
        return key;
    }
    // Each byte takes a call of its own: a facet of an application may change single bytes only.
    const auto& letters = std::use_facet<std::ctype<char>>(locale);
    for (char& byte : key) {
        byte = letters.toupper(byte);
    }
    return key;
}

}  // namespace rfu::detail

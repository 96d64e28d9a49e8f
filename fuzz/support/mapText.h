// The rules of the text formats of maps once more, written as plainly as they read: what the
// loaders are compared with.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace rfu::fuzz {

/// The lines of a file, each cut to `limit` characters and at its first NUL. Only '\n' ends a line;
/// one at the very end of the file begins no further line.
inline std::vector<std::string> linesOf(std::string_view file, std::size_t limit) {
    std::vector<std::string> lines;
    while (!file.empty()) {
        const std::size_t end = std::min(file.find('\n'), file.size());
        const std::string_view line = file.substr(0, std::min(end, limit));
        lines.emplace_back(line.substr(0, line.find('\0')));
        file.remove_prefix(std::min(end + 1, file.size()));
    }
    return lines;
}

inline bool isTokenCharacter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' ||
           c == '-' || c == '.' || c == '_';
}

/// All tokens of a line, each cut to 63 characters.
inline std::vector<std::string> tokensOf(std::string_view line) {
    constexpr std::size_t kLongestToken = 63;
    std::vector<std::string> tokens;
    std::string token;
    bool inQuotes = false;
    const auto finish = [&] {
        if (!token.empty()) {
            tokens.push_back(token.substr(0, kLongestToken));
            token.clear();
        }
    };
    for (const char c : line) {
        if (c == '"') {
            inQuotes = !inQuotes;
        } else if (inQuotes || isTokenCharacter(c)) {
            token += c;
        } else {
            finish();
        }
    }
    finish();
    return tokens;
}

// No target sets a locale, so these read as in the C locale.

inline float decimalOf(const std::string& token) {
    return static_cast<float>(std::strtod(token.c_str(), nullptr));
}

inline std::int32_t integerOf(const std::string& token) {
    using Limits = std::numeric_limits<std::int32_t>;
    const long value = std::strtol(token.c_str(), nullptr, 10);
    return static_cast<std::int32_t>(std::clamp<long>(value, Limits::min(), Limits::max()));
}

}  // namespace rfu::fuzz

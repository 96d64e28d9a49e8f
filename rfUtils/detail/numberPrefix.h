// Private to the library: not installed, may change in any release.
#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>

#include <locale.h>

namespace rfu::detail {

constexpr bool isBlank(char c) noexcept {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr bool isDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

constexpr std::string_view withoutLeadingBlanks(std::string_view text) noexcept {
    std::size_t used = 0;
    while (used < text.size() && isBlank(text[used])) {
        ++used;
    }
    return text.substr(used);
}

/// The C library's strtod in the C locale, whatever the process's locale.
inline double strtodInCLocale(std::string_view text) {
    static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtod_l(std::string(text).c_str(), nullptr, cLocale);
}

/// Whether a text without its sign is a number that std::from_chars reads as strtod does:
/// not hexadecimal, infinity or NaN.
constexpr bool startsPlainDecimal(std::string_view text) noexcept {
    const bool hexadecimal =
        text.size() > 1 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    return !text.empty() && (isDigit(text[0]) || text[0] == '.') && !hexadecimal;
}

/// Leading decimal number of a text, as atof reads it in the C locale: leading blanks and sign, the
/// longest valid prefix, exponents, hexadecimal, "inf" and "nan". No number gives 0, out of range
/// gives signed infinity or zero.
inline double decimalPrefix(std::string_view text) {
    const bool minus = !text.empty() && text.front() == '-';
    const bool plus = !text.empty() && text.front() == '+';
    const std::string_view unsignedText = text.substr(minus || plus ? 1 : 0);
    if (startsPlainDecimal(unsignedText)) {
        const std::string_view number =
            plus ? unsignedText : text;  // from_chars does not accept a plus sign
        double value = 0.0;
        const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
        if (result.ec != std::errc::result_out_of_range) {
            return value;  // 0 without a number
        }
    }
    return strtodInCLocale(text);
}

/// Leading decimal integer of a text, as atoi reads it; no number gives 0, out of range saturates.
inline std::int32_t integerPrefix(std::string_view text) noexcept {
    text = withoutLeadingBlanks(text);
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+')) {
        text.remove_prefix(1);
    }
    std::uint32_t magnitude = 0;
    const std::uint32_t limit = std::numeric_limits<std::int32_t>::max();
    for (const char c : text) {
        if (!isDigit(c)) {
            break;
        }
        const std::uint32_t digit = static_cast<std::uint32_t>(c - '0');
        if (magnitude > (limit - digit) / 10) {
            return negative ? std::numeric_limits<std::int32_t>::min()
                            : std::numeric_limits<std::int32_t>::max();
        }
        magnitude = magnitude * 10 + digit;
    }
    const auto value = static_cast<std::int32_t>(magnitude);
    return negative ? -value : value;
}

}  // namespace rfu::detail

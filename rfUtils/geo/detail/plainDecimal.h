// Private to the library: not installed, may change in any release.
#pragma once

#include "tokenizer.h"

#include <rfUtils/detail/numberPrefix.h>
#include <rfUtils/detail/shortDecimal.h>

#include <cstddef>
#include <cstdint>

namespace rfu::detail {

constexpr bool endsToken(char c) noexcept {
    return classOf(c) == CharClass::Separator || classOf(c) == CharClass::End;
}

/// Appends the digits of a text to a mantissa and returns their end.
inline const char* takeDigits(const char* text, std::uint64_t& mantissa) noexcept {
    for (; isDigit(*text); ++text) {
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(*text - '0');
    }
    return text;
}

/// Reads eight characters at once if they are digits with at most one '.' among them.
/// @param decimals set to the start of the decimals if the '.' is found
/// @return their end; `text` if they are anything else
inline const char* takeFirstEight(const char* text, std::uint64_t& mantissa,
                                  const char*& decimals) noexcept {
    const std::uint64_t word = loadEight(text);
    const std::uint64_t others = nonDigits(word);
    if (others == 0) {
        mantissa = numberOf(digitValues(word));
        return text + 8;
    }
    const int first = firstByte(others);
    if ((others & (others - 1)) != 0 || static_cast<char>(word >> first) != '.') {
        return text;
    }
    mantissa = numberOf(withoutPoint(digitValues(word), first) << 8);
    decimals = text + first / 8 + 1;
    return text + 8;
}

/// Reads digits with an optional '.' and exponent. Mantissa and power of ten are exact doubles, so
/// that their quotient or product, rounded once, is the nearest double.
/// @param hasEight eight characters may be read at `text`
inline PlainDecimal longDecimal(const char* text, bool hasEight) noexcept {
    constexpr std::ptrdiff_t kMaxDigits = 19;               // any of which fit 64 bits
    constexpr std::uint64_t kMaxExactInteger = 1ULL << 53;  // all integers to it are doubles
    constexpr std::ptrdiff_t kMaxExponentDigits = 4;  // keeps the token shorter than its limit
    constexpr auto kMaxPower = static_cast<std::int64_t>(kExactPowersOfTen.size()) - 1;

    std::uint64_t mantissa = 0;
    const char* decimals = nullptr;
    const char* cursor = hasEight ? takeFirstEight(text, mantissa, decimals) : text;
    cursor = takeDigits(cursor, mantissa);
    if (decimals == nullptr && *cursor == '.') {
        decimals = cursor + 1;
        cursor = takeDigits(decimals, mantissa);
    }
    const std::ptrdiff_t digits = cursor - text - (decimals != nullptr ? 1 : 0);
    std::int64_t exponent = decimals != nullptr ? decimals - cursor : 0;
    if (digits == 0 || digits > kMaxDigits || mantissa > kMaxExactInteger) {
        return kNotPlain;
    }
    if (*cursor == 'e' || *cursor == 'E') {
        ++cursor;
        const bool negative = *cursor == '-';
        cursor += negative || *cursor == '+' ? 1 : 0;
        std::uint64_t power = 0;
        const char* const powerEnd = takeDigits(cursor, power);
        if (powerEnd == cursor || powerEnd - cursor > kMaxExponentDigits) {
            return kNotPlain;
        }
        exponent += negative ? -static_cast<std::int64_t>(power) : static_cast<std::int64_t>(power);
        cursor = powerEnd;
    }
    if (exponent < -kMaxPower || exponent > kMaxPower || !endsToken(*cursor)) {
        return kNotPlain;
    }
    const auto exact = static_cast<double>(mantissa);
    return {exponent < 0 ? exact / kExactPowersOfTen[static_cast<std::size_t>(-exponent)]
                         : exact * kExactPowersOfTen[static_cast<std::size_t>(exponent)],
            cursor};
}

/// Reads a token that is a decimal number and nothing else, without searching its end first. The
/// value is that of decimalPrefix(). Gives kNotPlain for any other token and where the nearest
/// double would take more than one rounding.
/// @param text start of a token, or the end of the line
/// @param lineEnd the line's terminating NUL
inline PlainDecimal plainDecimal(const char* text, const char* lineEnd) noexcept {
    if (!kRoundsOnce) {
        return kNotPlain;
    }
    const bool negative = *text == '-';
    if (negative) {
        ++text;
    }
    const bool hasEight = lineEnd - text >= 8;
    PlainDecimal number =
        hasEight ? shortDecimal(text, [](char c) { return endsToken(c); }) : kNotPlain;
    if (number.end == nullptr) {
        number = longDecimal(text, hasEight);
    }
    if (negative) {
        number.value = -number.value;
    }
    return number;
}

}  // namespace rfu::detail

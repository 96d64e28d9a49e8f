// Private to the library: not installed, may change in any release.
#pragma once

#include "tokenizer.h"

#include <rfUtils/detail/numberPrefix.h>

#include <array>
#include <cfloat>
#include <cstddef>
#include <cstdint>

namespace rfu::detail {

/// A number and where its token ends; `end` is null where none was read.
struct PlainDecimal {
    double value;
    const char* end;
};

inline constexpr PlainDecimal kNotPlain = {0.0, nullptr};

/// The powers of ten that a double holds without rounding.
inline constexpr std::array<double, 23> kExactPowersOfTen = {
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

constexpr bool endsToken(char c) noexcept {
    return classOf(c) == CharClass::Separator || classOf(c) == CharClass::End;
}

/// Eight characters as a number, the first one in the lowest byte on every machine.
inline std::uint64_t eightCharacters(const char* text) noexcept {
    std::uint64_t word = 0;
    for (unsigned i = 0; i < 8; ++i) {
        word |= std::uint64_t{static_cast<unsigned char>(text[i])} << (8 * i);
    }
    return word;
}

constexpr std::uint64_t kZeros = 0x3030303030303030;  // eight times '0'

/// The highest bit of each byte that is no digit.
constexpr std::uint64_t nonDigits(std::uint64_t word) noexcept {
    const std::uint64_t values = word ^ kZeros;  // 0 to 9 for digits, more for all others
    return (((values & 0x7F7F7F7F7F7F7F7F) + 0x7676767676767676) | values) & 0x8080808080808080;
}

/// The number that eight digits make, their values in the bytes of a word, the first one lowest.
/// Neighbours are put together to two digits, these to four, these to eight.
constexpr std::uint32_t numberOf(std::uint64_t digits) noexcept {
    constexpr std::uint64_t kEveryFourthPair = 0x000000FF000000FF;
    const std::uint64_t pairs = digits * 10 + (digits >> 8);
    return static_cast<std::uint32_t>(
        ((pairs & kEveryFourthPair) * ((1000000ULL << 32) + 100) +
         ((pairs >> 16) & kEveryFourthPair) * ((10000ULL << 32) + 1)) >>
        32);
}

/// The digits of a word without the point, which stands `before` bits behind its beginning; the last
/// byte is left over.
constexpr std::uint64_t withoutPoint(std::uint64_t digits, int before) noexcept {
    const std::uint64_t beforePoint = (std::uint64_t{1} << before) - 1;
    return (digits & beforePoint) | ((digits >> 8) & ~beforePoint);
}

/// A token of up to seven digits, a point among them or not, whose end stands in the same eight
/// characters. They are taken as one word: where cells differ in length, a loop over
/// digits would spend its time on guessing wrong where they end.
inline PlainDecimal shortDecimal(const char* text) noexcept {
    const std::uint64_t word = eightCharacters(text);
    const std::uint64_t others = nonDigits(word);
    const std::uint64_t othersBehind = others & (others - 1);
    if (others == 0) {
        return kNotPlain;
    }
    // In bits, as are all places within the word.
    const int first = __builtin_ctzll(others) & ~7;
    const auto character = static_cast<char>(word >> first);
    const std::uint64_t digits = word ^ kZeros;
    if (character != '.') {
        if (first == 0 || !endsToken(character)) {
            return kNotPlain;
        }
        return {static_cast<double>(numberOf(digits << (64 - first))), text + first / 8};
    }
    if (othersBehind == 0) {
        return kNotPlain;
    }
    const int end = __builtin_ctzll(othersBehind) & ~7;
    const int count = end - 8;  // of digits, the point not among them
    if (count == 0 || !endsToken(static_cast<char>(word >> end))) {
        return kNotPlain;
    }
    const auto decimals = static_cast<std::size_t>(count - first) / 8;
    return {static_cast<double>(numberOf(withoutPoint(digits, first) << (64 - count))) /
                kExactPowersOfTen[decimals],
            text + end / 8};
}

/// Adds the digits of a text to a mantissa; gives where they end.
inline const char* takeDigits(const char* text, std::uint64_t& mantissa) noexcept {
    for (; isDigit(*text); ++text) {
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(*text - '0');
    }
    return text;
}

/// Takes the first eight characters at once where they are digits, a point among them or not; gives
/// where they end, or `text`. `decimals` is set to what follows the point.
inline const char* takeFirstEight(const char* text, std::uint64_t& mantissa,
                                  const char*& decimals) noexcept {
    const std::uint64_t word = eightCharacters(text);
    const std::uint64_t others = nonDigits(word);
    if (others == 0) {
        mantissa = numberOf(word ^ kZeros);
        return text + 8;
    }
    const int first = __builtin_ctzll(others) & ~7;
    if ((others & (others - 1)) != 0 || static_cast<char>(word >> first) != '.') {
        return text;
    }
    mantissa = numberOf(withoutPoint(word ^ kZeros, first) << 8);
    decimals = text + first / 8 + 1;
    return text + 8;
}

/// Digits with a point or an exponent or both. Mantissa and power of ten are doubles as they stand,
/// so that the one rounding of their quotient or product gives the double nearest to the number.
/// @param hasEight eight characters may be read at `text`
inline PlainDecimal longDecimal(const char* text, bool hasEight) noexcept {
    constexpr std::ptrdiff_t kMostDigits = 19;         // that 64 bits hold, whatever they are
    constexpr std::uint64_t kMostExact = 1ULL << 53;   // of whole numbers that are doubles
    constexpr std::ptrdiff_t kMostExponentDigits = 4;  // a token of 64 characters would be cut
    constexpr auto kMostPower = static_cast<std::int64_t>(kExactPowersOfTen.size()) - 1;

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
    if (digits == 0 || digits > kMostDigits || mantissa > kMostExact) {
        return kNotPlain;
    }
    if (*cursor == 'e' || *cursor == 'E') {
        ++cursor;
        const bool negative = *cursor == '-';
        cursor += negative || *cursor == '+' ? 1 : 0;
        std::uint64_t power = 0;
        const char* const powerEnd = takeDigits(cursor, power);
        if (powerEnd == cursor || powerEnd - cursor > kMostExponentDigits) {
            return kNotPlain;
        }
        exponent += negative ? -static_cast<std::int64_t>(power) : static_cast<std::int64_t>(power);
        cursor = powerEnd;
    }
    if (exponent < -kMostPower || exponent > kMostPower || !endsToken(*cursor)) {
        return kNotPlain;
    }
    const auto exact = static_cast<double>(mantissa);
    return {exponent < 0 ? exact / kExactPowersOfTen[static_cast<std::size_t>(-exponent)]
                         : exact * kExactPowersOfTen[static_cast<std::size_t>(exponent)],
            cursor};
}

/// The number of a token that is nothing but a decimal number of ordinary length: the same that
/// decimalPrefix() gives, without looking for where the token ends first. No number is read where
/// the token is anything else, or where the exact result would take more than one rounding.
/// @param text where a token begins, or the end of the line
/// @param lineEnd the line's terminating NUL, at `text` or behind it
inline PlainDecimal plainDecimal(const char* text, const char* lineEnd) noexcept {
    // Where intermediate results are wider than double, a quotient would be rounded twice.
    if (FLT_EVAL_METHOD != 0) {
        return kNotPlain;
    }
    const bool negative = *text == '-';
    if (negative) {
        ++text;
    }
    const bool hasEight = lineEnd - text >= 8;
    PlainDecimal number = hasEight ? shortDecimal(text) : kNotPlain;
    if (number.end == nullptr) {
        number = longDecimal(text, hasEight);
    }
    if (negative) {
        number.value = -number.value;
    }
    return number;
}

}  // namespace rfu::detail

// Private to the library: not installed, may change in any release.
#pragma once

#include <array>
#include <cfloat>
#include <cstddef>
#include <cstdint>

namespace rfu::detail {

/// A decimal number and the end of its token; `end` is null where the fast path does not apply.
struct PlainDecimal {
    double value;
    const char* end;
};

inline constexpr PlainDecimal kNotPlain = {0.0, nullptr};

/// The powers of ten that a double holds without rounding.
inline constexpr std::array<double, 23> kExactPowersOfTen = {
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// Where intermediate results are wider than double, a quotient would be rounded twice.
inline constexpr bool kRoundsOnce = FLT_EVAL_METHOD == 0;

// SWAR: eight characters are processed in one 64-bit word. A loop over digits would mispredict the
// end of each number where numbers differ in length.

/// Loads eight characters, the first into the lowest byte on every machine.
inline std::uint64_t loadEight(const char* text) noexcept {
    std::uint64_t word = 0;
    for (unsigned i = 0; i < 8; ++i) {
        word |= std::uint64_t{static_cast<unsigned char>(text[i])} << (8 * i);
    }
    return word;
}

constexpr std::uint64_t inEachByte(unsigned value) noexcept {
    return 0x0101010101010101 * std::uint64_t{value};
}

/// The values of the digits of a word; other characters give 10 or more.
constexpr std::uint64_t digitValues(std::uint64_t word) noexcept {
    return word ^ inEachByte('0');
}

/// The highest bit of each byte that is no digit.
constexpr std::uint64_t nonDigits(std::uint64_t word) noexcept {
    const std::uint64_t values = digitValues(word);
    return (((values & inEachByte(0x7F)) + inEachByte(0x80 - 10)) | values) & inEachByte(0x80);
}

/// Bit offset of the byte with the lowest bit set.
inline int firstByte(std::uint64_t bits) noexcept {
    return __builtin_ctzll(bits) & ~7;
}

/// The number of eight digit values, the most significant in the lowest byte: merges them into four
/// pairs, which two products weight and add.
constexpr std::uint32_t numberOf(std::uint64_t digits) noexcept {
    constexpr std::uint64_t kEveryFourthPair = 0x000000FF000000FF;
    const std::uint64_t pairs = digits * 10 + (digits >> 8);
    return static_cast<std::uint32_t>(
        ((pairs & kEveryFourthPair) * ((1000000ULL << 32) + 100) +
         ((pairs >> 16) & kEveryFourthPair) * ((10000ULL << 32) + 1)) >>
        32);
}

/// Removes the '.' at bit offset `point`; the last byte is undefined.
constexpr std::uint64_t withoutPoint(std::uint64_t digits, int point) noexcept {
    const std::uint64_t whole = (std::uint64_t{1} << point) - 1;
    return (digits & whole) | ((digits >> 8) & ~whole);
}

/// Reads a token of up to seven digits, with or without a '.', whose end is among the same eight
/// characters: an exact integer over an exact power of ten, so that the quotient is the nearest
/// double, as strtod gives it. Needs kRoundsOnce.
/// @param endsToken tells whether a character ends the token
template <typename EndsToken>
PlainDecimal shortDecimal(const char* text, EndsToken endsToken) noexcept {
    const std::uint64_t word = loadEight(text);
    const std::uint64_t others = nonDigits(word);
    if (others == 0) {
        return kNotPlain;
    }
    const std::uint64_t digits = digitValues(word);
    const int first = firstByte(others);
    const auto character = static_cast<char>(word >> first);
    if (character != '.') {
        if (first == 0 || !endsToken(character)) {
            return kNotPlain;
        }
        return {static_cast<double>(numberOf(digits << (64 - first))), text + first / 8};
    }
    const std::uint64_t othersBehindPoint = others & (others - 1);
    if (othersBehindPoint == 0) {
        return kNotPlain;
    }
    const int end = firstByte(othersBehindPoint);
    const int digitBits = end - 8;  // without the '.'
    if (digitBits == 0 || !endsToken(static_cast<char>(word >> end))) {
        return kNotPlain;
    }
    const auto decimals = static_cast<std::size_t>(digitBits - first) / 8;
    return {static_cast<double>(numberOf(withoutPoint(digits, first) << (64 - digitBits))) /
                kExactPowersOfTen[decimals],
            text + end / 8};
}

}  // namespace rfu::detail

#pragma once

#include <rfUtils/detail/shortDecimal.h>
#include <cstdint>

namespace rfu {

/// Reads a level as receivers write it, "-51.23,", from -0.00 to -599.99: the nearest double, as
/// strtod gives it. Nearly all the time of reading a recording is spent here, so that other ways of
/// writing are left to slower readers.
/// @param at   eight characters
/// @return the comma; null, and the level unchanged, where the text is another
inline const char* readHundredths(const char* at, double& level) noexcept {
    using namespace detail;
    static_assert(kRoundsOnce, "the quotient has to be rounded to double at once");
    constexpr int kBits = 8;
    const std::uint64_t word = loadEight(at);
    const std::uint64_t differences = word ^ inEachByte(',');
    // The lowest bit is that of the first comma.
    const std::uint64_t commas = (differences - inEachByte(1)) & ~differences & inEachByte(0x80);
    if (static_cast<char>(word) != '-' || commas == 0) {
        return nullptr;
    }
    const int end = firstByte(commas);

    // The digits end in the highest byte; in place of the sign and below it there are zeros.
    constexpr std::uint64_t kSign = '-' ^ '0';
    constexpr std::uint64_t kPoint = std::uint64_t{'.' ^ '0'} << (5 * kBits);
    constexpr std::uint64_t kPointByte = std::uint64_t{0xFF} << (5 * kBits);
    constexpr std::uint64_t kDecimals = std::uint64_t{0xFFFF} << (6 * kBits);
    constexpr std::uint64_t kWhole = std::uint64_t{0xFFFFFF} << (2 * kBits);
    const std::uint64_t text = (digitValues(word) ^ kSign) << (64 - end);

    // Each byte but that of the point is to be below 10, that of the hundreds below 6.
    constexpr std::uint64_t kToTop = inEachByte(0x80 - 10) + (std::uint64_t{4} << (2 * kBits));
    const std::uint64_t digits = text & ~kPointByte;
    if ((text & kPointByte) != kPoint || (((digits + kToTop) | digits) & inEachByte(0x80)) != 0) {
        return nullptr;
    }

    // One product weights the pairs of digits by 1, 100 and 10,000 and adds them up.
    const std::uint64_t number = (digits & kWhole) << kBits | (digits & kDecimals);
    const std::uint64_t pairs = ((number * 10 + (number >> kBits)) >> 16U) & 0x000000FF00FF00FF;
    constexpr std::uint64_t kWeights = (std::uint64_t{10000} << 32U) + (100U << 16U) + 1;
    const auto hundredths = static_cast<std::uint16_t>((pairs * kWeights) >> 32U);
    level = hundredths / -100.0;
    return at + end / kBits;
}

}  // namespace rfu

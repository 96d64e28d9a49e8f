// Private to the library: not installed, may change in any release.
#pragma once

#include <cstdint>
#include <cstring>
#include <limits>

namespace rfu::detail {

/// Rounding of a number exactly half-way between two texts.
enum class Ties { ToEven, AwayFromZero };

inline constexpr int kMaxExactDecimals = 9;
inline constexpr int kMaxExactLength = 1 + 16 + 1 + kMaxExactDecimals;  // below 2^52

inline constexpr std::uint64_t kPowersOfTen[] = {1,      10,      100,      1000,      10000,
                                                 100000, 1000000, 10000000, 100000000, 1000000000};

/// "00" to "99".
inline constexpr char kDigitPairs[] =
    "0001020304050607080910111213141516171819202122232425262728293031323334353637383940414243444546"
    "4748495051525354555657585960616263646566676869707172737475767778798081828384858687888990919293"
    "949596979899";

/// Writes an integer that ends before `end`, padded with zeros to a number of digits.
/// @return its start
inline char* writeDigits(char* end, std::uint64_t number, int digits) noexcept {
    for (; digits > 1 || number >= 10; digits -= 2, number /= 100) {
        end -= 2;
        std::memcpy(end, &kDigitPairs[2 * (number % 100)], 2);
    }
    if (digits == 1 || number != 0) {
        *--end = static_cast<char>('0' + number);
    }
    return end;
}

/// Writes a number with a fixed number of decimals that ends before `end`. A double is m / 2^shift
/// with an integer m: in integer arithmetic every digit and the remainder are exact, and so is the
/// rounding. Covers magnitudes from 2^-11, with more than three decimals from 2^-2, to below 2^52,
/// where it is much faster than printers for all doubles.
/// @param decimals 0 to kMaxExactDecimals
/// @return its start; null, with nothing written, for other magnitudes
inline char* writeExactDecimal(char* end, double value, int decimals, Ties ties) noexcept {
    static_assert(std::numeric_limits<double>::is_iec559 && sizeof(double) == sizeof(std::uint64_t),
                  "reads the bits of an IEEE double");
    constexpr int kMantissaBits = 52;
    constexpr std::uint64_t kImplicitBit = std::uint64_t{1} << kMantissaBits;
    constexpr int kIntegerExponent = 1075;  // biased exponent at which the mantissa is the number

    std::uint64_t bits{};
    std::memcpy(&bits, &value, sizeof bits);
    const int shift = kIntegerExponent - (static_cast<int>(bits >> kMantissaBits) & 0x7FF);
    // Three decimals are extracted at once: 1000 m and 1000 (2^shift - 1) must stay below 2^64.
    if (shift < 1 || shift > (decimals > 3 ? 54 : 63)) {
        return nullptr;
    }
    const std::uint64_t one = std::uint64_t{1} << shift;
    const std::uint64_t mantissa = (bits & (kImplicitBit - 1)) | kImplicitBit;
    std::uint64_t whole = mantissa >> shift;
    std::uint64_t rest = mantissa & (one - 1);
    std::uint64_t fraction = 0;
    for (int missing = decimals; missing > 0; missing -= 3) {
        const std::uint64_t scale = kPowersOfTen[missing < 3 ? missing : 3];
        rest *= scale;
        fraction = fraction * scale + (rest >> shift);
        rest &= one - 1;
    }
    const bool isOdd = (decimals == 0 ? whole : fraction) % 2 == 1;
    const bool tieGoesUp = isOdd || ties == Ties::AwayFromZero;
    if (rest > one / 2 || (rest == one / 2 && tieGoesUp)) {
        ++fraction;
    }
    if (decimals == 0) {
        whole += fraction;
    } else {
        whole += fraction / kPowersOfTen[decimals];
        end = writeDigits(end, fraction % kPowersOfTen[decimals], decimals);
        *--end = '.';
    }
    end = writeDigits(end, whole, 1);
    if (bits >> 63 != 0) {
        *--end = '-';
    }
    return end;
}

}  // namespace rfu::detail

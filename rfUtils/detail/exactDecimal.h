// Private to the library: not installed, may change in any release.
#pragma once

#include <cstdint>
#include <cstring>
#include <limits>

namespace rfu::detail {

/// Where a number goes that lies exactly half-way between two texts.
enum class Ties { ToEven, AwayFromZero };

inline constexpr int kMostExactDecimals = 9;
inline constexpr int kLongestExactDecimal = 1 + 16 + 1 + kMostExactDecimals;  // below 2^52

inline constexpr std::uint64_t kPowersOfTen[] = {1,      10,      100,      1000,      10000,
                                                 100000, 1000000, 10000000, 100000000, 1000000000};

/// "00" to "99".
inline constexpr char kDigitPairs[] =
    "0001020304050607080910111213141516171819202122232425262728293031323334353637383940414243444546"
    "4748495051525354555657585960616263646566676869707172737475767778798081828384858687888990919293"
    "949596979899";

/// Writes a number so that it ends before `end`, with zeros before it up to a count of digits.
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

/// Writes the text of a number with a fixed count of decimals, so that it ends before `end`. A double
/// is m / 2^shift with whole m, so that in whole numbers every digit and what remains behind the last
/// one are exact, and so is the rounding. Takes magnitudes from 2^-11, with more than three decimals
/// from 2^-2, to below 2^52; for these it is far quicker than printers that take every double.
/// @param decimals 0 to kMostExactDecimals
/// @return its start; null, and nothing is written, if the number is not taken
inline char* writeExactDecimal(char* end, double value, int decimals, Ties ties) noexcept {
    static_assert(std::numeric_limits<double>::is_iec559 && sizeof(double) == sizeof(std::uint64_t),
                  "IEEE doubles are taken apart");
    constexpr int kMantissaBits = 52;
    constexpr std::uint64_t kImplicitBit = std::uint64_t{1} << kMantissaBits;
    constexpr int kExponentOfOnes = 1075;  // of a mantissa that counts ones

    std::uint64_t bits{};
    std::memcpy(&bits, &value, sizeof bits);
    const int shift = kExponentOfOnes - (static_cast<int>(bits >> kMantissaBits) & 0x7FF);
    // Three digits are drawn at once: 1000 m and 1000 (2^shift - 1) have to stay below 2^64.
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

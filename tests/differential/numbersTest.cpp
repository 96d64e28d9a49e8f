#include <support/cText.h>
#include <support/samples.h>

#include <rfUtils/detail/exactDecimal.h>
#include <rfUtils/detail/fixedText.h>
#include <rfUtils/detail/numberPrefix.h>
#include <rfUtils/detail/saturate.h>

#include <gtest/gtest.h>

#include <QString>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <string>
#include <vector>

namespace {

using namespace rfu::test;

const Range kNumbers = {-1000.0, 1000.0, {0.0, 0.005, 0.125, 999.995, 2147483647.0, -2147483648.0}};

TEST(DifferentialNumbers, fixedTextIsThatOfPrintf) {
    Samples samples(20240913);
    for (int i = caseCount(); i > 0; --i) {
        const double value = samples.number(kNumbers);
        const auto decimals = static_cast<int>(samples.below(10));
        ASSERT_EQ(rfu::detail::FixedText(value, decimals).view(), printed(value, decimals))
            << std::hexfloat << value << ' ' << decimals;
    }
}

/// Numbers from 2^-13 to 2^54, among them exact ties of any number of decimals and their
/// neighbours.
double printable(Samples& samples) {
    const double scale = std::ldexp(1.0, static_cast<int>(samples.below(67)) - 13);
    const double binaryStep = std::ldexp(1.0, -static_cast<int>(samples.below(16)));
    const double decimalStep = std::pow(10.0, -static_cast<double>(samples.below(10)));
    const double value = samples.between(scale, 2.0 * scale);
    switch (samples.below(4)) {
        case 0:
            return samples.signedAtRandom(value);
        case 1:
            return samples.signedAtRandom(std::nearbyint(value / binaryStep) * binaryStep);
        case 2:
            return samples.beside(std::nearbyint(value / binaryStep) * binaryStep);
        default:
            return samples.beside(std::nearbyint(value / decimalStep) * decimalStep);
    }
}

TEST(DifferentialNumbers, exactDecimalsAreThoseOfThePrinterOfTheirRounding) {
    Samples samples(20241120);
    for (int i = caseCount(); i > 0; --i) {
        const double value = printable(samples);
        const auto decimals = static_cast<int>(samples.below(10));
        char buffer[rfu::detail::kMaxExactLength];
        char* const end = std::end(buffer);
        if (char* const text =
                rfu::detail::writeExactDecimal(end, value, decimals, rfu::detail::Ties::ToEven)) {
            ASSERT_EQ(std::string(text, end), printed(value, decimals))
                << std::hexfloat << value << ' ' << decimals;
        }
        if (char* const text = rfu::detail::writeExactDecimal(end, value, decimals,
                                                              rfu::detail::Ties::AwayFromZero)) {
            ASSERT_EQ(std::string(text, end), QString::number(value, 'f', decimals).toStdString())
                << std::hexfloat << value << ' ' << decimals;
        }
    }
}

/// Texts that begin like a number: digits, exponents, hexadecimal, words, junk behind them.
std::string numberLike(Samples& samples) {
    static const std::vector<std::string> kWords = {"inf", "-inf",    "nan", "NAN(1)",  "infinity",
                                                    "0x",  "0x1.8p3", "-0X", "INFINIT", "nan("};
    const std::string blanks = samples.below(4) == 0 ? samples.text(" \t\n\v\f\r", 3) : "";
    std::string text;
    switch (samples.below(6)) {
        case 0:
            text = samples.text("0123456789+-.eExX \tinfaINF_p" + std::string(1, '\0'), 12);
            break;
        case 1:
            text = samples.oneOf(kWords);
            break;
        case 2: {  // all significant digits and more
            char digits[64];
            const CLocale scope;
            std::snprintf(digits, sizeof digits, "%.*e", static_cast<int>(samples.below(40)),
                          samples.number(kNumbers));
            text = digits;
            break;
        }
        case 3:
            text = samples.text("0123456789", 30) + (samples.coin() ? "." : "") +
                   samples.text("0123456789", 30);
            break;
        case 4:
            text = samples.text("0123456789", 3) + "." + samples.text("0123456789", 3) +
                   (samples.coin() ? "e" : "E") + samples.text("+-", 1) +
                   samples.text("0123456789", 3);
            break;
        default:
            text = std::to_string(std::int64_t{samples.anyInteger()} * 5 / 4);
            break;
    }
    return blanks + samples.text("+-", samples.below(3)) + text +
           (samples.below(3) == 0 ? samples.text("0e.,x+- ", 3) : "");
}

TEST(DifferentialNumbers, decimalPrefixIsThatOfStrtod) {
    Samples samples(20240914);
    for (int i = caseCount(); i > 0; --i) {
        const std::string text = numberLike(samples);
        const double got = rfu::detail::decimalPrefix(text);
        const double expected = decimalOf(text);
        ASSERT_TRUE(same(got, expected)) << testing::PrintToString(text) << std::hexfloat << ": "
                                         << got << " instead of " << expected;
    }
}

TEST(DifferentialNumbers, integerPrefixIsThatOfStrtolWithin32Bits) {
    Samples samples(20240915);
    for (int i = caseCount(); i > 0; --i) {
        const std::string text = numberLike(samples);
        ASSERT_EQ(rfu::detail::integerPrefix(text), integerOf(text))
            << testing::PrintToString(text);
    }
}

TEST(DifferentialNumbers, toInt32TruncatesAndSaturates) {
    Samples samples(20240916);
    for (int i = caseCount(); i > 0; --i) {
        const double value = samples.number(kNumbers);
        const long long wide = std::isnan(value)       ? 0
                               : value > 4294967296.0  ? 4294967296
                               : value < -4294967296.0 ? -4294967296
                                                       : static_cast<long long>(value);
        ASSERT_EQ(rfu::detail::toInt32(value),
                  std::clamp<long long>(wide, -2147483648LL, 2147483647LL))
            << std::hexfloat << value;
    }
}

}  // namespace

#include <rfUtils/detail/exactDecimal.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>

using rfu::detail::kMaxExactLength;
using rfu::detail::Ties;
using rfu::detail::writeExactDecimal;

namespace {

std::string exact(double value, int decimals, Ties ties) {
    std::array<char, kMaxExactLength> buffer{};
    char* const end = buffer.data() + buffer.size();
    const char* const text = writeExactDecimal(end, value, decimals, ties);
    return text == nullptr ? "not taken" : std::string(text, static_cast<std::size_t>(end - text));
}

TEST(ExactDecimal, OfHandWorkedValues) {
    const struct {
        double value;
        int decimals;
        const char* tiesToEven;
        const char* tiesAwayFromZero;
    } kCases[] = {
        {0.25, 1, "0.2", "0.3"},
        {0.75, 1, "0.8", "0.8"},
        {-0.25, 1, "-0.2", "-0.3"},
        {0.125, 2, "0.12", "0.13"},
        {2.5, 0, "2", "3"},
        {3.5, 0, "4", "4"},
        {0.5, 0, "0", "1"},
        {-0.5, 0, "-0", "-1"},
        {1.0078125, 6, "1.007812", "1.007813"},  // 1 + 2^-7
        {1.0009765625, 9, "1.000976562", "1.000976563"},
        {9.9375, 3, "9.938", "9.938"},
        {9.75, 1, "9.8", "9.8"},
        {99.5, 0, "100", "100"},
        {9.96875, 1, "10.0", "10.0"},
        {999999.9999999999, 9, "1000000.000000000", "1000000.000000000"},
        {0.005, 2, "0.01", "0.01"},  // the double lies above the tie
        {1.005, 2, "1.00", "1.00"},  // the double lies below it
        {2412.0, 6, "2412.000000", "2412.000000"},
        {0.0625, 1, "0.1", "0.1"},
        {0.03125, 1, "0.0", "0.0"},
        {-0.03125, 1, "-0.0", "-0.0"},
        {1234567.0, 0, "1234567", "1234567"},
        {100.0, 0, "100", "100"},
        {7.0, 4, "7.0000", "7.0000"},
        {10.00390625, 7, "10.0039062", "10.0039063"},
        {4503599627370495.5, 0, "4503599627370496", "4503599627370496"},
        {-4503599627370495.5, 9, "-4503599627370495.500000000", "-4503599627370495.500000000"},
    };
    for (const auto& row : kCases) {
        EXPECT_EQ(exact(row.value, row.decimals, Ties::ToEven), row.tiesToEven) << row.value;
        EXPECT_EQ(exact(row.value, row.decimals, Ties::AwayFromZero), row.tiesAwayFromZero)
            << row.value;
    }
}

TEST(ExactDecimal, LeavesOtherMagnitudesToOtherPrinters) {
    using Limits = std::numeric_limits<double>;
    for (const double value :
         {0.0, -0.0, 0x1p52, -0x1p52, 1e300, Limits::infinity(), Limits::quiet_NaN(),
          Limits::denorm_min(), Limits::min(), std::nextafter(0x1p-11, 0.0)}) {
        EXPECT_EQ(exact(value, 3, Ties::ToEven), "not taken") << value;
    }
    EXPECT_EQ(exact(0x1p-11, 3, Ties::ToEven), "0.000");
    EXPECT_EQ(exact(std::nextafter(0.25, 0.0), 4, Ties::ToEven), "not taken");
    EXPECT_EQ(exact(0.25, 4, Ties::ToEven), "0.2500");
    EXPECT_EQ(exact(std::nextafter(0.25, 0.0), 3, Ties::ToEven), "0.250");
}

}  // namespace

#include <rfUtils/detail/fixedText.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <string>

using rfu::detail::FixedText;

namespace {

std::string fixedText(double value, int decimals) {
    return std::string(FixedText(value, decimals).view());
}

TEST(FixedText, PrintsLikeCInTheCLocale) {
    const struct {
        double value;
        int decimals;
        const char* expected;
    } kCases[] = {
        {0.0, 2, "0.00"},
        {-0.0, 2, "-0.00"},
        {0.125, 2, "0.12"},  // exact ties go to even
        {0.375, 2, "0.38"},
        {-0.125, 2, "-0.12"},
        {2.5, 0, "2"},
        {3.5, 0, "4"},
        {0.005, 2, "0.01"},  // the double is just above the tie
        {1.005, 2, "1.00"},  // the double is just below it
        {-0.001, 2, "-0.00"},
        {999.995, 2, "1000.00"},  // 999.99500000000000454...
        {2.4, 9, "2.400000000"},
        {1e22, 1, "10000000000000000000000.0"},
        {5e-324, 9, "0.000000000"},
    };
    for (const auto& row : kCases) {
        EXPECT_EQ(fixedText(row.value, row.decimals), row.expected) << row.value;
    }
}

TEST(FixedText, PrintsInfinitiesAndNanWithTheirSign) {
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(fixedText(inf, 2), "inf");
    EXPECT_EQ(fixedText(-inf, 2), "-inf");
    EXPECT_EQ(fixedText(nan, 2), "nan");
    EXPECT_EQ(fixedText(-nan, 2), "-nan");
}

TEST(FixedText, HoldsTheLongestText) {
    const std::string text = fixedText(-std::numeric_limits<double>::max(), 9);
    EXPECT_EQ(text.size(), 1U + 309U + 1U + 9U);
    EXPECT_EQ(text.size(), std::size_t{FixedText::kMaxLength});  // no byte is left over
    EXPECT_EQ(text.substr(0, 18), "-17976931348623157");
    EXPECT_EQ(text.substr(text.size() - 10), ".000000000");
}

TEST(FixedText, BringsDecimalsIntoRange) {
    EXPECT_EQ(fixedText(1.0, -1), "1");
    EXPECT_EQ(fixedText(1.0, 100), "1.000000000");
}

}  // namespace

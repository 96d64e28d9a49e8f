#include <rfUtils/detail/numberPrefix.h>
#include <support/limits.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

using rfu::detail::decimalPrefix;
using rfu::detail::integerPrefix;
using rfu::test::kInf;

namespace {

TEST(DecimalPrefix, ReadsTheLongestValidPrefix) {
    const struct {
        const char* text;
        double expected;
    } kCases[] = {
        {"", 0.0},
        {"abc", 0.0},
        {"12.5", 12.5},
        {"12,5", 12.0},
        {"  \t\n\v\f\r7", 7.0},
        {"+7.25", 7.25},
        {"-7.25", -7.25},
        {"+-7", 0.0},
        {"-+7", 0.0},
        {"--7", 0.0},
        {"- 7", 0.0},
        {"+", 0.0},
        {"-", 0.0},
        {".", 0.0},
        {"-.", 0.0},
        {".5", 0.5},
        {"-.5", -0.5},
        {"5.", 5.0},
        {".5.5", 0.5},
        {".e3", 0.0},
        {"1e3", 1000.0},
        {"1E+3", 1000.0},
        {"1e-2", 0.01},
        {"1e", 1.0},
        {"1e+", 1.0},
        {"1ex", 1.0},
        {"1_000", 1.0},
        {"0x", 0.0},
        {"0x1F", 31.0},
        {"-0X.8p1", -1.0},
        {"00012", 12.0},
        {"inf", kInf},
        {"-INFINITY", -kInf},
        {"+inf", kInf},
        {"infinite", kInf},
        {"in", 0.0},
        {"1e999", kInf},
        {"-1e999", -kInf},
        {"1e-999", 0.0},
        {"4.9406564584124654e-324", 4.9406564584124654e-324},
        {"2.2250738585072011e-308", 2.2250738585072011e-308},
        {"0.1000000000000000055511151231257827021181583404541015625", 0.1},
    };
    for (const auto& row : kCases) {
        EXPECT_EQ(decimalPrefix(row.text), row.expected) << row.text;
    }
}

/// The number that begins with this byte and ends with "5".
double withByteInFront(char byte) {
    if (byte >= '0' && byte <= '9') {
        return 10.0 * (byte - '0') + 5.0;
    }
    switch (byte) {
        case ' ':
        case '\t':
        case '\n':
        case '\v':
        case '\f':
        case '\r':
        case '+':
            return 5.0;
        case '-':
            return -5.0;
        default:
            return 0.0;
    }
}

TEST(NumberPrefix, TakesNothingInFrontButBlanksSignsAndDigits) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text = {static_cast<char>(byte), '5'};
        const double expected = withByteInFront(text[0]);
        EXPECT_EQ(decimalPrefix(text), byte == '.' ? 0.5 : expected) << byte;
        EXPECT_EQ(integerPrefix(text), expected) << byte;
    }
}

TEST(DecimalPrefix, KeepsTheSignOfZeroAndReadsNan) {
    EXPECT_TRUE(std::signbit(decimalPrefix("-0")));
    EXPECT_FALSE(std::signbit(decimalPrefix("+0")));
    EXPECT_TRUE(std::signbit(decimalPrefix("-1e-999")));
    EXPECT_TRUE(std::isnan(decimalPrefix("nan")));
    EXPECT_TRUE(std::isnan(decimalPrefix("-NaN(12)")));
}

TEST(DecimalPrefix, StopsAtAnEmbeddedNul) {
    EXPECT_EQ(decimalPrefix(std::string_view("1\0002", 3)), 1.0);
    EXPECT_EQ(decimalPrefix(std::string_view("inf\0x", 5)), kInf);
}

TEST(IntegerPrefix, ReadsDigitsAndSaturates) {
    const struct {
        const char* text;
        std::int32_t expected;
    } kCases[] = {
        {"", 0},
        {"x", 0},
        {"2048", 2048},
        {" \t+7", 7},
        {"\t\n\v\f\r7", 7},
        {"\b7", 0},  // control characters next to the blanks
        {"\0167", 0},
        {"\0377", 0},
        {"-7", -7},
        {"+-7", 0},
        {"7.9", 7},
        {"1e3", 1},
        {"0x10", 0},
        {"2147483646", 2147483646},
        {"2147483647", 2147483647},
        {"2147483648", 2147483647},
        {"-2147483647", -2147483647},
        {"-2147483648", -2147483647 - 1},
        {"-2147483649", -2147483647 - 1},
        {"99999999999999999999999999", 2147483647},
        {"-99999999999999999999999999", -2147483647 - 1},
        {"0000000000000000000000000012", 12},
    };
    for (const auto& row : kCases) {
        EXPECT_EQ(integerPrefix(row.text), row.expected) << row.text;
    }
}

}  // namespace

#include "analysis/support/decimals.h"

#include <gtest/gtest.h>

#include <string>

namespace rfu {
namespace {

// Worked out with Python's decimal module.
TEST(Decimals, TakeHalfAwayInAllDigits) {
    const struct {
        const char* value;
        const char* whole;
        const char* rest;
    } kRows[] = {{"500015", "30", "500000"},
                 {"500015", "31", "499999.5"},
                 {"0.1", "0.3", "-0.05"},
                 {"0.30", "0.6", "0"},
                 {"-0", "0", "0"},
                 {"-1.5", "1", "-2"},
                 {"+4649791.125", "30", "4649776.125"},
                 {"5e2", "1e-3", "499.9995"},
                 {"1E+3", "2e2", "900"},
                 {"12.", ".5", "11.75"},
                 {"10.000833333333333", "0.000833333333333", "10.0004166666666665"},
                 {"9007199254740993", "1", "9007199254740992.5"},
                 {"1e-30", "1", "-0.499999999999999999999999999999"},
                 {"100", "-50", "125"}};
    for (const auto& row : kRows) {
        EXPECT_EQ(minusHalf(row.value, row.whole), std::string(row.rest))
            << row.value << ", " << row.whole;
    }
}

TEST(Decimals, RefuseWhatIsNoNumberOrBeyondAllUse) {
    const std::string longest = "1" + std::string(500, '0');
    for (const char* const text : {"", "x", "inf", "nan", "0x10", "1e", "1,5", "0e401", "0e-401",
                                   "0e99999999999", longest.c_str()}) {
        EXPECT_EQ(minusHalf(text, "1"), std::nullopt) << text;
        EXPECT_EQ(minusHalf("1", text), std::nullopt) << text;
        EXPECT_FALSE(isSameDecimal(text, text)) << text;
    }
}

TEST(Decimals, CompareValues) {
    EXPECT_TRUE(isSameDecimal("30", "3.0e1"));
    EXPECT_TRUE(isSameDecimal("+0.50", ".5"));
    EXPECT_TRUE(isSameDecimal("-0", "0"));
    EXPECT_FALSE(isSameDecimal("30", "-30"));
    EXPECT_FALSE(isSameDecimal("0.1", "0.1000000000000000000000000001"));  // one double
}

}  // namespace
}  // namespace rfu

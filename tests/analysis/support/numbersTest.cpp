#include "analysis/support/numbers.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <utility>

using rfu::parseFrequency;
using rfu::parseInteger;
using rfu::parseNumber;
using rfu::splitValue;

TEST(Numbers, ReadsWholeTextsOnly) {
    const struct {
        const char* text;
        std::optional<double> number;
    } kRows[] = {
        {"1.5", 1.5},  {"-1.5", -1.5}, {"+1.5", 1.5},   {" \t1.5\r ", 1.5}, {".5", 0.5},
        {"5.", 5.0},   {"-.5", -0.5},  {"1e3", 1000.0}, {"1E-2", 0.01},     {"007", 7.0},
        {"1e400", {}}, {"", {}},       {" ", {}},       {"+", {}},          {"-", {}},
        {"+-1", {}},   {"--1", {}},    {"++1", {}},     {"inf", {}},        {"-nan", {}},
        {"0x10", {}},  {"1,5", {}},    {"1 5", {}},     {"1.5V", {}},       {"e3", {}},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(parseNumber(row.text), row.number) << row.text;
    }
}

TEST(Numbers, ReadsThoseBeyondADoubleAsInfiniteOrZero) {
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    const struct {
        std::string text;
        std::optional<double> number;
    } kRows[] = {
        {"1e309", kInfinite},
        {"-1e999", -kInfinite},
        {"+2E400", kInfinite},
        {" 1.5e400 ", kInfinite},
        {std::string(400, '9'), kInfinite},
        {"1e-400", 0.0},
        {"-.1e-400", 0.0},
        {"1e308", 1e308},
        {"-2.5 ", -2.5},
        {"4.9e-324", 4.9e-324},
        {"", {}},
        {"inf", {}},
        {"nan", {}},
        {"1e400x", {}},
        {"1e 400", {}},
        {"x", {}},
        {"0x1p9999", {}},
        {"+-1e400", {}},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(rfu::parseNumberOfAnySize(row.text), row.number) << row.text;
    }
}

TEST(Numbers, ReadsNumbersOfOneUnit) {
    const struct {
        const char* text;
        std::optional<double> number;
    } kRows[] = {
        {"-60", -60.0}, {"-60dBm", -60.0}, {" -60 dBm ", -60.0}, {"-60dbm", {}},
        {"-60dB", {}},  {"dBm", {}},       {"-60dBm x", {}},     {"", {}},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(rfu::parseNumberOf("dBm", row.text), row.number) << row.text;
    }
}

TEST(Numbers, ReadsIntegersThatFit) {
    const struct {
        const char* text;
        std::optional<int> number;
    } kRows[] = {
        {"0", 0},    {"-7", -7},  {"+7", 7}, {" 42 ", 42}, {"2147483647", 2147483647},
        {"1.0", {}}, {"1e3", {}}, {"", {}},  {"+-7", {}},  {"2147483648", {}},
        {"7 8", {}}, {"7x", {}},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(parseInteger(row.text), row.number) << row.text;
    }
}

TEST(Numbers, SplitsANumberFromItsUnit) {
    const struct {
        const char* text;
        double value;
        const char* unit;
    } kRows[] = {
        {"-30 dBm", -30.0, "dBm"},  {"5", 5.0, ""},        {"5mV", 5.0, "mV"},
        {" 5  uV/m ", 5.0, "uV/m"}, {"1e3V", 1000.0, "V"}, {"5e", 5.0, "e"},
    };
    for (const auto& row : kRows) {
        const auto split = splitValue(row.text);
        ASSERT_TRUE(split) << row.text;
        EXPECT_EQ(split->value, row.value) << row.text;
        EXPECT_EQ(split->unit, row.unit) << row.text;
    }
    EXPECT_FALSE(splitValue("dBm"));
    EXPECT_FALSE(splitValue("1e999 dBm"));
}

TEST(Numbers, ReadsFrequenciesAsMegahertz) {
    const struct {
        const char* text;
        std::optional<double> megahertz;
    } kRows[] = {
        {"88.1MHz", 88.1}, {"88.1", 88.1},    {"2.4 GHz", 2400.0}, {"100kHz", 0.1}, {"5Hz", 5e-6},
        {"-1MHz", -1},     {"88.1 mHz", {}},  {"88.1MHz x", {}},   {"MHz", {}},     {"", {}},
        {"2.4G", 2400.0},  {"88.1M", 88.1},   {"100 k", 0.1},      {"2.4g", 2400},  {"100K", 0.1},
        {"88.1mhz", 88.1}, {"88.1MHZ", 88.1}, {"100KHz", 0.1},     {"5hz", 5e-6},   {"88.1m", {}},
        {"88.1 m", {}},    {"5H", {}},        {"1T", {}},          {"1e3", 1000},   {"1e3k", 1},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(parseFrequency(row.text), row.megahertz) << row.text;
    }
}

TEST(Numbers, ReadsRangesOfFrequencies) {
    const struct {
        const char* text;
        std::optional<std::pair<double, double>> megahertz;
    } kRows[] = {
        {"88:108", {{88, 108}}},
        {"88M:0.108 GHz", {{88, 108}}},
        {" 100kHz : 1 ", {{0.1, 1}}},
        {"0:1", {{0, 1}}},
        {"88", {}},
        {"88:", {}},
        {":88", {}},
        {"108:88", {}},
        {"88:88", {}},
        {"100:200k", {}},
        {"-1:1", {}},
        {"88:108:110", {}},
        {"88:1e308G", {}},
        {"88-108", {}},
    };
    for (const auto& row : kRows) {
        const auto range = rfu::parseFrequencyRange(row.text);
        ASSERT_EQ(range.has_value(), row.megahertz.has_value()) << row.text;
        if (range) {
            EXPECT_EQ(std::pair(range->low, range->high), *row.megahertz) << row.text;
        }
    }
}

TEST(Numbers, WritesTheShortestTextThatReadsBack) {
    EXPECT_EQ(rfu::ShortestText(0.1).view(), "0.1");
    EXPECT_EQ(rfu::ShortestText(-2.2250738585072014e-308).view(), "-2.2250738585072014e-308");
}

TEST(Numbers, RoundsForPeople) {
    const struct {
        double value;
        const char* text;
    } kRows[] = {
        {0.0, "0"},
        {100.5, "100.5"},
        {97.772727, "97.7727"},
        {-283.38748, "-283.387"},
        {999999.4, "999999"},
        {999999.5, "1000000"},
        {2000000047.77, "2000000048"},
        {-123456789012345.6, "-123456789012346"},
        {999999999999999.6, "1e+15"},
        {1.23456789e30, "1.23457e+30"},
        {0.000123456789, "0.000123457"},
        {0.0000123456789, "1.23457e-05"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(rfu::readableText(row.value), row.text);
    }
}

TEST(Numbers, RoundsFixedTextsToEvenOnTies) {
    EXPECT_EQ(rfu::fixedText(0.125, 2), "0.12");
    EXPECT_EQ(rfu::fixedText(0.375, 2), "0.38");
    EXPECT_EQ(rfu::fixedText(-1.0, 3), "-1.000");
    EXPECT_EQ(rfu::fixedText(1e300, 0).size(), 301U);
}

// Units back to dBm, the helpers that bring prefixed field values to their base unit, and the cut.
#include "hmathProbe.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using rfu::test::kInf;
using rfu::test::kNan;
using rfu::test::Probe;
using rfu::test::text;

namespace {

constexpr double kUnknown = -9999999.9;

/// What is left of a number of thousandths by the three products that end every cut.
double thousandths(int count) {
    return count * 0.1 * 0.1 * 0.1;
}

struct Back {
    const char* name;
    const char* unit;
    double value;
    double expected;
};

TEST(UnitToDbm, LevelsAreCutTowardZeroAfterThreeDecimals) {
    const Back kCases[] = {
        {"dBm is not cut", "dBm", -12.34567, -12.34567},
        {"dBm keeps a zero's sign", "dBm", 0.0, 0.0},
        {"dBV 86: 99.0103", "dBV", 86.0, thousandths(99010)},
        {"dBV 0: 13.0103", "dBV", 0.0, thousandths(13010)},
        {"dBV -20: -6.9897", "dBV", -20.0, thousandths(-6989)},
        {"dBmV 100: 53.0103", "dBmV", 100.0, thousandths(53010)},
        {"dBmV 0: -46.9897", "dBmV", 0.0, thousandths(-46989)},
        {"dBuV 0: -106.9897", "dBuV", 0.0, thousandths(-106989)},
        {"dBuV 77: -29.9897", "dBuV", 77.0, thousandths(-29989)},
        {"dBV just below a thousandth", "dBV", 0.00069, thousandths(13010)},  // 13.01099
        {"dBV just above a thousandth", "dBV", 0.00071, thousandths(13011)},  // 13.01101
        {"dBmV just below", "dBmV", 47.00069, thousandths(10)},               // 0.01099
        {"dBmV just above", "dBmV", 47.00071, thousandths(11)},               // 0.01101
        {"dBuV just below", "dBuV", 107.00069, thousandths(10)},
        {"dBuV just above", "dBuV", 107.00071, thousandths(11)},
        {"saturates", "dBV", 1e7, thousandths(2147483647)},
        {"saturates below", "dBuV", -1e7, thousandths(-2147483647 - 1)},
        {"infinite", "dBmV", kInf, thousandths(2147483647)},
        {"not a number", "dBmV", kNan, 0.0},
    };
    HMath math;
    for (const Back& row : kCases) {
        EXPECT_EQ(math.getUnitTodBm(text(row.unit), row.value), row.expected) << row.name;
    }
    EXPECT_TRUE(std::signbit(math.getUnitTodBm(text("dBm"), -0.0)));
    EXPECT_TRUE(std::isnan(math.getUnitTodBm(text("dBm"), kNan)));
}

TEST(UnitToDbm, TheRoundedImagesOf100DbmArePinned) {
    const Back kCases[] = {
        {"dBV 87", "dBV", 87.0, 100.0},
        {"dBmV 147", "dBmV", 147.0, 100.0},
        {"dBuV 207", "dBuV", 207.0, 100.0},
        {"dBV next above", "dBV", std::nextafter(87.0, 88.0), thousandths(100010)},
        {"dBV next below", "dBV", std::nextafter(87.0, 86.0), thousandths(100010)},
        {"dBmV next above", "dBmV", std::nextafter(147.0, 148.0), thousandths(100010)},
        {"dBmV next below", "dBmV", std::nextafter(147.0, 146.0), thousandths(100010)},
        {"dBuV next above", "dBuV", std::nextafter(207.0, 208.0), thousandths(100010)},
        {"dBuV next below", "dBuV", std::nextafter(207.0, 206.0), thousandths(100010)},
        {"147 of another unit", "dBV", 147.0, thousandths(160010)},
        {"207 of another unit", "dBmV", 207.0, thousandths(160010)},
        {"87 of another unit", "dBuV", 87.0, thousandths(-19989)},
        {"147 dBuV", "dBuV", 147.0, thousandths(40010)},
        {"87 dBmV", "dBmV", 87.0, thousandths(40010)},
        {"dBm has none", "dBm", 87.0, 87.0},
    };
    HMath math;
    for (const Back& row : kCases) {
        EXPECT_EQ(math.getUnitTodBm(text(row.unit), row.value), row.expected) << row.name;
    }
}

// 20 lg(U / 1 mV) - 46.9897
constexpr double kZeroCut = -2147483648.0 * 0.1 * 0.1 * 0.1;
const Back kVolts[] = {
    {"V", "V", 1.0, thousandths(13010)},
    {"V, two", "V", 2.0, thousandths(19030)},  // 66.02060 - 46.9897 = 19.03090
    {"mV", "mV", 1.0, thousandths(-46989)},
    {"uV", "\u00B5V", 1.0, thousandths(-106989)},
    {"nV", "nV", 1.0, thousandths(-166989)},
    {"pV", "pV", 1.0, thousandths(-226989)},
    {"zero", "V", 0.0, kZeroCut},
    {"negative", "mV", -1.0, 0.0},
    {"infinite", "pV", kInf, thousandths(2147483647)},
    {"not a number", "nV", kNan, 0.0},
};

// 10 lg(P / 1 W) + 30
const Back kWatts[] = {
    {"W", "W", 1.0, 30.0},
    {"W, two", "W", 2.0, thousandths(33010)},
    {"mW", "mW", 1.0, 0.0},
    {"mW, a half", "mW", 0.5, thousandths(-3010)},
    // times 1e-06: 0.9999999999999996 W, log10 -1.93e-16; divided by 1e6 it would be 30
    {"uW, just below a watt", "\u00B5W", 999999.99999999965, thousandths(29999)},
    {"uW, two", "\u00B5W", 2.0, thousandths(-26989)},
    {"nW, two", "nW", 2.0, thousandths(-56989)},
    {"pW, two", "pW", 2.0, thousandths(-86989)},
    {"zero", "W", 0.0, kZeroCut},
    {"negative", "mW", -1.0, 0.0},
    {"infinite", "pW", kInf, thousandths(2147483647)},
    {"not a number", "nW", kNan, 0.0},
};

TEST(UnitToDbm, VoltsAndWatts) {
    HMath math;
    for (const Back& row : kVolts) {
        EXPECT_EQ(math.getVoltTodBm(text(row.unit), row.value), row.expected) << row.name;
        EXPECT_EQ(math.getUnitTodBm(text(row.unit), row.value), row.expected) << row.name;
        EXPECT_EQ(math.getWattTodBm(text(row.unit), row.value), 0.0) << row.name;
    }
    for (const Back& row : kWatts) {
        EXPECT_EQ(math.getWattTodBm(text(row.unit), row.value), row.expected) << row.name;
        EXPECT_EQ(math.getUnitTodBm(text(row.unit), row.value), row.expected) << row.name;
        EXPECT_EQ(math.getVoltTodBm(text(row.unit), row.value), 0.0) << row.name;
    }
}

TEST(UnitToDbm, AnyOtherUnitIsUnknown) {
    const char* const kNames[] = {
        "",        "fV",     "fW",     "aW",     "zW",     "yW",      "uV",    "uW",
        "\u03BCV", "v",      "w",      "kW",     "MV",     "dbm",     "dBm ",  "dBuv",
        "V ",      "dBuV/m", "dBmV/m", "dBV/m",  "V/m",    "mV/m",    "W/m^2", "uW/m^2",
        "dBm/m^2", "A/m",    "dBA/m",  "W/cm^2", "w/cm^2", "dBW/m^2",
    };
    HMath math;
    for (const char* name : kNames) {
        EXPECT_EQ(math.getUnitTodBm(text(name), 10.0), kUnknown) << name;
        EXPECT_EQ(math.getVoltTodBm(text(name), 10.0), 0.0) << name;
        EXPECT_EQ(math.getWattTodBm(text(name), 10.0), 0.0) << name;
    }
    EXPECT_EQ(math.getVoltTodBm(text("dBm"), 10.0), 0.0);
    EXPECT_EQ(math.getWattTodBm(text("dBV"), 87.0), 0.0);
}

TEST(FieldBaseUnit, TakesThePrefixAway) {
    HMath math;
    const struct {
        const char* prefix;
        double factor;
    } kPrefixes[] = {{"", 1.0}, {"m", 0.001}, {"u", 1e-06}, {"n", 1e-09}, {"p", 1e-12}};
    for (const auto& row : kPrefixes) {
        const QString voltPerMetre = text(row.prefix) + text("V/m");
        const QString wattPerSquareMetre = text(row.prefix) + text("W/m^2");
        EXPECT_EQ(math.getVoltmtodBm(voltPerMetre, 2.5), 2.5 * row.factor) << row.prefix;
        EXPECT_EQ(math.getVoltmtodBm(voltPerMetre, -1.23456789), -1.23456789 * row.factor);
        EXPECT_EQ(math.getVoltmtodBm(wattPerSquareMetre, 2.5), 0.0) << row.prefix;
        EXPECT_EQ(math.getWattmmTodBm(wattPerSquareMetre, 2.5), 2.5 * row.factor) << row.prefix;
        EXPECT_EQ(math.getWattmmTodBm(wattPerSquareMetre, -1.23456789), -1.23456789 * row.factor);
        EXPECT_EQ(math.getWattmmTodBm(voltPerMetre, 2.5), 0.0) << row.prefix;
    }
    for (const char* name : {"", "V", "W", "\u00B5V/m", "kV/m", "fV/m", "A/m", "dBV/m", "W/cm^2",
                             "w/cm^2", "\u00B5W/m^2", "fW/m^2", "kW/m^2", "v/m", "w/m^2"}) {
        EXPECT_EQ(math.getVoltmtodBm(text(name), 2.5), 0.0) << name;
        EXPECT_EQ(math.getWattmmTodBm(text(name), 2.5), 0.0) << name;
    }
}

TEST(UnitToDbm, LeavesTheUnitAlone) {
    Probe probe;
    for (const char* name : {"dBm", "dBV", "V", "W", "V/m", "W/m^2", "dBuV/m", "unknown"}) {
        probe.math.getUnitTodBm(text(name), 1.0);
        probe.math.getFieldTodBm(text(name), 1.0, 100.0, 0.0);
        probe.math.getVoltTodBm(text(name), 1.0);
        probe.math.getWattTodBm(text(name), 1.0);
        probe.math.getVoltmtodBm(text(name), 1.0);
        probe.math.getWattmmTodBm(text(name), 1.0);
    }
    probe.math.mathRoundOff(1.5, 1);
    EXPECT_EQ(probe.unit(), "");
    EXPECT_EQ(probe.signalCount, 0);
}

TEST(MathRoundOff, CutsTowardZero) {
    const struct {
        double value;
        int digits;
        double expected;
    } kCases[] = {
        {1.23456, 3, 1234 * 0.1 * 0.1 * 0.1},
        {-1.23456, 3, -1234 * 0.1 * 0.1 * 0.1},
        {1.9999, 0, 1.0},
        {-1.9999, 0, -1.0},
        {0.9999, 0, 0.0},
        {0.3, 1, 0.30000000000000004},  // 3 * 0.1, not 3 / 10
        {0.99, 1, 0.9},
        {12.345, 2, 1234 * 0.1 * 0.1},
        {2147483647.9, 0, 2147483647.0},
        {2147483648.0, 0, 2147483647.0},
        {-2147483649.0, 0, -2147483648.0},
        {2147483.6, 3, 2147483600 * 0.1 * 0.1 * 0.1},
        {1e9, 3, 2147483647 * 0.1 * 0.1 * 0.1},
        {-1e9, 3, -2147483648.0 * 0.1 * 0.1 * 0.1},
        {kInf, 3, 2147483647 * 0.1 * 0.1 * 0.1},
        {-kInf, 0, -2147483648.0},
        {kNan, 3, 0.0},
        {1.9, -1, 1.0},
        {1.9, -2147483647 - 1, 1.0},
    };
    HMath math;
    for (const auto& row : kCases) {
        EXPECT_EQ(math.mathRoundOff(row.value, row.digits), row.expected)
            << row.value << ", " << row.digits;
    }
    EXPECT_FALSE(std::signbit(math.mathRoundOff(-0.5, 0)));
}

/// The definition, step by step.
double plainCut(double value, int digits) {
    for (int i = 0; i < digits; ++i) {
        value *= 10.0;
    }
    double whole = std::isnan(value) ? 0.0 : std::trunc(value);
    whole = std::fmin(std::fmax(whole, -2147483648.0), 2147483647.0) + 0.0;
    for (int i = 0; i < digits; ++i) {
        whole *= 0.1;
    }
    return whole;
}

TEST(MathRoundOff, ManyDigitsEndWhereTheValueSettles) {
    const double kValues[] = {0.0,     -0.0,  1.5,    -1.5, 0.3,   1e-300, 5e-324,
                              -5e-324, 1e300, -1e308, kInf, -kInf, kNan,   123.456};
    HMath math;
    for (const double value : kValues) {
        for (int digits = 0; digits < 1100; digits += digits < 30 ? 1 : 13) {
            const double expected = plainCut(value, digits);
            const double actual = math.mathRoundOff(value, digits);
            ASSERT_EQ(actual, expected) << value << ", " << digits;
            ASSERT_EQ(std::signbit(actual), std::signbit(expected)) << value << ", " << digits;
        }
        EXPECT_EQ(math.mathRoundOff(value, std::numeric_limits<int>::max()), 0.0) << value;
    }
}

}  // namespace

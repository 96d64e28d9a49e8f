// dBm to levels, volts and watts. Expected texts by hand from the formulas.
#include "hmathProbe.h"

#include <gtest/gtest.h>

#include <string>

using rfu::test::kInf;
using rfu::test::kNan;
using rfu::test::Probe;
using rfu::test::text;
using rfu::test::utf8;

namespace {

struct LevelCase {
    const char* name;
    const char* unit;
    double dBm;
    const char* number;
    const char* unitShown;
};

void expectLevel(const LevelCase& row) {
    SCOPED_TRACE(row.name);
    Probe probe;
    probe.math.setUnit(text(row.unitShown));  // a unit that stays is announced all the same
    probe.signalCount = 0;
    EXPECT_EQ(utf8(probe.math.getdBmToUnit(text(row.unit), row.dBm, false)), row.number);
    EXPECT_EQ(probe.unit(), row.unitShown);
    EXPECT_EQ(probe.signalCount, 1);
    probe.math.setUnit(text("before"));
    probe.signalCount = 0;
    EXPECT_EQ(utf8(probe.math.getdBmToUnit(text(row.unit), row.dBm, true)),
              std::string(row.number) + " " + row.unitShown);
    EXPECT_EQ(probe.signalCount, 1);
    EXPECT_EQ(probe.unitAtSignal, row.unitShown);
}

TEST(DbmToUnit, Levels) {
    const LevelCase kCases[] = {
        {"dBm", "dBm", -30.0, "-30.0", "dBm"},
        {"dBm, a tie goes away from zero", "dBm", 0.25, "0.3", "dBm"},
        {"dBm, a negative tie too", "dBm", -0.25, "-0.3", "dBm"},
        {"dBm, a double below the tie", "dBm", 0.35, "0.3", "dBm"},  // 0.34999999999999997780
        {"dBm, a small negative keeps its sign", "dBm", -0.01, "-0.0", "dBm"},
        {"dBm, large", "dBm", 1e22, "10000000000000000000000.0", "dBm"},
        {"dBV", "dBV", 0.0, "-13.0", "dBV"},
        {"dBV just above the tie", "dBV", 0.06031, "-12.9", "dBV"},  // -12.94999
        {"dBV just below the tie", "dBV", 0.06029, "-13.0", "dBV"},  // -12.95001
        {"dBmV", "dBmV", 0.0, "47.0", "dBmV"},
        {"dBmV just above the tie", "dBmV", -0.03969, "47.0", "dBmV"},  // 46.95001
        {"dBmV just below the tie", "dBmV", -0.03971, "46.9", "dBmV"},  // 46.94999
        {"dBuV", "dBuV", 0.0, "107.0", "dBuV"},
        {"dBuV at -30", "dBuV", -30.0, "77.0", "dBuV"},
        {"dBuV just above the tie", "dBuV", -0.03969, "107.0", "dBuV"},  // 106.95001
        {"dBuV just below the tie", "dBuV", -0.03971, "106.9", "dBuV"},  // 106.94999
        // sums that are exact ties in double: 394.25
        {"dBV, a tie goes away from zero", "dBV", 407.2603, "394.3", "dBV"},
        {"dBmV, a tie goes away from zero", "dBmV", 347.2603, "394.3", "dBmV"},
        {"dBuV, a tie goes away from zero", "dBuV", 287.2603, "394.3", "dBuV"},
        {"infinite", "dBuV", kInf, "inf", "dBuV"},
        {"minus infinite", "dBV", -kInf, "-inf", "dBV"},
        {"not a number", "dBm", kNan, "nan", "dBm"},
    };
    for (const LevelCase& row : kCases) {
        expectLevel(row);
    }
}

TEST(DbmToUnit, AnyOtherUnitIsDroppedForDbm) {
    const char* const kNames[] = {
        "",        "mV",     "\u00B5V",   "nV",      "pV",       "fV",    "mW",
        "\u00B5W", "yW",     "dBuV/m",    "V/m",     "W/m^2",    "A/m",   "dBm/m^2",
        "W/cm^2",  "w/cm^2", "dbm",       "DBM",     "dBv",      "dBuv",  "v",
        "w",       "uV",     "\u03BCV",   "dBm ",    " dBuV",    "dBuV ", "dB",
        "dBmV/m",  "dBuV\t", "dB\u00B5V", "V\u200B", "dBuVdBuV", "kW",    "dBuV\n",
    };
    for (const char* name : kNames) {
        expectLevel({name, name, 10.0, "10.0", "dBm"});
        expectLevel({name, name, -0.25, "-0.3", "dBm"});
    }
}

TEST(DbmToUnit, AUnitWithAnEmbeddedNulIsAnother) {
    Probe probe;
    EXPECT_EQ(utf8(probe.math.getdBmToUnit(QString(QStringLiteral("dBuV")) + QChar(0), 1.0, true)),
              "1.0 dBm");
}

// U[mV] = 10^((P + 46.9897)/20): 223.607 mV at 0 dBm, ten times that for every 20 dB
TEST(DbmToUnit, VoltsChooseTheirPrefix) {
    const LevelCase kCases[] = {
        {"7.07107 V", "V", 30.0, "7.07", "V"},
        {"223.607 mV", "V", 0.0, "0.22", "V"},
        {"10.0112 mV: volts from 0.01 on", "V", -26.98, "0.01", "V"},
        // 10^1 comes out as 10.000000000000002, which reaches 10
        {"exactly 10 mV", "V", -26.9897, "0.01", "V"},
        {"exactly 10 uV", "V", -86.9897, "0.01", "mV"},
        {"9.99966 mV", "V", -26.99, "10.00", "mV"},
        {"0.707107 mV", "V", -50.0, "0.71", "mV"},
        {"0.01001 mV", "V", -86.98, "0.01", "mV"},
        {"9.99966 uV", "V", -86.99, "10.00", "\u00B5V"},
        {"0.707107 uV", "V", -110.0, "0.71", "\u00B5V"},
        {"9.99966 nV", "V", -146.99, "10.00", "nV"},
        {"0.707107 nV", "V", -170.0, "0.71", "nV"},
        {"9.99966 pV", "V", -206.99, "10.00", "pV"},
        {"0.707107 pV", "V", -230.0, "0.71", "pV"},
        {"9.99966 fV", "V", -266.99, "10.00", "fV"},
        {"0.707107 fV", "V", -290.0, "0.71", "fV"},
        {"0.01001 fV: the last that has a prefix", "V", -326.98, "0.01", "fV"},
        {"0.00999 fV: volts again", "V", -326.99, "0.00", "V"},
        {"nothing", "V", -kInf, "0.00", "V"},
        {"99.88 V", "V", 53.0, "99.88", "V"},
        {"100.11 V: kilovolts under the label V", "V", 53.02, "0.10", "V"},
        {"315.9 V", "V", 63.0, "0.32", "V"},
        {"22.3607 kV: there is no second step", "V", 100.0, "22.36", "V"},
        {"infinite", "V", kInf, "inf", "V"},
        {"not a number", "V", kNan, "nan", "V"},
        {"not a number, with a sign", "V", -kNan, "-nan", "V"},
    };
    for (const LevelCase& row : kCases) {
        expectLevel(row);
        Probe probe;
        EXPECT_EQ(utf8(probe.math.getdBmToVolt(row.dBm, true)),
                  std::string(row.number) + " " + row.unitShown);
        EXPECT_EQ(utf8(probe.math.getdBmToVolt(row.dBm, false)), row.number);
        EXPECT_EQ(probe.unit(), row.unitShown);
        EXPECT_EQ(probe.signalCount, 2);
    }
}

// P[W] = 10^((P - 30)/10)
TEST(DbmToUnit, WattsChooseTheirPrefix) {
    const LevelCase kCases[] = {
        {"1 W", "W", 30.0, "1.00", "W"},
        {"977.2 W", "W", 59.9, "977.24", "W"},
        {"1 kW under the label W", "W", 60.0, "1.00", "W"},
        {"997.7 kW", "W", 89.99, "997.70", "W"},
        {"1 MW under the label W", "W", 90.0, "1.00", "W"},
        {"1000 MW: there is no third step", "W", 120.0, "1000.00", "W"},
        {"0.010023 W", "W", 10.01, "0.01", "W"},
        {"9.977 mW", "W", 9.99, "9.98", "mW"},
        {"1 mW", "W", 0.0, "1.00", "mW"},
        {"0.1 mW", "W", -10.0, "0.10", "mW"},
        {"0.1 uW, not 100 nW", "W", -40.0, "0.10", "\u00B5W"},
        {"1 uW", "W", -30.0, "1.00", "\u00B5W"},
        {"1 nW", "W", -60.0, "1.00", "nW"},
        {"1 pW", "W", -90.0, "1.00", "pW"},
        {"1 fW", "W", -120.0, "1.00", "fW"},
        {"1 aW", "W", -150.0, "1.00", "aW"},
        {"1 zW", "W", -180.0, "1.00", "zW"},
        {"1 yW", "W", -210.0, "1.00", "yW"},
        {"0.010023 yW: the last that has a prefix", "W", -229.99, "0.01", "yW"},
        {"0.009977 yW: watts again", "W", -230.01, "0.00", "W"},
        {"nothing", "W", -kInf, "0.00", "W"},
        {"infinite", "W", kInf, "inf", "W"},
        {"not a number", "W", kNan, "nan", "W"},
        {"not a number, with a sign", "W", -kNan, "-nan", "W"},
    };
    for (const LevelCase& row : kCases) {
        expectLevel(row);
        Probe probe;
        EXPECT_EQ(utf8(probe.math.getdBmToWatt(row.dBm, true)),
                  std::string(row.number) + " " + row.unitShown);
        EXPECT_EQ(utf8(probe.math.getdBmToWatt(row.dBm, false)), row.number);
        EXPECT_EQ(probe.unit(), row.unitShown);
        EXPECT_EQ(probe.signalCount, 2);
    }
}

// 10^x is exp(2.302585092994046 x), and 2.302585092994046 is a little more than ln 10: 10^-2 comes
// out as 0.009999999999999995, which does not reach 0.01.
TEST(DbmToUnit, ExactlyAHundredthOfAUnitTakesTheNextSmallerOne) {
    const LevelCase kCases[] = {
        {"10 dBm", "W", 10.0, "10.00", "mW"},     {"-20 dBm", "W", -20.0, "10.00", "\u00B5W"},
        {"-50 dBm", "W", -50.0, "10.00", "nW"},   {"-80 dBm", "W", -80.0, "10.00", "pW"},
        {"-110 dBm", "W", -110.0, "10.00", "fW"}, {"-140 dBm", "W", -140.0, "10.00", "aW"},
        {"-170 dBm", "W", -170.0, "10.00", "zW"}, {"-200 dBm", "W", -200.0, "10.00", "yW"},
        {"-230 dBm", "W", -230.0, "0.00", "W"},
    };
    for (const LevelCase& row : kCases) {
        expectLevel(row);
    }
    HMath math;
    EXPECT_EQ(utf8(math.getDBmToW(10.0)), "10.00 m");
    EXPECT_EQ(utf8(math.getDBmToW(-20.0)), "10.00 u");
}

// The tenth is a factor and so are the kilowatt and the megawatt: divisions round otherwise.
TEST(DbmToUnit, WattsAreFormedWithProducts) {
    HMath math;
    // (P - 30) * 0.1 is -5 and falls to the next unit; (P - 30) / 10 is -4.999999999999999
    EXPECT_EQ(utf8(math.getdBmToWatt(-19.999999999999993, true)), "10.00 \u00B5W");
    EXPECT_EQ(utf8(math.getDBmToW(-19.999999999999993)), "10.00 u");
    // 100000000000002211840 W; doubles near the megawatts lie a sixty-fourth apart
    EXPECT_EQ(utf8(math.getdBmToWatt(230.00000000000006, false)), "100000000000002.20");
    EXPECT_EQ(utf8(math.getDBmToW(230.00000000000006)), "100000000000002.20 M");
}

TEST(DbmToLetter, HasThePrefixInTheTextAndLeavesTheUnitAlone) {
    const struct {
        double dBm;
        const char* expected;
    } kCases[] = {
        {30.0, "1.00 "},     {10.01, "0.01 "},   {9.99, "9.98 m"},     {0.0, "1.00 m"},
        {-40.0, "0.10 u"},   {-30.0, "1.00 u"},  {-60.0, "1.00 n"},    {-90.0, "1.00 p"},
        {-120.0, "1.00 f"},  {-150.0, "1.00 a"}, {-180.0, "1.00 z"},   {-210.0, "1.00 y"},
        {-229.99, "0.01 y"}, {-230.01, "0.00 "}, {59.9, "977.24 "},    {60.0, "1.00 k"},
        {89.99, "997.70 k"}, {90.0, "1.00 M"},   {120.0, "1000.00 M"}, {kInf, "inf M"},
        {-kInf, "0.00 "},    {kNan, "nan "},     {-kNan, "-nan "},
    };
    Probe probe;
    probe.math.setUnit(text("before"));
    for (const auto& row : kCases) {
        EXPECT_EQ(utf8(probe.math.getDBmToW(row.dBm)), row.expected) << row.dBm;
    }
    EXPECT_EQ(probe.unit(), "before");
    EXPECT_EQ(probe.signalCount, 1);
}

}  // namespace

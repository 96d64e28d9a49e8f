// Field units in both directions. Expected texts by hand: at 100 MHz and 0 dBi the antenna
// correction is K = 40 - 29.8 = 10.2 dB, and 20 lg(100) = 40.
#include "hmathProbe.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

using rfu::test::kInf;
using rfu::test::kNan;
using rfu::test::Probe;
using rfu::test::text;
using rfu::test::utf8;

namespace {

struct FieldCase {
    const char* name;
    const char* unit;
    double dBm;
    double fCenter;
    double fGain;
    const char* number;
    const char* unitShown;
};

void expectField(const FieldCase& row) {
    SCOPED_TRACE(row.name);
    for (const bool isUnitText : {false, true}) {
        Probe probe;
        probe.math.setUnit(text(row.unitShown));  // a unit that stays is announced all the same
        probe.signalCount = 0;
        const QString shown =
            probe.math.getdBmToField(text(row.unit), row.dBm, row.fCenter, row.fGain, isUnitText);
        EXPECT_EQ(utf8(shown),
                  isUnitText ? std::string(row.number) + " " + row.unitShown : row.number);
        EXPECT_EQ(probe.unit(), row.unitShown);
        EXPECT_EQ(probe.signalCount, 1);
    }
}

TEST(DbmToField, EveryUnit) {
    const FieldCase kCases[] = {
        {"dBuV/m", "dBuV/m", -30.0, 100.0, 0.0, "87.20", "dBuV/m"},
        {"dBmV/m", "dBmV/m", -30.0, 100.0, 0.0, "27.20", "dBmV/m"},
        {"dBV/m", "dBV/m", -30.0, 100.0, 0.0, "-32.80", "dBV/m"},
        {"V/m: 10^(-32.8/20) = 0.022909", "V/m", -30.0, 100.0, 0.0, "0.02", "V/m"},
        {"V/m: 0.0022909", "V/m", -50.0, 100.0, 0.0, "2.29", "mV/m"},
        {"V/m: 2.2909e-5", "V/m", -90.0, 100.0, 0.0, "0.02", "mV/m"},
        {"V/m: 2.2909e-6", "V/m", -110.0, 100.0, 0.0, "2.29", "uV/m"},
        {"V/m: 22909", "V/m", 90.0, 100.0, 0.0, "22.91", "kV/m"},
        {"W/m^2: 5.2481e-4 / 376.99 = 1.3921e-6", "W/m^2", -30.0, 100.0, 0.0, "1.39", "uW/m^2"},
        {"W/m^2: 1.3921", "W/m^2", 30.0, 100.0, 0.0, "1.39", "W/m^2"},
        {"dBm/m^2: -32.8 - 25.7633 + 30", "dBm/m^2", -30.0, 100.0, 0.0, "-28.56", "dBm/m^2"},
        {"dBW/m^2: -30 - 38.76 + 10.2", "dBW/m^2", -30.0, 100.0, 0.0, "-58.56", "dBW/m^2"},
        {"A/m: 22908.7 / 3.77e8 = 6.0766e-5", "A/m", -30.0, 100.0, 0.0, "0.06", "mA/m"},
        {"A/m: 6.0766e-6", "A/m", -50.0, 100.0, 0.0, "6.08", "uA/m"},
        {"dBA/m: -30 - 64.53 + 10.2", "dBA/m", -30.0, 100.0, 0.0, "-84.33", "dBA/m"},
        {"W/cm^2: 1.3921e-10", "W/cm^2", -30.0, 100.0, 0.0, "0.14", "nW/cm^2"},
        {"W/cm^2: 13921", "W/cm^2", 110.0, 100.0, 0.0, "13.92", "kW/cm^2"},
        {"a gain lowers the field", "dBuV/m", -30.0, 100.0, 6.5, "80.70", "dBuV/m"},
        {"ten times the frequency: 20 dB", "dBuV/m", -30.0, 1000.0, 0.0, "107.20", "dBuV/m"},
        {"1 MHz: K is the constant alone", "dBV/m", 0.0, 1.0, 0.0, "-42.80", "dBV/m"},
        // K = 0 at 1 MHz and -29.8 dBi
        {"a tie goes away from zero", "dBuV/m", 0.125, 1.0, -29.8, "107.13", "dBuV/m"},
        {"a negative tie too", "dBV/m", 0.125, 1.0, -29.8, "-12.88", "dBV/m"},
        // Doubles near 1e17 lie 16 apart, which shows the order of the sums:
        // (1e17 + 107) + 10.2 -> (1e17 + 112) + 10.2 -> 1e17 + 128
        {"the offset joins the level first", "dBuV/m", 1e17, 100.0, 0.0, "100000000000000128.00",
         "dBuV/m"},
        // 40 + (-29.8 - 1e17) -> 40 - 1e17 - 32 -> -1e17 (a tie to even), and 107 more -> 112
        {"the gain joins the constant first", "dBuV/m", 0.0, 100.0, 1e17, "-99999999999999888.00",
         "dBuV/m"},
        {"no frequency", "dBuV/m", -30.0, 0.0, 0.0, "-inf", "dBuV/m"},
        {"a negative frequency", "dBuV/m", -30.0, -1.0, 0.0, "nan", "dBuV/m"},
        {"not a level", "dBm/m^2", kNan, 100.0, 0.0, "nan", "dBm/m^2"},
        {"an infinite level", "dBA/m", kInf, 100.0, 0.0, "inf", "dBA/m"},
        {"an infinite field", "V/m", kInf, 100.0, 0.0, "inf", "GV/m"},
        {"beyond single precision", "V/m", 900.0, 100.0, 0.0, "inf", "GV/m"},
        // The factor comes before the rounding to single precision: 10^(826.98/20) alone is beyond it
        {"a field near the largest single", "A/m", 709.78, 100.0, 0.0, "592459447706085494882304.0",
         "GA/m"},
        // 6.977002e17 and 8.783525e17; singles lie 2^36 apart there. From singles as
        // factors the first would end in 288.0, from a rounded ratio the second in 576.0.
        {"a density, rounded once", "W/m^2", 207.0, 100.0, 0.0, "697700224.0", "GW/m^2"},
        {"another density, rounded once", "W/m^2", 208.0, 100.0, 0.0, "878352512.0", "GW/m^2"},
        {"not a field", "V/m", kNan, 100.0, 0.0, "", ""},
        {"a field of no frequency", "W/m^2", -30.0, -1.0, 0.0, "", ""},
        {"below every prefix", "V/m", -600.0, 100.0, 0.0, "", ""},
    };
    for (const FieldCase& row : kCases) {
        expectField(row);
    }
}

TEST(DbmToField, AnyOtherUnitShowsZeroAndIsStoredAsGiven) {
    for (const char* name :
         {"",        "dBm",    "dBV",     "dBuV",   "V",      "W",         "mV",
          "mV/m",    "uV/m",   "pV/m",    "mW/m^2", "uW/m^2", "mA/m",      "w/cm^2",
          "mW/cm^2", "dBuv/m", "dBuV/m ", "DBUV/M", "v/m",    "\u00B5V/m", "anything"}) {
        expectField({name, name, -30.0, 100.0, 0.0, "0.00", name});
        expectField({name, name, kNan, -1.0, 0.0, "0.00", name});
    }
}

TEST(DbmToField, AFieldOfZeroLeavesTheUnitAlone) {
    for (const char* name : {"V/m", "W/m^2", "A/m", "W/cm^2"}) {
        Probe probe;
        probe.math.setUnit(text("before"));
        for (const double dBm : {-kInf, -2000.0}) {  // 1e-100 V/m is 0 in single precision
            EXPECT_EQ(utf8(probe.math.getdBmToField(text(name), dBm, 100.0, 0.0, true)), "");
        }
        EXPECT_EQ(utf8(probe.math.getdBmToField(text(name), -30.0, 0.0, 0.0, true)), "");
        EXPECT_EQ(probe.unit(), "before");
        EXPECT_EQ(probe.signalCount, 1);
    }
}

struct Prefixed {
    const char* name;
    float value;
    const char* number;
    const char* prefix;
};

TEST(FieldChangeUnit, PutsThePrefixInFrontOfAnyUnit) {
    const Prefixed kCases[] = {
        {"giga, one decimal", 2.5e9F, "2.5", "G"},
        {"giga from 1e9", 1e9F, "1.0", "G"},
        {"giga has no upper end", 1e15F, "999999.9", "G"},
        {"mega, one decimal", 2.55e8F, "255.0", "M"},
        {"mega from 1e6", 1e6F, "1.0", "M"},
        {"mega below 1e9", 999999936.0F, "1000.0", "M"},
        {"kilo, two decimals", 2500.0F, "2.50", "k"},
        {"kilo from 1000", 1000.0F, "1.00", "k"},
        {"kilo below 1e6", 999999.94F, "1000.00", "k"},
        {"none", 999.99F, "999.99", ""},
        {"none, 1", 1.0F, "1.00", ""},
        {"none, just above 0.01", 0.010000001F, "0.01", ""},
        // the single nearest to 0.01 is 0.00999999977648
        {"milli: 0.01 itself", 0.01F, "10.00", "m"},
        {"milli", 0.00229F, "2.29", "m"},
        {"milli from 1e-5", 1.001e-5F, "0.01", "m"},
        {"micro below", 0.999e-5F, "9.99", "u"},
        {"micro from 1e-8", 1.001e-8F, "0.01", "u"},
        {"nano", 0.999e-8F, "9.99", "n"},
        {"nano from 1e-11", 1.001e-11F, "0.01", "n"},
        {"pico", 0.999e-11F, "9.99", "p"},
        {"pico from 1e-14", 1.001e-14F, "0.01", "p"},
        {"femto", 0.999e-14F, "9.99", "f"},
        {"femto from 1e-17", 1.001e-17F, "0.01", "f"},
        {"atto", 0.999e-17F, "9.99", "a"},
        {"atto from 1e-20", 1.001e-20F, "0.01", "a"},
        {"zepto", 0.999e-20F, "9.99", "z"},
        {"zepto from 1e-23", 1.001e-23F, "0.01", "z"},
        {"yocto", 0.999e-23F, "9.99", "y"},
        {"yocto from 1e-26", 1.001e-26F, "0.01", "y"},
        {"a tie goes to even", 0.125F, "0.12", ""},
        {"the other tie goes to even too", 0.375F, "0.38", ""},
        {"infinite", std::numeric_limits<float>::infinity(), "inf", "G"},
    };
    for (const Prefixed& row : kCases) {
        SCOPED_TRACE(row.name);
        for (const char* unit : {"V/m", "W/m^2", "A/m", "W/cm^2", "", "xyz"}) {
            for (const bool negative : {false, true}) {
                Probe probe;
                const float value = negative ? -row.value : row.value;
                std::string number = negative ? "-" : "";
                number += row.number;
                std::string unitShown = row.prefix;
                unitShown += unit;
                EXPECT_EQ(utf8(probe.math.getFieldChangeUnit(text(unit), value, false)), number);
                EXPECT_EQ(probe.unit(), unitShown);
                EXPECT_EQ(probe.signalCount, 1);
                number += " ";
                number += unitShown;
                EXPECT_EQ(utf8(probe.math.getFieldChangeUnit(text(unit), value, true)), number);
                EXPECT_EQ(probe.signalCount, 2);
            }
        }
    }
}

TEST(FieldChangeUnit, RoundsProductsToSinglePrecision) {
    HMath math;
    // 0.045 as a single is 0.0450000018: above the tie, where the double lies below it
    EXPECT_EQ(utf8(math.getFieldChangeUnit(text("V/m"), 0.045F, false)), "0.05");
    // 1e15 as a single is 999999986991104, 1e-9 is 9.99999971718e-10; singles near their product,
    // 999999.9587, lie a sixteenth apart. In double it would read 1000000.0.
    EXPECT_EQ(utf8(math.getFieldChangeUnit(text("V/m"), 1e15F, false)), "999999.9");
    // 8.6499996185 as a single; times the double 1e-6 it would be 8.65 and read 8.7
    EXPECT_EQ(utf8(math.getFieldChangeUnit(text("V/m"), 8650000.0F, true)), "8.6 MV/m");
}

TEST(FieldChangeUnit, TooSmallOrNoNumberGivesNeitherNumberNorUnit) {
    for (const float value : {0.999e-26F, 1e-30F, -1e-30F, std::numeric_limits<float>::denorm_min(),
                              std::numeric_limits<float>::quiet_NaN()}) {
        Probe probe;
        probe.math.setUnit(text("before"));
        EXPECT_EQ(utf8(probe.math.getFieldChangeUnit(text("V/m"), value, false)), "");
        EXPECT_EQ(probe.unit(), "");
        EXPECT_EQ(utf8(probe.math.getFieldChangeUnit(text("V/m"), value, true)), " ");
        EXPECT_EQ(probe.signalCount, 3);
    }
}

TEST(FieldChangeUnit, ZeroGivesNothingAtOnce) {
    Probe probe;
    probe.math.setUnit(text("before"));
    for (const float value : {0.0F, -0.0F}) {
        for (const bool isUnitText : {false, true}) {
            EXPECT_EQ(utf8(probe.math.getFieldChangeUnit(text("V/m"), value, isUnitText)), "");
        }
    }
    EXPECT_EQ(probe.unit(), "before");
    EXPECT_EQ(probe.signalCount, 1);
}

TEST(FieldToDbm, EveryUnit) {
    const struct {
        const char* unit;
        double value;
        double gain;
        double expected;
    } kCases[] = {
        {"dBuV/m", 87.2, 0.0, -30.0},
        {"dBuV/m", 87.2, 6.5, -23.5},
        {"dBmV/m", 27.2, 0.0, -30.0},
        {"dBV/m", -32.8, 0.0, -30.0},
        {"V/m", 1.0, 0.0, 2.8},
        {"V/m", 1.0, 6.5, 9.3},
        {"mV/m", 1.0, 0.0, -57.2},
        {"uV/m", 1.0, 0.0, -117.2},
        {"nV/m", 1.0, 0.0, -177.2},
        {"pV/m", 1.0, 0.0, -237.2},
        // 10 lg(376.99111843077515) = 25.763311187417585
        {"W/m^2", 1.0, 0.0, 28.563311187417585},
        {"W/m^2", 1.0, 6.5, 35.063311187417585},
        {"mW/m^2", 1.0, 0.0, -1.436688812582415},
        {"uW/m^2", 1.0, 0.0, -31.436688812582415},
        {"nW/m^2", 1.0, 0.0, -61.436688812582415},
        {"pW/m^2", 1.0, 0.0, -91.436688812582415},
        {"dBm/m^2", 0.0, 0.0, -1.43668881258241},
        {"dBm/m^2", 0.0, 6.5, 5.06331118741759},
        {"dBW/m^2", 0.0, 0.0, 28.56},
        // 20 lg(3.77e8) = 171.526827004115858
        {"A/m", 1.0, 0.0, 54.326827004115858},
        {"A/m", 1.0, 6.5, 60.826827004115858},
        {"dBA/m", 0.0, 0.0, 54.33},
        {"w/cm^2", 1.0, 0.0, 68.563311187417585},
        {"w/cm^2", 1.0, 6.5, 75.063311187417585},
    };
    HMath math;
    for (const auto& row : kCases) {
        EXPECT_NEAR(math.getFieldTodBm(text(row.unit), row.value, 100.0, row.gain), row.expected,
                    1e-12)
            << row.unit;
        // ten times the frequency: 20 dB less
        EXPECT_NEAR(math.getFieldTodBm(text(row.unit), row.value, 1000.0, row.gain),
                    row.expected - 20.0, 1e-12)
            << row.unit;
    }
}

// Doubles near 1e17 lie 16 apart.
TEST(FieldToDbm, AddsInItsOrder) {
    HMath math;
    // ((1e17 - 77.2) + 9) - 20 -> (1e17 - 80) + 9 -> (1e17 - 64) - 20 -> 1e17 - 80
    EXPECT_EQ(math.getFieldTodBm(text("dBuV/m"), 1e17, 10.0, 9.0), 1e17 - 80.0);
    // (1e17 + 42.8) - 20 -> (1e17 + 48) - 20 -> 1e17 + 32
    EXPECT_EQ(math.getFieldTodBm(text("V/m"), 1.0, 10.0, 1e17), 1e17 + 32.0);
    // (70 - 77.2) + 1e17 -> -7.2 + 1e17 -> 1e17; 70 + (1e17 - 77.2) would be 1e17 - 16
    EXPECT_EQ(math.getFieldTodBm(text("dBuV/m"), 70.0, 1.0, 1e17), 1e17);
}

// The prefix goes first: a thousandth of 1e-323, two steps above 0, is 0.
TEST(FieldToDbm, BringsADensityToItsBaseUnitFirst) {
    HMath math;
    EXPECT_EQ(math.getWattmmTodBm(text("mW/m^2"), 1e-323), 0.0);
    EXPECT_EQ(math.getFieldTodBm(text("mW/m^2"), 1e-323, 100.0, 0.0), -kInf);
}

TEST(FieldToDbm, AnyOtherUnitIsUnknown) {
    HMath math;
    for (const char* name :
         {"",     "W/cm^2", "mW/cm^2", "uw/cm^2",   "mA/m",        "uA/m",    "kV/m", "GV/m",
          "fV/m", "kW/m^2", "fW/m^2",  "\u00B5V/m", "\u00B5W/m^2", "dBm",     "dBV",  "dBuV",
          "V",    "mV",     "W",       "mW",        "dBuV/M",      "dBuV/m ", "v/m",  "w/m^2"}) {
        EXPECT_EQ(math.getFieldTodBm(text(name), 1.0, 100.0, 0.0), -9999999.9) << name;
    }
}

TEST(FieldToDbm, ValuesWithoutALogarithm) {
    HMath math;
    for (const char* name : {"V/m", "uV/m", "W/m^2", "nW/m^2", "A/m", "w/cm^2"}) {
        EXPECT_EQ(math.getFieldTodBm(text(name), 0.0, 100.0, 0.0), -kInf) << name;
        EXPECT_TRUE(std::isnan(math.getFieldTodBm(text(name), -1.0, 100.0, 0.0))) << name;
        EXPECT_EQ(math.getFieldTodBm(text(name), 1.0, 0.0, 0.0), kInf) << name;
        EXPECT_TRUE(std::isnan(math.getFieldTodBm(text(name), 1.0, -1.0, 0.0))) << name;
    }
    EXPECT_EQ(math.getFieldTodBm(text("dBA/m"), 1.0, 0.0, 0.0), kInf);
    EXPECT_TRUE(std::isnan(math.getFieldTodBm(text("dBA/m"), 1.0, -1.0, 0.0)));
}

TEST(FieldToDbm, ComesBackFromTheOtherDirection) {
    HMath math;
    for (const char* name : {"dBuV/m", "dBmV/m", "dBV/m", "dBm/m^2", "dBW/m^2", "dBA/m"}) {
        const QString number = math.getdBmToField(text(name), -47.0, 433.92, 2.15, false);
        EXPECT_NEAR(math.getFieldTodBm(text(name), number.toDouble(), 433.92, 2.15), -47.0, 0.0051)
            << name;
    }
}

}  // namespace

// The conversions against tests/golden, whose numbers come from the formulas by way of
// high-precision arithmetic.
#include "hmathProbe.h"
#include "support/csvRows.h"

#include <rfUtils/units/calculateUnit.h>

#include <gtest/gtest.h>

using rfu::test::csvRows;
using rfu::test::number;
using rfu::test::Probe;
using rfu::test::text;
using rfu::test::utf8;

namespace {

std::vector<rfu::test::CsvRow> golden(const char* file) {
    auto rows = csvRows(std::string(RFUTILS_GOLDEN "/") + file);
    EXPECT_GT(rows.size(), 200U) << file;
    return rows;
}

std::string named(const rfu::test::CsvRow& row) {
    std::string name;
    for (const std::string& cell : row) {
        name += cell + " | ";
    }
    return name;
}

TEST(Golden, LevelVoltAndWattTexts) {
    for (const auto& row : golden("levels.csv")) {
        Probe probe;
        const double dBm = number(row[2]);
        if (row[0] == "letter") {
            EXPECT_EQ(utf8(probe.math.getDBmToW(dBm)), row[3]) << named(row);
            EXPECT_EQ(probe.signalCount, 0);
            continue;
        }
        const QString unit = text(row[1].c_str());
        EXPECT_EQ(utf8(probe.math.getdBmToUnit(unit, dBm, false)), row[3]) << named(row);
        EXPECT_EQ(probe.unit(), row[4]) << named(row);
        EXPECT_EQ(utf8(probe.math.getdBmToUnit(unit, dBm, true)), row[3] + " " + row[4]);
        EXPECT_EQ(probe.signalCount, 2);
    }
}

TEST(Golden, FieldTexts) {
    for (const auto& row : golden("fields.csv")) {
        Probe probe;
        const QString unit = text(row[0].c_str());
        const double dBm = number(row[1]);
        const double fCenter = number(row[2]);
        const double fGain = number(row[3]);
        EXPECT_EQ(utf8(probe.math.getdBmToField(unit, dBm, fCenter, fGain, false)), row[4])
            << named(row);
        EXPECT_EQ(probe.unit(), row[5]) << named(row);
        EXPECT_EQ(utf8(probe.math.getdBmToField(unit, dBm, fCenter, fGain, true)),
                  row[4] + " " + row[5]);
        EXPECT_EQ(probe.signalCount, 2);
    }
}

TEST(Golden, PrefixedFieldTexts) {
    for (const auto& row : golden("prefixes.csv")) {
        Probe probe;
        const auto value = static_cast<float>(number(row[0]));
        EXPECT_EQ(utf8(probe.math.getFieldChangeUnit(text("V/m"), value, false)), row[1])
            << named(row);
        EXPECT_EQ(probe.unit(), row[2]) << named(row);
        EXPECT_EQ(probe.signalCount, 1);
    }
}

TEST(Golden, UnitsBackToDbm) {
    HMath math;
    for (const auto& row : golden("backward.csv")) {
        const QString unit = text(row[0].c_str());
        const double value = number(row[1]);
        const double fCenter = number(row[2]);
        const double dBm = fCenter == 0.0
                               ? math.getUnitTodBm(unit, value)
                               : math.getFieldTodBm(unit, value, fCenter, number(row[3]));
        EXPECT_NEAR(dBm, number(row[4]), number(row[5])) << named(row);
    }
}

TEST(Golden, NumericScales) {
    calculateUnit calculator;
    for (const auto& row : golden("scales.csv")) {
        const int scale = static_cast<int>(number(row[1]));
        const double value = number(row[2]);
        const double frequency = number(row[3]);
        const double gain = number(row[4]);
        double result = 12345.0;
        EXPECT_TRUE(row[0] == "from dBm"
                        ? calculator.actdBm2OtherScale(value, frequency, scale, gain, result)
                        : actOtherScale2dBm(value, frequency, scale, gain, result));
        EXPECT_NEAR(result, number(row[5]), number(row[6])) << named(row);
    }
}

}  // namespace

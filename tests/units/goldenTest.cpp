// The conversions against tests/golden, whose numbers come from the formulas by way of
// high-precision arithmetic. Texts have to be the same but for the rows that hold two, because the
// last digit of a logarithm or an exponential decides between them.
#include "hmathProbe.h"
#include "support/csvRows.h"

#include <rfUtils/units/calculateUnit.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

using rfu::test::number;
using rfu::test::Probe;
using rfu::test::text;
using rfu::test::utf8;

namespace {

std::vector<rfu::test::CsvRow> golden(const std::string& file) {
    return rfu::test::csvRows(RFUTILS_GOLDEN "/" + file);
}

std::string named(const rfu::test::CsvRow& row) {
    std::string name;
    for (const std::string& cell : row) {
        name += cell + " | ";
    }
    return name;
}

/// Number and unit of a text in a row.
struct NumberAndUnit {
    std::string number;
    std::string unit;
};

/// The text and the unit of a row, or those of the row's second pair.
NumberAndUnit shownBy(const rfu::test::CsvRow& row, std::size_t first, const std::string& number) {
    const bool second = row.size() > first + 2 && number != row[first];
    return second ? NumberAndUnit{row[first + 2], row[first + 3]}
                  : NumberAndUnit{row[first], row[first + 1]};
}

/// Which place a number has among all doubles.
std::int64_t placeOf(double value) {
    std::int64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits < 0 ? std::numeric_limits<std::int64_t>::min() - bits : bits;
}

/// Equal where there is nothing but sums and products. Otherwise two places apart, and more, up to
/// what the row allows, only in the few rows whose terms nearly cancel each other.
class Places {
public:
    void expect(const rfu::test::CsvRow& row, double got, double expected, double allowed) {
        const std::int64_t apart = std::abs(placeOf(got) - placeOf(expected));
        EXPECT_LE(static_cast<double>(apart), allowed) << named(row);
        ++rows_;
        far_ += apart > 2 ? 1 : 0;
    }

    ~Places() { EXPECT_LE(far_ * 100, rows_) << far_ << " rows are more than two places off"; }

    Places() = default;
    Places(const Places&) = delete;
    Places& operator=(const Places&) = delete;

private:
    int rows_ = 0;
    int far_ = 0;
};

TEST(Golden, LevelVoltAndWattTexts) {
    for (const auto& row : golden("levels.csv")) {
        Probe probe;
        const double dBm = number(row[2]);
        if (row[0] == "letter") {
            const std::string text = utf8(probe.math.getDBmToW(dBm));
            EXPECT_EQ(text, shownBy(row, 3, text).number) << named(row);
            EXPECT_EQ(probe.signalCount, 0);
            continue;
        }
        const QString unit = text(row[1].c_str());
        const std::string shown = utf8(probe.math.getdBmToUnit(unit, dBm, false));
        const NumberAndUnit expected = shownBy(row, 3, shown);
        EXPECT_EQ(shown, expected.number) << named(row);
        EXPECT_EQ(probe.unit(), expected.unit) << named(row);
        EXPECT_EQ(utf8(probe.math.getdBmToUnit(unit, dBm, true)),
                  expected.number + " " + expected.unit);
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
        const std::string shown = utf8(probe.math.getdBmToField(unit, dBm, fCenter, fGain, false));
        const NumberAndUnit expected = shownBy(row, 4, shown);
        EXPECT_EQ(shown, expected.number) << named(row);
        EXPECT_EQ(probe.unit(), expected.unit) << named(row);
        EXPECT_EQ(utf8(probe.math.getdBmToField(unit, dBm, fCenter, fGain, true)),
                  expected.number + " " + expected.unit);
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
    Places places;
    for (const auto& row : golden("backward.csv")) {
        const QString unit = text(row[0].c_str());
        const double value = number(row[1]);
        const double fCenter = number(row[2]);
        const double dBm = fCenter == 0.0
                               ? math.getUnitTodBm(unit, value)
                               : math.getFieldTodBm(unit, value, fCenter, number(row[3]));
        places.expect(row, dBm, number(row[4]), number(row[5]));
    }
}

TEST(Golden, NumericScales) {
    calculateUnit calculator;
    Places places;
    for (const auto& row : golden("scales.csv")) {
        const int scale = static_cast<int>(number(row[1]));
        const double value = number(row[2]);
        const double frequency = number(row[3]);
        const double gain = number(row[4]);
        double result = 12345.0;
        EXPECT_TRUE(row[0] == "from dBm"
                        ? calculator.actdBm2OtherScale(value, frequency, scale, gain, result)
                        : actOtherScale2dBm(value, frequency, scale, gain, result));
        places.expect(row, result, number(row[5]), number(row[6]));
    }
}

}  // namespace

#include <support/samples.h>
#include "unitRules.h"

#include <rfUtils/units/HMath.h>
#include <rfUtils/units/unitTable.h>

#include <gtest/gtest.h>

#include <QObject>
#include <QVariant>

#include <cmath>
#include <string>
#include <vector>

namespace {

using namespace rfu::test;

/// Every name in the vocabulary, and some that no operation knows.
const std::vector<std::string>& names() {
    static const std::vector<std::string> all = [] {
        std::vector<std::string> names = {"",    "uV",   "uW",    "dbm",         "dBm ", " dBm",
                                          "dB",  "mA/m", "kV",    "\xC2\xB5V/m", "fV/m", "mW/cm^2",
                                          "DBM", "v",    "dBm/m", "\xCE\xBCV"};
        for (const rfu::Unit& unit : rfu::kUnits) {
            names.push_back(unit.name.toString().toStdString());
        }
        return names;
    }();
    return all;
}

/// Levels in dBm: each step of the volt, watt and field ladders, the operating range.
const Range& levels() {
    static const Range range = [] {
        Range levelsInUse{-260.0, 160.0, {0.0, 87.0, 147.0, 207.0}};
        std::vector<double>& at = levelsInUse.thresholds;
        for (const int k : {0, 3, 6, 9, 12, 15}) {
            at.push_back(20.0 * (1 - k) - 46.9897);
        }
        at.push_back(100.0 - 46.9897);
        for (int k = 0; k <= 24; k += 3) {
            at.push_back(10.0 - 10.0 * k);
        }
        at.insert(at.end(), {60.0, 90.0});
        const double correction = 20.0 * std::log10(100.0) - 29.8;
        for (const int decade : {9, 6, 3, -2, -5, -8, -11, -14, -17, -20, -23, -26}) {
            at.push_back(20.0 * decade + 13.0 - correction);
            at.push_back(10.0 * (decade - std::log10(0.0026525823848649226)) + 13.0 - correction);
            at.push_back(10.0 * (decade - std::log10(2.6525823848649226e-07)) + 13.0 - correction);
            at.push_back(20.0 * (decade - std::log10(2.652519893899204e-09)) - 107.0 - correction);
        }
        return levelsInUse;
    }();
    return range;
}

const Range kFrequencies = {0.0, 30000.0, {1.0, 10.0, 100.0, 1000.0}};
const Range kGains = {-20.0, 60.0, {0.0}};
const Range kValues = {0.0, 300.0, {0.0, 1.0, 87.0, 147.0, 207.0, 0.001, 1e-6, 1e-9, 1e-12}};
const Range kFieldValues = {0.0,
                            2000.0,
                            {1e9, 1e6, 1000.0, 0.01, 1e-5, 1e-8, 1e-11, 1e-14, 1e-17, 1e-20, 1e-23,
                             1e-26, 999.995, 9.995, 1e-27, 1e-38}};

double frequency(Samples& samples) {
    return samples.coin() ? 100.0 : samples.number(kFrequencies);
}

double gain(Samples& samples) {
    return samples.coin() ? 0.0 : samples.number(kGains);
}

class DifferentialUnits : public testing::Test {
protected:
    DifferentialUnits() {
        QObject::connect(&math, &HMath::unitChanged, [this] { ++emissions; });
    }

    /// Calls an operation and holds its text, its unit and its emissions against the rules.
    template <typename Operation>
    testing::AssertionResult agrees(const Shown& expected, Operation call) {
        const QString before = QStringLiteral("before");
        math.setUnit(before);
        emissions = 0;
        const std::string text = unsignedNan(call().toStdString());
        const std::string unit = math.unit().toStdString();
        const std::string expectedUnit = expected.stored ? expected.unit : before.toStdString();
        if (text == unsignedNan(expected.text) && unit == expectedUnit &&
            emissions == (expected.stored ? 1 : 0)) {
            return testing::AssertionSuccess();
        }
        return testing::AssertionFailure()
               << '"' << text << "\", unit " << unit << ", " << emissions
               << " signals instead of \"" << expected.text << "\", unit " << expectedUnit;
    }

    QString randomUnit() {
        unitName = samples.oneOf(names());
        return QString::fromStdString(unitName);
    }

    HMath math;
    int emissions = 0;
    std::string unitName;
    Samples samples{20240901};
};

TEST_F(DifferentialUnits, getdBmToUnit) {
    for (int i = caseCount(); i > 0; --i) {
        const QString unit = randomUnit();
        const double dBm = samples.number(levels());
        const bool withUnit = samples.coin();
        ASSERT_TRUE(agrees(levelText(unitName, dBm, withUnit),
                           [&] { return math.getdBmToUnit(unit, dBm, withUnit); }))
            << unitName << ' ' << std::hexfloat << dBm;
    }
}

TEST_F(DifferentialUnits, getdBmToVolt) {
    for (int i = caseCount(); i > 0; --i) {
        const double dBm = samples.number(levels());
        const bool withUnit = samples.coin();
        ASSERT_TRUE(
            agrees(voltText(dBm, withUnit), [&] { return math.getdBmToVolt(dBm, withUnit); }))
            << std::hexfloat << dBm;
    }
}

TEST_F(DifferentialUnits, getdBmToWatt) {
    for (int i = caseCount(); i > 0; --i) {
        const double dBm = samples.number(levels());
        const bool withUnit = samples.coin();
        ASSERT_TRUE(
            agrees(wattText(dBm, withUnit), [&] { return math.getdBmToWatt(dBm, withUnit); }))
            << std::hexfloat << dBm;
    }
}

TEST_F(DifferentialUnits, getDBmToW) {
    for (int i = caseCount(); i > 0; --i) {
        const double dBm = samples.number(levels());
        ASSERT_TRUE(agrees({bareWattText(dBm), "", false}, [&] { return math.getDBmToW(dBm); }))
            << std::hexfloat << dBm;
    }
}

TEST_F(DifferentialUnits, getdBmToField) {
    for (int i = caseCount(); i > 0; --i) {
        const QString unit = randomUnit();
        const double dBm = samples.number(levels());
        const double center = frequency(samples);
        const double dBi = gain(samples);
        const bool withUnit = samples.coin();
        ASSERT_TRUE(agrees(fieldText(unitName, dBm, center, dBi, withUnit),
                           [&] { return math.getdBmToField(unit, dBm, center, dBi, withUnit); }))
            << unitName << std::hexfloat << ' ' << dBm << ' ' << center << ' ' << dBi;
    }
}

/// A single that a prefix brings to a tie between two texts of two decimals, but for its rounding.
float tieOfAPrefix(Samples& samples) {
    const double tie = static_cast<double>(samples.below(8000)) / 8.0 + 0.125;
    const int decade = 3 * (static_cast<int>(samples.below(12)) - 3);
    return static_cast<float>(tie * std::pow(10.0, -decade));
}

TEST_F(DifferentialUnits, getFieldChangeUnit) {
    for (int i = caseCount(); i > 0; --i) {
        const QString unit = randomUnit();
        auto value = static_cast<float>(samples.signedAtRandom(samples.number(kFieldValues)));
        if (samples.below(4) == 0) {
            value = samples.anySinglePattern();
        } else if (samples.below(4) == 0) {
            value = tieOfAPrefix(samples);
        } else if (samples.coin()) {
            value = std::nextafter(value, samples.coin() ? 1e38F : -1e38F);
        }
        const bool withUnit = samples.coin();
        ASSERT_TRUE(agrees(prefixedText(unitName, value, withUnit),
                           [&] { return math.getFieldChangeUnit(unit, value, withUnit); }))
            << unitName << ' ' << std::hexfloat << value;
    }
}

TEST_F(DifferentialUnits, convertValUnit) {
    for (int i = caseCount(); i > 0; --i) {
        const QString unit = randomUnit();
        const double value = samples.number(levels());
        const auto decimals = static_cast<int>(samples.below(samples.below(100) == 0 ? 1075 : 12));
        ASSERT_TRUE(agrees({qtFixed(value, decimals) + " " + unitName, "", false},
                           [&] { return math.convertValUnit(QVariant(value), decimals, unit); }))
            << unitName << ' ' << decimals << ' ' << std::hexfloat << value;
    }
}

TEST_F(DifferentialUnits, mathRoundOff) {
    const Range range{-3000.0,
                      3000.0,
                      {2147483647.0, -2147483648.0, 2147483.647, -2147483.648, 214748364.7, 0.001,
                       0.999, 1.0, -0.001, -1.0, 2147483648.0}};
    for (int i = caseCount(); i > 0; --i) {
        const double value = samples.number(range);
        const auto digits = static_cast<int>(samples.below(samples.below(20) == 0 ? 700 : 7));
        const double got = math.mathRoundOff(value, digits);
        const double expected = roundedOff(value, digits);
        ASSERT_TRUE(same(got, expected))
            << std::hexfloat << value << ' ' << digits << ": " << got << " instead of " << expected;
    }
}

/// Compares an operation from a unit and a value to a number.
template <typename Operation, typename Rule>
void compareReverse(Samples& samples, Operation operation, Rule rule) {
    for (int i = caseCount(); i > 0; --i) {
        const std::string& unit = samples.oneOf(names());
        const double value = samples.number(samples.coin() ? kValues : levels());
        const double got = operation(QString::fromStdString(unit), value);
        const double expected = rule(unit, value);
        ASSERT_TRUE(same(got, expected))
            << unit << std::hexfloat << ' ' << value << ": " << got << " instead of " << expected;
    }
}

TEST_F(DifferentialUnits, getUnitTodBm) {
    compareReverse(
        samples, [this](const QString& unit, double v) { return math.getUnitTodBm(unit, v); },
        dBmOfUnit);
}

TEST_F(DifferentialUnits, getVoltTodBm) {
    compareReverse(
        samples, [this](const QString& unit, double v) { return math.getVoltTodBm(unit, v); },
        dBmOfVolt);
}

TEST_F(DifferentialUnits, getWattTodBm) {
    compareReverse(
        samples, [this](const QString& unit, double v) { return math.getWattTodBm(unit, v); },
        dBmOfWatt);
}

TEST_F(DifferentialUnits, getVoltmtodBm) {
    compareReverse(
        samples, [this](const QString& unit, double v) { return math.getVoltmtodBm(unit, v); },
        voltPerMetre);
}

TEST_F(DifferentialUnits, getWattmmTodBm) {
    compareReverse(
        samples, [this](const QString& unit, double v) { return math.getWattmmTodBm(unit, v); },
        wattPerSquareMetre);
}

TEST_F(DifferentialUnits, getFieldTodBm) {
    for (int i = caseCount(); i > 0; --i) {
        const QString unit = randomUnit();
        const double value = samples.number(samples.coin() ? kValues : levels());
        const double center = frequency(samples);
        const double dBi = gain(samples);
        const double got = math.getFieldTodBm(unit, value, center, dBi);
        const double expected = dBmOfField(unitName, value, center, dBi);
        ASSERT_TRUE(same(got, expected))
            << unitName << std::hexfloat << ' ' << value << ' ' << center << ' ' << dBi << ": "
            << got << " instead of " << expected;
    }
}

}  // namespace

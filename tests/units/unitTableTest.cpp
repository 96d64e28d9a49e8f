// The vocabulary, written out once more by name and code point, and what HMath makes of each row.
#include "hmathProbe.h"

#include <rfUtils/units/unitTable.h>

#include <gtest/gtest.h>

#include <iterator>

using rfu::test::Probe;
using rfu::test::text;
using rfu::test::utf8;

namespace {

enum Takes { None, Unit, Field };

struct Expected {
    const char* name;
    const char* quantity;
    Takes fromDbm;
    Takes toDbm;
    bool withPrefix;
};

const Expected kVocabulary[] = {
    {"dBm", "level", Unit, Unit, false},
    {"dBV", "level", Unit, Unit, false},
    {"dBmV", "level", Unit, Unit, false},
    {"dBuV", "level", Unit, Unit, false},
    {"V", "voltage", Unit, Unit, false},
    {"mV", "voltage", None, Unit, true},
    {"\xC2\xB5V", "voltage", None, Unit, true},
    {"nV", "voltage", None, Unit, true},
    {"pV", "voltage", None, Unit, true},
    {"fV", "voltage", None, None, true},
    {"W", "power", Unit, Unit, false},
    {"mW", "power", None, Unit, true},
    {"\xC2\xB5W", "power", None, Unit, true},
    {"nW", "power", None, Unit, true},
    {"pW", "power", None, Unit, true},
    {"fW", "power", None, None, true},
    {"aW", "power", None, None, true},
    {"zW", "power", None, None, true},
    {"yW", "power", None, None, true},
    {"dBuV/m", "field strength level", Field, Field, false},
    {"dBmV/m", "field strength level", Field, Field, false},
    {"dBV/m", "field strength level", Field, Field, false},
    {"V/m", "field strength", Field, Field, false},
    {"mV/m", "field strength", None, Field, true},
    {"uV/m", "field strength", None, Field, true},
    {"nV/m", "field strength", None, Field, true},
    {"pV/m", "field strength", None, Field, true},
    {"W/m^2", "power density", Field, Field, false},
    {"mW/m^2", "power density", None, Field, true},
    {"uW/m^2", "power density", None, Field, true},
    {"nW/m^2", "power density", None, Field, true},
    {"pW/m^2", "power density", None, Field, true},
    {"dBm/m^2", "power density level", Field, Field, false},
    {"dBW/m^2", "power density level", Field, Field, false},
    {"A/m", "magnetic field", Field, Field, false},
    {"dBA/m", "magnetic field level", Field, Field, false},
    {"W/cm^2", "power density", Field, None, false},
    {"w/cm^2", "power density", None, Field, false},
};

TEST(UnitTable, HasEveryUnitOnceInOrder) {
    ASSERT_EQ(std::size(rfu::kUnits), std::size(kVocabulary));
    for (std::size_t i = 0; i < std::size(kVocabulary); ++i) {
        const rfu::Unit& unit = rfu::kUnits[i];
        const Expected& expected = kVocabulary[i];
        EXPECT_EQ(utf8(unit.name.toString()), expected.name);
        EXPECT_EQ(utf8(rfu::quantityName(unit.quantity).toString()), expected.quantity);
        EXPECT_EQ(takenByGetdBmToUnit(unit), expected.fromDbm == Unit) << expected.name;
        EXPECT_EQ(takenByGetdBmToField(unit), expected.fromDbm == Field) << expected.name;
        EXPECT_EQ(takenByGetUnitTodBm(unit), expected.toDbm == Unit) << expected.name;
        EXPECT_EQ(takenByGetFieldTodBm(unit), expected.toDbm == Field) << expected.name;
        EXPECT_EQ(producedWithPrefix(unit), expected.withPrefix) << expected.name;
        EXPECT_EQ(rfu::findUnit(unit.name), &unit) << expected.name;
    }
}

// The rule of a unit with a prefix tells which operation produces it.
TEST(UnitTable, TellsWhatProducesAPrefixedUnit) {
    for (const rfu::Unit& unit : rfu::kUnits) {
        if (producedWithPrefix(unit)) {
            const auto expected = unit.quantity == rfu::Quantity::Voltage ? rfu::FromDbm::VoltStep
                                  : unit.quantity == rfu::Quantity::Power ? rfu::FromDbm::WattStep
                                                                          : rfu::FromDbm::FieldStep;
            EXPECT_EQ(unit.fromDbm.rule, expected) << utf8(unit.name.toString());
        }
    }
}

TEST(UnitTable, HasNoNameForWhatIsNoQuantity) {
    EXPECT_TRUE(rfu::quantityName(static_cast<rfu::Quantity>(-1)).isEmpty());
    EXPECT_TRUE(rfu::quantityName(static_cast<rfu::Quantity>(9)).isEmpty());
}

TEST(UnitTable, FindsWholeNamesOnly) {
    for (const char* name : {"", "dBm ", " dBm", "dB", "dbm", "uV", "\u03BCV", "V/", "kV/m"}) {
        EXPECT_EQ(rfu::findUnit(text(name)), nullptr) << name;
    }
    EXPECT_EQ(rfu::findUnit(QStringView()), nullptr);
}

// What the table says an operation takes, the operation takes; everything else gets the answer for
// unknown units.
TEST(UnitTable, TellsWhatTheOperationsTake) {
    for (const Expected& expected : kVocabulary) {
        Probe probe;
        const QString name = text(expected.name);
        probe.math.getdBmToUnit(name, 10.0, false);
        EXPECT_EQ(probe.unit() != "dBm", expected.fromDbm == Unit && name != text("dBm"))
            << expected.name;
        const bool isZero =
            utf8(probe.math.getdBmToField(name, 10.1234, 433.92, 2.15, false)) == "0.00";
        EXPECT_EQ(isZero, expected.fromDbm != Field) << expected.name;
        EXPECT_EQ(probe.math.getUnitTodBm(name, 1.0) != rfu::kUnknownUnit, expected.toDbm == Unit)
            << expected.name;
        EXPECT_EQ(probe.math.getFieldTodBm(name, 1.0, 100.0, 0.0) != rfu::kUnknownUnit,
                  expected.toDbm == Field)
            << expected.name;
    }
}

TEST(UnitTable, HoldsNoPinButThree) {
    int pins = 0;
    for (const rfu::Unit& unit : rfu::kUnits) {
        const double pinned = unit.toDbm.pinned;
        pins += pinned == pinned ? 1 : 0;
    }
    EXPECT_EQ(pins, 3);
}

TEST(UnitTable, ConstantsToTheLastDigit) {
    const struct {
        const char* name;
        double actual;
        double expected;
    } kConstants[] = {
        {"kDbmOfZeroDbv", rfu::kDbmOfZeroDbv, 13.0103},
        {"kDbmvOfZeroDbm", rfu::kDbmvOfZeroDbm, 46.9897},
        {"kDbuvOfZeroDbm", rfu::kDbuvOfZeroDbm, 106.9897},
        {"kDbmOfOneWatt", rfu::kDbmOfOneWatt, 30.0},
        {"kAntennaConstant", rfu::kAntennaConstant, 29.8},
        {"kFieldDbuv", rfu::kFieldDbuv, 107.0},
        {"kFieldDbmv", rfu::kFieldDbmv, 47.0},
        {"kFieldDbv", rfu::kFieldDbv, 13.0},
        {"kFieldDbw", rfu::kFieldDbw, 38.75999999999999},
        {"kFieldDba", rfu::kFieldDba, 64.53},
        {"kImpedance", rfu::kImpedance, 376.99111843077515},
        {"kPerImpedance", rfu::kPerImpedance, 0.0026525823848649226},
        {"kImpedancePerCm2", rfu::kImpedancePerCm2, 3769911.1843077512},
        {"kPerImpedancePerCm2", rfu::kPerImpedancePerCm2, 2.6525823848649226e-07},
        {"kMicrovoltPerAmpere", rfu::kMicrovoltPerAmpere, 377000000.0},
        {"kAmperePerMicrovolt", rfu::kAmperePerMicrovolt, 2.652519893899204e-09},
        {"kBackFromDbuv", rfu::kBackFromDbuv, -77.2},
        {"kBackFromDbmv", rfu::kBackFromDbmv, -17.2},
        {"kBackFromDbv", rfu::kBackFromDbv, 42.8},
        {"kBackFromDbmPerM2", rfu::kBackFromDbmPerM2, 38.56331118741759},
        {"kBackFromDbwPerM2", rfu::kBackFromDbwPerM2, 68.55999999999999},
        {"kBackFromDba", rfu::kBackFromDba, 94.33000000000001},
        {"kUnknownUnit", rfu::kUnknownUnit, -9999999.9},
        {"kPinnedLevel", rfu::kPinnedLevel, 100.0},
    };
    for (const auto& row : kConstants) {
        EXPECT_EQ(row.actual, row.expected) << row.name;
    }
    EXPECT_NE(rfu::kNotPinned, rfu::kNotPinned);
}

TEST(UnitTable, FactorsBackToTheBaseUnit) {
    const struct {
        const char* name;
        double factor;
    } kFactors[] = {
        {"V", 1000.0},        {"mV", 1.0},
        {"\u00B5V", 0.001},   {"nV", 1e-06},
        {"pV", 1e-09},        {"W", 1.0},
        {"mW", 0.001},        {"\u00B5W", 1e-06},
        {"nW", 1e-09},        {"pW", 1e-12},
        {"V/m", 1.0},         {"mV/m", 0.001},
        {"uV/m", 1e-06},      {"nV/m", 1e-09},
        {"pV/m", 1e-12},      {"W/m^2", 1.0},
        {"mW/m^2", 0.001},    {"uW/m^2", 1e-06},
        {"nW/m^2", 1e-09},    {"pW/m^2", 1e-12},
        {"A/m", 377000000.0}, {"w/cm^2", 3769911.1843077512},
    };
    for (const auto& row : kFactors) {
        const rfu::Unit* const unit = rfu::findUnit(text(row.name));
        ASSERT_NE(unit, nullptr) << row.name;
        EXPECT_EQ(unit->toDbm.factor, row.factor) << row.name;
    }
}

TEST(UnitTable, PrefixesToTheLastDigit) {
    const rfu::SmallPrefix kSmall[] = {
        {'m', 3, 1000.0, 1e-5}, {'u', 6, 1e6, 1e-8},    {'n', 9, 1e9, 1e-11},
        {'p', 12, 1e12, 1e-14}, {'f', 15, 1e15, 1e-17}, {'a', 18, 1e18, 1e-20},
        {'z', 21, 1e21, 1e-23}, {'y', 24, 1e24, 1e-26},
    };
    ASSERT_EQ(std::size(rfu::kSmallPrefixes), std::size(kSmall));
    for (std::size_t i = 0; i < std::size(kSmall); ++i) {
        const rfu::SmallPrefix& prefix = rfu::kSmallPrefixes[i];
        EXPECT_EQ(prefix.letter, kSmall[i].letter);
        EXPECT_EQ(prefix.decades, kSmall[i].decades) << prefix.letter;
        EXPECT_EQ(prefix.factor, kSmall[i].factor) << prefix.letter;
        EXPECT_EQ(prefix.threshold, kSmall[i].threshold) << prefix.letter;
    }

    // singles: 9.99999971718e-10, 9.99999997475e-07 and 0.00100000004750
    const rfu::LargePrefix kLarge[] = {
        {'G', 1e-9F, 1e9, 1}, {'M', 1e-6F, 1e6, 1}, {'k', 0.001F, 1000.0, 2}};
    ASSERT_EQ(std::size(rfu::kLargePrefixes), std::size(kLarge));
    for (std::size_t i = 0; i < std::size(kLarge); ++i) {
        const rfu::LargePrefix& prefix = rfu::kLargePrefixes[i];
        EXPECT_EQ(prefix.letter, kLarge[i].letter);
        EXPECT_EQ(prefix.factor, kLarge[i].factor) << prefix.letter;
        EXPECT_EQ(prefix.threshold, kLarge[i].threshold) << prefix.letter;
        EXPECT_EQ(prefix.decimals, kLarge[i].decimals) << prefix.letter;
    }
}

}  // namespace

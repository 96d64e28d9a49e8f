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
    EXPECT_EQ(rfu::kUnknownUnit, -9999999.9);
}

}  // namespace

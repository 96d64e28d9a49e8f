// The vocabulary, restated by name and code point, and whether HMath takes what it promises.
#include "hmathProbe.h"

#include <rfUtils/units/unitTable.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <string>

using rfu::test::Probe;
using rfu::test::text;
using rfu::test::utf8;

namespace {

enum Shown { ByName, Prefixed, Never };

struct Expected {
    const char* name;
    const char* quantity;
    Shown shown;
    bool isRead;
};

const Expected kVocabulary[] = {
    {"dBm", "level", ByName, true},
    {"dBV", "level", ByName, true},
    {"dBmV", "level", ByName, true},
    {"dBuV", "level", ByName, true},
    {"V", "voltage", ByName, true},
    {"mV", "voltage", Prefixed, true},
    {"\xC2\xB5V", "voltage", Prefixed, true},
    {"nV", "voltage", Prefixed, true},
    {"pV", "voltage", Prefixed, true},
    {"fV", "voltage", Prefixed, false},
    {"W", "power", ByName, true},
    {"mW", "power", Prefixed, true},
    {"\xC2\xB5W", "power", Prefixed, true},
    {"nW", "power", Prefixed, true},
    {"pW", "power", Prefixed, true},
    {"fW", "power", Prefixed, false},
    {"aW", "power", Prefixed, false},
    {"zW", "power", Prefixed, false},
    {"yW", "power", Prefixed, false},
    {"dBuV/m", "field strength level", ByName, true},
    {"dBmV/m", "field strength level", ByName, true},
    {"dBV/m", "field strength level", ByName, true},
    {"V/m", "field strength", ByName, true},
    {"mV/m", "field strength", Prefixed, true},
    {"uV/m", "field strength", Prefixed, true},
    {"nV/m", "field strength", Prefixed, true},
    {"pV/m", "field strength", Prefixed, true},
    {"W/m^2", "power density", ByName, true},
    {"mW/m^2", "power density", Prefixed, true},
    {"uW/m^2", "power density", Prefixed, true},
    {"nW/m^2", "power density", Prefixed, true},
    {"pW/m^2", "power density", Prefixed, true},
    {"dBm/m^2", "power density level", ByName, true},
    {"dBW/m^2", "power density level", ByName, true},
    {"A/m", "magnetic field", ByName, true},
    {"dBA/m", "magnetic field level", ByName, true},
    {"W/cm^2", "power density", ByName, false},
    {"w/cm^2", "power density", Never, true},
};

bool isFieldName(const std::string& name) {
    return name.find('/') != std::string::npos;
}

TEST(UnitTable, HasEveryUnitOnceInOrder) {
    ASSERT_EQ(std::size(rfu::kUnits), std::size(kVocabulary));
    for (std::size_t i = 0; i < std::size(kVocabulary); ++i) {
        const rfu::Unit& unit = rfu::kUnits[i];
        const Expected& expected = kVocabulary[i];
        SCOPED_TRACE(expected.name);
        EXPECT_EQ(utf8(unit.name.toString()), expected.name);
        EXPECT_EQ(utf8(unit.traits().name.toString()), expected.quantity);
        EXPECT_EQ(unit.canBeShown(), expected.shown == ByName);
        EXPECT_EQ(unit.isPrefixed(), expected.shown == Prefixed);
        EXPECT_EQ(unit.canBeRead(), expected.isRead);
        EXPECT_EQ(unit.needsAntenna(), isFieldName(expected.name));
        EXPECT_EQ(unit.isLinear(), unit.name[0] != QLatin1Char('d'));
        EXPECT_EQ(unit.takesEveryPrefix(),
                  unit.canBeShown() && isFieldName(expected.name) && unit.name[0] != 'd');
        EXPECT_EQ(rfu::findUnit(unit.name), &unit);
    }
}

TEST(UnitTable, FindsWholeNamesOnly) {
    for (const char* name : {"", "dBm ", " dBm", "dB", "dbm", "uV", "\u03BCV", "V/", "kV/m"}) {
        EXPECT_EQ(rfu::findUnit(text(name)), nullptr) << name;
    }
    EXPECT_EQ(rfu::findUnit(QStringView()), nullptr);
}

// An operation takes the units that the table promises; all others get the answer for unknown ones.
TEST(UnitTable, TellsWhatTheOperationsTake) {
    for (const Expected& expected : kVocabulary) {
        SCOPED_TRACE(expected.name);
        Probe probe;
        const QString name = text(expected.name);
        const bool isField = isFieldName(expected.name);
        const bool isShown = expected.shown == ByName;
        probe.math.getdBmToUnit(name, 10.0, false);
        EXPECT_EQ(probe.unit() != "dBm", isShown && !isField && name != text("dBm"));
        const QString field = probe.math.getdBmToField(name, 10.1234, 433.92, 2.15, false);
        EXPECT_EQ(utf8(field) != "0.00", isShown && isField);
        EXPECT_EQ(probe.math.getUnitTodBm(name, 1.0) != rfu::kUnknownUnit,
                  expected.isRead && !isField);
        EXPECT_EQ(probe.math.getFieldTodBm(name, 1.0, 100.0, 0.0) != rfu::kUnknownUnit,
                  expected.isRead && isField);
    }
}

TEST(UnitTable, HasTheScalesByTheirIndex) {
    const char* const kNames[] = {"dBm",     "dBV",    "dBmV",  "dBuV",  "V",     "W",
                                  "dBuV/m",  "dBmV/m", "dBV/m", "V/m",   "W/m^2", "dBm/m^2",
                                  "dBW/m^2", "A/m",    "dBA/m", "W/cm^2"};
    ASSERT_EQ(std::size(rfu::kScales), std::size(kNames));
    int index = 0;
    for (const char* name : kNames) {
        ASSERT_NE(rfu::findScale(index), nullptr) << name;
        EXPECT_EQ(utf8(rfu::findScale(index)->unit->name.toString()), name);
        EXPECT_EQ(scaleOf(*rfu::findUnit(text(name))), index++) << name;
    }
    EXPECT_EQ(rfu::findScale(-1), nullptr);
    EXPECT_EQ(rfu::findScale(index), nullptr);
    EXPECT_EQ(scaleOf(*rfu::findUnit(u"mV")), -1);
}

}  // namespace

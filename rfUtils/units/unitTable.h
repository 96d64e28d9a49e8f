#pragma once

#include <QString>
#include <QStringView>

#include <limits>

/// @file
/// Every unit name that the library knows, and the numbers that lead to it and back, as one table.
/// HMath looks its units up here; a program can list them. Everything is constexpr: including this
/// header links against nothing.
///
/// Names are matched whole and case-sensitively; nothing is trimmed or folded. The micro sign of
/// "µV" and "µW" is U+00B5 and nothing else: "uV" and the Greek mu U+03BC are unknown. The field
/// units are the other way round: "uV/m" and "uW/m^2" have the ASCII letter u, as have "dBuV" and
/// "dBuV/m".

namespace rfu {

// Levels across 50 ohm: 1 mW is U = sqrt(1 mW 50 ohm) = 0.2236068 V, which is -13.0103 dBV,
// 46.9897 dBmV and 106.9897 dBuV; all three rounded to 1e-4 dB.
inline constexpr double kDbmOfZeroDbv = 13.0103;
inline constexpr double kDbmvOfZeroDbm = 46.9897;
inline constexpr double kDbuvOfZeroDbm = 106.9897;

inline constexpr double kDbmOfOneWatt = 30.0;

// Field strength at an antenna: E[dBuV/m] = P[dBm] + 107 + K, where K is the antenna factor in
// dB(1/m), K = 20 lg(9.73 / (wavelength sqrt(g))) = 20 lg(f / 1 MHz) - 29.8 - G[dBi] at 50 ohm.
// These offsets are rounded ones on purpose, not the 50 ohm offsets above.
inline constexpr double kAntennaConstant = 29.8;
inline constexpr double kFieldDbuv = 107.0;
inline constexpr double kFieldDbmv = 47.0;
inline constexpr double kFieldDbv = 13.0;

// S = E^2 / Z for the power densities, H = E / Z for the magnetic field. The two impedances of free
// space differ on purpose: 120 pi ohm in the power densities, 377 ohm in the magnetic field.
inline constexpr double kFieldDbw = 38.75999999999999;    // 13 + 10 lg(120 pi), rounded to 0.01
inline constexpr double kFieldDba = 64.53;                // 13 + 20 lg(377), rounded to 0.01
inline constexpr double kImpedance = 376.99111843077515;  // 120 pi ohm
inline constexpr double kPerImpedance = 0.0026525823848649226;         // 1 / (120 pi)
inline constexpr double kImpedancePerCm2 = 3769911.1843077512;         // 120 pi 1e4: W/cm^2
inline constexpr double kPerImpedancePerCm2 = 2.6525823848649226e-07;  // 1 / (120 pi 1e4)
inline constexpr double kMicrovoltPerAmpere = 377000000.0;             // 377 ohm, uV/m per A/m
inline constexpr double kAmperePerMicrovolt = 2.652519893899204e-09;   // 1 / 3.77e8

// Field value to level in dBm: P = value + offset + G - D, with D = 20 lg(f / 1 MHz). The forward
// offsets with 29.8 folded in, kept as numbers of their own because their last digits count.
inline constexpr double kBackFromDbuv = -77.2;
inline constexpr double kBackFromDbmv = -17.2;
inline constexpr double kBackFromDbv = 42.8;
inline constexpr double kBackFromDbmPerM2 = 38.56331118741759;
inline constexpr double kBackFromDbwPerM2 = 68.55999999999999;
inline constexpr double kBackFromDba = 94.33000000000001;

/// What HMath::getUnitTodBm and HMath::getFieldTodBm answer for a unit that they do not know.
inline constexpr double kUnknownUnit = -9999999.9;

/// The level, in dBm, that a pinned value (see ToDbm::Level) stands for.
inline constexpr double kPinnedLevel = 100.0;

enum class Quantity {
    Level,               ///< a level in dBm or across 50 ohm
    Voltage,             ///< across 50 ohm
    Power,               ///< in 50 ohm
    FieldStrengthLevel,  ///< electric field at the antenna, as a level
    FieldStrength,       ///< electric field at the antenna
    PowerDensityLevel,   ///< power per area at the antenna, as a level
    PowerDensity,        ///< power per area at the antenna
    MagneticFieldLevel,  ///< magnetic field at the antenna, as a level
    MagneticField,       ///< magnetic field at the antenna
};

/// What the direction dBm to unit does with a unit. P is the level in dBm, K the antenna
/// correction.
enum class FromDbm {
    Unknown,            ///< no operation takes or produces it
    Unchanged,          ///< getdBmToUnit: P, one decimal
    Level,              ///< getdBmToUnit: P + offset, one decimal
    VoltLadder,         ///< getdBmToUnit: getdBmToVolt chooses the prefix; two decimals
    VoltStep,           ///< not taken; produced by getdBmToVolt, 10^offset of it are one volt
    WattLadder,         ///< getdBmToUnit: getdBmToWatt chooses the prefix; two decimals
    WattStep,           ///< not taken; produced by getdBmToWatt, 10^offset of it are one watt
    FieldLevel,         ///< getdBmToField: P + offset + K, two decimals
    FieldLevelOfPower,  ///< getdBmToField: 10 lg(10^((P + offset + K)/10) factor) + 30, two
                        ///< decimals
    FieldAmplitude,     ///< getdBmToField: 10^((P + offset + K)/20) factor, with a prefix
    FieldPower,         ///< getdBmToField: 10^((P + offset + K)/10) factor, with a prefix
    FieldStep,          ///< not taken; produced with its prefix by getFieldChangeUnit
};

/// What the direction unit to dBm does with a value v of a unit. G is the antenna gain in dBi,
/// D = 20 lg(f / 1 MHz).
enum class ToDbm {
    Unknown,     ///< no operation takes it
    Unchanged,   ///< getUnitTodBm: v
    Level,       ///< getUnitTodBm: v + offset, cut to three decimals; kPinnedLevel if v is `pinned`
    Volt,        ///< getUnitTodBm, getVoltTodBm: v factor is in mV
    Watt,        ///< getUnitTodBm, getWattTodBm: v factor is in W
    FieldLevel,  ///< getFieldTodBm: v + offset + G - D
    VoltPerMetre,             ///< getFieldTodBm, getVoltmtodBm: v factor is in V/m
    WattPerSquareMetre,       ///< getFieldTodBm, getWattmmTodBm: v factor is in W/m^2
    AmperePerMetre,           ///< getFieldTodBm: v factor is in uV/m
    WattPerSquareCentimetre,  ///< getFieldTodBm: v factor is (V/m)^2
};

/// No value equals it.
inline constexpr double kNotPinned = std::numeric_limits<double>::quiet_NaN();

struct Unit {
    struct Forward {
        FromDbm rule;
        double offset = 0.0;  ///< in dB; for the steps of a ladder in powers of ten
        double factor = 1.0;
    };
    struct Backward {
        ToDbm rule;
        double offset = 0.0;  ///< in dB
        double factor = 1.0;
        double pinned = kNotPinned;
    };

    QStringView name;
    Quantity quantity;
    Forward fromDbm;
    Backward toDbm;
};

// clang-format off
/// The vocabulary. A ladder is the run of rows of one quantity: its base unit, then its steps from
/// the largest to the smallest.
inline constexpr Unit kUnits[] = {
    {u"dBm",  Quantity::Level, {FromDbm::Unchanged},              {ToDbm::Unchanged}},
    // The rounded images of 100 dBm come back as exactly 100 dBm; only these very values do.
    {u"dBV",  Quantity::Level, {FromDbm::Level, -kDbmOfZeroDbv},  {ToDbm::Level, kDbmOfZeroDbv,   1.0,  87.0}},
    {u"dBmV", Quantity::Level, {FromDbm::Level, kDbmvOfZeroDbm},  {ToDbm::Level, -kDbmvOfZeroDbm, 1.0, 147.0}},
    {u"dBuV", Quantity::Level, {FromDbm::Level, kDbuvOfZeroDbm},  {ToDbm::Level, -kDbuvOfZeroDbm, 1.0, 207.0}},

    // The volt ladder ends at femto, the watt ladder at yocto; femto and smaller are never read back.
    {u"V",       Quantity::Voltage, {FromDbm::VoltLadder},   {ToDbm::Volt, 0.0, 1000.0}},
    {u"mV",      Quantity::Voltage, {FromDbm::VoltStep,  3}, {ToDbm::Volt, 0.0, 1.0}},
    {u"\u00B5V", Quantity::Voltage, {FromDbm::VoltStep,  6}, {ToDbm::Volt, 0.0, 0.001}},
    {u"nV",      Quantity::Voltage, {FromDbm::VoltStep,  9}, {ToDbm::Volt, 0.0, 1e-06}},
    {u"pV",      Quantity::Voltage, {FromDbm::VoltStep, 12}, {ToDbm::Volt, 0.0, 1e-09}},
    {u"fV",      Quantity::Voltage, {FromDbm::VoltStep, 15}, {ToDbm::Unknown}},

    {u"W",       Quantity::Power, {FromDbm::WattLadder},   {ToDbm::Watt, 0.0, 1.0}},
    {u"mW",      Quantity::Power, {FromDbm::WattStep,  3}, {ToDbm::Watt, 0.0, 0.001}},
    {u"\u00B5W", Quantity::Power, {FromDbm::WattStep,  6}, {ToDbm::Watt, 0.0, 1e-06}},
    {u"nW",      Quantity::Power, {FromDbm::WattStep,  9}, {ToDbm::Watt, 0.0, 1e-09}},
    {u"pW",      Quantity::Power, {FromDbm::WattStep, 12}, {ToDbm::Watt, 0.0, 1e-12}},
    {u"fW",      Quantity::Power, {FromDbm::WattStep, 15}, {ToDbm::Unknown}},
    {u"aW",      Quantity::Power, {FromDbm::WattStep, 18}, {ToDbm::Unknown}},
    {u"zW",      Quantity::Power, {FromDbm::WattStep, 21}, {ToDbm::Unknown}},
    {u"yW",      Quantity::Power, {FromDbm::WattStep, 24}, {ToDbm::Unknown}},

    {u"dBuV/m", Quantity::FieldStrengthLevel, {FromDbm::FieldLevel, kFieldDbuv}, {ToDbm::FieldLevel, kBackFromDbuv}},
    {u"dBmV/m", Quantity::FieldStrengthLevel, {FromDbm::FieldLevel, kFieldDbmv}, {ToDbm::FieldLevel, kBackFromDbmv}},
    {u"dBV/m",  Quantity::FieldStrengthLevel, {FromDbm::FieldLevel, -kFieldDbv}, {ToDbm::FieldLevel, kBackFromDbv}},

    {u"V/m",  Quantity::FieldStrength, {FromDbm::FieldAmplitude, -kFieldDbv}, {ToDbm::VoltPerMetre, kBackFromDbv, 1.0}},
    {u"mV/m", Quantity::FieldStrength, {FromDbm::FieldStep},               {ToDbm::VoltPerMetre, kBackFromDbv, 0.001}},
    {u"uV/m", Quantity::FieldStrength, {FromDbm::FieldStep},               {ToDbm::VoltPerMetre, kBackFromDbv, 1e-06}},
    {u"nV/m", Quantity::FieldStrength, {FromDbm::FieldStep},               {ToDbm::VoltPerMetre, kBackFromDbv, 1e-09}},
    {u"pV/m", Quantity::FieldStrength, {FromDbm::FieldStep},              {ToDbm::VoltPerMetre, kBackFromDbv, 1e-12}},

    {u"W/m^2",  Quantity::PowerDensity, {FromDbm::FieldPower, -kFieldDbv, kPerImpedance}, {ToDbm::WattPerSquareMetre, kBackFromDbv, 1.0}},
    {u"mW/m^2", Quantity::PowerDensity, {FromDbm::FieldStep},                          {ToDbm::WattPerSquareMetre, kBackFromDbv, 0.001}},
    {u"uW/m^2", Quantity::PowerDensity, {FromDbm::FieldStep},                          {ToDbm::WattPerSquareMetre, kBackFromDbv, 1e-06}},
    {u"nW/m^2", Quantity::PowerDensity, {FromDbm::FieldStep},                          {ToDbm::WattPerSquareMetre, kBackFromDbv, 1e-09}},
    {u"pW/m^2", Quantity::PowerDensity, {FromDbm::FieldStep},                         {ToDbm::WattPerSquareMetre, kBackFromDbv, 1e-12}},

    {u"dBm/m^2", Quantity::PowerDensityLevel, {FromDbm::FieldLevelOfPower, -kFieldDbv, kPerImpedance}, {ToDbm::FieldLevel, kBackFromDbmPerM2}},
    {u"dBW/m^2", Quantity::PowerDensityLevel, {FromDbm::FieldLevel, -kFieldDbw},                       {ToDbm::FieldLevel, kBackFromDbwPerM2}},

    {u"A/m",   Quantity::MagneticField,      {FromDbm::FieldAmplitude, kFieldDbuv, kAmperePerMicrovolt}, {ToDbm::AmperePerMetre, kBackFromDbuv, kMicrovoltPerAmpere}},
    {u"dBA/m", Quantity::MagneticFieldLevel, {FromDbm::FieldLevel, -kFieldDba},                          {ToDbm::FieldLevel, kBackFromDba}},

    // The one unit with two spellings: shown with an upper-case W, read back only with a lower-case w.
    {u"W/cm^2", Quantity::PowerDensity, {FromDbm::FieldPower, -kFieldDbv, kPerImpedancePerCm2}, {ToDbm::Unknown}},
    {u"w/cm^2", Quantity::PowerDensity, {FromDbm::Unknown},                                     {ToDbm::WattPerSquareCentimetre, kBackFromDbv, kImpedancePerCm2}},
};
// clang-format on

/// A prefix that makes a number larger, put in front of a field unit by getFieldChangeUnit and
/// behind a number of watts by getDBmToW. The letters are ASCII: micro is u.
struct SmallPrefix {
    char letter;
    int decades;       ///< 10^decades of the prefixed unit make the unit itself
    double factor;     ///< number in the unit -> number in the prefixed unit
    double threshold;  ///< smallest field value that takes it: its number is then at least 0.01
};

// clang-format off
inline constexpr SmallPrefix kSmallPrefixes[] = {
    {'m',  3, 1000.0, 1e-5},
    {'u',  6, 1e6,    1e-8},
    {'n',  9, 1e9,    1e-11},
    {'p', 12, 1e12,   1e-14},
    {'f', 15, 1e15,   1e-17},
    {'a', 18, 1e18,   1e-20},
    {'z', 21, 1e21,   1e-23},
    {'y', 24, 1e24,   1e-26},
};
// clang-format on

/// A prefix that makes a number smaller, put in front of a field unit by getFieldChangeUnit.
struct LargePrefix {
    char letter;
    float factor;      ///< single precision, as the product is
    double threshold;  ///< smallest field value that takes it
    int decimals;      ///< one for giga and mega, where everything else has two
};

// clang-format off
inline constexpr LargePrefix kLargePrefixes[] = {
    {'G', 1e-9F,  1e9,    1},
    {'M', 1e-6F,  1e6,    1},
    {'k', 0.001F, 1000.0, 2},
};
// clang-format on

/// The row of a unit name, or null for a name that is not in the vocabulary. Never allocates.
inline const Unit* findUnit(QStringView name) noexcept {
    for (const Unit& unit : kUnits) {
        if (unit.name == name) {
            return &unit;
        }
    }
    return nullptr;
}

// Which operation of HMath takes a unit. A unit that neither direction takes is only produced.

constexpr bool takenByGetdBmToUnit(const Unit& unit) noexcept {
    switch (unit.fromDbm.rule) {
        case FromDbm::Unchanged:
        case FromDbm::Level:
        case FromDbm::VoltLadder:
        case FromDbm::WattLadder:
            return true;
        default:
            return false;
    }
}

constexpr bool takenByGetdBmToField(const Unit& unit) noexcept {
    switch (unit.fromDbm.rule) {
        case FromDbm::FieldLevel:
        case FromDbm::FieldLevelOfPower:
        case FromDbm::FieldAmplitude:
        case FromDbm::FieldPower:
            return true;
        default:
            return false;
    }
}

constexpr bool takenByGetUnitTodBm(const Unit& unit) noexcept {
    switch (unit.toDbm.rule) {
        case ToDbm::Unchanged:
        case ToDbm::Level:
        case ToDbm::Volt:
        case ToDbm::Watt:
            return true;
        default:
            return false;
    }
}

constexpr bool takenByGetFieldTodBm(const Unit& unit) noexcept {
    return unit.toDbm.rule != ToDbm::Unknown && !takenByGetUnitTodBm(unit);
}

/// Whether a ladder or getFieldChangeUnit puts a prefix in front of a base unit to make this one.
constexpr bool producedWithPrefix(const Unit& unit) noexcept {
    switch (unit.fromDbm.rule) {
        case FromDbm::VoltStep:
        case FromDbm::WattStep:
        case FromDbm::FieldStep:
            return true;
        default:
            return false;
    }
}

/// The quantity in words.
constexpr QStringView quantityName(Quantity quantity) noexcept {
    switch (quantity) {
        case Quantity::Level:
            return u"level";
        case Quantity::Voltage:
            return u"voltage";
        case Quantity::Power:
            return u"power";
        case Quantity::FieldStrengthLevel:
            return u"field strength level";
        case Quantity::FieldStrength:
            return u"field strength";
        case Quantity::PowerDensityLevel:
            return u"power density level";
        case Quantity::PowerDensity:
            return u"power density";
        case Quantity::MagneticFieldLevel:
            return u"magnetic field level";
        case Quantity::MagneticField:
            return u"magnetic field";
    }
    return {};
}

}  // namespace rfu

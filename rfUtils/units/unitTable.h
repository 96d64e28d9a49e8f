#pragma once

#include <QStringView>

#include <iterator>
#include <limits>

/// @file
/// @brief The units: their names, the formulas between them and dBm, the numeric scales and the
/// prefixes, as tables.
///
/// HMath and calculateUnit convert by these tables; programs list and choose units by them.
/// Everything is constexpr: a program that includes this header links against nothing for it.
///
/// Names are matched whole and case-sensitively; nothing is trimmed or folded. The micro sign of
/// "µV" and "µW" is U+00B5 and nothing else: "uV" and the Greek mu U+03BC are unknown. Field units
/// and dB units have the ASCII letter u instead: "uV/m", "uW/m^2", "dBuV", "dBuV/m".
///
/// In the formulas P is a level in dBm, v a value in the unit, o and c the offset and the factor of
/// its row, lg the decimal logarithm, f the centre frequency in MHz, G the antenna gain in dBi and
/// @f$D = 20 \lg f@f$. docs/units.md lists the formula of each unit.

namespace rfu {

// clang-format off

/// @name Levels across 50 ohm
/// 1 mW is @f$U = \sqrt{1\,\mathrm{mW} \cdot 50\,\Omega} = 0.22360680\,\mathrm{V}@f$, which is
/// -13.010299957 dBV. The offsets are rounded to 1e-4 dB.
/// @{
inline constexpr double kDbmOfZeroDbv = 13.0103;    ///< 0 dBV in dBm
inline constexpr double kDbmvOfZeroDbm = 46.9897;   ///< 0 dBm in dBmV
inline constexpr double kDbuvOfZeroDbm = 106.9897;  ///< 0 dBm in dBuV
inline constexpr double kDbmOfOneWatt = 30.0;       ///< 1 W in dBm
/// @}

/// @name Fields at the antenna
/// The antenna correction is @f$K = D - 29.8 - G@f$ in dB, and a field strength in dBuV/m is
/// @f$P + 107 + K@f$. Instruments report fields with offsets rounded to 1 dB, not with the 50 ohm
/// offsets above; power densities with @f$S = E^2 / (120 \pi\,\Omega)@f$ and magnetic fields with
/// @f$H = E / (377\,\Omega)@f$. Readings agree with
/// theirs only with the same offsets and these two impedances of free space.
/// @{
inline constexpr double kAntennaConstant = 29.8;           ///< 29.770704 dB, see docs/units.md
inline constexpr double kFieldDbuv = 107.0;                ///< 106.9897 dB, rounded
inline constexpr double kFieldDbmv = 47.0;                 ///< 46.9897 dB, rounded
inline constexpr double kFieldDbv = 13.0;                  ///< 13.0103 dB, rounded
inline constexpr double kFieldDbw = 38.75999999999999;     ///< @f$13 + 10 \lg(120 \pi)@f$ = 38.7633, rounded
inline constexpr double kFieldDba = 64.53;                 ///< @f$13 + 20 \lg 377@f$ = 64.5268, rounded
inline constexpr double kImpedance = 376.99111843077515;   ///< @f$120 \pi\,\Omega@f$
inline constexpr double kPerImpedance = 0.0026525823848649226;         ///< @f$1 / (120 \pi)@f$
inline constexpr double kImpedancePerCm2 = 3769911.1843077512;         ///< @f$120 \pi \cdot 10^4@f$, for W/cm^2
inline constexpr double kPerImpedancePerCm2 = 2.6525823848649226e-07;  ///< @f$1 / (120 \pi \cdot 10^4)@f$
inline constexpr double kMicrovoltPerAmpere = 377000000.0;             ///< uV/m per A/m
inline constexpr double kAmperePerMicrovolt = 2.652519893899204e-09;   ///< @f$1 / (3.77 \cdot 10^8)@f$
/// @}

/// @name Fields back to dBm
/// Numbers of their own, not computed from those above: their last digits are part of the results.
/// @{
inline constexpr double kBackFromDbuv = -77.2;                   ///< 29.8 - 107
inline constexpr double kBackFromDbmv = -17.2;                   ///< 29.8 - 47
inline constexpr double kBackFromDbv = 42.8;                     ///< 29.8 + 13
inline constexpr double kBackFromDbmPerM2 = 38.56331118741759;   ///< @f$29.8 + 13 + 10 \lg(120 \pi) - 30@f$
inline constexpr double kBackFromDbwPerM2 = 68.55999999999999;   ///< 29.8 + 38.76
inline constexpr double kBackFromDba = 94.33000000000001;        ///< 29.8 + 64.53, the double above
inline constexpr double kDbmOfZeroDbmPerM2 = 8.763311187417589;  ///< @f$13 + 10 \lg(120 \pi) - 30@f$
/// @}

// clang-format on

/// Answer of HMath::getUnitTodBm and HMath::getFieldTodBm for a unit they do not take.
inline constexpr double kUnknownUnit = -9999999.9;

/// The level in dBm of the value Unit::pinned.
inline constexpr double kPinnedLevel = 100.0;

/// Unit::pinned of a unit without such a value: no value equals it.
inline constexpr double kNotPinned = std::numeric_limits<double>::quiet_NaN();

/// Indexes kQuantities.
enum class Quantity {
    Level,               ///< level of a power, or of a voltage across 50 ohm
    Voltage,             ///< across 50 ohm
    Power,               ///< in 50 ohm
    FieldStrengthLevel,  ///< level of an electric field
    FieldStrength,       ///< electric field
    PowerDensityLevel,   ///< level of a power per area
    PowerDensity,        ///< power per area
    MagneticFieldLevel,  ///< level of a magnetic field
    MagneticField,       ///< magnetic field
};

/// What all units of a quantity have in common.
struct QuantityTraits {
    QStringView name;   ///< in words
    bool needsAntenna;  ///< a field at the antenna: needs its centre frequency and gain
    bool isLinear;      ///< proportional to a voltage, power or field: has a level only above 0
};

// clang-format off
/// The row of each Quantity.
inline constexpr QuantityTraits kQuantities[] = {
    {u"level",                false, false},
    {u"voltage",              false, true},
    {u"power",                false, true},
    {u"field strength level", true,  false},
    {u"field strength",       true,  true},
    {u"power density level",  true,  false},
    {u"power density",        true,  true},
    {u"magnetic field level", true,  false},
    {u"magnetic field",       true,  true},
};
// clang-format on

/// The number that a level P has in a unit. For a quantity that needs the antenna, K is added to
/// @f$P + o@f$.
enum class FromDbm {
    None,        ///< levels are not shown in the unit by its name
    Unchanged,   ///< @f$P@f$
    Sum,         ///< @f$P + o@f$
    Amplitude,   ///< @f$10^{(P + o)/20} c@f$
    Power,       ///< @f$10^{(P + o)/10} c@f$
    PowerLevel,  ///< @f$10 \lg(10^{(P + o)/10} c) + 30@f$
};

/// The level of a value v in a unit.
enum class ToDbm {
    None,          ///< values are not read in the unit
    Unchanged,     ///< @f$v@f$
    Sum,           ///< @f$v + o@f$
    Amplitude,     ///< @f$20 \lg(v c) + o@f$
    Power,         ///< @f$10 \lg(v c) + o@f$
    PowerDensity,  ///< @f$10 \lg(120 \pi (v c)) + o@f$
};

/// A unit: its name, what is done with it, and the formulas.
struct Unit {
    /// From dBm to the unit.
    struct Forward {
        FromDbm formula = FromDbm::None;  ///< which formula
        double offset = 0.0;              ///< in dB
        double factor = 1.0;              ///< of a linear number
    };
    /// From the unit to dBm.
    struct Backward {
        ToDbm formula = ToDbm::None;  ///< which formula
        double offset = 0.0;          ///< in dB
        double factor = 1.0;          ///< of a linear value
    };

    QStringView name;   ///< unique
    Quantity quantity;  ///< what it measures
    int decades;        ///< a prefixed unit: @f$10^{decades}@f$ of it make the base unit; others 0
    Forward fromDbm;    ///< @f$K = D - 29.8 - G@f$ in HMath, rounded to single in calculateUnit
    Backward toDbm;     ///< in HMath, which adds @f$G - D@f$ to the levels of fields
    double pinned = kNotPinned;  ///< a value whose level is exactly kPinnedLevel

    /// @return what all units of its quantity have in common
    constexpr const QuantityTraits& traits() const noexcept {
        return kQuantities[static_cast<int>(quantity)];
    }
    /// @return whether conversions need the antenna: HMath::getdBmToField and HMath::getFieldTodBm
    ///         take such units, HMath::getdBmToUnit and HMath::getUnitTodBm all others
    constexpr bool needsAntenna() const noexcept { return traits().needsAntenna; }
    /// @return whether only values above 0 have a level
    constexpr bool isLinear() const noexcept { return traits().isLinear; }
    /// @return whether levels are shown in the unit by its name
    constexpr bool canBeShown() const noexcept { return fromDbm.formula != FromDbm::None; }
    /// @return whether values are read in the unit
    constexpr bool canBeRead() const noexcept { return toDbm.formula != ToDbm::None; }
    /// @return whether the unit is a base unit with a prefix, which the level chooses and nobody
    ///         asks for
    constexpr bool isPrefixed() const noexcept { return decades != 0; }
    /// @return whether HMath::getFieldChangeUnit shows levels in the unit with every prefix of
    ///         kPrefixes
    constexpr bool takesEveryPrefix() const noexcept {
        return canBeShown() && isLinear() && needsAntenna();
    }
};

// clang-format off
/// The vocabulary. The voltages and the powers form ladders, each from its base unit down; the
/// first step in which a number is at least 0.01 is shown.
inline constexpr Unit kUnits[] = {
    {u"dBm",  Quantity::Level, 0, {FromDbm::Unchanged},           {ToDbm::Unchanged}},
    // The rounded images of 100 dBm come back as exactly 100 dBm; only these very values do.
    {u"dBV",  Quantity::Level, 0, {FromDbm::Sum, -kDbmOfZeroDbv}, {ToDbm::Sum, kDbmOfZeroDbv},    87.0},
    {u"dBmV", Quantity::Level, 0, {FromDbm::Sum, kDbmvOfZeroDbm}, {ToDbm::Sum, -kDbmvOfZeroDbm}, 147.0},
    {u"dBuV", Quantity::Level, 0, {FromDbm::Sum, kDbuvOfZeroDbm}, {ToDbm::Sum, -kDbuvOfZeroDbm}, 207.0},

    // The volt ladder ends at femto, the watt ladder at yocto; femto and smaller are never read.
    {u"V",       Quantity::Voltage,  0, {FromDbm::Amplitude, kDbmvOfZeroDbm, 0.001}, {ToDbm::Amplitude, -kDbmvOfZeroDbm, 1000.0}},
    {u"mV",      Quantity::Voltage,  3, {}, {ToDbm::Amplitude, -kDbmvOfZeroDbm, 1.0}},
    {u"\u00B5V", Quantity::Voltage,  6, {}, {ToDbm::Amplitude, -kDbmvOfZeroDbm, 0.001}},
    {u"nV",      Quantity::Voltage,  9, {}, {ToDbm::Amplitude, -kDbmvOfZeroDbm, 1e-06}},
    {u"pV",      Quantity::Voltage, 12, {}, {ToDbm::Amplitude, -kDbmvOfZeroDbm, 1e-09}},
    {u"fV",      Quantity::Voltage, 15, {}, {}},

    {u"W",       Quantity::Power,  0, {FromDbm::Power, -kDbmOfOneWatt}, {ToDbm::Power, kDbmOfOneWatt, 1.0}},
    {u"mW",      Quantity::Power,  3, {}, {ToDbm::Power, kDbmOfOneWatt, 0.001}},
    {u"\u00B5W", Quantity::Power,  6, {}, {ToDbm::Power, kDbmOfOneWatt, 1e-06}},
    {u"nW",      Quantity::Power,  9, {}, {ToDbm::Power, kDbmOfOneWatt, 1e-09}},
    {u"pW",      Quantity::Power, 12, {}, {ToDbm::Power, kDbmOfOneWatt, 1e-12}},
    {u"fW",      Quantity::Power, 15, {}, {}},
    {u"aW",      Quantity::Power, 18, {}, {}},
    {u"zW",      Quantity::Power, 21, {}, {}},
    {u"yW",      Quantity::Power, 24, {}, {}},

    {u"dBuV/m", Quantity::FieldStrengthLevel, 0, {FromDbm::Sum, kFieldDbuv}, {ToDbm::Sum, kBackFromDbuv}},
    {u"dBmV/m", Quantity::FieldStrengthLevel, 0, {FromDbm::Sum, kFieldDbmv}, {ToDbm::Sum, kBackFromDbmv}},
    {u"dBV/m",  Quantity::FieldStrengthLevel, 0, {FromDbm::Sum, -kFieldDbv}, {ToDbm::Sum, kBackFromDbv}},

    // Fields are shown with every prefix of kPrefixes; rows have those that are read.
    {u"V/m",  Quantity::FieldStrength,  0, {FromDbm::Amplitude, -kFieldDbv}, {ToDbm::Amplitude, kBackFromDbv, 1.0}},
    {u"mV/m", Quantity::FieldStrength,  3, {}, {ToDbm::Amplitude, kBackFromDbv, 0.001}},
    {u"uV/m", Quantity::FieldStrength,  6, {}, {ToDbm::Amplitude, kBackFromDbv, 1e-06}},
    {u"nV/m", Quantity::FieldStrength,  9, {}, {ToDbm::Amplitude, kBackFromDbv, 1e-09}},
    {u"pV/m", Quantity::FieldStrength, 12, {}, {ToDbm::Amplitude, kBackFromDbv, 1e-12}},

    {u"W/m^2",  Quantity::PowerDensity,  0, {FromDbm::Power, -kFieldDbv, kPerImpedance}, {ToDbm::PowerDensity, kBackFromDbv, 1.0}},
    {u"mW/m^2", Quantity::PowerDensity,  3, {}, {ToDbm::PowerDensity, kBackFromDbv, 0.001}},
    {u"uW/m^2", Quantity::PowerDensity,  6, {}, {ToDbm::PowerDensity, kBackFromDbv, 1e-06}},
    {u"nW/m^2", Quantity::PowerDensity,  9, {}, {ToDbm::PowerDensity, kBackFromDbv, 1e-09}},
    {u"pW/m^2", Quantity::PowerDensity, 12, {}, {ToDbm::PowerDensity, kBackFromDbv, 1e-12}},

    {u"dBm/m^2", Quantity::PowerDensityLevel, 0, {FromDbm::PowerLevel, -kFieldDbv, kPerImpedance}, {ToDbm::Sum, kBackFromDbmPerM2}},
    {u"dBW/m^2", Quantity::PowerDensityLevel, 0, {FromDbm::Sum, -kFieldDbw}, {ToDbm::Sum, kBackFromDbwPerM2}},

    {u"A/m",   Quantity::MagneticField,      0, {FromDbm::Amplitude, kFieldDbuv, kAmperePerMicrovolt}, {ToDbm::Amplitude, kBackFromDbuv, kMicrovoltPerAmpere}},
    {u"dBA/m", Quantity::MagneticFieldLevel, 0, {FromDbm::Sum, -kFieldDba}, {ToDbm::Sum, kBackFromDba}},

    // The one unit with two spellings: shown with an upper-case W, read only with a lower-case w.
    {u"W/cm^2", Quantity::PowerDensity, 0, {FromDbm::Power, -kFieldDbv, kPerImpedancePerCm2}, {}},
    {u"w/cm^2", Quantity::PowerDensity, 0, {}, {ToDbm::Power, kBackFromDbv, kImpedancePerCm2}},
};
// clang-format on

/// Looks a unit up in the vocabulary.
/// @param name  the whole name
/// @return its row; null for a name that is not in the vocabulary
constexpr const Unit* findUnit(QStringView name) noexcept {
    for (const Unit& unit : kUnits) {
        qsizetype same = 0;
        while (same < name.size() && same < unit.name.size() && name[same] == unit.name[same]) {
            ++same;
        }
        if (same == name.size() && same == unit.name.size()) {
            return &unit;
        }
    }
    return nullptr;
}

/// A numeric scale of calculateUnit.
struct Scale {
    const Unit* unit;      ///< the unit of the numbers, and its fromDbm
    Unit::Backward toDbm;  ///< K is subtracted from the levels of fields
};

// clang-format off
/// The scales by their index. Every unit that levels are shown in has one.
inline constexpr Scale kScales[] = {
    /*  0 */ {findUnit(u"dBm"),     {ToDbm::Unchanged}},
    /*  1 */ {findUnit(u"dBV"),     {ToDbm::Sum, kDbmOfZeroDbv}},
    /*  2 */ {findUnit(u"dBmV"),    {ToDbm::Sum, -kDbmvOfZeroDbm}},
    /*  3 */ {findUnit(u"dBuV"),    {ToDbm::Sum, -kDbuvOfZeroDbm}},
    /*  4 */ {findUnit(u"V"),       {ToDbm::Amplitude, -kDbmvOfZeroDbm, 1000.0}},
    // Watts come back by the formula of the volts: not the inverse of the way out, and kept so.
    /*  5 */ {findUnit(u"W"),       {ToDbm::Amplitude, -kDbmvOfZeroDbm, 1000.0}},
    /*  6 */ {findUnit(u"dBuV/m"),  {ToDbm::Sum, -kFieldDbuv}},
    /*  7 */ {findUnit(u"dBmV/m"),  {ToDbm::Sum, -kFieldDbmv}},
    /*  8 */ {findUnit(u"dBV/m"),   {ToDbm::Sum, kFieldDbv}},
    /*  9 */ {findUnit(u"V/m"),     {}},
    /* 10 */ {findUnit(u"W/m^2"),   {ToDbm::PowerDensity, kFieldDbv}},
    /* 11 */ {findUnit(u"dBm/m^2"), {ToDbm::Sum, kDbmOfZeroDbmPerM2}},
    /* 12 */ {findUnit(u"dBW/m^2"), {ToDbm::Sum, kFieldDbw}},
    /* 13 */ {findUnit(u"A/m"),     {ToDbm::Amplitude, -kFieldDbuv, kMicrovoltPerAmpere}},
    /* 14 */ {findUnit(u"dBA/m"),   {ToDbm::Sum, kFieldDba}},
    /* 15 */ {findUnit(u"W/cm^2"),  {ToDbm::Power, kFieldDbv, kImpedancePerCm2}},
};
// clang-format on

/// Looks a scale up.
/// @param index  as calculateUnit takes it
/// @return its row; null for an index that no scale has
constexpr const Scale* findScale(int index) noexcept {
    return index >= 0 && index < static_cast<int>(std::size(kScales)) ? &kScales[index] : nullptr;
}

/// Finds the scale of a unit.
/// @param unit  a row of kUnits
/// @return its index; -1 for a unit that levels are not shown in
constexpr int scaleOf(const Unit& unit) noexcept {
    for (const Scale& scale : kScales) {
        if (scale.unit == &unit) {
            return static_cast<int>(&scale - kScales);
        }
    }
    return -1;
}

/// A prefix that HMath::getFieldChangeUnit puts in front of a field unit.
struct Prefix {
    char letter;    ///< ASCII: micro is u; 0 for the unit itself
    int decades;    ///< @f$10^{decades}@f$ of the prefixed unit make the unit itself
    double factor;  ///< number in the unit -> number in the prefixed unit; the product is rounded
                    ///< to single precision
    double threshold;  ///< smallest field value that takes the prefix
    int decimals;      ///< of the number's text
};

// clang-format off
/// The prefixes from the largest to the smallest; the first whose threshold a field reaches is
/// taken. The factors of the large ones are single-precision numbers.
inline constexpr Prefix kPrefixes[] = {
    {'G', -9, 1e-9F,  1e9,    1},
    {'M', -6, 1e-6F,  1e6,    1},
    {'k', -3, 0.001F, 1000.0, 2},
    {0,    0, 1.0,    0.01,   2},
    {'m',  3, 1000.0, 1e-5,   2},
    {'u',  6, 1e6,    1e-8,   2},
    {'n',  9, 1e9,    1e-11,  2},
    {'p', 12, 1e12,   1e-14,  2},
    {'f', 15, 1e15,   1e-17,  2},
    {'a', 18, 1e18,   1e-20,  2},
    {'z', 21, 1e21,   1e-23,  2},
    {'y', 24, 1e24,   1e-26,  2},
};
// clang-format on

}  // namespace rfu

#pragma once

#include <rfUtils/units/HMath.h>
#include <rfUtils/units/unitTable.h>

#include <QString>
#include <optional>
#include <string>
#include <string_view>

namespace rfu {

/// The antenna that field units refer to.
struct Antenna {
    std::optional<double> center;  ///< MHz, above zero
    double gain = 0.0;             ///< dBi
};

/// In the place of a frequency where the unit does not depend on the antenna.
inline constexpr double kUnusedCenter = 1.0;

/// A text as a person enters it, split into a number and the unit behind it.
struct Entry {
    double value;
    std::string_view unit;  ///< as typed, part of the text; empty for a bare number
    std::string refusal;    ///< why the text is no entry; empty where it is one
};
Entry splitEntry(std::string_view text);

/// Why a value has no level: a linear one that is not above zero. Empty where it has one.
std::string whyNoLevel(const Unit& unit, double value);

/// The dB of a factor of ten in a linear unit; 0 for a logarithmic unit.
double decibelsPerDecadeOf(const Unit& unit);

/// A value that has a level as that level in dBm, as the instrument computes it from an entry.
/// @param antenna with a centre frequency if the unit is a field unit
double entryLevel(HMath& math, const Unit& unit, double value, const Antenna& antenna);

/// Shows levels in one unit.
class LevelPresenter {
public:
    /// @param antenna with a centre frequency if the unit is a field unit
    LevelPresenter(const Unit& unit, const Antenna& antenna);

    /// The text that the instrument shows, as "77.0 dBuV", with the prefix that it chooses; empty
    /// for a linear field value too small for any prefix.
    std::string text(double dBm);
    /// The number in the unit itself, unrounded and without prefix. The antenna correction of the
    /// field units is rounded to single precision on this way, that of text() is not.
    double value(double dBm) const;
    /// The prefix that a text of a level leaves out, "k" or "M", empty where it leaves out none:
    /// the instrument shows kilovolts, kilowatts and megawatts under the labels V and W.
    const char* prefixLeftOut(double dBm, std::string_view text) const;
    const std::string& unitName() const { return unitName_; }

private:
    HMath math_;
    bool isField_;
    int scale_;
    Antenna antenna_;
    QString unit_;
    std::string unitName_;
};

}  // namespace rfu

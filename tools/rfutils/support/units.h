#pragma once

#include <rfUtils/units/HMath.h>
#include <rfUtils/units/unitTable.h>

#include <QString>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/commandLine.h"

namespace rfu::command {

// Units by the names that users type, and the way between them over a level in dBm.

/// The antenna that field units refer to.
struct Antenna {
    std::optional<double> center;  ///< MHz
    double gain = 0.0;             ///< dBi
};

/// In the place of a frequency where the unit does not depend on the antenna.
inline constexpr double kUnusedCenter = 1.0;

/// --center and --gain. @throw UsageError for a frequency that is not above zero
Antenna antennaOf(const CommandLine& line);

/// @throw UsageError for --center or --gain without a unit that depends on them
void requireAntennaUnit(const CommandLine& line, const rfu::Unit& unit);

/// A unit to read values in. @throw BadValue with the nearest names or the reason
const rfu::Unit& unitToRead(std::string_view name);
/// A unit to show levels in. @throw BadValue with the nearest names or the reason
const rfu::Unit& unitToShow(std::string_view name);

std::string nameOf(const rfu::Unit& unit);

/// A unit that the instrument shows or reads.
struct ListedUnit {
    std::string name;
    const rfu::Unit* row;   ///< in the vocabulary; null for a field unit that is only shown
    const rfu::Unit& like;  ///< the row or the unit behind the prefix, for quantity and antenna
};
/// The vocabulary and what it leaves out: the linear field units with every prefix. They follow
/// the unit itself, from the largest to the smallest.
std::vector<ListedUnit> allUnits();

/// @throw BadValue for a linear value that is not above zero: it has no level
void requireLevel(const rfu::Unit& unit, double value);

/// A quantity as a level in dBm, as the instrument computes it from an entry.
/// @throw BadValue for a linear value that is not above zero
/// @throw UsageError for a field unit without centre frequency
double levelOf(HMath& math, const rfu::Unit& unit, double value, const Antenna& antenna);

/// Shows levels in one unit.
class LevelPresenter {
public:
    /// @throw UsageError for a field unit without centre frequency
    LevelPresenter(const rfu::Unit& unit, const Antenna& antenna);

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

}  // namespace rfu::command

#pragma once

#include <rfUtils/units/unitTable.h>

#include <QString>
#include <string>
#include <string_view>
#include <vector>

namespace rfu {

// Units by the names that users type: U+00B5, U+03BC and u are one micro sign to them.

/// A unit by its name, or why it is none.
struct NamedUnit {
    const Unit* unit;     ///< null where the name is refused
    std::string refusal;  ///< with the nearest names or the reason
};

/// A unit to read values in.
NamedUnit unitToRead(std::string_view name);
/// A unit to show levels in.
NamedUnit unitToShow(std::string_view name);

std::string nameOf(const Unit& unit);

/// The unit in which values are read that were typed for a unit: itself, or its spelling for
/// reading. Null where there is none.
const Unit* readAs(const Unit& unit);

/// The row of a name, or that of the unit behind the prefix of one that is only shown, such as A/m
/// of "uA/m": its quantity and antenna. Null for any other text.
const Unit* unitLike(const QString& name);

/// A unit that the instrument shows or reads.
struct ListedUnit {
    std::string name;
    const Unit* row;   ///< in the vocabulary; null for a field unit that is only shown
    const Unit& like;  ///< the row or the unit behind the prefix, for quantity and antenna
};
/// The vocabulary and what it leaves out: the linear field units with every prefix. They follow
/// the unit itself, from the largest to the smallest.
std::vector<ListedUnit> allUnits();

}  // namespace rfu

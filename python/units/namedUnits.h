#pragma once

#include <rfUtils/units/unitTable.h>

#include <string>

#include "analysis/units/unitNames.h"
#include "python/support/errors.h"

namespace rfu::python {

/// A unit to show levels in. @throw std::invalid_argument with the nearest names or the reason
inline const Unit& shownUnit(const std::string& name) {
    const NamedUnit named = unitToShow(name);
    require(named.unit != nullptr, named.refusal);
    return *named.unit;
}

/// A unit to read values in. @throw std::invalid_argument likewise
inline const Unit& readUnit(const std::string& name) {
    const NamedUnit named = unitToRead(name);
    require(named.unit != nullptr, named.refusal);
    return *named.unit;
}

}  // namespace rfu::python

#pragma once

#include <string>

#include "analysis/units/levels.h"

namespace rfu {

/// What a text of a level that leaves out a large prefix means: "\"1.00 W\" means 1.00 kW: from 1 kW the instrument
/// shows kilowatts ...". Empty where it leaves out none.
std::string prefixMeaning(const LevelPresenter& presenter, double dBm, const std::string& text);

}  // namespace rfu

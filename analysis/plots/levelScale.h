#pragma once

#include <QString>
#include <string>
#include <vector>

#include "analysis/plots/levelColors.h"

namespace rfu {

/// How levels in dBm are shown in another unit: a logarithmic unit differs by an offset, a linear one
/// is shown on a logarithmic axis.
struct LevelScale {
    std::string unit = "dBm";
    double atZero = 0.0;             // the value of 0 dBm in the unit
    double decibelsPerDecade = 0.0;  // of a linear unit; 0 for the others

    bool isLinear() const { return decibelsPerDecade > 0.0; }
    double shown(double dBm) const;
    /// @param value above 0 in a linear unit
    double dBm(double value) const;
};

struct LevelTick {
    double level;  // dBm
    QString label;
};

/// Round numbers of the unit, ascending; linear ones with a prefix and the unit.
/// @param wanted about how many
std::vector<LevelTick> levelTicks(const LevelScale& scale, const LevelRange& range, int wanted);

}  // namespace rfu

#pragma once

#include <optional>

#include "analysis/recordings/sweepReader.h"
#include "support/commandLine.h"
#include "support/format.h"
#include "support/prefixNote.h"
#include "support/subcommand.h"
#include "support/table.h"
#include "support/units.h"

namespace rfu::command {

inline constexpr int kHertzDecimals = 6;  // of a number of MHz

/// How the levels of a recording are shown.
struct LevelView {
    const rfu::Unit& unit;
    Antenna antenna;  // without a centre frequency each point is shown at its own

    /// Whether the unit takes the frequency of each point.
    bool isOfEachPoint() const;
    /// @param frequency in MHz, used where the antenna has none
    Antenna antennaAt(double frequency) const;
    Antenna antennaAt(const FrequencyAxis& axis, int point) const;
};

// clang-format off
/// --unit of a command that shows levels by point.
inline constexpr Option kPointUnitOption = {
    "unit", "UNIT", Kind::Unit,
    "Show levels in this unit (rfutils units lists them); a field unit takes the frequency of "
    "each point unless --center is given.", "dBm"};
// clang-format on

/// --unit, --center and --gain.
LevelView levelViewOf(const CommandLine& line);

/// A level in the presenter's unit; in text format as the instrument shows it.
Cell levelCell(const std::optional<double>& level, Format format, LevelPresenter& presenter,
               PrefixNote& note);

}  // namespace rfu::command

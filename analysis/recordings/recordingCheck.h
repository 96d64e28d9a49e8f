#pragma once

#include <QString>

#include "analysis/support/finding.h"

namespace rfu {

/// What checkRecording() looks at.
RuleTable recordingRules();

/// Everything in a recording, compressed or not, that the commands on recordings leave out.
/// @throw InputError where the file cannot be read at all
Findings checkRecording(const QString& file);

/// Whether the first line with data is the hop of a sweep. False for a file that cannot be read.
bool holdsHops(const QString& file);

}  // namespace rfu

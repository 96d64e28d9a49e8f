#pragma once

#include <QString>

#include "analysis/support/finding.h"

namespace rfu {

/// What checkClr() looks at.
RuleTable clrRules();

/// Everything in a colour table that LoadColorTable() reads differently from what is written.
/// @throw InputError where the file cannot be read
Findings checkClr(const QString& file);

}  // namespace rfu

#pragma once

#include <QString>

#include "analysis/support/finding.h"

namespace rfu {

RuleTable setupsRules();

/// What ResultSetup::loadJson() refuses, skips or alters of a file of setups, and what may surprise of the rest.
/// @throw InputError where the file cannot be read
Findings checkSetups(const QString& file);

}  // namespace rfu

#pragma once

#include <QString>

#include "analysis/support/finding.h"

namespace rfu {

RuleTable catalogueRules();

/// What subItemList::loadJson() refuses, skips or alters of a catalogue, and what may surprise of the rest.
/// @throw InputError where the file cannot be read
Findings checkCatalogue(const QString& file);

}  // namespace rfu

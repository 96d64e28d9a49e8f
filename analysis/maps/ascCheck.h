#pragma once

#include <QString>

#include "analysis/support/finding.h"

namespace rfu {

/// What checkAsc() looks at.
RuleTable ascRules();

struct AscCheck {
    Findings findings;
    bool hasNoData = false;  // whether the file names such a value
};

/// Everything in an ASC grid that loadASCFile() reads differently from what is written.
/// @throw InputError where the file cannot be read
AscCheck checkAsc(const QString& file);

}  // namespace rfu

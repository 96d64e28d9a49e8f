#pragma once

#include <QString>
#include <string_view>
#include <vector>

#include "analysis/support/finding.h"

namespace rfu {

/// What checkAsc() looks at.
RuleTable ascRules();

struct AscCheck {
    Findings findings;
    bool hasNoData = false;                          // whether the file names such a value
    std::vector<std::string_view> missingKeys = {};  // of those that place the grid
};

/// Everything in an ASC grid that loadASCFile() reads differently from what is written.
/// @throw InputError where the file cannot be read
AscCheck checkAsc(const QString& file);

}  // namespace rfu

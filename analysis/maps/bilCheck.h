#pragma once

#include <QString>

#include <cstdint>
#include <string_view>
#include <vector>

#include "analysis/support/finding.h"

namespace rfu {

/// What checkHdr() looks at.
RuleTable hdrRules();
/// What checkBil() looks at.
RuleTable bilRules();

struct HdrCheck {
    Findings findings;
    std::int32_t columns = 0;
    std::int32_t rows = 0;
    bool isFloat = false;
    bool hasNoData = false;                          // whether the file names such a value
    std::vector<std::string_view> missingKeys = {};  // of those that place the grid, and NODATA
    long long pixelTypeLine = 0;                     // 0 where there is none
};

/// Everything in the header of a BIL grid because of which the grid is read differently from what is
/// written.
/// @throw InputError where the file cannot be read
HdrCheck checkHdr(const QString& file);

/// The same for the cells. @pre the header has no errors
/// @throw InputError where the file cannot be read
Findings checkBil(const QString& file, const HdrCheck& header);

}  // namespace rfu

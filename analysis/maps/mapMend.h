#pragma once

#include <string_view>

#include "analysis/maps/mendLines.h"

namespace rfu {

// What has one right mend in a map's text file, so that its loader reads what is meant. Whatever the format, a text of
// UTF-16 becomes one of UTF-8, lines that end in CR alone end in LF, a byte-order mark goes away, and numbers that the
// loader would cut get fewer digits. What is about an ignored rule stays as it is, and so does what takes this for mended.

/// See ascMend.h.
Mend mendAscFile(std::string_view bytes, const RuleNames& ignored = {});
/// Keys in another case, or misspelt so that one key alone is near that is missing; float for FLOAT.
Mend mendHdrFile(std::string_view bytes, const RuleNames& ignored = {});
Mend mendClrFile(std::string_view bytes, const RuleNames& ignored = {});
/// Keys, RASTER and degree in another case.
Mend mendTabFile(std::string_view bytes, const RuleNames& ignored = {});

}  // namespace rfu

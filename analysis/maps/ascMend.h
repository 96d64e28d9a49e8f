#pragma once

#include <string_view>

#include "analysis/maps/mendLines.h"

namespace rfu {

/// What has one right mend in an ASC grid, so that loadASCFile() reads the grid that is meant:
/// - keys in another case, or misspelt so that one key alone is near that is missing;
/// - xllcenter and yllcenter, less half a cell, as the corner;
/// - equal dx and dy as the cell size;
/// - NODATA_value as the last line in front of the rows;
/// - numbers that the loader cuts, in fewer digits;
/// - decimal commas, where they alone give every row its cells.
/// @param file in UTF-8 or ASCII, its lines ended by LF
/// @param ignored rules; what is about them stays
Mend mendAsc(std::string_view file, const RuleNames& ignored);

}  // namespace rfu

#pragma once

#include <QString>
#include <string>

#include "analysis/maps/cellGrid.h"

namespace rfu {

/// The world file of a picture with one pixel per cell: six lines that tell programs for maps where
/// the picture lies (the width of a pixel, two rotations, its height, the centre of the upper left
/// pixel).
std::string worldFileOf(const CellGrid& grid);

/// The name under which those programs look for it: "map.pgw" for "map.png".
QString worldFileName(const QString& picture);

}  // namespace rfu

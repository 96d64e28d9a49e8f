#pragma once

#include <QImage>

#include "analysis/maps/rasterFile.h"

namespace rfu {

/// A raster in its colours, one pixel per cell, row 0 on top.
///
/// A cell gets the colour of the first entry of the colour table whose range holds its value,
/// linear between the colours of the two ends; a value in no range gets that of the nearest end. Colour
/// components are clamped to 0 to 255. The default table is replaced by a ramp from black at the
/// smallest measured value to white at the largest. Cells that were not measured are transparent.
QImage draw(const Raster& raster);

}  // namespace rfu

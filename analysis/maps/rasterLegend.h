#pragma once

#include <QImage>

#include "analysis/maps/rasterFile.h"

namespace rfu {

/// A raster's picture with a legend of its colours at the right: a row for each entry of the colour
/// table, one for the cells that were not measured if there are any. The map keeps its place at the
/// upper left. Needs a QGuiApplication for its fonts.
QImage addLegend(const QImage& map, const Raster& raster);

}  // namespace rfu

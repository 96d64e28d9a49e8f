#pragma once

#include <QPointF>
#include <QString>
#include <vector>

#include "analysis/maps/cellGrid.h"
#include "analysis/maps/rasterFile.h"

namespace rfu {

/// The terrain below a straight line over a map.
struct TerrainProfile {
    double length;                  // horizontal, in units of the map
    std::vector<double> distances;  // of the samples from the start, ascending, both ends included
    std::vector<double> heights;    // NaN where it was not measured
};

/// Samples lie where the line crosses a row or a column of cell centres, and halfway between two such
/// places. Between them the terrain is smooth: heights are bilinear between the centres of the four
/// nearest cells. The outer half of the outermost cells has the heights of the nearest places among the
/// centres.
/// @throw InputError for ends outside the map, at the same place or where nothing is measured
TerrainProfile terrainBetween(QPointF start, QPointF end, const Raster& raster,
                              const CellGrid& grid, const QString& file);

}  // namespace rfu

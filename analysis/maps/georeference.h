#pragma once

#include <QPointF>
#include <QString>
#include <optional>

#include "analysis/maps/cellGrid.h"
#include "analysis/maps/tabFile.h"

namespace rfu {

/// A place on the Earth, in degrees.
struct Place {
    double latitude;
    double longitude;
};

/// The georeference beside a raster: FILE.tab.
/// @throw InputError as loadTab() does; also where there is no such file, or it belongs to another raster,
/// does not name its coordinates, or contradicts the origin and cell size of the raster
TabFile loadTabBeside(const QString& rasterFile, const CellGrid& grid);

/// The map coordinates that the library converts to a place on the Earth.
/// @param near a point of the map
/// @return nothing far from the map's zone, where there are none
std::optional<QPointF> pointAt(const Place& place, const TabFile& tab, QPointF near);

/// Whether map coordinates are degrees: the georeference beside the raster says so or, where none
/// says what they are, they all lie within the longitudes and latitudes.
bool isInDegrees(const CellGrid& grid, const QString& rasterFile);

}  // namespace rfu

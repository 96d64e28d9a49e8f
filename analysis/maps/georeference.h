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
/// @throw InputError as loadTab() does, and where there is none, or one that is of another raster,
/// does not say what its coordinates are, or places the map elsewhere than the raster itself does
TabFile loadTabBeside(const QString& rasterFile, const CellGrid& grid);

/// The point of the map that the library converts to a place.
/// @param near a point of the map
/// @return nothing where there is none, far from the map's zone
std::optional<QPointF> pointAt(const Place& place, const TabFile& tab, QPointF near);

/// Whether map coordinates are degrees: the georeference beside the raster says so or, where none
/// says what they are, they all lie within the longitudes and latitudes.
bool isInDegrees(const CellGrid& grid, const QString& rasterFile);

}  // namespace rfu

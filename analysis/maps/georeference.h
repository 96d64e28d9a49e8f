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

/// Whether a georeference and the raster itself agree on a control point within one cell: some programs
/// count pixels from the corner, others from the centre, and the library stores singles.
bool isPlacedAt(const PointAsRead& point, const CellGrid& grid);

/// A georeference of a raster.
/// @throw InputError as loadTab() does; also where the file does not name its coordinates, or contradicts the
/// origin and cell size of the raster
TabFile loadTabOf(const QString& rasterFile, const CellGrid& grid, const QString& tabFile);

/// The georeference beside a raster: FILE.tab.
/// @throw InputError as loadTabOf() does; also where there is no such file, or it belongs to another raster
TabFile loadTabBeside(const QString& rasterFile, const CellGrid& grid);

/// The name of that file.
QString tabBeside(const QString& rasterFile);

/// The map coordinates that the library converts to a place on the Earth.
/// @param near a point of the map
/// @return nothing far from the map's zone, where there are none, and where the coordinates are not known to lie on
/// the Earth
std::optional<QPointF> pointAt(const Place& place, const Projection& projection, QPointF near);

/// The place on the Earth that the library converts map coordinates to, without its rounding.
/// @return nothing where the coordinates are not known to lie on the Earth, and far from the map's zone
std::optional<Place> placeAt(QPointF point, const Projection& projection);

/// Whether map coordinates are degrees: the georeference beside the raster says so or, where none
/// says what they are, they all lie within the longitudes and latitudes.
bool isInDegrees(const CellGrid& grid, const QString& rasterFile);

}  // namespace rfu

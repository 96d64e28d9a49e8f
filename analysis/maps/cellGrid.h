#pragma once

#include <QPoint>
#include <QPointF>
#include <QString>
#include <optional>
#include <string>

#include "analysis/maps/rasterFile.h"

namespace rfu {

/// Where the cells of a raster lie in map coordinates: x grows to the east, y to the north, and
/// row 0 is the northernmost.
struct CellGrid {
    int columns;
    int rows;
    double cellSize;
    double west;  // the edges of the outermost cells
    double south;
    double east;
    double north;

    QPointF middle() const { return {(west + east) / 2.0, (south + north) / 2.0}; }

    /// The cell that holds a point. A point on the border of two cells belongs to the eastern or southern
    /// one; on the eastern or southern edge of the map it belongs to the last cell.
    /// @return nothing outside the map
    std::optional<QPoint> cellAt(QPointF point) const;
};

/// Nothing where the raster gives no cell size above 0 or no finite origin.
std::optional<CellGrid> gridOf(const Raster& raster);

/// @throw InputError where gridOf() gives nothing
CellGrid requireGrid(const Raster& raster, const QString& file);

/// The cell that holds a point.
/// @throw InputError outside the map
QPoint requireCell(const CellGrid& grid, QPointF point, const QString& file);

/// A map coordinate as text with nine significant digits.
std::string coordinateText(double coordinate);
/// "437000,5265000.5"
std::string pointText(QPointF point);

}  // namespace rfu

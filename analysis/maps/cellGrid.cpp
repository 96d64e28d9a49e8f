#include "analysis/maps/cellGrid.h"

#include <algorithm>
#include <cmath>

#include "analysis/support/inputError.h"
#include "analysis/support/singles.h"

namespace rfu {

std::optional<QPoint> CellGrid::cellAt(QPointF point) const {
    if (!(point.x() >= west && point.x() <= east && point.y() >= south && point.y() <= north)) {
        return std::nullopt;
    }
    const auto index = [this](double distance, int count) {
        return std::clamp(static_cast<int>(std::floor(distance / cellSize)), 0, count - 1);
    };
    return QPoint(index(point.x() - west, columns), index(north - point.y(), rows));
}

std::optional<CellGrid> gridOf(const Raster& raster) {
    const veltaGEO& map = *raster.map;
    const double cellSize = decimalOf(map.cellSize);
    const double x = decimalOf(map.originX);
    const double y = decimalOf(map.originY);
    if (!(cellSize > 0.0) || !std::isfinite(cellSize) || !std::isfinite(x) || !std::isfinite(y)) {
        return std::nullopt;
    }
    const double width = map.nCols * cellSize;
    const double height = map.nRows * cellSize;
    if (raster.origin == Origin::LowerLeftCorner) {
        return CellGrid{map.nCols, map.nRows, cellSize, x, y, x + width, y + height};
    }
    const double west = x - cellSize / 2.0;
    const double north = y + cellSize / 2.0;
    return CellGrid{map.nCols, map.nRows, cellSize, west, north - height, west + width, north};
}

CellGrid requireGrid(const Raster& raster, const QString& file) {
    const auto grid = gridOf(raster);
    if (!grid) {
        const veltaGEO& map = *raster.map;
        throw InputError(file, "does not say where its cells lie: the cell size is " +
                                   textOf(map.cellSize) + ", the origin " + textOf(map.originX) +
                                   "," + textOf(map.originY));
    }
    return *grid;
}

QPoint requireCell(const CellGrid& grid, QPointF point, const QString& file) {
    const auto cell = grid.cellAt(point);
    if (!cell) {
        const auto range = [](double low, double high) {
            return coordinateText(low) + " to " + coordinateText(high);
        };
        throw InputError(file, "has no cell at " + pointText(point) + "; x is " +
                                   range(grid.west, grid.east) + ", y is " +
                                   range(grid.south, grid.north));
    }
    return *cell;
}

std::string coordinateText(double coordinate) {
    return QString::number(coordinate, 'g', 9).toStdString();
}

std::string pointText(QPointF point) {
    return coordinateText(point.x()) + "," + coordinateText(point.y());
}

}  // namespace rfu

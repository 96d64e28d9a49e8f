#include "qml/maps/mapContents.h"

#include <cstddef>
#include <cstring>

#include "analysis/maps/rasterFile.h"
#include "analysis/maps/rasterImage.h"
#include "analysis/support/inputError.h"
#include "analysis/support/singles.h"
#include "qml/support/files.h"

namespace rfu::qml {

namespace {

/// Where the raster does not say where its cells lie, they are counted from its lower left corner.
CellGrid gridOrCells(const Raster& raster) {
    const int columns = raster.map->nCols;
    const int rows = raster.map->nRows;
    return gridOf(raster).value_or(CellGrid{
        columns, rows, 1.0, 0.0, 0.0, static_cast<double>(columns), static_cast<double>(rows)});
}

std::vector<float> cellsOf(const Raster& raster) {
    std::vector<float> cells;
    cells.reserve(static_cast<std::size_t>(raster.map->nCols) *
                  static_cast<std::size_t>(raster.map->nRows));
    for (int row = 0; row < raster.map->nRows; ++row) {
        for (int column = 0; column < raster.map->nCols; ++column) {
            const float value = raster.cell(column, row);
            cells.push_back(raster.isMeasured(value) ? value
                                                     : std::numeric_limits<float>::quiet_NaN());
        }
    }
    return cells;
}

/// Its pixels are either opaque or 0, so that nothing has to be multiplied.
QImage premultiplied(QImage picture) {
    picture.reinterpretAsFormat(QImage::Format_ARGB32_Premultiplied);
    return picture;
}

/// A georeference that is named has to be right; one beside the raster may be missing or of no use.
void addPlaces(MapContents& map, const QUrl& controlPoints, const Raster& raster,
               const QString& file) {
    if (!controlPoints.isEmpty()) {
        map.projection =
            loadTabOf(file, requireGrid(raster, file), fileOf(controlPoints)).projection();
        return;
    }
    try {
        map.projection = loadTabBeside(file, requireGrid(raster, file)).projection();
    } catch (const InputError& error) {
        map.placesError = QString::fromStdString(error.message());
    }
}

bool isSame(const CellGrid& a, const CellGrid& b) {
    return a.columns == b.columns && a.rows == b.rows && a.cellSize == b.cellSize &&
           a.west == b.west && a.south == b.south && a.east == b.east && a.north == b.north;
}

bool isSame(const Projection& a, const Projection& b) {
    return a.units == b.units && a.utmZone == b.utmZone && a.isSouth == b.isSouth;
}

/// Bit by bit, for NaN is not equal to itself.
bool isSame(const std::vector<float>& a, const std::vector<float>& b) {
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0);
}

bool isSame(const MapContents& a, const MapContents& b) {
    return isSame(a.grid, b.grid) && isSame(a.projection, b.projection) &&
           a.placesError == b.placesError && isSame(a.cells, b.cells) && a.picture == b.picture;
}

}  // namespace

double MapContents::value(QPoint cell) const {
    return decimalOf(
        cells[static_cast<std::size_t>(cell.y()) * static_cast<std::size_t>(grid.columns) +
              static_cast<std::size_t>(cell.x())]);
}

std::shared_ptr<const MapContents> readMap(const MapFiles& files,
                                           const std::shared_ptr<const MapContents>& held) {
    const QString file = fileOf(files.raster);
    const Raster raster =
        files.colorTable.isEmpty() ? loadRaster(file) : loadRaster(file, fileOf(files.colorTable));
    requireCells(raster, file);
    const auto map = std::make_shared<MapContents>();
    map->grid = gridOrCells(raster);
    map->cells = cellsOf(raster);
    map->picture = premultiplied(draw(raster));
    const RasterStatistics statistics = statisticsOf(raster);
    if (statistics.measured > 0) {
        map->smallest = decimalOf(*statistics.smallest);
        map->largest = decimalOf(*statistics.largest);
    }
    addPlaces(*map, files.controlPoints, raster, file);
    return held != nullptr && isSame(*map, *held) ? held : map;
}

}  // namespace rfu::qml

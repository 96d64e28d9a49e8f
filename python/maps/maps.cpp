#include "python/maps/maps.h"

#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include <QImage>
#include <QPointF>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "analysis/maps/cellGrid.h"
#include "analysis/maps/colorRanges.h"
#include "analysis/maps/georeference.h"
#include "analysis/maps/radioLink.h"
#include "analysis/maps/rasterFile.h"
#include "analysis/maps/rasterImage.h"
#include "analysis/maps/tabFile.h"
#include "analysis/maps/terrainProfile.h"
#include "analysis/recordings/recordingLine.h"
#include "analysis/support/inputError.h"
#include "python/support/arrays.h"
#include "python/support/errors.h"
#include "python/support/texts.h"

namespace rfu::python {

namespace {

/// A raster that was loaded.
class RasterMap {
public:
    explicit RasterMap(const py::bytes& file) : file_(fileOf(file)) {
        const py::gil_scoped_release unlocked;
        raster_ = loadRaster(file_);
        requireCells(raster_, file_);
    }

    /// Row 0 is the northernmost.
    py::array_t<float> cells() const {
        const veltaGEO& map = *raster_.map;
        py::array_t<float> cells({map.nRows, map.nCols});
        for (int row = 0; row < map.nRows; ++row) {
            std::memcpy(cells.mutable_data(row, 0), map.grid[row],
                        static_cast<std::size_t>(map.nCols) * sizeof(float));
        }
        return cells;
    }

    py::array_t<bool> isMissing() const {
        const veltaGEO& map = *raster_.map;
        py::array_t<bool> missing({map.nRows, map.nCols});
        auto out = missing.mutable_unchecked<2>();
        for (int row = 0; row < map.nRows; ++row) {
            for (int column = 0; column < map.nCols; ++column) {
                out(row, column) = !raster_.isMeasured(raster_.cell(column, row));
            }
        }
        return missing;
    }

    std::optional<double> noData() const {
        return raster_.hasNoData ? std::optional<double>(raster_.map->noData) : std::nullopt;
    }

    /// Cell size, and the edges: west, south, east, north. None without a size.
    py::object grid() const {
        const auto grid = gridOf(raster_);
        return grid ? py::object(py::make_tuple(grid->cellSize, grid->west, grid->south, grid->east,
                                                grid->north))
                    : py::none();
    }

    /// Of evenly spaced values from the lowest to the highest end of the colour table: the two ends, and red, green
    /// and blue of each.
    /// @param count at least 2
    py::tuple colors(py::ssize_t count) const {
        const std::vector<ColorRange> ranges = colorRangesOf(raster_);
        if (ranges.empty()) {
            throw InputError(file_, "has no colours: no cell is measured");
        }
        double low = ranges.front().low;
        double high = low;
        for (const ColorRange& range : ranges) {
            low = std::min({low, range.low, range.high});
            high = std::max({high, range.low, range.high});
        }
        py::array_t<std::uint8_t> colors({count, py::ssize_t{3}});
        auto out = colors.mutable_unchecked<2>();
        for (py::ssize_t i = 0; i < count; ++i) {
            const double share = static_cast<double>(i) / static_cast<double>(count - 1);
            const double value = low + (high - low) * share;
            const QRgb color = colorRangeOf(ranges, value).color(value);
            out(i, 0) = static_cast<std::uint8_t>(qRed(color));
            out(i, 1) = static_cast<std::uint8_t>(qGreen(color));
            out(i, 2) = static_cast<std::uint8_t>(qBlue(color));
        }
        return py::make_tuple(low, high, colors);
    }

    /// As the command draws it: rows, columns, red, green, blue and opacity.
    py::array_t<std::uint8_t> image() const {
        const QImage picture = draw(raster_).convertToFormat(QImage::Format_RGBA8888);
        py::array_t<std::uint8_t> pixels({picture.height(), picture.width(), 4});
        for (int row = 0; row < picture.height(); ++row) {
            std::memcpy(pixels.mutable_data(row, 0, 0), picture.constScanLine(row),
                        static_cast<std::size_t>(picture.width()) * 4);
        }
        return pixels;
    }

    std::pair<int, int> cellAt(double x, double y) const {
        const QPoint cell = requireCell(requireGrid(raster_, file_), {x, y}, file_);
        return {cell.y(), cell.x()};
    }

    /// Map coordinates of a place on the Earth.
    std::pair<double, double> pointAtPlace(double latitude, double longitude) const {
        const CellGrid grid = requireGrid(raster_, file_);
        const TabFile tab = loadTabBeside(file_, grid);
        const auto point = pointAt({latitude, longitude}, tab.projection(), grid.middle());
        if (!point) {
            throw InputError(file_, "has no cell at latitude " + coordinateText(latitude) +
                                        ", longitude " + coordinateText(longitude));
        }
        return {point->x(), point->y()};
    }

    py::dict profile(std::pair<double, double> start, std::pair<double, double> end,
                     std::pair<double, double> heights, double hertz, double k) const {
        const CellGrid grid = requireGrid(raster_, file_);
        if (isInDegrees(grid, file_)) {
            throw InputError(file_, "is a map in degrees, and a profile needs metres");
        }
        require(heights.first >= 0.0 && heights.second >= 0.0,
                "heights above ground are not negative");
        require(hertz > 0.0 && k > 0.0, "center_hz and k are above zero");
        const RadioLink link = {heights.first, heights.second, hertz / kHertzPerMegahertz, k};
        const TerrainProfile terrain = terrainBetween(
            {start.first, start.second}, {end.first, end.second}, raster_, grid, file_);
        const std::vector<ClearancePoint> points = clearancesOf(terrain, link);
        const auto least = leastClear(points);
        py::dict found;
        found["distance"] = terrain.length;
        found["start_ground"] = terrain.heights.front();
        found["end_ground"] = terrain.heights.back();
        found["samples"] = terrain.distances.size();
        found["not_measured"] = std::count_if(terrain.heights.begin(), terrain.heights.end(),
                                              [](double height) { return std::isnan(height); });
        const auto at = [&least](double ClearancePoint::*member) {
            return least ? std::optional(*least.*member) : std::nullopt;
        };
        found["least_at"] = at(&ClearancePoint::distance);
        found["terrain"] = at(&ClearancePoint::terrain);
        found["bulge"] = at(&ClearancePoint::bulge);
        found["line_of_sight"] = at(&ClearancePoint::lineOfSight);
        found["clearance"] = at(&ClearancePoint::clearance);
        found["fresnel_radius"] = at(&ClearancePoint::fresnelRadius);
        std::optional<double> ratio;
        std::optional<double> parameter;
        std::optional<double> loss;
        if (least) {
            ratio = least->ratio();
            parameter = diffractionParameter(least->clearance, least->distance,
                                             terrain.length - least->distance, link.wavelength());
            loss = knifeEdgeLoss(*parameter);
        }
        found["ratio"] = ratio;
        found["clear"] = ratio ? std::optional(*ratio >= kClearRatio) : std::nullopt;
        found["diffraction"] = parameter;
        found["knife_edge_loss"] = loss;
        found["free_space_loss"] = freeSpaceLoss(terrain.length, link.wavelength());
        found["distances"] = arrayOf(terrain.distances);
        found["heights"] = arrayOf(terrain.heights);
        return found;
    }

private:
    QString file_;
    Raster raster_;
};

py::dict controlPoints(const py::bytes& file) {
    const TabFile tab = loadTab(fileOf(file));
    const veltaGEO& map = *tab.map;
    const bool isUtm = tab.units() == MapUnits::Utm;
    const bool isPlaced = tab.units() != MapUnits::Unknown;
    py::dict found;
    found["raster"] = textOf(QString::fromUtf8(map.rasterFileName));
    found["raster_file"] = textOf(tab.rasterFile);
    found["units"] = isUtm      ? std::optional<std::string>("UTM")
                     : isPlaced ? std::optional<std::string>("degree")
                                : std::nullopt;
    found["utm_zone"] = isUtm ? std::optional(map.utmZone) : std::nullopt;
    found["hemisphere"] =
        isUtm ? std::optional<std::string>(map.southHemisphere != 0 ? "south" : "north")
              : std::nullopt;
    found["central_meridian"] = map.centralMeridian;
    found["origin_latitude"] = map.originLatitude;
    found["false_easting"] = map.falseEasting;
    found["false_northing"] = map.falseNorthing;
    py::list points;
    for (std::size_t i = 0; i < tab.points.size(); ++i) {
        const PointAsRead& point = tab.points[i];
        const auto place = [&](float degrees) {
            return isPlaced ? std::optional(degrees) : std::nullopt;
        };
        points.append(py::make_tuple(point.pixel.x(), point.pixel.y(), point.x, point.y,
                                     place(map.controlPoint[i].x), place(map.controlPoint[i].y)));
    }
    found["points"] = points;
    return found;
}

}  // namespace

void addMaps(py::module_& module) {
    py::class_<RasterMap>(module, "RasterMap")
        .def(py::init<const py::bytes&>())
        .def("cells", &RasterMap::cells)
        .def("is_missing", &RasterMap::isMissing)
        .def("no_data", &RasterMap::noData)
        .def("grid", &RasterMap::grid)
        .def("colors", &RasterMap::colors)
        .def("image", &RasterMap::image)
        .def("cell_at", &RasterMap::cellAt)
        .def("point_at_place", &RasterMap::pointAtPlace)
        .def("profile", &RasterMap::profile);
    module.def("control_points", &controlPoints);
}

}  // namespace rfu::python

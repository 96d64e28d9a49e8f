#include <QImage>
#include <QPoint>
#include <QPointF>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "analysis/maps/cellGrid.h"
#include "analysis/maps/georeference.h"
#include "analysis/maps/rasterFile.h"
#include "analysis/maps/rasterImage.h"
#include "analysis/maps/rasterLegend.h"
#include "analysis/maps/worldFile.h"
#include "analysis/support/inputError.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/format.h"
#include "support/output.h"
#include "support/picture.h"
#include "support/sections.h"
#include "support/table.h"

namespace rfu::command {

namespace {

/// The options that choose a cell.
constexpr const char* kCellOptions[] = {"at", "at-map", "at-place"};

/// A cell, and the map coordinates of the place that was asked for.
struct ChosenCell {
    QPoint cell;
    std::optional<QPointF> point;
};

ChosenCell cellAtPlace(QPointF latitudeLongitude, const Raster& raster, const QString& file) {
    const CellGrid grid = requireGrid(raster, file);
    const TabFile tab = loadTabBeside(file, grid);
    const Place place = {latitudeLongitude.x(), latitudeLongitude.y()};
    const auto point = pointAt(place, tab.projection(), grid.middle());
    const auto cell = point ? grid.cellAt(*point) : std::nullopt;
    if (!cell) {
        throw InputError(file, "has no cell at latitude " + coordinateText(place.latitude) +
                                   ", longitude " + coordinateText(place.longitude) +
                                   "; rfutils tab shows where its control points lie");
    }
    return {*cell, point};
}

/// Nothing if no cell is asked for.
std::optional<ChosenCell> chosenCell(const CommandLine& line, const Raster& raster,
                                     const QString& file) {
    if (const auto cell = line.find<QPoint>("at")) {
        return ChosenCell{*cell, std::nullopt};
    }
    if (const auto point = line.find<QPointF>("at-map")) {
        return ChosenCell{requireCell(requireGrid(raster, file), *point, file), std::nullopt};
    }
    if (const auto place = line.find<QPointF>("at-place")) {
        return cellAtPlace(*place, raster, file);
    }
    return std::nullopt;
}

Cell coordinateCell(double coordinate) {
    return {coordinate, coordinateText(coordinate)};
}

void printCell(const Raster& raster, const ChosenCell& chosen, const QString& file, Format format) {
    const veltaGEO& map = *raster.map;
    const QPoint& cell = chosen.cell;
    requireCells(raster, file);
    if (cell.x() < 0 || cell.x() >= map.nCols || cell.y() < 0 || cell.y() >= map.nRows) {
        throw InputError(file, "has no cell " + std::to_string(cell.x()) + "," +
                                   std::to_string(cell.y()) + "; columns are 0 to " +
                                   std::to_string(map.nCols - 1) + ", rows 0 to " +
                                   std::to_string(map.nRows - 1));
    }
    const float value = raster.cell(cell.x(), cell.y());
    std::vector<Field> fields = {{"column", cell.x()},
                                 {"row", cell.y()},
                                 {"value", raster.isMeasured(value) ? Cell(value) : Cell()}};
    if (chosen.point) {
        fields.push_back({"x", coordinateCell(chosen.point->x())});
        fields.push_back({"y", coordinateCell(chosen.point->y())});
    }
    writeObject(format, fields);
}

void printMap(const Raster& raster, Format format) {
    const veltaGEO& map = *raster.map;
    const RasterStatistics statistics = statisticsOf(raster);
    writeObject(format, {{"columns", map.nCols},
                         {"rows", map.nRows},
                         {"originX", map.originX},
                         {"originY", map.originY},
                         {"cellSize", map.cellSize},
                         {"noData", raster.hasNoData ? Cell(map.noData) : Cell()},
                         {"message", map.errMsg},
                         {"measured", raster.hasCells ? Cell(statistics.measured) : Cell()},
                         {"smallest", statistics.smallest},
                         {"largest", statistics.largest},
                         {"mean", rounded(statistics.mean)},
                         {"origin", raster.origin == Origin::LowerLeftCorner
                                        ? "lower left corner of the map"
                                        : "centre of the upper left cell"}});
}

void printCorners(const Raster& raster, Format format) {
    struct Corner {
        const char* name;
        std::optional<QPointF> point;
    };
    Table<Corner> table(format,
                        {{"corner", [](const Corner& corner) { return corner.name; }},
                         {"x",
                          [&](const Corner& corner) {
                              return corner.point ? coordinateCell(corner.point->x()) : Cell();
                          }},
                         {"y", [&](const Corner& corner) {
                              return corner.point ? coordinateCell(corner.point->y()) : Cell();
                          }}});
    const auto grid = gridOf(raster);
    const auto add = [&](const char* name, double CellGrid::*x, double CellGrid::*y) {
        table.add({name, grid ? std::optional(QPointF(*grid.*x, *grid.*y)) : std::nullopt});
    };
    add("upper left", &CellGrid::west, &CellGrid::north);
    add("upper right", &CellGrid::east, &CellGrid::north);
    add("lower right", &CellGrid::east, &CellGrid::south);
    add("lower left", &CellGrid::west, &CellGrid::south);
    table.finish();
}

void printColors(const veltaGEO& map, Format format) {
    Table<int> table(format, {{"low", [&](int i) { return map.lowValue[i]; }},
                              {"lowRed", [&](int i) { return map.lowRed[i]; }},
                              {"lowGreen", [&](int i) { return map.lowGreen[i]; }},
                              {"lowBlue", [&](int i) { return map.lowBlue[i]; }},
                              {"high", [&](int i) { return map.highValue[i]; }},
                              {"highRed", [&](int i) { return map.highRed[i]; }},
                              {"highGreen", [&](int i) { return map.highGreen[i]; }},
                              {"highBlue", [&](int i) { return map.highBlue[i]; }}});
    for (int i = 0; i < map.colorCount; ++i) {
        table.add(i);
    }
    table.finish();
}

void requireFittingOptions(const CommandLine& line) {
    const auto isSet = [&](const char* option) { return line.isSet(option); };
    if (std::count_if(std::begin(kCellOptions), std::end(kCellOptions), isSet) > 1) {
        throw UsageError("--at, --at-map and --at-place exclude each other");
    }
    for (const char* const option : {"world", "legend"}) {
        if (line.isSet(option) && !line.isSet("png")) {
            throw UsageError(std::string("--") + option + " needs a --png");
        }
    }
}

void savePictures(const CommandLine& line, const Raster& raster, const QString& file) {
    requireCells(raster, file);
    const QString name = line.text("png");
    const QStringList inputs = filesOfRaster(file) << withExtension(file, "tab");
    QImage picture = draw(raster);
    if (line.isSet("legend")) {
        const TextDrawing drawing;
        picture = addLegend(picture, raster);
    }
    if (!line.isSet("world")) {
        savePicture(picture, name, inputs);
        return;
    }
    const std::string world = worldFileOf(requireGrid(raster, file));
    savePicture(picture, name, inputs);
    saveText(world, worldFileName(name), inputs);
}

void runRaster(const CommandLine& line) {
    requireFittingOptions(line);
    const QString file = line.text("FILE");
    const Raster raster = loadRaster(file);
    if (const auto chosen = chosenCell(line, raster, file)) {
        printCell(raster, *chosen, file, line.format());
    } else {
        Sections sections(line.format());
        sections.begin("map");
        printMap(raster, line.format());
        sections.begin("colours");
        printColors(*raster.map, line.format());
        sections.begin("corners");
        printCorners(raster, line.format());
        sections.finish();
        if (!raster.hasCells) {
            standardOutput().flush();  // the note follows the tables
            printNote(InputError(file, kNoCells).message());
        }
    }
    if (line.isSet("png")) {
        savePictures(line, raster, file);
    }
}

}  // namespace

// clang-format off
constexpr Subcommand kRaster = {
    "raster", "Show or draw a raster map",
    "Show what a raster map holds, or draw it.\n"
    "FILE is an ASCII grid (.asc) or a grid of floats with its header (.bil, .hdr); the colour "
    "table is read from the .clr file beside it. smallest, largest and mean are those of the "
    "measured cells: all but no-data, infinite and NaN ones. Rows and columns count from 0, row 0 "
    "is on top. corners are those of the map in map coordinates; origin says what lies at originX, "
    "originY.\n"
    "\n"
    "--at-place needs a TAB file beside the raster (terrain.tab for terrain.asc). It finds the "
    "place by inverting the library's conversion of map coordinates to degrees.\n"
    "\n"
    "The picture has one pixel per cell. Its colour is that of the first entry whose range holds "
    "the value, linear between the entry's two colours; outside all ranges that of the nearest "
    "end. Without a colour table it is a grey ramp from the smallest to the largest value. No-data "
    "cells are transparent.",
    {{"FILE", Kind::RasterFile}},
    {{"at", "COL,ROW", Kind::Cell, "Show one cell instead of the map."},
     {"at-map", "E,N", Kind::Pair, "Show the cell at map coordinates."},
     {"at-place", "LAT,LON", Kind::Pair, "Show the cell at a latitude and a longitude in degrees."},
     {"png", "OUT.png", Kind::Picture, "Draw the map with its colour table."},
     {"world", "", Kind::Flag,
      "Write a world file beside the picture (OUT.pgw), by which programs for maps place it."},
     {"legend", "", Kind::Flag, "Draw the colours and their values beside the map."}},
    {"rfutils raster terrain.asc",
     "rfutils raster terrain.asc --png terrain.png --legend --world",
     "rfutils raster terrain.asc --at-map 440000,5265000",
     "rfutils raster terrain.asc --at-place 47.53,8.2",
     "rfutils raster terrain_bil.bil --at 128,40",
     "rfutils raster terrain_bil.bil --format json"},
    runRaster};
// clang-format on

}  // namespace rfu::command

#include "analysis/maps/rasterFile.h"
#include "analysis/maps/rasterImage.h"
#include "analysis/support/inputError.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/output.h"
#include "support/picture.h"
#include "support/sections.h"
#include "support/singleCell.h"
#include "support/tableWriter.h"

namespace rfu::command {

namespace {

constexpr int kMeanDecimals = 3;

void printCell(const Raster& raster, const QPoint& cell, const QString& file, Format format) {
    const veltaGEO& map = *raster.map;
    requireCells(raster, file);
    if (cell.x() < 0 || cell.x() >= map.nCols || cell.y() < 0 || cell.y() >= map.nRows) {
        throw InputError(file, "has no cell " + std::to_string(cell.x()) + "," +
                                   std::to_string(cell.y()) + "; columns are 0 to " +
                                   std::to_string(map.nCols - 1) + ", rows 0 to " +
                                   std::to_string(map.nRows - 1));
    }
    const float value = raster.cell(cell.x(), cell.y());
    TableWriter table(standardOutput(), format, {"column", "row", "value"},
                      TableWriter::Shape::Object);
    table.integer(cell.x()).integer(cell.y());
    addSingle(table, raster.isMeasured(value) ? std::optional(value) : std::nullopt);
    table.finish();
}

void printMap(const Raster& raster, Format format) {
    const veltaGEO& map = *raster.map;
    const RasterStatistics statistics = statisticsOf(raster);
    TableWriter table(standardOutput(), format,
                      {"columns", "rows", "originX", "originY", "cellSize", "noData", "message",
                       "measured", "smallest", "largest", "mean"},
                      TableWriter::Shape::Object);
    table.integer(map.nCols).integer(map.nRows);
    addSingle(table, map.originX);
    addSingle(table, map.originY);
    addSingle(table, map.cellSize);
    addSingle(table, raster.hasNoData ? std::optional(map.noData) : std::nullopt);
    table.text(map.errMsg.toStdString());
    raster.hasCells ? table.integer(statistics.measured) : table.none();
    addSingle(table, statistics.smallest);
    addSingle(table, statistics.largest);
    statistics.mean ? table.number(*statistics.mean, kMeanDecimals) : table.none();
    table.finish();
}

void printColors(const veltaGEO& map, Format format) {
    TableWriter table(
        standardOutput(), format,
        {"low", "lowRed", "lowGreen", "lowBlue", "high", "highRed", "highGreen", "highBlue"});
    for (int i = 0; i < map.colorCount; ++i) {
        addSingle(table, map.lowValue[i]);
        table.integer(map.lowRed[i]).integer(map.lowGreen[i]).integer(map.lowBlue[i]);
        addSingle(table, map.highValue[i]);
        table.integer(map.highRed[i]).integer(map.highGreen[i]).integer(map.highBlue[i]);
    }
    table.finish();
}

void runRaster(const CommandLine& line) {
    const QString file = line.text("FILE");
    const Raster raster = loadRaster(file);
    if (const auto cell = line.find<QPoint>("at")) {
        printCell(raster, *cell, file, line.format());
    } else {
        Sections sections(standardOutput(), line.format());
        sections.begin("map");
        printMap(raster, line.format());
        sections.begin("colours");
        printColors(*raster.map, line.format());
        sections.finish();
    }
    if (line.isSet("png")) {
        requireCells(raster, file);
        savePicture(draw(raster), line.text("png"));
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
    "is on top.\n"
    "\n"
    "The picture has one pixel per cell. Its colour is that of the first entry whose range holds "
    "the value, linear between the entry's two colours; outside all ranges that of the nearest "
    "end. Without a colour table it is a grey ramp from the smallest to the largest value. No-data "
    "cells are transparent.",
    {{"FILE", Kind::File}},
    {{"at", "COL,ROW", Kind::Cell, "Show one cell instead of the map."},
     {"png", "OUT.png", Kind::Picture, "Draw the map with its colour table."}},
    {"rfutils raster terrain.asc",
     "rfutils raster terrain.asc --png terrain.png",
     "rfutils raster terrain_bil.bil --at 128,40",
     "rfutils raster terrain_bil.bil --format json"},
    runRaster};
// clang-format on

}  // namespace rfu::command

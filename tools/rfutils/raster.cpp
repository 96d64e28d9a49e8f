#include <QPoint>
#include <QString>
#include <string>

#include "analysis/maps/rasterFile.h"
#include "analysis/maps/rasterImage.h"
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
    writeObject(format, {{"column", cell.x()},
                         {"row", cell.y()},
                         {"value", raster.isMeasured(value) ? Cell(value) : Cell()}});
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
                         {"mean", rounded(statistics.mean)}});
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

void runRaster(const CommandLine& line) {
    const QString file = line.text("FILE");
    const Raster raster = loadRaster(file);
    if (const auto cell = line.find<QPoint>("at")) {
        printCell(raster, *cell, file, line.format());
    } else {
        Sections sections(line.format());
        sections.begin("map");
        printMap(raster, line.format());
        sections.begin("colours");
        printColors(*raster.map, line.format());
        sections.finish();
        if (!raster.hasCells) {
            standardOutput().flush();  // the note follows the tables
            printNote(InputError(file, kNoCells).message());
        }
    }
    if (line.isSet("png")) {
        requireCells(raster, file);
        savePicture(draw(raster), line.text("png"), filesOfRaster(file));
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

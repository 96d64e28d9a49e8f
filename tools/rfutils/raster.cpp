#include "analysis/maps/rasterFile.h"
#include "analysis/maps/rasterImage.h"
#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/picture.h"
#include "support/sections.h"
#include "support/singleCell.h"

namespace rfu::command {

namespace {

// clang-format off
const Usage kUsage = {
    "Show what a raster map holds, or draw it.\n"
    "FILE is an ASCII grid (.asc) or a grid of floats with its header (.bil, .hdr); the colour table\n"
    "is read from the .clr file beside it. smallest, largest and mean are those of the measured\n"
    "cells: all but no-data, infinite and NaN ones. Rows and columns count from 0, row 0 is on top.\n"
    "\n"
    "The picture has one pixel per cell. Its colour is that of the first entry whose range holds the\n"
    "value, linear between the entry's two colours; outside all ranges that of the nearest end.\n"
    "Without a colour table it is a grey ramp from the smallest to the largest value. No-data cells\n"
    "are transparent.",
    "FILE",
    {"rfutils raster terrain.asc",
     "rfutils raster terrain.asc --png terrain.png",
     "rfutils raster terrain_bil.bil --at 128,40",
     "rfutils raster terrain_bil.bil --format json"}};
// clang-format on

constexpr int kMeanDecimals = 3;

struct Cell {
    int column;
    int row;
};

std::optional<Cell> askedCell(const CommandLine& line) {
    if (!line.isSet("at")) {
        return std::nullopt;
    }
    const QStringList parts = line.option("at").split(QLatin1Char(','));
    const auto column = parseInteger(parts.first().toStdString());
    const auto row = parseInteger(parts.last().toStdString());
    if (parts.size() != 2 || !column || !row) {
        throw usageError("--at " + quoted(line.option("at").toStdString()) +
                         ": a column and a row such as 128,40 are expected");
    }
    return Cell{*column, *row};
}

void printCell(const Raster& raster, const Cell& cell, const QString& file, Format format) {
    const veltaGEO& map = *raster.map;
    requireCells(raster, file);
    if (cell.column < 0 || cell.column >= map.nCols || cell.row < 0 || cell.row >= map.nRows) {
        throw InputError(file, "has no cell " + std::to_string(cell.column) + "," +
                                   std::to_string(cell.row) + "; columns are 0 to " +
                                   std::to_string(map.nCols - 1) + ", rows 0 to " +
                                   std::to_string(map.nRows - 1));
    }
    const float value = raster.cell(cell.column, cell.row);
    TableWriter table(standardOutput(), format, {"column", "row", "value"},
                      TableWriter::Shape::Object);
    table.integer(cell.column).integer(cell.row);
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

}  // namespace

void runRaster(const QStringList& arguments) {
    CommandLine line(kUsage);
    line.addOption("at", "COL,ROW", "Show one cell instead of the map.");
    line.addOption("png", "OUT.png", "Draw the map with its colour table.");
    line.addFormat();
    if (!line.parse(arguments)) {
        return;
    }
    const QString file = line.onlyValue("FILE");
    const auto cell = askedCell(line);
    const Raster raster = loadRaster(file);
    if (cell) {
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
        savePicture(draw(raster), line.option("png"));
    }
}

}  // namespace rfu::command

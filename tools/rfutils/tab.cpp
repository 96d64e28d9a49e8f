#include <QImage>
#include <QString>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "analysis/maps/mapSheet.h"
#include "analysis/maps/rasterFile.h"
#include "analysis/maps/rasterImage.h"
#include "analysis/maps/tabFile.h"
#include "analysis/support/singles.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/format.h"
#include "support/picture.h"
#include "support/sections.h"
#include "support/table.h"

namespace rfu::command {

namespace {

/// In degrees; nothing where the file does not say what its coordinates are.
std::optional<veltaGEO::ControlPoint> placeOf(const TabFile& tab, std::size_t point) {
    return tab.units() == MapUnits::Unknown ? std::nullopt
                                            : std::optional(tab.map->controlPoint[point]);
}

void printProjection(const TabFile& tab, Format format) {
    const veltaGEO& map = *tab.map;
    const bool isUtm = tab.units() == MapUnits::Utm;
    writeObject(format, {{"raster", map.rasterFileName},
                         {"units", isUtm                              ? Cell("UTM")
                                   : tab.units() == MapUnits::Degrees ? "degree"
                                                                      : Cell()},
                         {"utmZone", isUtm ? Cell(map.utmZone) : Cell()},
                         {"hemisphere",
                          isUtm ? Cell(map.southHemisphere != 0 ? "south" : "north") : Cell()},
                         {"centralMeridian", map.centralMeridian},
                         {"originLatitude", map.originLatitude},
                         {"falseEasting", map.falseEasting},
                         {"falseNorthing", map.falseNorthing}});
}

void printPoints(const TabFile& tab, Format format) {
    struct Row {
        std::size_t index;
        const PointAsRead& read;
        std::optional<veltaGEO::ControlPoint> place;
    };
    Table<Row> table(
        format, {{"point", [](const Row& row) { return "Pt " + std::to_string(row.index + 1); }},
                 {"column", [](const Row& row) { return row.read.pixel.x(); }},
                 {"row", [](const Row& row) { return row.read.pixel.y(); }},
                 {"x", [](const Row& row) { return row.read.x; }},
                 {"y", [](const Row& row) { return row.read.y; }},
                 {"longitude", [](const Row& row) { return row.place ? row.place->x : Cell(); }},
                 {"latitude", [](const Row& row) { return row.place ? row.place->y : Cell(); }}});
    for (std::size_t i = 0; i < tab.points.size(); ++i) {
        table.add({i, tab.points[i], placeOf(tab, i)});
    }
    table.finish();
}

QString bearing(float degrees, const char* positive, const char* negative) {
    return QString::fromStdString(textOf(std::abs(degrees))) + QChar(0x00B0) +
           QLatin1String(degrees < 0.0F ? negative : positive);
}

QImage drawMap(const TabFile& tab) {
    const Raster raster = loadRaster(tab.rasterFile);
    requireCells(raster, tab.rasterFile);
    std::vector<MapMark> marks;
    for (std::size_t i = 0; i < tab.points.size(); ++i) {
        const auto place = placeOf(tab, i);
        marks.push_back(
            {tab.points[i].pixel, QStringLiteral("Pt ") + QString::number(i + 1),
             place ? bearing(place->y, "N", "S") + QLatin1Char(' ') + bearing(place->x, "E", "W")
                   : QString()});
    }
    return drawSheet(draw(raster), marks);
}

void runTab(const CommandLine& line) {
    const TabFile tab = loadTab(line.text("FILE"));
    Sections sections(line.format());
    sections.begin("projection");
    printProjection(tab, line.format());
    sections.begin("points");
    printPoints(tab, line.format());
    sections.finish();
    if (line.isSet("png")) {
        const TextDrawing drawing;
        savePicture(drawMap(tab), line.text("png"),
                    filesOfRaster(tab.rasterFile) << line.text("FILE"));
    }
}

}  // namespace

// clang-format off
constexpr Subcommand kTab = {
    "tab", "Show the georeference of a raster map",
    "Show the georeference of a raster map: its projection, the four control points and the raster "
    "file that it names. x and y are the control points as read, longitude and latitude those that "
    "the library converts from UTM where the file says so; points in degrees are taken as they "
    "are.\n"
    "\n"
    "--png draws the raster beside the file with the points marked.",
    {{"FILE", Kind::TabFile}},
    {{"png", "OUT.png", Kind::Picture, "Draw the raster with the control points."}},
    {"rfutils tab terrain.tab",
     "rfutils tab terrain.tab --format json",
     "rfutils tab terrain.tab --png points.png"},
    runTab};
// clang-format on

}  // namespace rfu::command

#include <cmath>

#include "analysis/maps/mapSheet.h"
#include "analysis/maps/rasterFile.h"
#include "analysis/maps/rasterImage.h"
#include "analysis/maps/tabFile.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/output.h"
#include "support/picture.h"
#include "support/sections.h"
#include "support/singleCell.h"
#include "support/tableWriter.h"

namespace rfu::command {

namespace {

constexpr int kUnitsDegree = 1;
constexpr int kUnitsConverted = 2;

/// In degrees.
struct Place {
    float longitude;
    float latitude;
};

/// Nothing where the file does not say what its coordinates are.
std::optional<Place> placeOf(const veltaGEO& map, std::size_t point) {
    if (map.unitKind != kUnitsDegree && map.unitKind != kUnitsConverted) {
        return std::nullopt;
    }
    return Place{map.controlPoint[point].x, map.controlPoint[point].y};
}

void printProjection(const veltaGEO& map, Format format) {
    const bool isUtm = map.unitKind == kUnitsConverted;
    TableWriter table(standardOutput(), format,
                      {"raster", "units", "utmZone", "hemisphere", "centralMeridian",
                       "originLatitude", "falseEasting", "falseNorthing"},
                      TableWriter::Shape::Object);
    table.text(map.rasterFileName);
    if (isUtm) {
        table.text("UTM").integer(map.utmZone);
        table.text(map.southHemisphere != 0 ? "south" : "north");
    } else {
        map.unitKind == kUnitsDegree ? table.text("degree") : table.none();
        table.none().none();
    }
    for (const float value :
         {map.centralMeridian, map.originLatitude, map.falseEasting, map.falseNorthing}) {
        addSingle(table, value);
    }
    table.finish();
}

void printPoints(const TabFile& tab, Format format) {
    TableWriter table(standardOutput(), format,
                      {"point", "column", "row", "x", "y", "longitude", "latitude"});
    for (std::size_t i = 0; i < tab.points.size(); ++i) {
        const PointAsRead& read = tab.points[i];
        table.text("Pt " + std::to_string(i + 1));
        table.number(read.pixel.x()).number(read.pixel.y());
        addSingle(table, read.x);
        addSingle(table, read.y);
        if (const auto place = placeOf(*tab.map, i)) {
            addSingle(table, place->longitude);
            addSingle(table, place->latitude);
        } else {
            table.none().none();
        }
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
        const auto place = placeOf(*tab.map, i);
        marks.push_back({tab.points[i].pixel, QStringLiteral("Pt ") + QString::number(i + 1),
                         place ? bearing(place->latitude, "N", "S") + QLatin1Char(' ') +
                                     bearing(place->longitude, "E", "W")
                               : QString()});
    }
    return drawSheet(draw(raster), marks);
}

void runTab(const CommandLine& line) {
    const TabFile tab = loadTab(line.text("FILE"));
    Sections sections(standardOutput(), line.format());
    sections.begin("projection");
    printProjection(*tab.map, line.format());
    sections.begin("points");
    printPoints(tab, line.format());
    sections.finish();
    if (line.isSet("png")) {
        const TextDrawing drawing;
        savePicture(drawMap(tab), line.text("png"));
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
    {{"FILE", Kind::File}},
    {{"png", "OUT.png", Kind::Picture, "Draw the raster with the control points."}},
    {"rfutils tab terrain.tab",
     "rfutils tab terrain.tab --format json",
     "rfutils tab terrain.tab --png points.png"},
    runTab};
// clang-format on

}  // namespace rfu::command

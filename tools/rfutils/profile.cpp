#include <QFileInfo>
#include <QPointF>
#include <QString>
#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "analysis/maps/cellGrid.h"
#include "analysis/maps/georeference.h"
#include "analysis/maps/radioLink.h"
#include "analysis/maps/rasterFile.h"
#include "analysis/maps/terrainProfile.h"
#include "analysis/plots/profilePlot.h"
#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/format.h"
#include "support/output.h"
#include "support/picture.h"
#include "support/plotOptions.h"
#include "support/table.h"

namespace rfu::command {

namespace {

constexpr int kMetreDecimals = 1;
constexpr int kRatioDecimals = 2;
constexpr int kLossDecimals = 1;

RadioLink linkOf(const CommandLine& line) {
    const QPointF heights = line.value<QPointF>("heights");
    const RadioLink link = {heights.x(), heights.y(), line.value<double>("center"),
                            line.value<double>("k")};
    if (link.startHeight < 0.0 || link.endHeight < 0.0) {
        throw UsageError("--heights takes heights above ground, which are not negative");
    }
    if (!(link.frequency > 0.0)) {
        throw UsageError("--center takes a frequency above zero");
    }
    if (!(link.k > 0.0)) {
        throw UsageError("--k takes a number above zero");
    }
    return link;
}

CellGrid gridInMetres(const Raster& raster, const QString& file) {
    requireCells(raster, file);
    const CellGrid grid = requireGrid(raster, file);
    if (isInDegrees(grid, file)) {
        throw InputError(file,
                         "is a map in degrees, and a profile needs metres; gdalwarp -t_srs "
                         "EPSG:326ZZ converts it to UTM zone ZZ");
    }
    return grid;
}

/// A link over the terrain and where it is least clear.
struct Profile {
    TerrainProfile terrain;
    RadioLink link;
    std::vector<ClearancePoint> points;
    std::optional<ClearancePoint> least;
    long long unmeasured;

    Profile(const TerrainProfile& profile, const RadioLink& radioLink)
        : terrain(profile),
          link(radioLink),
          points(clearancesOf(terrain, link)),
          least(leastClear(points)),
          unmeasured(std::count_if(terrain.heights.begin(), terrain.heights.end(),
                                   [](double height) { return std::isnan(height); })) {}
};

void print(const Profile& profile, Format format) {
    const auto& least = profile.least;
    const auto at = [&](double ClearancePoint::*member) {
        return withDecimals(least ? std::optional(*least.*member) : std::nullopt, kMetreDecimals);
    };
    std::optional<double> ratio;
    std::optional<double> parameter;
    std::optional<double> loss;
    if (least) {
        ratio = least->ratio();
        parameter = diffractionParameter(least->clearance, least->distance,
                                         profile.terrain.length - least->distance,
                                         profile.link.wavelength());
        loss = knifeEdgeLoss(*parameter);
    }
    const auto& terrain = profile.terrain;
    writeObject(
        format,
        {{"distance", withDecimals(terrain.length, kMetreDecimals)},
         {"startGround", withDecimals(terrain.heights.front(), kMetreDecimals)},
         {"endGround", withDecimals(terrain.heights.back(), kMetreDecimals)},
         {"samples", terrain.distances.size()},
         {"notMeasured", profile.unmeasured},
         {"leastAt", at(&ClearancePoint::distance)},
         {"terrain", at(&ClearancePoint::terrain)},
         {"bulge", at(&ClearancePoint::bulge)},
         {"lineOfSight", at(&ClearancePoint::lineOfSight)},
         {"clearance", at(&ClearancePoint::clearance)},
         {"fresnelRadius", at(&ClearancePoint::fresnelRadius)},
         {"ratio", withDecimals(ratio, kRatioDecimals)},
         {"clear", ratio ? Cell(*ratio >= kClearRatio) : Cell()},
         {"diffraction", withDecimals(parameter, kRatioDecimals)},
         {"knifeEdgeLoss", withDecimals(loss, kLossDecimals)},
         {"freeSpaceLoss",
          withDecimals(freeSpaceLoss(terrain.length, profile.link.wavelength()), kLossDecimals)}});
}

ProfilePlot plotOf(const Profile& profile, const QString& file) {
    ProfilePlot plot;
    const double length = profile.terrain.length;
    plot.title = QFileInfo(file).fileName().toStdString() + ", " +
                 std::string(ShortestText(profile.link.frequency).view()) + " MHz, k " +
                 std::string(ShortestText(profile.link.k).view());
    plot.distances = profile.terrain.distances;
    for (const ClearancePoint& point : profile.points) {
        plot.ground.push_back(point.terrain + point.bulge);
    }
    plot.startAntenna = profile.points.front().lineOfSight;
    plot.endAntenna = profile.points.back().lineOfSight;
    plot.fresnelRadius = fresnelRadius(length / 2.0, length / 2.0, profile.link.wavelength());
    plot.clearRatio = kClearRatio;
    if (profile.least) {
        const ClearancePoint& least = *profile.least;
        plot.mark =
            ProfilePlot::Mark{"clearance " + fixedText(least.clearance, kMetreDecimals) + " m, " +
                                  fixedText(least.ratio(), kRatioDecimals) + " F1",
                              least.distance, least.terrain + least.bulge, least.lineOfSight};
    }
    return plot;
}

void runProfile(const CommandLine& line) {
    const QString file = line.text("FILE");
    const RadioLink link = linkOf(line);
    const QStringList inputs = filesOfRaster(file) << withExtension(file, "tab");
    const PlotOptions options = plotOptionsOf(line, inputs);
    const Raster raster = loadRaster(file);
    const CellGrid grid = gridInMetres(raster, file);
    const Profile profile(terrainBetween(line.value<QPointF>("start"), line.value<QPointF>("end"),
                                         raster, grid, file),
                          link);
    print(profile, line.format());
    if (profile.unmeasured > 0) {
        standardOutput().flush();  // the note follows the result
        printNote(std::to_string(profile.unmeasured) + " of " +
                  std::to_string(profile.points.size()) +
                  " samples lie where nothing is measured; they count nowhere");
    }
    if (!options.file.isEmpty()) {
        ProfilePlot plot = plotOf(profile, file);
        plot.size = options.shape.size;
        savePlot(drawingOf(plot), options.file, inputs);
    }
}

}  // namespace

// clang-format off
constexpr Subcommand kProfile = {
    "profile", "Clearance and losses of a radio link over a raster map",
    "Look along a radio link over the terrain of a raster map in metres: where the line of sight "
    "is least clear, measured in radii F1 of the first Fresnel zone, and what a single knife edge "
    "there adds to the loss of free space. clear tells whether 0.6 F1 are free everywhere.\n"
    "\n"
    "FILE is a raster as for rfutils raster; its values are heights in metres. Heights between the "
    "centres of cells are bilinear. The Earth's curvature raises the terrain towards the line of "
    "sight. docs/propagation.md has the formulas and their sources. Grids in degrees are refused.",
    {{"FILE", Kind::RasterFile}},
    {{"start", "E,N", Kind::Pair, "One end of the link in map coordinates.", nullptr, 1},
     {"end", "E,N", Kind::Pair, "The other end.", nullptr, 1},
     {"heights", "H1,H2", Kind::Pair, "Heights of the two antennas above ground in metres.", nullptr, 1},
     {"center", "FREQ", Kind::Frequency,
      "Frequency: 433MHz, 2.4GHz or a number of MHz.", nullptr, 1},
     {"k", "K", Kind::Number, "The effective radius of the Earth over the true one.", "1.333"},
     {"plot", "OUT", Kind::Plot,
      "Draw the terrain, the line of sight and the Fresnel zone, as PNG or SVG by the ending."},
     kPlotWidthOption,
     kPlotHeightOption},
    {"rfutils profile terrain.asc --start 437000,5266500 --end 443500,5266500 --heights 10,10 "
     "--center 433MHz",
     "rfutils profile terrain.asc --start 437000,5266500 --end 443500,5266500 --heights 10,10 "
     "--center 433MHz --plot profile.png"},
    runProfile};
// clang-format on

}  // namespace rfu::command

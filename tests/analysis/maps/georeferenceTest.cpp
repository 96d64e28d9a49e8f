#include "analysis/maps/georeference.h"

#include "mapFiles.h"

#include <rfUtils/geo/detail/utm.h>
#include <support/samples.h>

#include <limits>

namespace rfu::test {
namespace {

constexpr double kMetresPerDegree = 111700.0;  // of latitude at the pole, the most there is

std::string labelled(const char* number, const char* place, const char* pixel) {
    return std::string("  (") + place + ") (" + pixel + ") Label \"Pt " + number + "\"\n";
}

/// A map of 4 x 3 cells of 100 m.
const std::string kMapGrid =
    "ncols 4\nnrows 3\nxllcorner 500000\nyllcorner 5000000\ncellsize 100\nNODATA_value -1\n"
    "1 2 3 4\n5 6 7 8\n9 10 11 12\n";
const std::string kNamesMap = "!table\n  File \"map.asc\"\n  Type \"RASTER\"\n";
const std::string kMapCorners =
    labelled("1", "500000,5000300", "0,0") + labelled("2", "500400,5000300", "4,0") +
    labelled("3", "500400,5000000", "4,3") + labelled("4", "500000,5000000", "0,3");
const std::string kInZone31 =
    "  CoordSys Earth Projection 8, 104, \"m\", 3, 0, 0.9996, 500000, 0\n";
const std::string kInMetres = "  Units \"m\"\n";
const std::string kInDegrees = "  Units \"degree\"\n";

Projection utm(int zone, bool isSouth) {
    return {MapUnits::Utm, zone, isSouth};
}

constexpr Projection kDegrees{MapUnits::Degrees, 0, false};

class GeoreferenceTest : public MapFiles {
protected:
    std::string refusalBeside(const std::string& tab) const {
        const QString file = write("map.asc", kMapGrid);
        write("map.tab", tab);
        return refusal([&] { loadTabBeside(file, requireGrid(loadRaster(file), file)); });
    }

    /// Of a grid of 4 x 3 cells.
    bool isInDegrees(const char* x, const char* y, const char* cellSize,
                     const std::string& tab = {}) const {
        const QString file = write("map.asc", std::string("ncols 4\nnrows 3\nxllcorner ") + x +
                                                  "\nyllcorner " + y + "\ncellsize " + cellSize +
                                                  "\nNODATA_value -1\n1 2 3 4\n1 2 3 4\n1 2 3 4\n");
        if (!tab.empty()) {
            write("map.tab", tab);
        }
        return rfu::isInDegrees(*gridOf(loadRaster(file)), file);
    }
};

TEST_F(GeoreferenceTest, InvertsTheConversionFromUtm) {
    Samples samples(12);
    for (int i = 0; i < caseCount() / 50; ++i) {
        const int zone = 1 + i % 60;
        const bool isSouth = i % 2 == 1;
        const QPointF start(samples.between(150000.0, 850000.0),
                            isSouth ? samples.between(1.1e6, 1e7) : samples.between(0.0, 9.3e6));
        const auto place = detail::utm::placeOf(start.x(), start.y(), zone, isSouth);
        const QPointF near = start + QPointF(samples.between(-100000.0, 100000.0),
                                             samples.between(-100000.0, 100000.0));
        const auto found =
            pointAt({place.latitude * detail::utm::kDegreesPerRadian, place.longitude},
                    utm(zone, isSouth), near);
        ASSERT_TRUE(found) << start.x() << ' ' << start.y();
        ASSERT_NEAR(found->x(), start.x(), 1e-4) << start.x() << ' ' << start.y();
        ASSERT_NEAR(found->y(), start.y(), 1e-4) << start.x() << ' ' << start.y();
    }
}

/// As far as the degrees go that the library gives: singles, latitudes rounded down to 1e-6.
TEST_F(GeoreferenceTest, FindsPlacesThatTheLibraryHasConverted) {
    Samples samples(13);
    const auto map = std::make_unique<veltaGEO>();
    for (int i = 0; i < caseCount() / 50; ++i) {
        const int zone = 1 + i % 60;
        // Whole metres, which singles hold.
        const auto easting = static_cast<float>(200000 + samples.below(600001));
        const auto northing = static_cast<float>(samples.below(9300001));
        float latitude = 0.0F;
        float longitude = 0.0F;
        map->utmToLatLng(easting, northing, zone, 0, &latitude, &longitude);
        const auto step = [](float value) {
            return static_cast<double>(std::nextafter(value, 1e9F) - value);
        };
        const double room = kMetresPerDegree * (1e-6 + step(latitude) / 2 + step(longitude) / 2);
        const auto found =
            pointAt({latitude, longitude}, utm(zone, false), QPointF(easting, northing));
        ASSERT_TRUE(found);
        ASSERT_NEAR(found->x(), static_cast<double>(easting), room) << zone << ' ' << northing;
        ASSERT_NEAR(found->y(), static_cast<double>(northing), room) << zone << ' ' << easting;
    }
}

TEST_F(GeoreferenceTest, FindsPlacesAcrossTheDateLine) {
    const auto west = pointAt({10.0, 179.9}, utm(1, false), {170000.0, 1100000.0});
    const auto same = pointAt({10.0, -180.1}, utm(1, false), {170000.0, 1100000.0});
    ASSERT_TRUE(west && same);
    EXPECT_NEAR(west->x(), same->x(), 1e-3);
    // 3.1 degrees west of the central meridian at 10 degrees north: some 340 km
    EXPECT_NEAR(west->x(), 500000.0 - 340000.0, 3000.0);
}

TEST_F(GeoreferenceTest, FindsNothingWhereTheConversionLeadsNowhere) {
    EXPECT_FALSE(pointAt({47.0, 9.0}, utm(32, false), {1e30, 1e30}));
    EXPECT_FALSE(pointAt({47.0, 9.0}, utm(32, false), {std::nan(""), 0.0}));
}

TEST_F(GeoreferenceTest, TakesDegreesAsTheyAre) {
    EXPECT_EQ(pointAt({47.5, 9.25}, kDegrees, {9.0, 47.0}), QPointF(9.25, 47.5));
    EXPECT_EQ(pointAt({-10.0, -170.0}, kDegrees, {181.0, -10.0}), QPointF(190.0, -10.0));
}

TEST_F(GeoreferenceTest, GivesThePlacesOfPoints) {
    const struct {
        const char* name;
        Projection projection;
        QPointF point;
        double latitude;
        double longitude;
    } kPoints[] = {
        {"on the equator and the central meridian", utm(31, false), {500000.0, 0.0}, 0.0, 3.0},
        {"degrees", kDegrees, {9.25, 47.5}, 47.5, 9.25},
        {"degrees counted to 360", kDegrees, {190.0, -10.0}, -10.0, -170.0},
        {"beyond the date line", utm(1, false), {-160000.0, 0.0}, 0.0, 177.07}};
    for (const auto& row : kPoints) {
        const auto place = placeAt(row.point, row.projection);
        ASSERT_TRUE(place) << row.name;
        EXPECT_NEAR(place->latitude, row.latitude, 1e-9) << row.name;
        EXPECT_NEAR(place->longitude, row.longitude, 0.01) << row.name;
    }
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(placeAt({9.0, 90.5}, kDegrees));
    EXPECT_FALSE(placeAt({nan, 9.0}, kDegrees));
    EXPECT_FALSE(placeAt({9.0, nan}, kDegrees));
    EXPECT_FALSE(placeAt({1e30, 1e30}, utm(31, false)));
    EXPECT_FALSE(placeAt({9.0, 47.0}, {})) << "nothing is known of the coordinates";
    EXPECT_FALSE(pointAt({47.0, 9.0}, {}, {9.0, 47.0}));
}

TEST_F(GeoreferenceTest, IsTheTabFileBesideTheRaster) {
    const QString file = write("map.asc", kMapGrid);
    write("map.tab", kNamesMap + kMapCorners + kInZone31 + kInMetres);
    const CellGrid grid = requireGrid(loadRaster(file), file);
    EXPECT_EQ(loadTabBeside(file, grid).units(), MapUnits::Utm);
    const std::string centres =
        labelled("1", "500050,5000250", "0,0") + labelled("2", "500350,5000250", "3,0") +
        labelled("3", "500350,5000050", "3,2") + labelled("4", "500050,5000050", "0,2");
    EXPECT_EQ(refusalBeside(kNamesMap + centres + kInZone31 + kInMetres), "")
        << "pixels by their centres";
}

TEST_F(GeoreferenceTest, RefusesAGeoreferenceThatDoesNotPlaceTheMap) {
    const std::string shifted =
        labelled("1", "500000,5000300", "0,0") + labelled("2", "500501,5000300", "4,0") +
        labelled("3", "500400,5000000", "4,3") + labelled("4", "500000,5000000", "0,3");
    const struct {
        const char* name;
        std::string tab;
        const char* says;
    } kTabs[] = {
        {"another raster",
         "  File \"hill.asc\"\n  Type \"RASTER\"\n" + kMapCorners + kInZone31 + kInMetres,
         "map.tab: is the georeference of another raster, \"hill.asc\""},
        {"no units", kNamesMap + kMapCorners + kInZone31,
         "map.tab: does not say what its coordinates are: it has no Units"},
        {"a point elsewhere", kNamesMap + shifted + kInZone31 + kInMetres,
         "map.tab: places Pt 2 more than a cell from where map.asc has it"},
        {"a file that is wrong in itself", kNamesMap + kMapCorners + kInMetres,
         "map.tab:8: Units converts the control points by a CoordSys line of a transverse Mercator "
         "projection, and none stands before it"}};
    for (const auto& row : kTabs) {
        EXPECT_EQ(refusalBeside(row.tab), row.says) << row.name;
    }
    const QString alone = write("alone.asc", kMapGrid);
    EXPECT_EQ(refusal([&] { loadTabBeside(alone, requireGrid(loadRaster(alone), alone)); }),
              "alone.asc: has no georeference beside it: there is no alone.tab");
}

TEST_F(GeoreferenceTest, MayHaveAnotherNameThanTheRaster) {
    const QString file = write("map.asc", kMapGrid);
    const CellGrid grid = requireGrid(loadRaster(file), file);
    const std::string corners = "  Type \"RASTER\"\n" + kMapCorners + kInZone31 + kInMetres;
    const QString other = write("other.tab", "  File \"map.bil\"\n" + corners);
    EXPECT_EQ(loadTabOf(file, grid, other).projection().utmZone, 31);
    const CellGrid shifted{4, 3, 100.0, 500200.0, 5000000.0, 500600.0, 5000300.0};
    EXPECT_EQ(refusal([&] { loadTabOf(file, shifted, other); }),
              "other.tab: places Pt 1 more than a cell from where map.asc has it");
    EXPECT_EQ(refusal([&] { loadTabOf(file, grid, named("none.tab")); }),
              "none.tab: No such file or directory");
    EXPECT_EQ(tabBeside(QStringLiteral("a.b/map.asc")), QStringLiteral("a.b/map.tab"));
}

TEST_F(GeoreferenceTest, TellsMapsInDegreesByTheirExtent) {
    EXPECT_TRUE(isInDegrees("9", "47", "0.001"));
    EXPECT_TRUE(isInDegrees("-182", "-90", "90")) << "centres of cells at the edges of the Earth";
    EXPECT_TRUE(isInDegrees("359", "-10", "0.25"));
    EXPECT_FALSE(isInDegrees("9", "47", "25")) << "up to y 122";
    EXPECT_FALSE(isInDegrees("-272", "0", "1"));
    EXPECT_FALSE(isInDegrees("358", "0", "1")) << "up to x 362";
    EXPECT_FALSE(isInDegrees("0", "-92", "1"));
    EXPECT_FALSE(isInDegrees("500000", "47", "1"));
    EXPECT_FALSE(isInDegrees("9", "5000000", "1"));
}

TEST_F(GeoreferenceTest, TellsMapsInDegreesByATabFile) {
    EXPECT_TRUE(isInDegrees("500000", "5000000", "100", kNamesMap + kMapCorners + kInDegrees));
    EXPECT_FALSE(isInDegrees("0", "0", "1", kNamesMap + kMapCorners + kInZone31 + kInMetres));
    EXPECT_TRUE(isInDegrees("0", "0", "1", kNamesMap + kMapCorners)) << "no Units";
    EXPECT_TRUE(isInDegrees("0", "0", "1", kNamesMap + kInMetres)) << "cannot be used";
}

}  // namespace
}  // namespace rfu::test

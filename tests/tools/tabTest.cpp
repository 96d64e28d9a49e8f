#include <gtest/gtest.h>

#include <QDir>
#include <QImage>

#include <string>

#include "runCommand.h"

namespace {

const std::string kStart = "!table\n!version 300\n\nDefinition Table\n";
const std::string kPoints =
    "  (500000,0) (0,0) Label \"Pt 1\",\n"
    "  (500000,5000000) (4,0) Label \"Pt 2\",\n"
    "  (400000,5000000) (4,3) Label \"Pt 3\",\n"
    "  (600000.5,1000000) (0.5,2.25) Label \"Pt 4\"\n";
const std::string kUtm31 = "  CoordSys Earth Projection 8, 104, \"m\", 3, 0, 0.9996, 500000, 0\n";
const std::string kFile = "  File \"map.asc\"\n  Type \"RASTER\"\n";
const std::string kWhole = kStart + kFile + kPoints + kUtm31 + "  Units \"m\"\n";

const char* const kMap =
    "ncols 4\nnrows 3\nxllcorner 0\nyllcorner 0\ncellsize 1\nNODATA_value -1\n"
    "0 0 0 0\n0 100 0 0\n0 0 0 -1\n";
const char* const kTabColors = "0 10 20 30\n100 200 100 50\n";

}  // namespace

TEST(Tab, ShowsPointsAsReadAndConverted) {
    SampleFolder folder;
    folder.add("map.tab", kWhole);
    // A point on the central meridian 500 km east of the false origin keeps its longitude of 3
    // degrees; the other places are worked out from the series of the projection.
    expectCommands(
        {shows("text", "tab map.tab",
               "raster           map.asc\n"
               "units            UTM\n"
               "utmZone          31\n"
               "hemisphere       north\n"
               "centralMeridian  3\n"
               "originLatitude   0\n"
               "falseEasting     500000\n"
               "falseNorthing    0\n"
               "\n"
               "point  column   row         x        y  longitude   latitude\n"
               "Pt 1        0     0    500000        0          3          0\n"
               "Pt 2        4     0    500000  5000000          3  45.153477\n"
               "Pt 3        4     3    400000  5000000   1.727967   45.14639\n"
               "Pt 4      0.5  2.25  600000.5  1000000   3.909884   9.045432\n"),
         shows("CSV", "tab map.tab --format csv",
               "raster,units,utmZone,hemisphere,centralMeridian,originLatitude,falseEasting,"
               "falseNorthing\n"
               "map.asc,UTM,31,north,3,0,5e+05,0\n"
               "\n"
               "point,column,row,x,y,longitude,latitude\n"
               "Pt 1,0,0,5e+05,0,3,0\n"
               "Pt 2,4,0,5e+05,5e+06,3,45.153477\n"
               "Pt 3,4,3,4e+05,5e+06,1.727967,45.14639\n"
               "Pt 4,0.5,2.25,600000.5,1e+06,3.909884,9.045432\n"),
         shows("JSON is one object", "tab map.tab --format json",
               "{\"projection\": {\"raster\": \"map.asc\", \"units\": \"UTM\", \"utmZone\": 31, "
               "\"hemisphere\": \"north\", \"centralMeridian\": 3, \"originLatitude\": 0, "
               "\"falseEasting\": 5e+05, \"falseNorthing\": 0}\n"
               ", \"points\": [\n"
               "  {\"point\": \"Pt 1\", \"column\": 0, \"row\": 0, \"x\": 5e+05, \"y\": 0, "
               "\"longitude\": 3, \"latitude\": 0},\n"
               "  {\"point\": \"Pt 2\", \"column\": 4, \"row\": 0, \"x\": 5e+05, \"y\": 5e+06, "
               "\"longitude\": 3, \"latitude\": 45.153477},\n"
               "  {\"point\": \"Pt 3\", \"column\": 4, \"row\": 3, \"x\": 4e+05, \"y\": 5e+06, "
               "\"longitude\": 1.727967, \"latitude\": 45.14639},\n"
               "  {\"point\": \"Pt 4\", \"column\": 0.5, \"row\": 2.25, \"x\": 600000.5, "
               "\"y\": 1e+06, \"longitude\": 3.909884, \"latitude\": 9.045432}\n"
               "]\n"
               "}\n")},
        folder);
}

TEST(Tab, LeavesDegreesAndUnknownUnitsAlone) {
    SampleFolder folder;
    const std::string degrees =
        "  (-69.5,-33.25) (0,0) Label \"Pt 1\",\n  (-69,-33.25) (4,0) Label \"Pt 2\",\n"
        "  (-69,-33.5) (4,3) Label \"Pt 3\",\n  (-69.5,-33.5) (0,3) Label \"Pt 4\"\n";
    folder.add("degree.tab", kStart + kFile + degrees + "  Units \"degree\"\n");
    folder.add("none.tab", kStart + kFile + degrees);
    const std::string fields =
        "centralMeridian  0\noriginLatitude   0\nfalseEasting     0\nfalseNorthing    0\n\n";
    expectCommands({shows("degrees", "tab degree.tab",
                          "raster           map.asc\nunits            degree\nutmZone          -\n"
                          "hemisphere       -\n" +
                              fields +
                              "point  column  row      x       y  longitude  latitude\n"
                              "Pt 1        0    0  -69.5  -33.25      -69.5    -33.25\n"
                              "Pt 2        4    0    -69  -33.25        -69    -33.25\n"
                              "Pt 3        4    3    -69   -33.5        -69     -33.5\n"
                              "Pt 4        0    3  -69.5   -33.5      -69.5     -33.5\n"),
                    shows("no units", "tab none.tab",
                          "raster           map.asc\nunits            -\nutmZone          -\n"
                          "hemisphere       -\n" +
                              fields +
                              "point  column  row      x       y  longitude  latitude\n"
                              "Pt 1        0    0  -69.5  -33.25  -          -\n"
                              "Pt 2        4    0    -69  -33.25  -          -\n"
                              "Pt 3        4    3    -69   -33.5  -          -\n"
                              "Pt 4        0    3  -69.5   -33.5  -          -\n")},
                   folder);
}

TEST(Tab, TellsTheSouthByItsFalseNorthing) {
    SampleFolder folder;
    std::string points;
    for (const char* number : {"1", "2", "3", "4"}) {
        points += std::string("  (500000,6000000) (0,0) Label \"Pt ") + number + "\",\n";
    }
    folder.add("map.tab",
               kStart + kFile + points +
                   "  CoordSys Earth Projection 8, 104, \"m\", -69, 0, 0.9996, 500000, 10000000\n"
                   "  Units \"m\"\n");
    expectCommands({shows("zone 19", "tab map.tab",
                          "raster           map.asc\nunits            UTM\nutmZone          19\n"
                          "hemisphere       south\ncentralMeridian  -69\noriginLatitude   0\n"
                          "falseEasting     500000\nfalseNorthing    10000000\n\n"
                          "point  column  row       x        y  longitude    latitude\n"
                          "Pt 1        0    0  500000  6000000        -69  -36.140667\n"
                          "Pt 2        0    0  500000  6000000        -69  -36.140667\n"
                          "Pt 3        0    0  500000  6000000        -69  -36.140667\n"
                          "Pt 4        0    0  500000  6000000        -69  -36.140667\n")},
                   folder);
}

TEST(Tab, DrawsTheRasterWithItsPoints) {
    SampleFolder folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("maps")));
    folder.add("maps/map.tab", kWhole);
    folder.add("maps/map.asc", kMap);
    folder.add("maps/map.clr", kTabColors);
    const CommandResult result =
        runCommand({"tab", "maps/map.tab", "--png", "out.png"}, "", folder);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.errors, "");
    const QImage image(folder.path() + QStringLiteral("/out.png"));
    // 4 x 3 cells, 240 times enlarged to 960 x 720, with a margin of 64
    ASSERT_EQ(image.size(), QSize(960 + 128, 720 + 128));
    const auto cell = [](double column, double row) {
        return QPoint(64 + static_cast<int>(column * 240), 64 + static_cast<int>(row * 240));
    };
    EXPECT_EQ(image.pixel(cell(2.5, 1.5)), qRgb(10, 20, 30));
    EXPECT_EQ(image.pixel(cell(1.02, 1.02)), qRgb(200, 100, 50));
    EXPECT_EQ(image.pixel(cell(1.98, 1.98)), qRgb(200, 100, 50));
    EXPECT_EQ(image.pixel(cell(0.98, 1.5)), qRgb(10, 20, 30));
    EXPECT_EQ(image.pixel(cell(3.5, 2.5)), qRgb(0xec, 0xf1, 0xf5)) << "no data";
    EXPECT_EQ(image.pixel(2, 2), qRgb(255, 255, 255));
    const QRgb mark = qRgb(0xd6, 0x33, 0x4c);
    const QPoint marks[] = {cell(0, 0), cell(4, 0), cell(4, 3), cell(0.5, 2.25)};
    for (const QPoint& at : marks) {
        EXPECT_EQ(image.pixel(at + QPoint(-1, -3)), mark) << at.x() << ' ' << at.y();
    }
    EXPECT_NE(image.pixel(cell(0, 3) + QPoint(-1, -3)), mark);
}

TEST(Tab, DrawsPointsOutsideTheMapNowhere) {
    SampleFolder folder;
    folder.add("map.tab", kStart + kFile +
                              "(0,0) (1e300,0) Label \"Pt 1\"\n(0,0) (-1,0) Label \"Pt 2\"\n"
                              "(0,0) (5,0) Label \"Pt 3\"\n(0,0) (0,-1e9) Label \"Pt 4\"\n");
    folder.add("map.asc", kMap);
    EXPECT_EQ(runCommand({"tab", "map.tab", "--png", "out.png"}, "", folder).exitStatus, 0);
    const QImage image(folder.path() + QStringLiteral("/out.png"));
    ASSERT_EQ(image.size(), QSize(960 + 128, 720 + 128));
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < 60; ++y) {
            ASSERT_EQ(image.pixel(x, y), qRgb(255, 255, 255)) << x << ' ' << y;
        }
    }
}

TEST(Tab, ShowsSinglesWithoutNoise) {
    const SampleFolder folder;
    std::string points;
    for (const char* number : {"1", "2", "3", "4"}) {
        points += std::string("  (8.1,47.4) (0.1,0) Label \"Pt ") + number + "\"\n";
    }
    folder.add("map.tab", kStart + kFile + points + "  Units \"degree\"\n");
    const std::string shown = runCommand({"tab", "map.tab"}, "", folder).output;
    EXPECT_NE(shown.find("Pt 1      0.1    0  8.1  47.4        8.1      47.4\n"), std::string::npos)
        << shown;
}

TEST(Tab, SaysWhyItEnds) {
    SampleFolder folder;
    folder.add("twice.tab", kWhole + "  Units \"m\"\n");
    folder.add("empty.tab", "");
    folder.add("map.tab", kStart + kFile + kPoints);
    const std::string shown = runCommand({"tab", "map.tab"}, "", folder).output;
    expectCommands(
        {fails("missing", "tab none.tab", "none.tab: No such file or directory"),
         fails("a line", "tab twice.tab",
               "twice.tab:12: Units converts the control points; it has to follow them and "
               "CoordSys, and to stand there once"),
         fails("the file as a whole", "tab empty.tab",
               "empty.tab: the control point Pt 1 is missing"),
         fails("no raster to draw", "tab map.tab --png out.png",
               "./map.asc: No such file or directory")
             .after(shown)},
        folder);
}

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <random>

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
const char* const kColors = "0 10 20 30\n100 200 100 50\n";

CommandCase good(const char* name, const QStringList& arguments, const std::string& output) {
    return {name, QStringList{QStringLiteral("tab")} + arguments, "", 0, output, ""};
}

CommandCase bad(const char* name, const char* file, const std::string& error) {
    return {name, {"tab", file}, "", 1, "", std::string("rfutils: ") + file + ": " + error + "\n"};
}

}  // namespace

TEST(Tab, showsPointsAsReadAndConverted) {
    SampleFolder folder;
    folder.add("map.tab", kWhole);
    // A point on the central meridian 500 km east of the false origin keeps its longitude of 3
    // degrees; the other places are worked out from the series of the projection.
    expectCommands(
        {good("text", {"map.tab"},
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
         good("CSV", {"map.tab", "--format", "csv"},
              "raster,units,utmZone,hemisphere,centralMeridian,originLatitude,falseEasting,"
              "falseNorthing\n"
              "map.asc,UTM,31,north,3,0,5e+05,0\n"
              "\n"
              "point,column,row,x,y,longitude,latitude\n"
              "Pt 1,0,0,5e+05,0,3,0\n"
              "Pt 2,4,0,5e+05,5e+06,3,45.153477\n"
              "Pt 3,4,3,4e+05,5e+06,1.727967,45.14639\n"
              "Pt 4,0.5,2.25,600000.5,1e+06,3.909884,9.045432\n"),
         good("JSON is one object", {"map.tab", "--format", "json"},
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

TEST(Tab, leavesDegreesAndUnknownUnitsAlone) {
    SampleFolder folder;
    const std::string degrees =
        "  (-69.5,-33.25) (0,0) Label \"Pt 1\",\n  (-69,-33.25) (4,0) Label \"Pt 2\",\n"
        "  (-69,-33.5) (4,3) Label \"Pt 3\",\n  (-69.5,-33.5) (0,3) Label \"Pt 4\"\n";
    folder.add("degree.tab", kStart + kFile + degrees + "  Units \"degree\"\n");
    folder.add("none.tab", kStart + kFile + degrees);
    const std::string fields =
        "centralMeridian  0\noriginLatitude   0\nfalseEasting     0\nfalseNorthing    0\n\n";
    expectCommands({good("degrees", {"degree.tab"},
                         "raster           map.asc\nunits            degree\nutmZone          -\n"
                         "hemisphere       -\n" +
                             fields +
                             "point  column  row      x       y  longitude  latitude\n"
                             "Pt 1        0    0  -69.5  -33.25      -69.5    -33.25\n"
                             "Pt 2        4    0    -69  -33.25        -69    -33.25\n"
                             "Pt 3        4    3    -69   -33.5        -69     -33.5\n"
                             "Pt 4        0    3  -69.5   -33.5      -69.5     -33.5\n"),
                    good("no units", {"none.tab"},
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

TEST(Tab, tellsTheSouthByItsFalseNorthing) {
    SampleFolder folder;
    std::string points;
    for (const char* number : {"1", "2", "3", "4"}) {
        points += std::string("  (500000,6000000) (0,0) Label \"Pt ") + number + "\",\n";
    }
    folder.add("map.tab",
               kStart + kFile + points +
                   "  CoordSys Earth Projection 8, 104, \"m\", -69, 0, 0.9996, 500000, 10000000\n"
                   "  Units \"m\"\n");
    expectCommands({good("zone 19", {"map.tab"},
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

TEST(Tab, drawsTheRasterWithItsPoints) {
    SampleFolder folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("maps")));
    folder.add("maps/map.tab", kWhole);
    folder.add("maps/map.asc", kMap);
    folder.add("maps/map.clr", kColors);
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

TEST(Tab, drawsPointsOutsideTheMapNowhere) {
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

TEST(Tab, saysWhatIsWrong) {
    SampleFolder folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("folder.tab")));
    folder.add("map.tab", kWhole);
    folder.add("vector.tab", kStart + "  File \"map.asc\"\n  Type \"NATIVE\"\n" + kPoints);
    folder.add("empty.tab", "");
    folder.add("cut.tab", kWhole.substr(0, kWhole.find("Pt 4")));
    folder.add("comment.tab", kStart + kFile + "!" + kPoints);
    folder.add("noFile.tab", kStart + kPoints);
    folder.add("bip.tab", kStart + "  File \"map.bip\"\n" + kPoints);
    folder.add("map.bip", "x");
    const std::string missing = "the control point Pt ";
    expectCommands({bad("missing", "none.tab", "No such file or directory"),
                    bad("directory", "folder.tab", "Is a directory"),
                    {"no raster",
                     {"tab", "vector.tab"},
                     "",
                     1,
                     "",
                     "rfutils: vector.tab:6: File not supported\n"},
                    bad("empty", "empty.tab", missing + "1 is missing"),
                    bad("cut short", "cut.tab", missing + "4 is missing"),
                    bad("a point in a comment", "comment.tab", missing + "1 is missing"),
                    bad("no raster named", "noFile.tab", "names no raster file")},
                   folder);
    const auto pictureError = [&](const char* file) {
        const CommandResult result = runCommand({"tab", file, "--png", "out.png"}, "", folder);
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_NE(result.output, "");
        return result.errors;
    };
    EXPECT_EQ(pictureError("map.tab"), "rfutils: ./map.asc: No such file or directory\n");
    EXPECT_EQ(pictureError("bip.tab"), "rfutils: ./map.bip: a raster ends in .asc, .bil or .hdr\n");
}

TEST(Tab, refusesUnitsThatConvertTooEarly) {
    const std::string late =
        "Units converts the control points; it has to follow them and CoordSys, and to stand there "
        "once";
    const std::string none =
        "Units converts the control points by a CoordSys line of a transverse Mercator projection, "
        "and none stands before it";
    const std::string units = "  Units \"m\"\n";
    const struct {
        const char* name;
        std::string file;
        std::string error;  // empty: the file is read
    } kFiles[] = {
        {"before the points", kStart + kFile + kUtm31 + units + kPoints, "8: " + late},
        {"before the last point", kStart + kFile + kUtm31 + kPoints + units + kPoints,
         "12: " + late},
        {"before CoordSys", kStart + kFile + kPoints + units + kUtm31, "11: " + none},
        {"between two CoordSys", kStart + kFile + kPoints + kUtm31 + units + kUtm31, "12: " + late},
        {"twice", kWhole + units, "12: " + late},
        {"without CoordSys", kStart + kFile + kPoints + units, "11: " + none},
        {"with a CoordSys that is not read",
         kStart + kFile + kPoints + "  CoordSys Earth Projection 1, 104\n" + units, "12: " + none},
        {"degrees anywhere", kStart + kFile + "  Units \"degree\"\n" + kPoints, ""},
        {"in a comment", kStart + "!Units \"m\"\n" + kFile + kPoints + kUtm31 + units, ""},
    };
    const SampleFolder folder;
    for (const auto& row : kFiles) {
        folder.add("map.tab", row.file);
        const CommandResult result = runCommand({"tab", "map.tab"}, "", folder);
        EXPECT_EQ(result.errors, row.error.empty() ? "" : "rfutils: map.tab:" + row.error + "\n")
            << row.name;
        EXPECT_EQ(result.exitStatus, row.error.empty() ? 0 : 1) << row.name;
    }
}

TEST(Tab, showsSinglesWithoutNoise) {
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

TEST(Tab, survivesNoise) {
    std::mt19937 random(3);
    for (int run = 0; run < 20; ++run) {
        SampleFolder folder;
        std::string noise = run % 2 == 0 ? "" : kWhole;
        for (int i = 0; i < 3000; ++i) {
            noise += static_cast<char>(random());
        }
        folder.add("map.tab", noise);
        const CommandResult result = runCommand({"tab", "map.tab"}, "", folder);
        EXPECT_EQ(result.exitStatus, run % 2 == 0 ? 1 : 0);
    }
}

TEST(Tab, examplesOfTheHelpRun) {
    const SampleFolder folder;
    for (const char* name : {"terrain.asc", "terrain.clr", "terrain.tab"}) {
        ASSERT_TRUE(QFile::copy(QStringLiteral(RFUTILS_SAMPLES "/") + QLatin1String(name),
                                folder.path() + QLatin1Char('/') + QLatin1String(name)));
    }
    const auto examples = examplesOf(runCommand({"tab", "--help"}).output);
    ASSERT_EQ(examples.size(), 3U);
    for (const std::string& example : examples) {
        const CommandResult result = runCommand(splitWords(example).mid(1), "", folder);
        EXPECT_EQ(result.exitStatus, 0) << example;
        EXPECT_EQ(result.errors, "") << example;
        EXPECT_NE(result.output, "") << example;
    }
    EXPECT_EQ(QImage(folder.path() + QStringLiteral("/points.png")).size(),
              QSize(960 + 128, 720 + 128));
}

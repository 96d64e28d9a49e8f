#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <cstring>
#include <string>
#include <vector>

#include "runCommand.h"

namespace {

const std::string kHead =
    "ncols 4\nnrows 3\nxllcorner 500000\nyllcorner 4649776.5\ncellsize 30\nNODATA_value -9999\n";
const std::string kCells = "0 50 100 150\n200 -9999 300 -50\n25 100 100 100.5\n";
const char* const kColors = "0 0 0 0\n100 200 100 50\n100 255 0 0\n200 0 300 -20\n";
const char* const kHdr =
    "NCOLS 3\nNROWS 2\nULXMAP 9.1\nULYMAP 47.5\nXDIM 0.25\nNODATA -1\nPIXELTYPE FLOAT\n";

std::string cells(const std::vector<float>& values) {
    std::string bytes(values.size() * sizeof(float), '\0');
    std::memcpy(bytes.data(), values.data(), bytes.size());
    return bytes;
}

/// Bytes above 127 and zeros in every place.
const std::vector<float> kFloats = {-1.5F, 0.1F, -1.0F, 240.25F, -0.001F, 1e10F};

}  // namespace

TEST(Raster, ShowsTheMapAndItsColours) {
    SampleFolder folder;
    folder.add("map.asc", kHead + kCells);
    folder.add("map.clr", kColors);
    // 0 + 50 + 100 + 150 + 200 + 300 - 50 + 25 + 100 + 100 + 100.5 = 1075.5, / 11 = 97.7727...
    expectCommands(
        {shows("text", "raster map.asc",
               "columns   4\n"
               "rows      3\n"
               "originX   500000\n"
               "originY   4649776.5\n"
               "cellSize  30\n"
               "noData    -9999\n"
               "message   Raster file loaded\n"
               "measured  11\n"
               "smallest  -50\n"
               "largest   300\n"
               "mean      97.7727\n"
               "origin    lower left corner of the map\n"
               "\n"
               "low  lowRed  lowGreen  lowBlue  high  highRed  highGreen  highBlue\n"
               "  0       0         0        0   100      200        100        50\n"
               "100     255         0        0   200        0        300       -20\n"
               "\n"
               "corner            x          y\n"
               "upper left   500000  4649866.5\n"
               "upper right  500120  4649866.5\n"
               "lower right  500120  4649776.5\n"
               "lower left   500000  4649776.5\n"),
         shows("CSV", "raster map.asc --format csv",
               "columns,rows,originX,originY,cellSize,noData,message,measured,smallest,largest,"
               "mean,origin\n"
               "4,3,5e+05,4649776.5,30,-9999,Raster file loaded,11,-50,300,97.77272727272727,"
               "lower left corner of the map\n"
               "\n"
               "low,lowRed,lowGreen,lowBlue,high,highRed,highGreen,highBlue\n"
               "0,0,0,0,100,200,100,50\n"
               "100,255,0,0,200,0,300,-20\n"
               "\n"
               "corner,x,y\n"
               "upper left,5e+05,4649866.5\n"
               "upper right,500120,4649866.5\n"
               "lower right,500120,4649776.5\n"
               "lower left,5e+05,4649776.5\n"),
         shows(
             "JSON is one object", "raster map.asc --format json",
             "{\"map\": {\"columns\": 4, \"rows\": 3, \"originX\": 5e+05, \"originY\": 4649776.5, "
             "\"cellSize\": 30, \"noData\": -9999, \"message\": \"Raster file loaded\", "
             "\"measured\": 11, \"smallest\": -50, \"largest\": 300, "
             "\"mean\": 97.77272727272727, \"origin\": \"lower left corner of the map\"}\n"
             ", \"colours\": [\n"
             "  {\"low\": 0, \"lowRed\": 0, \"lowGreen\": 0, \"lowBlue\": 0, \"high\": 100, "
             "\"highRed\": 200, \"highGreen\": 100, \"highBlue\": 50},\n"
             "  {\"low\": 100, \"lowRed\": 255, \"lowGreen\": 0, \"lowBlue\": 0, \"high\": 200, "
             "\"highRed\": 0, \"highGreen\": 300, \"highBlue\": -20}\n"
             "]\n"
             ", \"corners\": [\n"
             "  {\"corner\": \"upper left\", \"x\": 5e+05, \"y\": 4649866.5},\n"
             "  {\"corner\": \"upper right\", \"x\": 500120, \"y\": 4649866.5},\n"
             "  {\"corner\": \"lower right\", \"x\": 500120, \"y\": 4649776.5},\n"
             "  {\"corner\": \"lower left\", \"x\": 5e+05, \"y\": 4649776.5}\n"
             "]\n"
             "}\n")},
        folder);
}

TEST(Raster, ShowsFloatGridsByEitherName) {
    SampleFolder folder;
    folder.add("map.hdr", kHdr);
    folder.add("map.bil", cells(kFloats) + "more");
    const std::string shown =
        "columns   3\n"
        "rows      2\n"
        "originX   9.1\n"
        "originY   47.5\n"
        "cellSize  0.25\n"
        "noData    -1\n"
        "message   Raster file loaded\n"
        "measured  5\n"
        "smallest  -1.5\n"
        "largest   1e+10\n"
        // (10000000000 + 240.25 - 1.5 + 0.1 - 0.001) / 5
        "mean      2000000048\n"
        "origin    centre of the upper left cell\n"
        "\n"
        "  low  lowRed  lowGreen  lowBlue  high  highRed  highGreen  highBlue\n"
        "-9999       0         0        0  9999        0          0         0\n"
        "\n"
        // 9.1 - 0.25 / 2, 47.5 + 0.25 / 2
        "corner           x       y\n"
        "upper left   8.975  47.625\n"
        "upper right  9.725  47.625\n"
        "lower right  9.725  47.125\n"
        "lower left   8.975  47.125\n";
    expectCommands(
        {shows("by its data", "raster map.bil", shown),
         shows("by its header", "raster map.hdr", shown),
         shows("cell", "raster map.bil --at 0,0", "column  0\nrow     0\nvalue   -1.5\n"),
         shows("cell of 240.25", "raster map.bil --at 0,1",
               "column  0\nrow     1\nvalue   240.25\n"),
         shows("the decimal number of a single", "raster map.bil --at 1,0 --format csv",
               "column,row,value\n1,0,0.1\n"),
         shows("no data", "raster map.bil --at 2,0", "column  2\nrow     0\nvalue   -\n"),
         shows("no data in JSON", "raster map.bil --at 2,0 --format json",
               "{\"column\": 2, \"row\": 0, \"value\": null}\n")},
        folder);
}

TEST(Raster, ShowsTheHeaderAloneOfIntegers) {
    SampleFolder folder;
    folder.add("map.hdr", "NCOLS 3\nNROWS 2\n");
    folder.add("map.bil", "");
    const std::string integers =
        "map.bil: holds integers (PIXELTYPE is not FLOAT), which are not read; gdal_translate -of "
        "EHdr -ot Float32 converts them";
    const std::string shown =
        "columns   3\n"
        "rows      2\n"
        "originX   0\n"
        "originY   0\n"
        "cellSize  0\n"
        "noData    -\n"
        "message   Raster file loaded\n"
        "measured  -\n"
        "smallest  -\n"
        "largest   -\n"
        "mean      -\n"
        "origin    centre of the upper left cell\n"
        "\n"
        "  low  lowRed  lowGreen  lowBlue  high  highRed  highGreen  highBlue\n"
        "-9999       0         0        0  9999        0          0         0\n"
        "\n"
        "corner       x  y\n"
        "upper left   -  -\n"
        "upper right  -  -\n"
        "lower right  -  -\n"
        "lower left   -  -\n";
    expectCommands({shows("header", "raster map.bil", shown).noting(integers),
                    fails("cell", "raster map.bil --at 0,0", integers),
                    {"picture",
                     {"raster", "map.bil", "--png", "out.png"},
                     "",
                     1,
                     shown,
                     "rfutils: note: " + integers + "\nrfutils: " + integers + "\n"}},
                   folder);
    EXPECT_FALSE(QFile::exists(folder.path() + QStringLiteral("/out.png")));
}

TEST(Raster, ShowsCells) {
    SampleFolder folder;
    folder.add("map.asc", kHead + kCells);
    const auto none = [](const char* cell) {
        return std::string("map.asc: has no cell ") + cell + "; columns are 0 to 3, rows 0 to 2";
    };
    expectCommands(
        {shows("last", "raster map.asc --at 3,2", "column  3\nrow     2\nvalue   100.5\n"),
         shows("column comes first", "raster map.asc --at 0,1",
               "column  0\nrow     1\nvalue   200\n"),
         shows("with blanks", "raster map.asc --at \" 2, 1\"",
               "column  2\nrow     1\nvalue   300\n"),
         fails("right of the map", "raster map.asc --at 4,0", none("4,0")),
         fails("left of the map", "raster map.asc --at -1,0", none("-1,0")),
         fails("below the map", "raster map.asc --at 0,3", none("0,3")),
         fails("above the map", "raster map.asc --at 0,-1", none("0,-1"))},
        folder);
    for (const char* at : {"1", "1,2,3", "a,1", "1,", ""}) {
        expectCommands(
            {misuses(at, QStringList{"raster", "map.asc", "--at", at},
                     std::string("--at: \"") + at + "\" is not a column and a row such as 128,40")},
            folder);
    }
}

TEST(Raster, DrawsAPicture) {
    SampleFolder folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir(QString::fromUtf8("K\u00E4rten.d")));
    folder.add("K\u00E4rten.d/\u5C71.asc", kHead + kCells);
    folder.add("K\u00E4rten.d/\u5C71.clr", kColors);
    const QString name = QString::fromUtf8("K\u00E4rten.d/\u5C71");
    expectCommands(
        {shows("with a cell",
               QStringList{"raster", name + ".asc", "--png", name + ".png", "--at", "0,1"},
               "column  0\nrow     1\nvalue   200\n")},
        folder);
    const QImage image(folder.path() + QLatin1Char('/') + name + QStringLiteral(".png"));
    ASSERT_EQ(image.size(), QSize(4, 3));
    EXPECT_EQ(image.pixel(1, 0), qRgb(100, 50, 25));
    EXPECT_EQ(image.pixel(1, 1), qRgba(0, 0, 0, 0));
}

TEST(Raster, ShowsTheCellAtAPointOrPlace) {
    SampleFolder folder;
    folder.add("map.asc", kHead + kCells);
    folder.add("map.tab",
               "  File \"map.asc\"\n  Type \"RASTER\"\n"
               "  (500000,4649866.5) (0,0) Label \"Pt 1\"\n"
               "  (500120,4649866.5) (4,0) Label \"Pt 2\"\n"
               "  (500120,4649776.5) (4,3) Label \"Pt 3\"\n"
               "  (500000,4649776.5) (0,3) Label \"Pt 4\"\n"
               "  CoordSys Earth Projection 8, 104, \"m\", -69, 0, 0.9996, 500000, 0\n"
               "  Units \"m\"\n");
    folder.add("lonely.asc", kHead + kCells);
    const std::string range = "; x is 500000 to 500120, y is 4649776.5 to 4649866.5";
    expectCommands(
        {shows("point", "raster map.asc --at-map 500065,4649791.5",
               "column  2\nrow     2\nvalue   100\n"),
         shows("point where nothing is measured",
               "raster map.asc --at-map 500045,4649820 --format csv", "column,row,value\n1,1,\n"),
         fails("point outside", "raster map.asc --at-map 499999,4649791.5",
               "map.asc: has no cell at 499999,4649791.5" + range),
         fails("place outside the zone", "raster map.asc --at-place 42,60",
               "map.asc: has no cell at latitude 42, longitude 60; rfutils tab shows where its "
               "control points lie"),
         fails("no TAB file", "raster lonely.asc --at-place 42,-69",
               "lonely.asc: has no georeference beside it: there is no lonely.tab"),
         misuses("two cells", "raster map.asc --at 0,0 --at-map 500065,4649791.5",
                 "--at, --at-map and --at-place exclude each other"),
         misuses("no point", "raster map.asc --at-map 500065",
                 "--at-map: \"500065\" is not two numbers such as 47.5,8.2")},
        folder);
    // The meridian's arc to 42.0003 degrees, integrated numerically and times 0.9996, is 4649809.533
    // m; at this latitude a thousandth of a degree of longitude is 82.817 m.
    expectCommands({shows("place", "raster map.asc --at-place 42.0003,-68.999",
                          "column  2\nrow     1\nvalue   300\nx       500082.817\n"
                          "y       4649809.53\n")},
                   folder);
}

TEST(Raster, WritesAWorldFileAndALegend) {
    SampleFolder folder;
    folder.add("map.asc", kHead + kCells);
    folder.add("map.clr", kColors);
    const auto run = [&](const QStringList& options) {
        const CommandResult result = runCommand(
            QStringList{"raster", "map.asc", "--at", "0,0", "--png", "out.png"} + options, "",
            folder);
        EXPECT_EQ(result.exitStatus, 0) << result.errors;
        return QImage(folder.path() + QStringLiteral("/out.png"));
    };
    EXPECT_EQ(run({}).size(), QSize(4, 3));
    EXPECT_FALSE(QFile::exists(folder.path() + QStringLiteral("/out.pgw")));
    const QImage picture = run({"--legend", "--world"});
    EXPECT_GT(picture.width(), 4 + 48);
    EXPECT_EQ(picture.pixel(1, 0), qRgb(100, 50, 25));
    EXPECT_EQ(folder.read("out.pgw"),
              "30.000000000000\n0.000000000000\n0.000000000000\n-30.000000000000\n"
              "500015.000000000000\n4649851.500000000000\n");
    folder.add("nowhere.asc", "ncols 3\nnrows 1\nNODATA_value -1\n1 2 3\n");
    const std::string cell = "column  0\nrow     0\nvalue   1\n";
    expectCommands(
        {misuses("world file of no picture", "raster map.asc --world", "--world needs a --png"),
         misuses("legend of no picture", "raster map.asc --legend", "--legend needs a --png"),
         fails("no place", "raster nowhere.asc --at 0,0 --png no.png --world",
               "nowhere.asc: does not say where its cells lie: the cell size is 0, the origin 0,0")
             .after(cell)},
        folder);
    EXPECT_FALSE(QFile::exists(folder.path() + QStringLiteral("/no.png")));
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("dir.pgw")));
    expectCommands({fails("a folder in its place", "raster map.asc --at 0,0 --png dir.png --world",
                          "dir.pgw: cannot be written: it is not a regular file")
                        .after("column  0\nrow     0\nvalue   0\n")},
                   folder);
}

TEST(Raster, SaysWhyItEnds) {
    SampleFolder folder;
    folder.add("map.asc", kHead + kCells);
    folder.add("word.asc", kHead + "0 50 x 150\n");
    folder.add("rows.asc", kHead + "0 50 100 150\n200 -9999 300 -50\n");
    folder.add("lonely.hdr", kHdr);
    expectCommands(
        {fails("missing", "raster none.asc", "none.asc: No such file or directory"),
         fails("another file missing", "raster lonely.hdr",
               "lonely.bil: No such file or directory"),
         fails("a line", "raster word.asc", "word.asc:7: \"x\" is no number: read as 0"),
         fails("the file as a whole", "raster rows.asc",
               "rows.asc: only 2 of 3 rows: the others keep what the map held before, at first 0"),
         misuses("no file", "raster", "FILE is missing"),
         fails("a cell before a picture", "raster map.asc --at 9,9 --png none/out.png",
               "map.asc: has no cell 9,9; columns are 0 to 3, rows 0 to 2"),
         fails("a picture in no folder", "raster map.asc --at 0,0 --png none/out.png",
               "none/out.png: cannot be written: No such file or directory")
             .after("column  0\nrow     0\nvalue   0\n")},
        folder);
}

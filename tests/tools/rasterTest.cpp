#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <cstring>
#include <random>

#include "runCommand.h"

#include <sys/stat.h>

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

CommandCase good(const char* name, const QStringList& arguments, const std::string& output) {
    return {name, QStringList{QStringLiteral("raster")} + arguments, "", 0, output, ""};
}

CommandCase bad(const char* name, const QStringList& arguments, const std::string& error) {
    return {name, QStringList{QStringLiteral("raster")} + arguments,
            "",   1,
            "",   "rfutils: " + error + "\n"};
}

QImage picture(const SampleFolder& folder, const QStringList& arguments) {
    const CommandResult result = runCommand(
        QStringList{QStringLiteral("raster")} + arguments + QStringList{"--png", "out.png"}, "",
        folder);
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    QImage image(folder.path() + QStringLiteral("/out.png"));
    EXPECT_FALSE(image.isNull());
    return image.convertToFormat(QImage::Format_ARGB32);
}

}  // namespace

TEST(Raster, showsWhatWasRead) {
    SampleFolder folder;
    folder.add("map.asc", kHead + kCells);
    folder.add("map.clr", kColors);
    // 0 + 50 + 100 + 150 + 200 + 300 - 50 + 25 + 100 + 100 + 100.5 = 1075.5, / 11 = 97.7727...
    expectCommands(
        {good("text", {"map.asc"},
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
              "mean      97.773\n"
              "\n"
              "low  lowRed  lowGreen  lowBlue  high  highRed  highGreen  highBlue\n"
              "  0       0         0        0   100      200        100        50\n"
              "100     255         0        0   200        0        300       -20\n"),
         good("CSV", {"map.asc", "--format", "csv"},
              "columns,rows,originX,originY,cellSize,noData,message,measured,smallest,largest,"
              "mean\n"
              "4,3,5e+05,4649776.5,30,-9999,Raster file loaded,11,-50,300,97.77272727272727\n"
              "\n"
              "low,lowRed,lowGreen,lowBlue,high,highRed,highGreen,highBlue\n"
              "0,0,0,0,100,200,100,50\n"
              "100,255,0,0,200,0,300,-20\n"),
         good("JSON is one object", {"map.asc", "--format", "json"},
              "{\"map\": {\"columns\": 4, \"rows\": 3, \"originX\": 5e+05, \"originY\": 4649776.5, "
              "\"cellSize\": 30, \"noData\": -9999, \"message\": \"Raster file loaded\", "
              "\"measured\": 11, \"smallest\": -50, \"largest\": 300, "
              "\"mean\": 97.77272727272727}\n"
              ", \"colours\": [\n"
              "  {\"low\": 0, \"lowRed\": 0, \"lowGreen\": 0, \"lowBlue\": 0, \"high\": 100, "
              "\"highRed\": 200, \"highGreen\": 100, \"highBlue\": 50},\n"
              "  {\"low\": 100, \"lowRed\": 255, \"lowGreen\": 0, \"lowBlue\": 0, \"high\": 200, "
              "\"highRed\": 0, \"highGreen\": 300, \"highBlue\": -20}\n"
              "]\n"
              "}\n")},
        folder);
}

TEST(Raster, readsFloatGridsByteForByte) {
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
        "mean      2000000047.770\n"
        "\n"
        "low    lowRed  lowGreen  lowBlue  high  highRed  highGreen  highBlue\n";
    const std::string colors =
        "  low  lowRed  lowGreen  lowBlue  high  highRed  highGreen  highBlue\n"
        "-9999       0         0        0  9999        0          0         0\n";
    const std::string whole = shown.substr(0, shown.rfind("low  ")) + colors;
    expectCommands(
        {good("by its data", {"map.bil"}, whole), good("by its header", {"map.hdr"}, whole),
         good("cell", {"map.bil", "--at", "0,0"}, "column  0\nrow     0\nvalue   -1.5\n"),
         good("cell of 240.25", {"map.bil", "--at", "0,1"},
              "column  0\nrow     1\nvalue   240.25\n"),
         good("the decimal number of a single", {"map.bil", "--at", "1,0", "--format", "csv"},
              "column,row,value\n1,0,0.1\n"),
         good("no data", {"map.bil", "--at", "2,0"}, "column  2\nrow     0\nvalue   -\n"),
         good("no data in JSON", {"map.bil", "--at", "2,0", "--format", "json"},
              "{\"column\": 2, \"row\": 0, \"value\": null}\n")},
        folder);
}

TEST(Raster, readsIntegersAsMissing) {
    SampleFolder folder;
    folder.add("map.hdr", "NCOLS 3\nNROWS 2\n");
    folder.add("map.bil", "");
    const std::string integers =
        "map.bil: holds integers (PIXELTYPE is not FLOAT), which are not read";
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
        "\n"
        "  low  lowRed  lowGreen  lowBlue  high  highRed  highGreen  highBlue\n"
        "-9999       0         0        0  9999        0          0         0\n";
    expectCommands({good("header", {"map.bil"}, shown),
                    bad("cell", {"map.bil", "--at", "0,0"}, integers),
                    {"picture",
                     {"raster", "map.bil", "--png", "out.png"},
                     "",
                     1,
                     shown,
                     "rfutils: " + integers + "\n"}},
                   folder);
    EXPECT_FALSE(QFile::exists(folder.path() + QStringLiteral("/out.png")));
}

TEST(Raster, showsCells) {
    SampleFolder folder;
    folder.add("map.asc", kHead + kCells);
    const auto none = [](const char* cell) {
        return std::string("map.asc: has no cell ") + cell + "; columns are 0 to 3, rows 0 to 2";
    };
    expectCommands(
        {good("last", {"map.asc", "--at", "3,2"}, "column  3\nrow     2\nvalue   100.5\n"),
         good("column comes first", {"map.asc", "--at", "0,1"},
              "column  0\nrow     1\nvalue   200\n"),
         good("with blanks", {"map.asc", "--at", " 2, 1"}, "column  2\nrow     1\nvalue   300\n"),
         bad("right of the map", {"map.asc", "--at", "4,0"}, none("4,0")),
         bad("left of the map", {"map.asc", "--at", "-1,0"}, none("-1,0")),
         bad("below the map", {"map.asc", "--at", "0,3"}, none("0,3")),
         bad("above the map", {"map.asc", "--at", "0,-1"}, none("0,-1"))},
        folder);
    for (const char* at : {"1", "1,2,3", "a,1", "1,", ""}) {
        const CommandResult result = runCommand({"raster", "map.asc", "--at", at}, "", folder);
        EXPECT_EQ(result.exitStatus, 2) << at;
        EXPECT_EQ(result.errors, std::string("rfutils: --at: \"") + at +
                                     "\" is not a column and a row such as 128,40 (see "
                                     "rfutils raster --help)\n");
    }
}

TEST(Raster, drawsWithTheColourTable) {
    SampleFolder folder;
    folder.add("map.asc", kHead + kCells);
    folder.add("map.clr", kColors);
    const QImage image = picture(folder, {"map.asc"});
    ASSERT_EQ(image.size(), QSize(4, 3));
    const struct {
        const char* name;
        int column;
        int row;
        QRgb color;
    } kPixels[] = {
        {"low end of the first entry", 0, 0, qRgb(0, 0, 0)},
        {"halfway", 1, 0, qRgb(100, 50, 25)},
        {"in two ranges: the first", 2, 0, qRgb(200, 100, 50)},
        {"between clamped components, rounded", 3, 0, qRgb(128, 128, 0)},
        {"high end of the last entry", 0, 1, qRgb(0, 255, 0)},
        {"no data", 1, 1, qRgba(0, 0, 0, 0)},
        {"above all ranges", 2, 1, qRgb(0, 255, 0)},
        {"below all ranges", 3, 1, qRgb(0, 0, 0)},
        {"a quarter", 0, 2, qRgb(50, 25, 13)},
        {"just inside the second entry", 3, 2, qRgb(254, 1, 0)},  // 253.7, 1.3
    };
    for (const auto& pixel : kPixels) {
        EXPECT_EQ(image.pixel(pixel.column, pixel.row), pixel.color) << pixel.name;
    }
}

TEST(Raster, drawsGapsBetweenRangesInTheNearestColour) {
    SampleFolder folder;
    folder.add("map.asc", "ncols 4\nnrows 1\nNODATA_value -1\n14 16 20 5\n");
    // the second range is upside down, the third has one value
    folder.add("map.clr", "0 1 1 1\n10 2 2 2\n30 100 0 0\n20 0 0 100\n5 9 9 9\n5 8 8 8\n");
    const QImage image = picture(folder, {"map.asc"});
    EXPECT_EQ(image.pixel(0, 0), qRgb(2, 2, 2));
    EXPECT_EQ(image.pixel(1, 0), qRgb(0, 0, 100));
    EXPECT_EQ(image.pixel(2, 0), qRgb(0, 0, 100));
    EXPECT_EQ(image.pixel(3, 0), qRgb(2, 2, 2)) << "1.5 in the first range that holds it";
    // 16 lies in the range that is upside down, though an end of the other one is nearer
    folder.add("map.clr", "20 0 0 100\n10 100 0 0\n17 9 9 9\n17 8 8 8\n");
    EXPECT_EQ(picture(folder, {"map.asc"}).pixel(1, 0), qRgb(40, 0, 60));
    folder.add("map.clr", "5 9 9 9\n5 8 8 8\n");
    EXPECT_EQ(picture(folder, {"map.asc"}).pixel(3, 0), qRgb(9, 9, 9));
}

TEST(Raster, drawsGreyWithoutAColourTable) {
    SampleFolder folder;
    folder.add("map.asc", kHead.substr(0, kHead.find("NODATA")) + "NODATA_value -7\n" +
                              "-10 -7 500 0\n41 92 1 2\n3 4 nan 5\n");
    const QImage image = picture(folder, {"map.asc"});
    EXPECT_EQ(image.pixel(0, 0), qRgb(0, 0, 0));
    EXPECT_EQ(image.pixel(1, 0), qRgba(0, 0, 0, 0));
    EXPECT_EQ(image.pixel(2, 0), qRgb(255, 255, 255));
    EXPECT_EQ(image.pixel(0, 1), qRgb(26, 26, 26)) << "51 of 510, 25.5";
    EXPECT_EQ(image.pixel(1, 1), qRgb(51, 51, 51));
    EXPECT_EQ(image.pixel(2, 2), qRgba(0, 0, 0, 0)) << "not a number";

    folder.add("flat.asc", "ncols 3\nnrows 1\nNODATA_value -7\n5 5 5\n");
    EXPECT_EQ(picture(folder, {"flat.asc"}).pixel(1, 0), qRgb(0, 0, 0));
    folder.add("empty.asc", "ncols 3\nnrows 1\nNODATA_value -7\n-7 -7 -7\n");
    EXPECT_EQ(picture(folder, {"empty.asc"}).pixel(1, 0), qRgba(0, 0, 0, 0));
    folder.add("map.clr", "-9999 0 0 0\n9999 255 255 255\n");
    EXPECT_EQ(picture(folder, {"map.asc"}).pixel(3, 0), qRgb(128, 128, 128)) << "a table as given";
    folder.add("map.clr", "-10 0 9 0\n500 0 19 0\n");
    EXPECT_EQ(picture(folder, {"map.asc"}).pixel(2, 0), qRgb(0, 19, 0));
}

TEST(Raster, drawsFloatGrids) {
    SampleFolder folder;
    folder.add("map.hdr", kHdr);
    folder.add("map.bil", cells({-1.5F, 0.0F, -1.0F, 240.0F, -0.5F, 253.5F}));
    const QImage image = picture(folder, {"map.hdr"});
    ASSERT_EQ(image.size(), QSize(3, 2));
    EXPECT_EQ(image.pixel(0, 0), qRgb(0, 0, 0));
    EXPECT_EQ(image.pixel(1, 0), qRgb(2, 2, 2));
    EXPECT_EQ(image.pixel(2, 0), qRgba(0, 0, 0, 0));
    EXPECT_EQ(image.pixel(2, 1), qRgb(255, 255, 255));
}

TEST(Raster, findsFilesByAnyName) {
    SampleFolder folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir(QString::fromUtf8("K\u00E4rten.d")));
    folder.add("K\u00E4rten.d/\u5C71.hdr", kHdr);
    folder.add("K\u00E4rten.d/\u5C71.bil", cells(kFloats));
    folder.add("K\u00E4rten.d/\u5C71.clr", "-2 1 2 3\n300 1 2 3\n");
    const QString file = QString::fromUtf8("K\u00E4rten.d/\u5C71.bil");
    const QString png = QString::fromUtf8("K\u00E4rten.d/\u5C71.png");
    const CommandResult result =
        runCommand({"raster", file, "--png", png, "--at", "0,1"}, "", folder);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output, "column  0\nrow     1\nvalue   240.25\n");
    EXPECT_EQ(QImage(folder.path() + QLatin1Char('/') + png).pixel(0, 0), qRgb(1, 2, 3));
}

TEST(Raster, saysWhatIsWrong) {
    SampleFolder folder;
    const QDir dir(folder.path());
    ASSERT_TRUE(dir.mkdir(QStringLiteral("folder.asc")));
    ASSERT_TRUE(dir.mkdir(QStringLiteral("data.bil")));
    ASSERT_EQ(mkfifo(QFile::encodeName(dir.filePath(QStringLiteral("fifo.asc"))).constData(), 0600),
              0);
    folder.add("data.hdr", kHdr);
    folder.add("lonely.hdr", kHdr);
    folder.add("headless.bil", cells(kFloats));
    folder.add("short.hdr", kHdr);
    folder.add("short.bil", cells(kFloats).substr(1));
    folder.add("wide.hdr", "NCOLS 2049\nNROWS 2\n");
    folder.add("tall.asc", "ncols 2\nnrows 2049\n");
    folder.add("mark.hdr", kHdr);
    folder.add("mark.bil", "\xEF\xBB\xBF" + std::string(21, '1'));
    folder.add("mark16.hdr", kHdr);
    folder.add("mark16.bil", "\xFF\xFE" + std::string(22, '1'));
    folder.add("empty.asc", "");
    folder.add("negative.hdr", "NCOLS -3\nNROWS 2\n");
    folder.add("flat.hdr", "NCOLS 3\nNROWS 0\n");
    folder.add("rows.asc", kHead + "0 50 100 150\n200 -9999 300 -50\n");
    folder.add("row.asc", kHead + "0 50 100 150\n200 -9999 300 -50\n25 100 100\n");
    folder.add("cut.asc", kHead + "0 50 100 150\n200 -9999 300 -50\n25\n");
    folder.add("blank.asc", kHead + "0 50 100 150\n\n200 -9999 300 -50\n25 100 100 1\n");
    folder.add("order.asc", "ncols 3\nNODATA_value -1\nnrows 1\n1 2 3\n");
    folder.add("narrow.asc", "ncols 2\nnrows 1\nNODATA_value -1\n1 2\n");
    folder.add("UPPER.ASC", kHead + kCells);
    folder.add("Mixed.Hdr", kHdr);
    folder.add("colors.asc", kHead + kCells);
    ASSERT_TRUE(dir.mkdir(QStringLiteral("colors.clr")));
    folder.add("map.tif", "II*");
    folder.add("map.asc", kHead + kCells);
    const std::string gap =
        ": its rows are not placed from row 0 on without a gap: NODATA_value has to be the last "
        "header line, and no line between rows may be blank";
    expectCommands(
        {bad("missing", {"none.asc"}, "none.asc: No such file or directory"),
         bad("directory", {"folder.asc"}, "folder.asc: Is a directory"),
         bad("directory without extension", {"."}, ".: Is a directory"),
         bad("directory for the data", {"data.hdr"}, "data.bil: Is a directory"),
         bad("pipe", {"fifo.asc"}, "fifo.asc: is not a regular file"),
         bad("data missing", {"lonely.hdr"}, "lonely.bil: No such file or directory"),
         bad("header missing", {"headless.bil"}, "headless.hdr: No such file or directory"),
         bad("data cut short", {"short.bil"},
             "short.bil: holds 23 bytes, while 3 x 2 cells take 24"),
         bad("too wide", {"wide.hdr"}, "wide.hdr:1: Too many columns in the file. Unable to open"),
         bad("too tall", {"tall.asc"}, "tall.asc:2: Too many rows in the file. Unable to open"),
         bad("looks like UTF-8", {"mark.bil"},
             "mark.bil: its first cell would be taken for the mark of Unicode text"),
         bad("looks like UTF-16", {"mark16.bil"},
             "mark16.bil: its first cell would be taken for the mark of Unicode text"),
         bad("empty", {"empty.asc"}, "empty.asc: announces no usable size: 0 columns and 0 rows"),
         bad("negative size", {"negative.hdr"},
             "negative.hdr: announces no usable size: -3 columns and 2 rows"),
         bad("no rows", {"flat.hdr"}, "flat.hdr: announces no usable size: 3 columns and 0 rows"),
         bad("a row missing", {"rows.asc"}, "rows.asc: holds 2 of 3 rows"),
         bad("a row cut short", {"row.asc"},
             "row.asc:9: a row of 3 cells, while the grid has 4 columns"),
         bad("a row cut to nothing", {"cut.asc"}, "cut.asc: holds 2 of 3 rows"),
         bad("a blank line between rows", {"blank.asc"}, "blank.asc:9" + gap),
         bad("header out of order", {"order.asc"}, "order.asc:4" + gap),
         bad("too narrow for rows", {"narrow.asc"}, "narrow.asc: holds 0 of 1 rows"),
         bad("capitals", {"UPPER.ASC"}, "UPPER.ASC: extensions are in lower case: .asc"),
         bad("a capital", {"Mixed.Hdr"}, "Mixed.Hdr: extensions are in lower case: .hdr"),
         bad("a colour table that cannot be opened", {"colors.asc"}, "colors.clr: Is a directory"),
         bad("another format", {"map.tif"}, "map.tif: a raster ends in .asc, .bil or .hdr"),
         {"no file",
          {"raster"},
          "",
          2,
          "",
          "rfutils: FILE is missing (see rfutils raster --help)\n"},
         bad("a picture that cannot be written",
             {"map.asc", "--at", "9,9", "--png", "none/out.png"},
             "map.asc: has no cell 9,9; columns are 0 to 3, rows 0 to 2"),
         {"a picture in no folder",
          {"raster", "map.asc", "--at", "0,0", "--png", "none/out.png"},
          "",
          1,
          "column  0\nrow     0\nvalue   0\n",
          "rfutils: none/out.png: cannot be written: No such file or directory\n"}},
        folder);
}

TEST(Raster, refusesMapsThatWouldBeReadWrong) {
    const auto asc = [](const char* header, const char* rows) {
        return std::string(header) + "cellsize 30\nNODATA_value -9999\n" + rows;
    };
    const std::string place = "the place of a map is given by xllcorner, yllcorner and cellsize";
    const std::string lower = "is not read: keys are in lower case, except NODATA_value";
    const struct {
        const char* name;
        std::string grid;
        std::string error;
    } kGrids[] = {
        {"a row too long", asc("ncols 4\nnrows 2\n", "1 2 3 4\n5 6 7 8 9\n"),
         "6: a row of 5 cells, while the grid has 4 columns"},
        {"a decimal comma", asc("ncols 4\nnrows 2\n", "1 2 3 4\n5 6,5 7 8\n"),
         "6: a row of 5 cells, while the grid has 4 columns"},
        {"too many rows", asc("ncols 4\nnrows 2\n", "1 2 3 4\n5 6 7 8\n9 10 11 12\n"),
         "7: a row beyond the 2 of the grid"},
        {"a word", asc("ncols 4\nnrows 2\n", "1 2 3 4\n5 x 7 8\n"), "6: \"x\" is no number"},
        {"a number with a tail", asc("ncols 4\nnrows 2\n", "1 2 3 4x\n5 6 7 8\n"),
         "5: \"4x\" is no number"},
        {"hexadecimal", asc("ncols 4\nnrows 2\n", "1 2 3 0x10\n5 6 7 8\n"),
         "5: \"0x10\" is no number"},
        {"two signs", asc("ncols 4\nnrows 2\n", "1 2 3 --4\n5 6 7 8\n"), "5: \"--4\" is no number"},
        {"two points", asc("ncols 4\nnrows 2\n", "1 2 3.5.1 4\n5 6 7 8\n"),
         "5: \"3.5.1\" is no number"},
        {"a point alone", asc("ncols 4\nnrows 2\n", "1 2 3 .\n5 6 7 8\n"), "5: \".\" is no number"},
        {"a sign behind", asc("ncols 4\nnrows 2\n", "1 2 3 4-\n5 6 7 8\n"),
         "5: \"4-\" is no number"},
        {"quotes within", asc("ncols 4\nnrows 2\n", "1 2 3\"4\" 5\n5 6 7 8\n"),
         "5: \"3\"4\"\" is no number"},
        {"too large for a double",
         asc("ncols 4\nnrows 2\n", ("1 2 3 " + std::string(400, '9') + "\n5 6 7 8\n").c_str()),
         "5: \"" + std::string(60, '9') + "...\" is no number"},
        {"a sign alone", asc("ncols 4\nnrows 2\n", "1 2 3 -\n5 6 7 8\n"), "5: \"-\" is no number"},
        {"centre of the corner, x", asc("ncols 4\nnrows 2\nxllcenter 1\n", "1 2 3 4\n5 6 7 8\n"),
         "3: xllcenter is not read: " + place},
        {"centre of the corner, y", asc("yllcenter 1\nncols 4\nnrows 2\n", "1 2 3 4\n5 6 7 8\n"),
         "1: yllcenter is not read: " + place},
        {"width of a cell", asc("ncols 4\nnrows 2\ndx 1\n", "1 2 3 4\n5 6 7 8\n"),
         "3: dx is not read: " + place},
        {"height of a cell", asc("ncols 4\nnrows 2\nDY 1\n", "1 2 3 4\n5 6 7 8\n"),
         "3: DY is not read: " + place},
        {"capitals", asc("NCOLS 4\nnrows 2\n", "1 2 3 4\n5 6 7 8\n"), "1: NCOLS " + lower},
        {"capitals of the origin", asc("ncols 4\nnrows 2\nXLLCorner 4\n", "1 2 3 4\n5 6 7 8\n"),
         "3: XLLCorner " + lower},
        {"small letters", asc("ncols 4\nnrows 2\nnodata_value 4\n", "1 2 3 4\n5 6 7 8\n"),
         "3: nodata_value " + lower},
    };
    const SampleFolder folder;
    for (const auto& grid : kGrids) {
        folder.add("map.asc", grid.grid);
        expectCommands({bad(grid.name, {"map.asc"}, "map.asc:" + grid.error)}, folder);
    }
    const struct {
        const char* name;
        const char* lines;  // behind seven others
        const char* error;
    } kHeaders[] = {
        {"byte order", "BYTEORDER M\n", "BYTEORDER M is not read, only I"},
        {"byte order in words", "BYTEORDER MSBFIRST\n", "BYTEORDER MSBFIRST is not read, only I"},
        {"bands", "NBANDS 2\n", "NBANDS 2 is not read, only 1"},
        {"doubles", "NBITS 64\n", "NBITS 64 is not read, only 32"},
        {"bytes before the cells", "SKIPBYTES 4\n", "SKIPBYTES 4 is not read, only 0"},
        {"pixel by pixel", "LAYOUT BIP\n", "LAYOUT BIP is not read, only BIL"},
        {"band by band", "layout bsq\n", "layout bsq is not read, only BIL"},
        {"cells that are no squares", "YDIM 0.5\n", "YDIM 0.5 is not read, only 0.25"},
        {"padded rows", "TOTALROWBYTES 16\n", "TOTALROWBYTES 16 is not read, only 12"},
        {"padded bands", "BANDROWBYTES 16\n", "BANDROWBYTES 16 is not read, only 12"},
        {"small letters", "ulxmap 16\n", "ulxmap is not read: keys are in capitals"},
    };
    folder.add("map.bil", cells(kFloats));
    for (const auto& header : kHeaders) {
        folder.add("map.hdr", std::string(kHdr) + header.lines);
        expectCommands({bad(header.name, {"map.bil"}, std::string("map.hdr:8: ") + header.error)},
                       folder);
    }
    const auto reads = [&](const char* file) {
        return runCommand({"raster", file, "--at", "0,0"}, "", folder).output ==
               "column  0\nrow     0\nvalue   -1.5\n";
    };
    folder.add("map.hdr", std::string(kHdr) +
                              "BYTEORDER I\nLAYOUT bil\nNBANDS 1\nNBITS 32\nSKIPBYTES 0\n"
                              "BANDROWBYTES 12\nTOTALROWBYTES 12.0\nYDIM .250\nOTHER 3\n");
    EXPECT_TRUE(reads("map.bil"));
    folder.add("map.asc", "NCols 4 is a comment of more\n");
    EXPECT_FALSE(reads("map.asc"));
    folder.add("map.asc", "ncols 4\nother 3\nnrows 1\nNODATA_value 1\n-1.5 +2 .5e1 -9.\n");
    EXPECT_TRUE(reads("map.asc"));
    folder.add("map.hdr", "NCOLS 3\nNROWS 2\nNBITS 16\nTOTALROWBYTES 6\n");
    EXPECT_EQ(runCommand({"raster", "map.hdr"}, "", folder).exitStatus, 0) << "integers";
}

TEST(Raster, takesInfiniteCellsForUnmeasured) {
    SampleFolder folder;
    folder.add("map.asc",
               "ncols 4\nnrows 2\nNODATA_value -1\n1 inf -inf nan\n-1 1e39 5 -Infinity\n");
    const std::string shown =
        runCommand({"raster", "map.asc", "--format", "csv"}, "", folder).output;
    EXPECT_EQ(
        shown.substr(0, shown.find("\n\n")),
        "columns,rows,originX,originY,cellSize,noData,message,measured,smallest,largest,mean\n"
        "4,2,0,0,0,-1,Raster file loaded,2,1,5,3");
    expectCommands(
        {good("infinite", {"map.asc", "--at", "1,0"}, "column  1\nrow     0\nvalue   -\n"),
         good("too large for a single", {"map.asc", "--at", "1,1"},
              "column  1\nrow     1\nvalue   -\n")},
        folder);
    const QImage image = picture(folder, {"map.asc"});
    EXPECT_EQ(image.pixel(0, 0), qRgb(0, 0, 0));
    EXPECT_EQ(image.pixel(2, 1), qRgb(255, 255, 255));
    EXPECT_EQ(image.pixel(1, 0), qRgba(0, 0, 0, 0));
    EXPECT_EQ(image.pixel(2, 0), qRgba(0, 0, 0, 0));
    folder.add("map.asc", "ncols 3\nnrows 1\nNODATA_value -1\ninf -1 nan\n");
    const std::string none =
        runCommand({"raster", "map.asc", "--format", "json"}, "", folder).output;
    EXPECT_NE(none.find("\"measured\": 0, \"smallest\": null, \"largest\": null, \"mean\": null"),
              std::string::npos)
        << none;
}

TEST(Raster, survivesNoise) {
    std::mt19937 random(7);
    for (int run = 0; run < 20; ++run) {
        SampleFolder folder;
        for (const char* name : {"map.asc", "map.hdr", "map.bil", "map.clr"}) {
            std::string noise;
            for (int i = 0; i < 4000; ++i) {
                noise += static_cast<char>(random());
            }
            folder.add(name, noise);
        }
        for (const char* name : {"map.asc", "map.bil"}) {
            const CommandResult result = runCommand({"raster", name, "--png", "x.png"}, "", folder);
            EXPECT_EQ(result.exitStatus, 1);
            EXPECT_EQ(result.output, "");
            EXPECT_EQ(result.errors.find("rfutils: map."), 0U) << result.errors;
            EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1) << result.errors;
        }
        // noise for colours draws nevertheless
        folder.add("map.asc", kHead + kCells);
        EXPECT_EQ(picture(folder, {"map.asc"}).size(), QSize(4, 3));
    }
}

TEST(Raster, drawsTheLargestGrid) {
    SampleFolder folder;
    std::string row = "7";
    for (int column = 1; column < 2048; ++column) {
        row += " 7";
    }
    std::string file = "ncols 2048\nnrows 2048\nNODATA_value 0\n";
    for (int line = 0; line < 2048; ++line) {
        file += row + "\n";
    }
    folder.add("map.asc", file);
    folder.add("map.clr", "0 0 0 0\n7 1 2 3\n");
    const QImage image = picture(folder, {"map.asc"});
    ASSERT_EQ(image.size(), QSize(2048, 2048));
    EXPECT_EQ(image.pixel(2047, 2047), qRgb(1, 2, 3));
}

TEST(Raster, examplesOfTheHelpRun) {
    const SampleFolder folder;
    for (const char* name :
         {"terrain.asc", "terrain.clr", "terrain_bil.hdr", "terrain_bil.bil", "terrain_bil.clr"}) {
        ASSERT_TRUE(QFile::copy(QStringLiteral(RFUTILS_SAMPLES "/") + QLatin1String(name),
                                folder.path() + QLatin1Char('/') + QLatin1String(name)));
    }
    const auto examples = examplesOf(runCommand({"raster", "--help"}).output);
    ASSERT_EQ(examples.size(), 4U);
    for (const std::string& example : examples) {
        const CommandResult result = runCommand(splitWords(example).mid(1), "", folder);
        EXPECT_EQ(result.exitStatus, 0) << example;
        EXPECT_EQ(result.errors, "") << example;
        EXPECT_NE(result.output, "") << example;
    }
    EXPECT_EQ(QImage(folder.path() + QStringLiteral("/terrain.png")).size(), QSize(320, 240));
}

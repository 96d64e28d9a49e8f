#include "analysis/maps/tabFile.h"

#include <string>
#include <vector>

#include "mapFiles.h"

namespace rfu::test {
namespace {

const std::string kStart = "!table\n!version 300\n\nDefinition Table\n";  // four lines
const std::string kFile = "  File \"map.asc\"\n  Type \"RASTER\"\n";      // two
const std::string kPoints =                                               // four
    "  (500000,0) (0,0) Label \"Pt 1\",\n"
    "  (500000,5000000) (4,0) Label \"Pt 2\",\n"
    "  (400000,5000000) (4,3) Label \"Pt 3\",\n"
    "  (600000.5,1000000) (0.5,2.25) Label \"Pt 4\"\n";
const std::string kUtm31 = "  CoordSys Earth Projection 8, 104, \"m\", 3, 0, 0.9996, 500000, 0\n";
const std::string kMetres = "  Units \"m\"\n";
const std::string kDegrees = "  Units \"degree\"\n";
const std::string kWhole = kStart + kFile + kPoints + kUtm31 + kMetres;  // twelve

using TabFileTest = MapFiles;

TEST_F(TabFileTest, FindsWhatIsNotReadAsWritten) {
    const std::string misplaced =
        " error units-misplaced: Units converts the control points; it has to follow them and "
        "CoordSys, and to stand there once";
    const std::string none =
        " error coordsys-missing: Units converts the control points by a CoordSys line of a "
        "transverse Mercator projection, and none stands before it";
    const std::string unread =
        "warning point-not-read: not read: a control point is (X,Y) (COLUMN,ROW) Label \"Pt 1\", "
        "to \"Pt 4\"";
    const auto missing = [](const char* number) {
        return std::string("error point-missing: the control point Pt ") + number + " is missing";
    };
    const auto point = [](const std::string& numbers) {
        return kWhole.substr(0, kWhole.find("  (500000,0)")) + numbers + " Label \"Pt 1\"\n" +
               kWhole.substr(kWhole.find("  (500000,5"));
    };
    const std::string name(64, 'n');
    const struct {
        const char* name;
        std::string file;
        std::vector<std::string> findings;
    } kFiles[] = {
        {"plain", kWhole, {}},
        {"degrees", kStart + kFile + kPoints + kDegrees, {}},
        {"degrees anywhere", kStart + kDegrees + kFile + kPoints, {}},
        {"no units", kStart + kFile + kPoints, {}},
        {"other lines", kStart + "  Transform 1 2 3\n\n" + kFile + kPoints, {}},
        {"empty",
         "",
         {missing("1"), missing("2"), missing("3"), missing("4"),
          "error raster-not-named: names no raster file"}},
        {"cut short",
         kStart + kFile + kPoints.substr(0, kPoints.find("\"Pt 4")),
         {"10:4 " + unread, missing("4")}},
        {"a fifth point", kWhole + "  (1,2) (3,4) Label \"Pt 5\"\n", {"13:4 " + unread}},
        {"a label in small letters", kWhole + "  (1,2) (3,4) label \"pt 1\"\n", {"13:4 " + unread}},
        {"a label grown together with a number",
         kWhole + "  (1,2) (3,4Label \"Pt 1\"\n",
         {"13:4 " + unread}},
        {"a decimal comma", kWhole + "  (1,5,2) (3,4) Label \"Pt 1\"\n", {"13:4 " + unread}},
        {"two rasters",
         kStart + kFile + "  File \"other.asc\"\n" + kPoints,
         {"7:3 warning key-repeated: File stands in line 5 already; the last one counts"}},
        {"points in comments", kStart + kFile + "!" + kPoints, {missing("1")}},
        {"no raster named", kStart + kPoints, {"error raster-not-named: names no raster file"}},
        {"another type",
         kStart + "  Type \"NATIVE\"\n  Units \"m\"\n",
         {"5:8 error type-not-supported: File not supported: the type is \"NATIVE\", and only "
          "\"RASTER\" is "
          "read"}},
        {"the type in small letters",
         kStart + "  Type \"raster\"\n",
         {"5:8 error type-not-supported: File not supported: the type is \"raster\", and only "
          "\"RASTER\" is read: write \"RASTER\""}},
        {"a word too many in CoordSys",
         kStart + kFile + kPoints + kUtm31.substr(0, kUtm31.size() - 1) + ", 17\n" + kMetres,
         {"12:" + none + "; line 11 is not read as one: it has 12 words, not 11"}},
        {"units before the points",
         kStart + kFile + kUtm31 + kMetres + kPoints,
         {"8:" + misplaced}},
        {"units before the last point",
         kStart + kFile + kUtm31 + kPoints + kMetres + "  (1,2) (3,4) Label \"Pt 1\"\n",
         {"12:" + misplaced,
          "13:21 warning point-repeated: Pt 1 is given once more; the last one counts"}},
        {"units before CoordSys",
         kStart + kFile + kPoints + kMetres + kUtm31,
         {"11:" + none, "11:" + misplaced}},
        {"units between two CoordSys",
         kStart + kFile + kPoints + kUtm31 + kMetres + kUtm31,
         {"12:" + misplaced,
          "13:3 warning key-repeated: CoordSys stands in line 11 already; the last one counts"}},
        {"units twice", kWhole + kMetres, {"12:" + misplaced}},
        {"units of two kinds", kWhole + kDegrees, {"12:" + misplaced}},
        {"no CoordSys", kStart + kFile + kPoints + kMetres, {"11:" + none}},
        {"a CoordSys that is not read",
         kStart + kFile + kPoints + "  CoordSys Earth Projection 1, 104\n" + kMetres,
         {"12:" + none + "; line 11 is not read as one: it has 5 words, not 11"}},
        {"keys in another case",
         kStart + "FILE \"map.asc\"\ntype \"NATIVE\"\nUNITS \"m\"\ncoordsys\n" + kFile + kPoints,
         {"5:1 error key-case: FILE is not read: write File",
          "6:1 error key-case: type is not read: write Type",
          "7:1 error key-case: UNITS is not read: write Units",
          "8:1 error key-case: coordsys is not read: write CoordSys"}},
        {"more or less than a value",
         kStart + "File a b.asc\n Type\nUnits \"m\" \"m\"\nCoordSys Earth\n" + kFile + kPoints,
         {"5:1 error key-needs-one-value: File is not read: the line is a key and a value",
          "6:2 error key-needs-one-value: Type is not read: the line is a key and a value",
          "7:1 error key-needs-one-value: Units is not read: the line is a key and a value"}},
        {"keys that are misspelt",
         kStart + "Flie \"map.asc\"\n  TYPES \"RASTER\"\n" + kPoints +
             "CoordSystem Earth Projection 8, 104, \"m\", 3, 0, 0.9996, 500000, 0\n  Unit \"m\"\n",
         {"5:1 warning key-unknown: \"Flie\" is not read: did you mean File?",
          "6:3 warning key-unknown: \"TYPES\" is not read: did you mean Type?",
          "11:1 warning key-unknown: \"CoordSystem\" is not read: did you mean CoordSys?",
          "12:3 warning key-unknown: \"Unit\" is not read: did you mean Units?",
          "error raster-not-named: names no raster file"}},
        {"a key that is misspelt beside the right one",
         kWhole + "Flie \"other.asc\"\n  Typ x\n",
         {}},
        {"words near to keys in other lines",
         kStart + "  Tile 5\nStyle 1\nUnit a b\n!Flie \"map.asc\"\n" + kFile + kPoints,
         {}},
        {"units in a comment", kStart + "!Units \"m\"\n" + kFile + kPoints + kUtm31 + kMetres, {}},
        {"hexadecimal",
         point("  (0x10,0) (0,0)"),
         {"7:4 error no-number: \"0x10\" is no number: read as 16"}},
        {"a word",
         point("  (1,nan) (0,0)"),
         {"7:6 error no-number: \"nan\" is no number: read as nan"}},
        {"a unit",
         point("  (1,2m) (0,0)"),
         {"7:6 error no-number: \"2m\" is no number: read as 2"}},
        {"too large for a double",
         point("  (1,1e400) (1e999,0)"),
         {"7:6 error point-infinite: \"1e400\" is beyond the range of a single: read as infinite",
          "7:14 error point-infinite: \"1e999\" is beyond the range of a double: read as "
          "infinite"}},
        {"too large for a single",
         point("  (1,1e39) (0,0)"),
         {"7:6 error point-infinite: \"1e39\" is beyond the range of a single: read as infinite"}},
        {"padded",
         point("  (1," + std::string(63, '0') + "5) (0,0)"),
         {"7:6 error token-cut: \"" + std::string(60, '0') +
          "...\" is too long: its first 63 characters are read as 0"}},
        {"a pixel that is no number",
         point("  (1,2) (3,x)"),
         {"7:12 error no-number: \"x\" is no number: read as 0"}},
        {"a meridian that is no number",
         kStart + kFile + kPoints +
             "CoordSys Earth Projection 8, 104, \"m\", 3E, 0, 0.9996, 500000, 0\n" + kMetres,
         {"11:40 error no-number: \"3E\" is no number: read as 3",
          "11:40 error not-utm: the points are converted as UTM, with central meridian -177, -171, "
          "... or 177, not \"3E\""}},
        {"a name of 64 characters",
         kStart + "  File \"" + name + "\"\n" + kPoints,
         {"5:8 error token-cut: \"\\\"" + name.substr(0, 59) +
          "...\" is too long: its first 63 characters are read as \"" + name.substr(0, 60) +
          "...\""}},
        {"a NUL in a point",
         point(std::string("  (1,2) (3,\0 4)", 15)),
         {"7:12 error text-after-nul: the text behind a NUL in a line is not read", missing("1")}},
        {"a NUL behind the units",
         kWhole.substr(0, kWhole.size() - 1) + std::string("\0 x\n", 4),
         {"12:12 error text-after-nul: the text behind a NUL in a line is not read"}},
        {"NULs in lines of no meaning", kWhole + std::string("!a\0b\nc\0d\n", 9), {}},
        {"a line too long",
         kWhole + "x" + std::string(1023999 - 1, ' ') + "y\n",
         {"13:1024000 error line-cut: of a line only the first 1023999 characters are read"}},
        {"a comment of any length", kWhole + "!" + std::string(1024000, 'x') + "\n", {}}};
    for (const auto& row : kFiles) {
        EXPECT_EQ(listed(checkTab(write("map.tab", row.file)).findings), row.findings) << row.name;
    }
}

TEST_F(TabFileTest, FindsConversionsThatAreNotFromUtm) {
    const auto coordSys = [](const std::string& values) {
        return "CoordSys Earth Projection " + values + "\n";
    };
    const auto notUtm = [](const std::string& place, const char* expected) {
        return place + " error not-utm: the points are converted as UTM, with " + expected;
    };
    const struct {
        const char* name;
        std::string coordSys;  // in line 11
        std::string units;     // in line 12
        std::vector<std::string> findings;
    } kFiles[] = {
        {"the first zone",
         coordSys("8, 104, \"m\", -177, 0, 0.9996, 500000, 10000000"),
         kMetres,
         {}},
        {"the last zone", coordSys("8, 104, \"m\", 177.0, 0, 0.99960, 5e5, 0"), kMetres, {}},
        {"another projection",
         coordSys("20, 104, \"m\", 3, 0, 0.9996, 500000, 0"),
         kMetres,
         {notUtm("11:27", "projection 8, not \"20\"")}},
        {"a system in feet",
         coordSys("8, 104, \"ft\", 3, 0, 0.9996, 500000, 0"),
         kMetres,
         {notUtm("11:35", "units m, not \"ft\"")}},
        {"a meridian between zones",
         coordSys("8, 104, \"m\", 6, 0, 0.9996, 500000, 0"),
         kMetres,
         {notUtm("11:40", "central meridian -177, -171, ... or 177, not \"6\"")}},
        {"a meridian beyond the zones",
         coordSys("8, 104, \"m\", 183, 0, 0.9996, 500000, 0"),
         kMetres,
         {notUtm("11:40", "central meridian -177, -171, ... or 177, not \"183\"")}},
        {"another latitude",
         coordSys("8, 104, \"m\", 3, 0.5, 0.9996, 500000, 0"),
         kMetres,
         {notUtm("11:43", "origin latitude 0, not \"0.5\"")}},
        {"scale 1",
         coordSys("8, 104, \"m\", 3, 0, 1, 500000, 0"),
         kMetres,
         {notUtm("11:46", "scale 0.9996, not \"1\"")}},
        {"another false easting",
         coordSys("8, 104, \"m\", 3, 0, 0.9996, 7500000, 0"),
         kMetres,
         {notUtm("11:54", "false easting 500000, not \"7500000\"")}},
        {"another false northing",
         coordSys("8, 104, \"m\", 3, 0, 0.9996, 500000, 5"),
         kMetres,
         {notUtm("11:62", "false northing 0 or 10000000, not \"5\"")}},
        {"points in feet", kUtm31, "Units \"ft\"\n", {notUtm("12:7", "units m, not \"ft\"")}},
        {"degrees in capitals",
         kUtm31,
         "Units \"Degree\"\n",
         {notUtm("12:7", "units m, not \"Degree\"")}},
        {"several",
         coordSys("8, 104, \"m\", 3, 0, 1, 0, 0"),
         "Units \"km\"\n",
         {notUtm("11:46", "scale 0.9996, not \"1\""),
          notUtm("11:49", "false easting 500000, not \"0\""),
          notUtm("12:7", "units m, not \"km\"")}},
        {"degrees of any system", coordSys("8, 104, \"m\", 3, 0, 1, 0, 0"), kDegrees, {}},
        {"no units", coordSys("8, 104, \"m\", 3, 0, 1, 0, 0"), "", {}},
        {"the last CoordSys counts",
         coordSys("8, 104, \"m\", 3, 0, 1, 0, 0") + kUtm31,
         kMetres,
         {"12:3 warning key-repeated: CoordSys stands in line 11 already; the last one counts"}}};
    const std::string head = kStart + kFile + kPoints;
    for (const auto& row : kFiles) {
        std::string file = head;
        file.append(row.coordSys).append(row.units);
        EXPECT_EQ(listed(checkTab(write("map.tab", file)).findings), row.findings) << row.name;
    }
}

TEST_F(TabFileTest, LoadsPointsAsReadAndConverted) {
    const TabFile tab = loadTab(write("map.tab", kWhole));
    EXPECT_EQ(tab.rasterFile, named("map.asc"));
    EXPECT_EQ(tab.points[0].x, 500000.0F);
    EXPECT_EQ(tab.points[0].y, 0.0F);
    EXPECT_EQ(tab.points[3].x, 600000.5F);
    EXPECT_EQ(tab.points[3].y, 1000000.0F);
    EXPECT_EQ(tab.points[3].pixel, QPointF(0.5, 2.25));
    // On the central meridian of zone 31.
    EXPECT_EQ(tab.map->controlPoint[1].x, 3.0F);
    EXPECT_NEAR(tab.map->controlPoint[1].y, 45.153477F, 4e-6F);
}

TEST_F(TabFileTest, RefusesForTheFirstError) {
    const auto refusalOf = [&](const char* name) { return refusal([&] { loadTab(named(name)); }); };
    write("map.tab", kWhole + kMetres);
    EXPECT_EQ(refusalOf("map.tab").substr(0, 35), "map.tab:12: Units converts the cont");
    write("warned.tab", kStart + kFile + kPoints + kPoints);
    EXPECT_EQ(refusalOf("warned.tab"), "") << "warnings only";
    files.makeFolder("folder.tab");
    EXPECT_EQ(refusalOf("folder.tab"), "folder.tab: Is a directory");
    EXPECT_EQ(refusalOf("none.tab"), "none.tab: No such file or directory");
}

}  // namespace
}  // namespace rfu::test

#include "mapFiles.h"

#include <cstring>
#include <memory>
#include <string>

namespace {

constexpr char kPoints[] =
    "(500000,0) (0,0) Label \"Pt 1\",\n"
    "(500000,5000000) (512,0) Label \"Pt 2\",\n"
    "(600000.5,1e6) (512,512) Label \"Pt 3\",\n"
    "(-5,+7.25) (0,512) Label \"Pt 4\"\n";

class TabFile : public MapFiles {
protected:
    bool load(const std::string& text) {
        write("map.tab", text);
        return map->loadTabFile(path("map.tab"));
    }

    void expectPoint(int index, float x, float y) const {
        EXPECT_EQ(map->controlPoint[index].x, x) << index;
        EXPECT_EQ(map->controlPoint[index].y, y) << index;
    }

    void expectPointsAsRead() const {
        expectPoint(0, 500000.0F, 0.0F);
        expectPoint(1, 500000.0F, 5000000.0F);
        expectPoint(2, 600000.5F, 1000000.0F);
        expectPoint(3, -5.0F, 7.25F);
    }
};

std::string coordSys(const char* meridian, const char* falseNorthing) {
    return std::string("CoordSys Earth Projection 8, 104, \"m\", ") + meridian +
           ", 0.5, 0.9996, 500000, " + falseNorthing + "\n";
}

TEST_F(TabFile, ReadsAWholeFile) {
    map->setErrMsg(QStringLiteral("kept"));
    EXPECT_TRUE(load(std::string("!table\n!version 300\n!charset WindowsLatin1\n\n"
                                 "Definition Table\n  File \"terrain.bil\"\n  Type \"RASTER\"\n") +
                     kPoints + coordSys("-69", "0") + "Units \"degree\"\n"));
    EXPECT_STREQ(map->rasterFileName, "terrain.bil");
    EXPECT_EQ(map->fileKind, 1);
    expectPointsAsRead();
    EXPECT_EQ(map->centralMeridian, -69.0F);
    EXPECT_EQ(map->originLatitude, 0.5F);
    EXPECT_EQ(map->falseEasting, 500000.0F);
    EXPECT_EQ(map->falseNorthing, 0.0F);
    EXPECT_EQ(map->unitKind, 1);
    EXPECT_EQ(map->utmZone, 0) << "degrees are not converted";
    EXPECT_EQ(map->southHemisphere, 0);
    EXPECT_EQ(message(), "kept");
    EXPECT_EQ(map->isLoaded, 0);
    EXPECT_EQ(map->isValid, 0);
}

TEST_F(TabFile, TakesTokens7And8And10And11OfTheCoordinateSystem) {
    EXPECT_TRUE(load("CoordSys Earth Projection 8, 104, \"m\", -69, 0, 0.9996, 500000, 0\n"));
    EXPECT_EQ(map->centralMeridian, -69.0F);
    EXPECT_EQ(map->originLatitude, 0.0F);
    EXPECT_EQ(map->falseEasting, 500000.0F);
    EXPECT_EQ(map->falseNorthing, 0.0F);
    EXPECT_TRUE(load("CoordSys 2 3 4 5 6 7 8 9 10 11\n"));
    EXPECT_EQ(map->centralMeridian, 7.0F);
    EXPECT_EQ(map->originLatitude, 8.0F);
    EXPECT_EQ(map->falseEasting, 10.0F);
    EXPECT_EQ(map->falseNorthing, 11.0F);
    EXPECT_TRUE(
        load("CoordSys 20 30 40 50 60 70 80 90 100\n"          // 10 tokens
             "CoordSys 20 30 40 50 60 70 80 90 100 110 120\n"  // 12 tokens
             "Coordsys 20 30 40 50 60 70 80 90 100 110\n"      // another key
             "x CoordSys 30 40 50 60 70 80 90 100 110\n"       // not the first
             "!CoordSys 20 30 40 50 60 70 80 90 100 110\n"));  // a comment
    EXPECT_EQ(map->centralMeridian, 7.0F);
    EXPECT_EQ(map->falseNorthing, 11.0F);
    EXPECT_TRUE(load("CoordSys 2 3 4 5 6 seven 8x 9 \"1,5\" 1e1\n"));
    EXPECT_EQ(map->centralMeridian, 0.0F);
    EXPECT_EQ(map->originLatitude, 8.0F);
    EXPECT_EQ(map->falseEasting, 1.0F);
    EXPECT_EQ(map->falseNorthing, 10.0F);
}

TEST_F(TabFile, ReadsControlPointsByTheirLabel) {
    const struct {
        const char* line;
        int index;  // -1 if the line is no point
    } kCases[] = {
        {"(1,2) (3,4) Label \"Pt 1\",", 0},
        {"(1,2) (3,4) Label \"Pt 2\",", 1},
        {"(1,2) (3,4) Label \"Pt 3\"", 2},
        {"(1,2) (3,4) Label \"Pt 4\"", 3},
        {"1 2 a b c P\"t 4\"", 3},
        {"(1,2) (3,4) Label \"Pt 0\",", -1},
        {"(1,2) (3,4) Label \"Pt 5\",", -1},
        {"(1,2) (3,4) Label \"pt 1\",", -1},
        {"(1,2) (3,4) Label \"Pt 11\",", -1},
        {"(1,2) (3,4) Label \"Pt  1\",", -1},
        {"(1,2) (3,4) Label Pt 1,", -1},
        {"(1,2) (3,4) \"Pt 1\",", -1},
        {"(1,2) (3,4) Label \"Pt 1\", x", -1},
        {"!(1,2) (3,4) Label \"Pt 1\"", -1},
    };
    for (const auto& row : kCases) {
        map = std::make_unique<veltaGEO>();
        EXPECT_TRUE(load(row.line));
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(map->controlPoint[i].x, i == row.index ? 1.0F : 0.0F) << row.line << ' ' << i;
            EXPECT_EQ(map->controlPoint[i].y, i == row.index ? 2.0F : 0.0F) << row.line << ' ' << i;
        }
    }
}

TEST_F(TabFile, NamesTheRasterAndItsKind) {
    const struct {
        const char* line;
        const char* name;
        int kind;
    } kCases[] = {
        {"File \"map.asc\"\n", "map.asc", 0},
        {"  File \"my map.BIL\"\r\n", "my map.BIL", 1},
        {"File map.bip", "map.bip", 2},
        {"File \"../a/map.bsq\"", "../a/map.bsq", 3},
        {"File \"map.tif\"", "map.tif", -1},
        {"File \"bilmap\"", "bilmap", 1},
        {"File \"Gr\xF6\xDF"
         "e.asc\"",
         "Gr\xF6\xDF"
         "e.asc",
         0},
        {"file \"map.asc\"", "before", 9},
        {"File my map.asc", "before", 9},
        {"File", "before", 9},
        {"!File \"map.asc\"", "before", 9},
    };
    for (const auto& row : kCases) {
        std::strcpy(map->rasterFileName, "before");
        map->fileKind = 9;
        EXPECT_TRUE(load(row.line));
        EXPECT_STREQ(map->rasterFileName, row.name) << row.line;
        EXPECT_EQ(map->fileKind, row.kind) << row.line;
    }
}

TEST_F(TabFile, CutsTheRastersNameTo63Characters) {
    const std::string base(59, 'm');
    EXPECT_TRUE(load("File \"" + base + ".asc\""));
    EXPECT_EQ(map->rasterFileName, base + ".asc");
    EXPECT_EQ(map->fileKind, 0);
    EXPECT_TRUE(load("File \"" + base + "m.asc\""));
    EXPECT_EQ(map->rasterFileName, base + "m.as");
    EXPECT_EQ(map->fileKind, -1);
    EXPECT_TRUE(load("File \"" + std::string(5000, 'n') + "\""));
    EXPECT_EQ(map->rasterFileName, std::string(63, 'n'));
    EXPECT_TRUE(load("File \"short.bil\""));
    EXPECT_EQ(std::string(map->rasterFileName, sizeof(map->rasterFileName)),
              "short.bil" + std::string(sizeof(map->rasterFileName) - 9, '\0'));
}

TEST_F(TabFile, RefusesOtherTypesThanRaster) {
    for (const char* type : {"\"NATIVE\"", "\"raster\"", "RASTERS", "\"\"x"}) {
        map = std::make_unique<veltaGEO>();
        EXPECT_FALSE(load(std::string("File \"a.bil\"\nType ") + type + "\nFile \"b.asc\"\n"));
        EXPECT_EQ(message(), "File not supported") << type;
        EXPECT_STREQ(map->rasterFileName, "a.bil") << "what was read before is kept";
        EXPECT_EQ(map->fileKind, 1);
    }
    for (const char* line : {"Type \"RASTER\"\n", "Type RASTER\n", "type \"NATIVE\"\n", "Type\n",
                             "Type NATIVE x\n", "!Type NATIVE\n"}) {
        map = std::make_unique<veltaGEO>();
        EXPECT_TRUE(load(line + std::string("File \"b.asc\"\n"))) << line;
        EXPECT_EQ(message(), "");
        EXPECT_STREQ(map->rasterFileName, "b.asc");
    }
}

TEST_F(TabFile, ConvertsControlPointsFromUtm) {
    EXPECT_TRUE(load(std::string(kPoints) + coordSys("3", "0") + "Units \"m\"\n"));
    EXPECT_EQ(map->unitKind, 2);
    EXPECT_EQ(map->utmZone, 31);
    EXPECT_EQ(map->southHemisphere, 0);
    expectPoint(0, 3.0F, 0.0F);
    const float points[4][2] = {{500000, 0}, {500000, 5000000}, {600000.5F, 1000000}, {-5, 7.25F}};
    for (int i = 0; i < 4; ++i) {
        float latitude = 0.0F;
        float longitude = 0.0F;
        map->utmToLatLng(points[i][0], points[i][1], 31, 0, &latitude, &longitude);
        expectPoint(i, longitude, latitude);
    }
    EXPECT_NEAR(map->controlPoint[1].x, 3.0, 1e-6) << "x is the longitude";
    EXPECT_NEAR(map->controlPoint[1].y, 45.15, 0.01) << "y is the latitude";
}

TEST_F(TabFile, TheFalseNorthingTellsTheHemisphere) {
    const struct {
        const char* falseNorthing;
        int south;
    } kCases[] = {{"0", 0},  {"0.0", 0},  {"-0", 0}, {"10000000", 1}, {"1", 1},
                  {"-1", 1}, {"0.25", 1}, {"x", 0},  {"1e-60", 0},    {"nan", 1}};
    for (const auto& row : kCases) {
        map = std::make_unique<veltaGEO>();
        map->southHemisphere = 9;
        EXPECT_TRUE(load(kPoints + coordSys("-69", row.falseNorthing) + "Units m\n"));
        EXPECT_EQ(map->southHemisphere, row.south) << row.falseNorthing;
        EXPECT_EQ(map->utmZone, 19);
        float latitude = 0.0F;
        float longitude = 0.0F;
        map->utmToLatLng(500000.0F, 5000000.0F, 19, row.south, &latitude, &longitude);
        expectPoint(1, longitude, latitude);
    }
}

TEST_F(TabFile, UnitsAreMatchedExactly) {
    const struct {
        const char* line;
        int kind;  // 0 if it is no such line
    } kCases[] = {
        {"Units \"degree\"\n", 1}, {"Units degree", 1},
        {"Units \"m\"", 2},        {"Units \"Degree\"", 2},
        {"Units \"degrees\"", 2},  {"Units \"ft\"", 2},
        {"units \"m\"", 0},        {"Units", 0},
        {"Units \"m\" x", 0},      {"!Units \"m\"", 0},
        {" !Units \"m\"", 2},      {"Units\t=\t\"m\"\r\n", 2},
    };
    for (const auto& row : kCases) {
        map = std::make_unique<veltaGEO>();
        EXPECT_TRUE(load(kPoints + coordSys("3", "0") + row.line));
        EXPECT_EQ(map->unitKind, row.kind) << row.line;
        EXPECT_EQ(map->utmZone, row.kind == 2 ? 31 : 0) << row.line;
        if (row.kind != 2) {
            expectPointsAsRead();
        }
    }
}

TEST_F(TabFile, UnitsConvertAtOnce) {
    EXPECT_TRUE(load("Units \"m\"\n" + coordSys("3", "0") + kPoints));
    EXPECT_EQ(map->utmZone, 31) << "of central meridian 0, not of the one read later";
    expectPointsAsRead();

    map = std::make_unique<veltaGEO>();
    EXPECT_TRUE(load(coordSys("-69", "0") + "(500000,0) (0,0) Label \"Pt 1\"\nUnits \"m\"\n"
                                            "(500000,0) (0,0) Label \"Pt 2\"\n"));
    expectPoint(0, -69.0F, 0.0F);
    expectPoint(1, 500000.0F, 0.0F);
    float latitude = 0.0F;
    float longitude = 0.0F;
    map->utmToLatLng(0.0F, 0.0F, 19, 0, &latitude, &longitude);
    expectPoint(3, longitude, latitude);
    EXPECT_NE(longitude, 0.0F) << "points that the file does not name are converted too";

    const auto once = map->controlPoint[0];
    EXPECT_TRUE(load("Units \"m\"\n"));
    map->utmToLatLng(once.x, once.y, 19, 0, &latitude, &longitude);
    expectPoint(0, longitude, latitude);
}

TEST_F(TabFile, AFileWithoutUnitsLeavesThePointsAsRead) {
    map->unitKind = 2;
    EXPECT_TRUE(load(kPoints + coordSys("3", "0")));
    EXPECT_EQ(map->unitKind, 2);
    expectPointsAsRead();
}

TEST_F(TabFile, IsNotFound) {
    map->setErrMsg(QStringLiteral("kept"));
    map->unitKind = 2;
    EXPECT_FALSE(map->loadTabFile(path("map.tab")));
    EXPECT_EQ(message(), "kept");
    EXPECT_EQ(map->unitKind, 2);
}

TEST_F(TabFile, TakesItsNameAsItStands) {
    write("map.tab", "File a.asc\n");
    EXPECT_FALSE(map->loadTabFile(path("map")));
    EXPECT_FALSE(map->loadTabFile(path("map.asc")));
    EXPECT_FALSE(map->loadTabFile(path("map.TAB")));
    EXPECT_TRUE(map->loadTabFile(path("map.tab")));
    write("bare", "File b.asc\n");
    EXPECT_TRUE(map->loadTabFile(path("bare")));
    EXPECT_STREQ(map->rasterFileName, "b.asc");
}

TEST_F(TabFile, CutsLinesTo1023999Characters) {
    constexpr std::size_t kMaxLine = 1023999;
    EXPECT_TRUE(load(padded("File", kMaxLine, "a.asc") + '\n'));
    EXPECT_STREQ(map->rasterFileName, "a");
    EXPECT_TRUE(load(padded("File", kMaxLine + 1, "b.asc") + '\n'));
    EXPECT_STREQ(map->rasterFileName, "a");
    EXPECT_TRUE(load(padded("File c.asc", kMaxLine + 1, "x\nType RASTER")));
    EXPECT_STREQ(map->rasterFileName, "c.asc");
}

TEST_F(TabFile, IgnoresEverythingElse) {
    EXPECT_TRUE(
        load("\n\nx\n!\n(\nab\n\"\nDefinition Table\nRasterStyle 1 45\nbegin_metadata\n"
             "\"\\IsReadOnly\" = \"FALSE\"\n\xEF\xBB\xBF!table\n1 2 3 4 5 6 7\n"));
    EXPECT_STREQ(map->rasterFileName, "");
    EXPECT_EQ(map->unitKind, 0);
}

}  // namespace

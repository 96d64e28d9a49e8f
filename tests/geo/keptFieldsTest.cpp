#include "mapFiles.h"

#include <iterator>
#include <locale>
#include <map>
#include <sstream>
#include <type_traits>
#include <utility>

namespace {

/// The fields of a map by name, their values as text.
using Fields = std::map<std::string, std::string>;

std::string indexed(const char* name, std::size_t index) {
    return std::string(name) + '[' + std::to_string(index) + ']';
}

/// Calls visit(name, number) for every number of a map; some cells stand for all of them.
template <typename Visitor>
void forEachNumber(veltaGEO& map, const Visitor& visit) {
#define FIELD(name) visit(#name, map.name)
#define TABLE(name)                                         \
    for (std::size_t i = 0; i < std::size(map.name); ++i) { \
        visit(indexed(#name, i), map.name[i]);              \
    }
    FIELD(isLoaded);
    FIELD(isValid);
    FIELD(nCols);
    FIELD(nRows);
    FIELD(originX);
    FIELD(originY);
    FIELD(cellSize);
    FIELD(noData);
    FIELD(colorCount);
    TABLE(lowValue)
    TABLE(highValue)
    TABLE(lowRed)
    TABLE(lowGreen)
    TABLE(lowBlue)
    TABLE(highRed)
    TABLE(highGreen)
    TABLE(highBlue)
    FIELD(utmZone);
    FIELD(southHemisphere);
    FIELD(originLatitude);
    FIELD(centralMeridian);
    FIELD(falseEasting);
    FIELD(falseNorthing);
    for (std::size_t i = 0; i < std::size(map.controlPoint); ++i) {
        visit(indexed("controlPoint", i) + ".x", map.controlPoint[i].x);
        visit(indexed("controlPoint", i) + ".y", map.controlPoint[i].y);
    }
    FIELD(unitKind);
    FIELD(fileKind);
    FIELD(isFloat);
    FIELD(grid[0][0]);
    FIELD(grid[1][1]);
    FIELD(grid[2047][2047]);
#undef TABLE
#undef FIELD
}

/// Gives every field a value of its own, none of which a file below holds. The size fits the grid.
void mark(veltaGEO& map) {
    int value = 100;
    forEachNumber(map, [&value](const std::string&, auto& number) {
        number = static_cast<std::remove_reference_t<decltype(number)>>(++value);
    });
    std::strcpy(map.rasterFileName, "before.bsq");
    map.setErrMsg(QStringLiteral("before"));
}

Fields fieldsOf(veltaGEO& map) {
    Fields fields;
    forEachNumber(map, [&fields](const std::string& name, auto& number) {
        std::ostringstream text;
        text.imbue(std::locale::classic());
        text << number;
        fields[name] = text.str();
    });
    fields["rasterFileName"] = map.rasterFileName;
    fields["errMsg"] = map.errMsg.toStdString();
    return fields;
}

Fields joined(Fields fields, const Fields& others) {
    for (const auto& [name, value] : others) {
        fields[name] = value;
    }
    return fields;
}

/// What a load of a grid without a colour table sets besides what it reads.
Fields loaded(const Fields& read) {
    return joined({{"isLoaded", "1"},
                   {"isValid", "1"},
                   {"errMsg", kLoaded},
                   {"colorCount", "1"},
                   {"lowValue[0]", "-9999"},
                   {"highValue[0]", "9999"},
                   {"lowRed[0]", "0"},
                   {"lowGreen[0]", "0"},
                   {"lowBlue[0]", "0"}},
                  read);
}

Fields header(const Fields& read) {
    return joined({{"isLoaded", "0"}}, read);
}

struct Load {
    const char* file;  // written unless `text` is null
    const char* text;
    Fields changed;  // all other fields keep what they held
    bool done = true;
};

class KeptFields : public MapFiles {
protected:
    void expectChanges(const std::vector<Load>& loads, bool (veltaGEO::*loader)(const QString&)) {
        for (const Load& row : loads) {
            const std::string what = row.text != nullptr ? row.text : "no file";
            QFile::remove(path(row.file));
            if (row.text != nullptr) {
                write(row.file, row.text);
            }
            mark(*map);
            const Fields expected = joined(fieldsOf(*map), row.changed);
            EXPECT_EQ((map.get()->*loader)(path(row.file)), row.done) << what;
            const Fields actual = fieldsOf(*map);
            ASSERT_EQ(actual.size(), expected.size()) << "a name of the table is none of a field";
            for (const auto& [name, value] : expected) {
                EXPECT_EQ(actual.at(name), value) << name << " after " << what;
            }
        }
    }
};

TEST_F(KeptFields, AnAscGridOverwritesWhatItReads) {
    expectChanges(
        {
            {"map.asc", "", loaded({})},
            {"map.asc", "ncols 3\n", loaded({{"nCols", "3"}})},
            {"map.asc", "nrows 4\n", loaded({{"nRows", "4"}})},
            {"map.asc", "xllcorner 5\n", loaded({{"originX", "5"}})},
            {"map.asc", "yllcorner 6\n", loaded({{"originY", "6"}})},
            {"map.asc", "cellsize 7\n", loaded({{"cellSize", "7"}})},
            {"map.asc", "NODATA_value 8\n", loaded({{"noData", "8"}})},
            {"map.asc", "ncols 3\nNODATA_value 8\n9 10 11\n",
             loaded({{"nCols", "3"}, {"noData", "8"}, {"grid[0][0]", "9"}})},
            {"map.asc",
             "ncols 2049\nnrows 4\n",
             {{"isLoaded", "0"}, {"nCols", "2049"}, {"errMsg", kTooManyColumns}},
             false},
            {"map.asc", nullptr, {{"isLoaded", "0"}, {"errMsg", "ASC file not found"}}, false},
        },
        &veltaGEO::loadASCFile);
}

TEST_F(KeptFields, AnHdrHeaderOverwritesWhatItReads) {
    expectChanges(
        {
            {"map.hdr", "", header({})},
            {"map.hdr", "NCOLS 3\n", header({{"nCols", "3"}})},
            {"map.hdr", "NROWS 4\n", header({{"nRows", "4"}})},
            {"map.hdr", "ULXMAP 5\n", header({{"originX", "5"}})},
            {"map.hdr", "ULYMAP 6\n", header({{"originY", "6"}})},
            {"map.hdr", "XDIM 7\n", header({{"cellSize", "7"}})},
            {"map.hdr", "NODATA 8\n", header({{"noData", "8"}})},
            {"map.hdr", "PIXELTYPE FLOAT\n", header({{"isFloat", "1"}})},
            {"map.hdr", "PIXELTYPE SIGNEDINT\n", header({{"isFloat", "0"}})},
            {"map.hdr", "XDIM 7\nNROWS 2049\nNCOLS 3\n",
             header({{"cellSize", "7"}, {"nRows", "2049"}, {"errMsg", kTooManyRows}}), false},
            {"map.hdr", nullptr, header({{"errMsg", "HDR file not found"}}), false},
        },
        &veltaGEO::loadHDRFile);
}

TEST_F(KeptFields, BilCellsOverwriteNoFieldOfTheHeader) {
    expectChanges(
        {
            {"map.bil", "", loaded({})},
            {"map.bil", "some bytes of integers", loaded({})},
            {"map.bil", nullptr, {{"errMsg", "BIL file not found"}}, false},
        },
        &veltaGEO::loadBILFile);

    write("map.bil", "");
    mark(*map);
    map->isFloat = 1;
    Fields expected = joined(fieldsOf(*map), loaded({}));
    expected["grid[0][0]"] = expected["grid[1][1]"] = expected["noData"];
    EXPECT_TRUE(map->loadBILFile(path("map.bil")));
    EXPECT_EQ(fieldsOf(*map), expected);
}

TEST_F(KeptFields, AColorTableOverwritesItsEntriesAlone) {
    Fields defaults = loaded({});
    for (const char* name : {"isLoaded", "isValid", "errMsg"}) {
        defaults.erase(name);
    }
    const Fields one = joined(defaults, {{"lowValue[0]", "10"},
                                         {"lowRed[0]", "11"},
                                         {"lowGreen[0]", "12"},
                                         {"lowBlue[0]", "13"},
                                         {"highValue[0]", "20"},
                                         {"highRed[0]", "21"},
                                         {"highGreen[0]", "22"},
                                         {"highBlue[0]", "23"}});
    const Fields two = joined(one, {{"colorCount", "2"},
                                    {"lowValue[1]", "30"},
                                    {"lowRed[1]", "31"},
                                    {"lowGreen[1]", "32"},
                                    {"lowBlue[1]", "33"}});
    expectChanges(
        {
            {"map.clr", "", defaults},
            {"map.clr", "10 11 12 13\n20 21 22 23\n", one},
            {"map.clr", "10 11 12 13\n20 21 22 23\n30 31 32 33\nno colour\n", two},
            {"map.clr", nullptr,
             joined(defaults, {{"errMsg", "CLR file not found. Unable to display in color."}}),
             false},
        },
        &veltaGEO::LoadColorTable);
}

TEST_F(KeptFields, ATabFileOverwritesWhatItReads) {
    constexpr char kSystem[] = "CoordSys Earth Projection 8, 104, \"m\", 1, 2, 3, 4, 5\n";
    const Fields system = {{"centralMeridian", "1"},
                           {"originLatitude", "2"},
                           {"falseEasting", "4"},
                           {"falseNorthing", "5"}};
    const std::string points = "(1,2) (0,0) Label \"Pt 2\",\n(3,4) (0,0) Label \"Pt 4\"\n";
    const Fields pointFields = {{"controlPoint[1].x", "1"},
                                {"controlPoint[1].y", "2"},
                                {"controlPoint[3].x", "3"},
                                {"controlPoint[3].y", "4"}};
    const Fields raster = {{"rasterFileName", "a.bil"}, {"fileKind", "1"}};
    const Fields all = joined(joined(system, pointFields), raster);
    const std::string text = "File \"a.bil\"\n" + points + kSystem;
    const std::string degrees = text + "Units \"degree\"\n";
    const std::string refused =
        degrees + "Type \"NATIVE\"\nFile \"b.asc\"\n(5,6) (0,0) Label \"Pt 1\"\nUnits \"m\"\n";
    expectChanges(
        {
            {"map.tab", "", {}},
            {"map.tab", "Type \"RASTER\"\n", {}},
            {"map.tab", "Units \"degree\"\n", {{"unitKind", "1"}}},
            {"map.tab", "File \"a.bil\"\n", raster},
            {"map.tab", points.c_str(), pointFields},
            {"map.tab", kSystem, system},
            {"map.tab", text.c_str(), all},
            {"map.tab", degrees.c_str(), joined(all, {{"unitKind", "1"}})},
            {"map.tab", refused.c_str(),
             joined(all, {{"unitKind", "1"}, {"errMsg", "File not supported"}}), false},
            {"map.tab", nullptr, {}, false},
        },
        &veltaGEO::loadTabFile);
}

TEST_F(KeptFields, OnlyAPixelTypeLineChangesIsFloat) {
    const ScopedCodec codec("ISO 8859-1");
    write("map.bil", bytesOf({1, 2, 3}));
    write("other.asc", "ncols 3\nnrows 1\nNODATA_value 0\n7 8 9\n");
    const auto loadHdr = [this](const char* text) {
        write("map.hdr", text);
        EXPECT_TRUE(map->loadHDRFile(path("map.hdr"))) << text;
    };
    const auto expectBothLoadsKeep = [this](std::int32_t isFloat) {
        for (int round = 0; round < 2; ++round) {
            EXPECT_TRUE(map->loadBILFile(path("map.bil")));
            EXPECT_EQ(map->isFloat, isFloat) << "BIL, round " << round;
            map->grid[0][0] = 77.0F;
            EXPECT_TRUE(map->loadBILFile(path("map.bil")));
            EXPECT_EQ(map->isFloat, isFloat) << "BIL again, round " << round;
            EXPECT_EQ(map->grid[0][0], isFloat == 1 ? 1.0F : 77.0F) << round;
            EXPECT_TRUE(map->loadASCFile(path("other.asc")));
            EXPECT_EQ(map->isFloat, isFloat) << "ASC, round " << round;
        }
    };
    loadHdr("NCOLS 3\nNROWS 1\nPIXELTYPE FLOAT\n");
    expectBothLoadsKeep(1);
    loadHdr("NCOLS 3\nNROWS 1\n");
    expectBothLoadsKeep(1);
    loadHdr("PIXELTYPE SIGNEDINT\n");
    expectBothLoadsKeep(0);
    loadHdr("NCOLS 3\nNROWS 1\n");
    expectBothLoadsKeep(0);
}

}  // namespace

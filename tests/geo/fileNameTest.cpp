#include <rfUtils/geo/veltaGEO.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

TEST(GetFileNameExt, TellsTheFormatFromThreeCharacters) {
    const struct {
        const char* why;
        const char* name;
        int code;
    } kCases[] = {
        {"capitals", "map.ASC", 0},
        {"small letters", "map.asc", 0},
        {"capitals", "map.BIL", 1},
        {"small letters", "map.bil", 1},
        {"capitals", "map.BIP", 2},
        {"small letters", "map.bip", 2},
        {"capitals", "map.BSQ", 3},
        {"small letters", "map.bsq", 3},
        {"mixed case", "map.Bil", -1},
        {"mixed case", "map.bIL", -1},
        {"mixed case", "map.aSc", -1},
        {"another format", "map.hdr", -1},
        {"the last point counts", "map.asc.bil", 1},
        {"the last point counts", "map.bil.old", -1},
        {"what follows the three characters does not count", "map.bilinear", 1},
        {"fewer than three characters", "map.bi", -1},
        {"nothing behind the point", "map.", -1},
        {"nothing behind the point, though the name begins right", "bil.", -1},
        {"the point is the second character", "m.bsq", 3},
        {"no point: the name's first three characters", "mapbil", -1},
        {"no point: the name's first three characters", "bilmap", 1},
        {"no point: the name's first three characters", "ascii", 0},
        {"no point, three characters", "BSQ", 3},
        {"no point, fewer than three characters", "bi", -1},
        {"a point in front is none", ".bil", -1},
        {"a point in front is none", ".asc", -1},
        {"a point in a folder's name is one", "maps.bil/terrain", 1},
        {"empty", "", -1},
        {"only a point", ".", -1},
        {"none", nullptr, -1},
    };
    const auto map = std::make_unique<veltaGEO>();
    for (const auto& row : kCases) {
        EXPECT_EQ(map->GetFileNameExt(row.name), row.code)
            << row.why << ": " << (row.name != nullptr ? row.name : "null");
    }
}

TEST(GetFileNameExtDel, CutsTheNameAtItsLastPoint) {
    const struct {
        const char* name;
        const char* expected;
    } kCases[] = {
        {"map.asc", "map"},
        {"map.asc.bil", "map.asc"},
        {"map", "map"},
        {"", ""},
        {".asc", ""},
        {"map.", "map"},
        {".", ""},
        {"..", "."},
        {"/a/b.c/map", "/a/b"},
        {"/a/b.c/map.x", "/a/b.c/map"},
        {"Größe.asc", "Größe"},
    };
    const auto map = std::make_unique<veltaGEO>();
    for (const auto& row : kCases) {
        EXPECT_EQ(map->GetFileNameExtDel(QString::fromUtf8(row.name)).toStdString(), row.expected)
            << row.name;
    }
}

}  // namespace

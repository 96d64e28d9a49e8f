#include "analysis/maps/rasterFile.h"

#include "mapFiles.h"

#include <support/scopedCodec.h>

#include <QTextCodec>

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <limits>
#include <string>
#include <thread>

namespace rfu::test {
namespace {

constexpr float kInfinite = std::numeric_limits<float>::infinity();

const std::string kAsciiGrid =
    "ncols 4\nnrows 2\nNODATA_value -9999\n0 50 100 150\n200 -9999 300 -50\n";
const std::string kFloatHeader =
    "NCOLS 3\nNROWS 2\nULXMAP 9.1\nULYMAP 47.5\nXDIM 0.25\nNODATA -1\nPIXELTYPE FLOAT\n";
/// Bytes above 127 and zeros in every place.
const std::vector<float> kFloats = {-1.5F, 0.1F, -1.0F, 240.25F, -0.001F, 1e10F};

class RasterFileTest : public MapFiles {
protected:
    std::string refusalOf(const char* name) const {
        return refusal([&] { loadRaster(named(name)); });
    }

    RasterStatistics statisticsOfRow(const std::string& cells, const char* columns) const {
        return statisticsOf(
            loadRaster(write("row.asc", std::string("ncols ") + columns +
                                            "\nnrows 1\nNODATA_value -1\n" + cells + "\n")));
    }
};

TEST_F(RasterFileTest, LoadsAsciiGrids) {
    const Raster raster = loadRaster(write("map.asc", kAsciiGrid));
    EXPECT_TRUE(raster.hasCells);
    EXPECT_EQ(raster.map->nCols, 4);
    EXPECT_EQ(raster.map->nRows, 2);
    EXPECT_EQ(raster.cell(3, 0), 150.0F);
    EXPECT_EQ(raster.cell(2, 1), 300.0F);
    EXPECT_FALSE(raster.isMeasured(-9999.0F));
    EXPECT_TRUE(raster.isMeasured(0.0F));
    EXPECT_FALSE(raster.isMeasured(kInfinite));
    EXPECT_FALSE(raster.isMeasured(std::numeric_limits<float>::quiet_NaN()));
}

TEST_F(RasterFileTest, LoadsFloatGridsByteForByteByAnyName) {
    const ScopedCodec codec("UTF-8");  // by which the library would decode the cells
    files.makeFolder("K\u00E4rten.d");
    write("K\u00E4rten.d/\u5C71.hdr", kFloatHeader);
    write("K\u00E4rten.d/\u5C71.bil", bytesOf(kFloats) + "more");
    write("K\u00E4rten.d/\u5C71.clr", "0 1 2 3\n1 1 2 4\n");
    for (const char* name : {"K\u00E4rten.d/\u5C71.hdr", "K\u00E4rten.d/\u5C71.bil"}) {
        const Raster raster = loadRaster(named(name));
        EXPECT_TRUE(raster.hasCells);
        EXPECT_EQ(raster.map->lowBlue[0], 3);
        for (int cell = 0; cell < 6; ++cell) {
            EXPECT_EQ(raster.cell(cell % 3, cell / 3), kFloats[static_cast<std::size_t>(cell)])
                << name << ' ' << cell;
        }
    }
}

/// Other threads encode names of files by the codec of the process meanwhile. The map is large, so that they have
/// the time to see another one.
TEST_F(RasterFileTest, LeavesTheCodecOfTheProcessAlone) {
    const ScopedCodec codec("UTF-8");
    write("map.hdr",
          "NCOLS 1024\nNROWS 1024\nULXMAP 9\nULYMAP 47\nXDIM 1\nNODATA -1\nPIXELTYPE FLOAT\n");
    write("map.bil", std::string(std::size_t{4} << 20U, '\1'));
    const QTextCodec* const before = QTextCodec::codecForLocale();
    std::atomic<bool> isWatching{false};
    std::atomic<bool> isOver{false};
    int changed = 0;
    std::thread other([&] {
        while (!isOver) {
            changed += QTextCodec::codecForLocale() != before ? 1 : 0;
            isWatching = true;
        }
    });
    while (!isWatching) {
        std::this_thread::yield();
    }
    for (int i = 0; i < 20; ++i) {
        EXPECT_TRUE(loadRaster(named("map.bil")).hasCells);
    }
    isOver = true;
    other.join();
    EXPECT_EQ(changed, 0);
}

TEST_F(RasterFileTest, TakesAnotherColorTable) {
    const QString file = write("map.asc", kAsciiGrid);
    write("map.clr", "0 1 2 3\n1 4 5 6\n2 7 8 9\n3 10 11 12\n");
    const QString other = write("other.clr", "5 9 9 9\n6 8 8 8\n# no colour line\n7 7 7 7\n");
    const Raster raster = loadRaster(file, other);
    const veltaGEO& map = *raster.map;
    EXPECT_EQ(raster.cell(2, 1), 300.0F);
    EXPECT_EQ(map.colorCount, 2);
    EXPECT_EQ(map.lowValue[0], 5.0F);
    EXPECT_EQ(map.highBlue[0], 8);
    EXPECT_EQ(map.lowValue[1], 0.0F) << "nothing of map.clr";
    EXPECT_EQ(map.lowRed[1], 0);
    EXPECT_EQ(map.highValue[1], 7.0F);
    EXPECT_EQ(map.errMsg, QStringLiteral("Raster file loaded"));
}

TEST_F(RasterFileTest, RefusesNamesThatAreNotThoseOfColorTables) {
    const QString file = write("map.asc", kAsciiGrid);
    files.makeFolder("map.clr");  // not asked for
    files.makeFolder("folder.clr");
    write("colors.txt", "0 1 2 3\n1 4 5 6\n");
    const auto refusalWith = [&](const char* name) {
        return refusal([&] { loadRaster(file, named(name)); });
    };
    EXPECT_EQ(refusalWith("colors.txt"), "colors.txt: a colour table ends in .clr");
    EXPECT_EQ(refusalWith("none.clr"), "none.clr: No such file or directory");
    EXPECT_EQ(refusalWith("folder.clr"), "folder.clr: Is a directory");
    EXPECT_EQ(refusal([&] { loadRaster(named("none.asc"), write("good.clr", "")); }),
              "none.asc: No such file or directory");
}

TEST_F(RasterFileTest, TakesNoValueForNoDataWhereTheFileNamesNone) {
    write("map.hdr", "NCOLS 1\nNROWS 1\nPIXELTYPE FLOAT\n");
    write("map.bil", bytesOf({0.0F}));
    EXPECT_TRUE(loadRaster(named("map.bil")).isMeasured(0.0F));
}

TEST_F(RasterFileTest, LoadsTheHeaderAloneOfIntegers) {
    write("map.hdr", "NCOLS 3\nNROWS 2\n");
    write("map.bil", "");
    const Raster raster = loadRaster(named("map.hdr"));
    EXPECT_FALSE(raster.hasCells);
    EXPECT_EQ(raster.map->nCols, 3);
    EXPECT_EQ(statisticsOf(raster).measured, 0);
    EXPECT_EQ(
        refusal([&] { requireCells(raster, named("map.hdr")); }),
        "map.hdr: holds integers (PIXELTYPE is not FLOAT), which are not read; gdal_translate -of "
        "EHdr -ot Float32 converts them");
}

TEST_F(RasterFileTest, RefusesNamesThatAreNotThoseOfRasters) {
    write("map.tif", "II*");
    write("UPPER.ASC", kAsciiGrid);
    write("Mixed.Hdr", kFloatHeader);
    files.makeFolder("folder.asc");
    files.makeFifo("fifo.asc");
    EXPECT_EQ(refusalOf("map.tif"), "map.tif: a raster ends in .asc, .bil or .hdr");
    EXPECT_EQ(refusalOf("UPPER.ASC"), "UPPER.ASC: extensions are in lower case: .asc");
    EXPECT_EQ(refusalOf("Mixed.Hdr"), "Mixed.Hdr: extensions are in lower case: .hdr");
    EXPECT_EQ(refusalOf("folder.asc"), "folder.asc: Is a directory");
    EXPECT_EQ(refusalOf("fifo.asc"), "fifo.asc: is not a regular file");
    EXPECT_EQ(refusalOf("none.asc"), "none.asc: No such file or directory");
}

TEST_F(RasterFileTest, RefusesForTheFirstErrorOfTheFilesThatBelongTogether) {
    write("lonely.hdr", kFloatHeader);
    EXPECT_EQ(refusalOf("lonely.hdr"), "lonely.bil: No such file or directory");
    write("lonely.hdr", kFloatHeader + "NBITS 16\n");
    EXPECT_EQ(refusalOf("lonely.hdr"),
              "lonely.hdr:8: NBITS 16 is not read: the cells are read as with 32");
    write("headless.bil", bytesOf(kFloats));
    EXPECT_EQ(refusalOf("headless.bil"), "headless.hdr: No such file or directory");
    write("folder.hdr", kFloatHeader);
    files.makeFolder("folder.bil");
    EXPECT_EQ(refusalOf("folder.hdr"), "folder.bil: Is a directory");
    write("short.hdr", kFloatHeader);
    write("short.bil", bytesOf(kFloats).substr(1));
    EXPECT_EQ(refusalOf("short.bil"), "short.bil: holds 23 bytes, while 3 x 2 cells take 24");
    write("colors.asc", kAsciiGrid);
    files.makeFolder("colors.clr");
    EXPECT_EQ(refusalOf("colors.asc"), "colors.clr: Is a directory");
    write("colors.asc", kAsciiGrid + "9 9 9 9\n");
    EXPECT_EQ(refusalOf("colors.asc"), "colors.asc:6: not shown: it becomes row 3 of a grid of 2");
    write("warned.asc", "unit m\n" + kAsciiGrid);
    EXPECT_EQ(refusalOf("warned.asc"), "") << "a warning only";
}

TEST_F(RasterFileTest, ListsTheFindingsOfEachFile) {
    write("map.hdr", kFloatHeader + "UNIT m\n");
    files.makeFolder("map.clr");
    const RasterCheck check = checkRaster(named("map.hdr"));
    ASSERT_EQ(check.files.size(), 3U);
    EXPECT_EQ(listed(check.files[0]),
              std::vector<std::string>{"8:1 warning key-unknown: \"UNIT\" is not read"});
    EXPECT_EQ(check.files[1].file(), named("map.bil"));
    EXPECT_EQ(listed(check.files[1]),
              std::vector<std::string>{"error file-unreadable: No such file or directory"});
    EXPECT_EQ(listed(check.files[2]),
              std::vector<std::string>{"error file-unreadable: Is a directory"});
}

TEST_F(RasterFileTest, LeavesCellsUncheckedWhoseHeaderHasErrors) {
    const RasterCheck check = checkRaster(write("map.hdr", kFloatHeader + "NBITS 16\n"));
    EXPECT_EQ(check.files.size(), 1U) << "there is no map.bil either";
}

TEST_F(RasterFileTest, LoadsNoFileThatTookTheCheckedOnesPlace) {
    const std::string header = "ncols 3\nnrows 1\nNODATA_value 0\n";
    const QString name = write("map.asc", header + "1 1 1\n");
    std::atomic<bool> isOver{false};
    std::thread other([&] {
        for (int i = 0; !isOver; ++i) {  // by turns a whole grid and one with a row too many
            files.write("new.asc", header + (i % 2 == 0 ? "2 2 2\n3 3 3\n" : "1 1 1\n"));
            std::filesystem::rename(files.path("new.asc"), files.path("map.asc"));
        }
    });
    int refused = 0;
    for (int i = 0; i < 300; ++i) {
        try {
            EXPECT_EQ(loadRaster(name).cell(0, 0), 1.0F);
        } catch (const InputError&) {
            ++refused;
        }
    }
    isOver = true;
    other.join();
    EXPECT_GT(refused, 0);
}

TEST_F(RasterFileTest, SumsUpTheMeasuredCells) {
    // 0 + 50 + 100 + 150 + 200 + 300 - 50 = 750
    const RasterStatistics statistics = statisticsOf(loadRaster(write("map.asc", kAsciiGrid)));
    EXPECT_EQ(statistics.measured, 7);
    EXPECT_EQ(statistics.smallest, -50.0F);
    EXPECT_EQ(statistics.largest, 300.0F);
    EXPECT_EQ(statistics.mean, 750.0 / 7.0);

    const RasterStatistics finite = statisticsOfRow("1 inf -inf nan -1 1e39 5", "7");
    EXPECT_EQ(finite.measured, 2);
    EXPECT_EQ(finite.smallest, 1.0F);
    EXPECT_EQ(finite.largest, 5.0F);
    EXPECT_EQ(finite.mean, 3.0);

    const RasterStatistics none = statisticsOfRow("inf -1 nan", "3");
    EXPECT_EQ(none.measured, 0);
    EXPECT_FALSE(none.smallest || none.largest || none.mean);
}

TEST_F(RasterFileTest, KeepsTheMeanBetweenTheExtremesAsTheyArePrinted) {
    // The singles nearest to 0.1 and -0.7 are larger, those nearest to 0.7 and -0.1 smaller.
    const struct {
        const char* cell;
        double value;
    } kCells[] = {{"0.1", 0.1}, {"-0.1", -0.1}, {"0.7", 0.7}, {"-0.7", -0.7}, {"3e38", 3e38}};
    for (const auto& row : kCells) {
        std::string cells;
        for (int i = 0; i < 3; ++i) {
            cells.append(row.cell) += ' ';
        }
        EXPECT_EQ(statisticsOfRow(cells, "3").mean, row.value) << row.cell;
    }
}

}  // namespace
}  // namespace rfu::test

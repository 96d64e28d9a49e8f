#include "mapFiles.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>

namespace {

class HdrHeader : public MapFiles {
protected:
    bool load(const std::string& text) {
        write("map.hdr", text);
        return map->loadHDRFile(path("map.hdr"));
    }
};

TEST_F(HdrHeader, ReadsItsKeys) {
    map->setErrMsg(QStringLiteral("kept"));
    map->isLoaded = 1;
    map->isValid = 1;
    map->colorCount = 9;
    EXPECT_TRUE(
        load("BYTEORDER      I\n"
             "LAYOUT         BIL\n"
             "NROWS          1200\n"
             "NCOLS          900\n"
             "NBANDS         1\n"
             "NBITS          32\n"
             "PIXELTYPE      FLOAT\n"
             "ULXMAP         -69.25\n"
             "ULYMAP         +45.5\n"
             "XDIM           0.125\n"
             "YDIM           0.25\n"
             "NODATA         -9.999e3\n"));
    EXPECT_EQ(map->nRows, 1200);
    EXPECT_EQ(map->nCols, 900);
    EXPECT_EQ(map->originX, -69.25F);
    EXPECT_EQ(map->originY, 45.5F);
    EXPECT_EQ(map->cellSize, 0.125F);
    EXPECT_EQ(map->noData, -9999.0F);
    EXPECT_EQ(map->isFloat, 1);
    EXPECT_EQ(message(), "kept");
    EXPECT_EQ(map->isLoaded, 0);
    EXPECT_EQ(map->isValid, 1);
    EXPECT_EQ(map->colorCount, 9) << "no colour table is read";
}

TEST_F(HdrHeader, MatchesKeysExactly) {
    EXPECT_TRUE(
        load("ncols 3\nNcols 3\nNCOLSS 3\nNCOL 3\nnrows 3\nulxmap 3\nulymap 3\nxdim 3\n"
             "CELLSIZE 3\nnodata 3\nNODATA_value 3\nYDIM 3\npixeltype FLOAT\n"));
    expectNoHeaderField();
    EXPECT_EQ(map->isFloat, 0);
}

TEST_F(HdrHeader, IgnoresLinesOfOtherThanTwoTokens) {
    EXPECT_TRUE(load("NCOLS\nNCOLS 3 4\nNCOLS 1,5\n\nNROWS 3 columns\nPIXELTYPE\n"));
    EXPECT_EQ(map->nCols, 0);
    EXPECT_EQ(map->nRows, 0);
    EXPECT_TRUE(load("NCOLS=3\n  NROWS:\t4  \r\n\"NODATA\" \"-1\"\nUL\"X\"MAP 6"));
    EXPECT_EQ(map->nCols, 3);
    EXPECT_EQ(map->nRows, 4);
    EXPECT_EQ(map->noData, -1.0F);
    EXPECT_EQ(map->originX, 6.0F);
}

TEST_F(HdrHeader, PixelTypeAloneSetsIsFloat) {
    const struct {
        const char* line;
        std::int32_t before;
        std::int32_t after;
    } kCases[] = {
        {"PIXELTYPE FLOAT\n", 0, 1},
        {"PIXELTYPE SIGNEDINT\n", 1, 0},
        {"PIXELTYPE float\n", 1, 0},
        {"PIXELTYPE FLOATS\n", 1, 0},
        {"NBITS 32\n", 1, 1},
        {"", 1, 1},
        {"PIXELTYPE FLOAT 32\n", 0, 0},
        {"PIXELTYPE INT\nPIXELTYPE FLOAT\n", 0, 1},
        {"PIXELTYPE FLOAT\nPIXELTYPE INT\n", 0, 0},
    };
    for (const auto& row : kCases) {
        map->isFloat = row.before;
        EXPECT_TRUE(load(row.line));
        EXPECT_EQ(map->isFloat, row.after) << row.line;
    }
}

TEST_F(HdrHeader, RefusesMoreThanTheGridHolds) {
    const struct {
        const char* text;
        bool accepted;
        const char* message;
        std::int32_t nCols;
        std::int32_t nRows;
        float noData;
    } kCases[] = {
        {"NCOLS 2048\nNODATA 1\n", true, "", 2048, 0, 1.0F},
        {"NCOLS 2049\nNODATA 1\n", false, kTooManyColumns, 2049, 0, 0.0F},
        {"NROWS 2048\nNODATA 1\n", true, "", 0, 2048, 1.0F},
        {"NROWS 2049\nNODATA 1\n", false, kTooManyRows, 0, 2049, 0.0F},
        {"NODATA 1\nNROWS 2049\nNCOLS 2049\n", false, kTooManyRows, 0, 2049, 1.0F},
        {"NCOLS 2049\nNROWS 2049\n", false, kTooManyColumns, 2049, 0, 0.0F},
        {"NCOLS 9999\nNCOLS 10\n", false, kTooManyColumns, 9999, 0, 0.0F},
        {"NCOLS 99999999999\n", false, kTooManyColumns, 2147483647, 0, 0.0F},
        {"NROWS 99999999999\n", false, kTooManyRows, 0, 2147483647, 0.0F},
        {"NCOLS 0\nNROWS 0\n", true, "", 0, 0, 0.0F},
        {"NCOLS -1\nNROWS -99999999999\n", true, "", -1, -2147483647 - 1, 0.0F},
    };
    for (const auto& row : kCases) {
        map = std::make_unique<veltaGEO>();
        EXPECT_EQ(load(row.text), row.accepted) << row.text;
        EXPECT_EQ(message(), row.message) << row.text;
        EXPECT_EQ(map->nCols, row.nCols) << row.text;
        EXPECT_EQ(map->nRows, row.nRows) << row.text;
        EXPECT_EQ(map->noData, row.noData) << row.text;
        EXPECT_EQ(map->isLoaded, 0);
        EXPECT_EQ(map->isValid, 0);
    }
}

TEST_F(HdrHeader, ReadsNumbersAsTheCLibraryDoes) {
    const float inf = std::numeric_limits<float>::infinity();
    const struct {
        const char* text;
        float expected;
    } kDecimals[] = {
        {"1e2x", 100.0F},
        {"abc", 0.0F},
        {"-", 0.0F},
        {"1.2.3", 1.2F},
        {".5", 0.5F},
        {"5.", 5.0F},
        {"+7", 7.0F},
        {"--7", 0.0F},
        {"\" 8\"", 8.0F},
        {"\"1,5\"", 1.0F},
        {"0x10", 16.0F},
        {"1e", 1.0F},
        {"inf", inf},
        {"-Infinity", -inf},
        {"1e99", inf},
        {"1e999", inf},
        {"-1e999", -inf},
        {"1e-60", 0.0F},
        {"1e-999", 0.0F},
        {"0.1", 0.1F},
        {"3.4028235e38", std::numeric_limits<float>::max()},
        // rounds to the double 2^24 + 1 + 2^-29, and that up; rounding once gives the same float
        {"16777217.0000000019", 16777218.0F},
        // rounds to the double 2^24 + 1, a tie, and that to even; rounding once would go up
        {"16777217.00000000001", 16777216.0F},
    };
    for (const auto& row : kDecimals) {
        EXPECT_TRUE(load(std::string("NODATA ") + row.text));
        EXPECT_EQ(map->noData, row.expected) << row.text;
    }
    EXPECT_TRUE(load("NODATA nan"));
    EXPECT_TRUE(std::isnan(map->noData));

    const struct {
        const char* text;
        std::int32_t expected;
    } kIntegers[] = {
        {"12.9", 12}, {"1e3", 1}, {"0x10", 0}, {"+5", 5}, {"x", 0}, {"\" 6 \"", 6}, {"-7.5", -7},
    };
    for (const auto& row : kIntegers) {
        EXPECT_TRUE(load(std::string("NCOLS ") + row.text));
        EXPECT_EQ(map->nCols, row.expected) << row.text;
    }
}

TEST_F(HdrHeader, CutsLinesTo10239Characters) {
    const struct {
        const char* why;
        std::string line;
        std::int32_t nCols;
    } kCases[] = {
        {"the last character counts", padded("NCOLS", 10239, "7"), 7},
        {"the one behind it does not", padded("NCOLS", 10240, "7"), 0},
        {"a number is cut", padded("NCOLS", 10238, "123"), 12},
        {"what is cut off makes no third token", padded("NCOLS 5", 10240, "x"), 5},
        {"what is cut off makes no line", padded("NCOLS 5 ", 10240, "NCOLS 6"), 5},
        {"however long it is", padded("NCOLS 5 ", 300000, "NCOLS 6"), 5},
    };
    for (const auto& row : kCases) {
        for (const char* end : {"\n", "\r\n"}) {
            map = std::make_unique<veltaGEO>();
            EXPECT_TRUE(load(row.line + end + "NROWS 4\n"));
            EXPECT_EQ(map->nCols, row.nCols) << row.why;
            EXPECT_EQ(map->nRows, 4) << row.why;
        }
    }
}

TEST_F(HdrHeader, IsNotFound) {
    map->isLoaded = 1;
    map->isValid = 1;
    map->nCols = 5;
    write("map.HDR", "NCOLS 3\n");
    EXPECT_FALSE(map->loadHDRFile(path("map.hdr")));
    EXPECT_EQ(message(), "HDR file not found");
    EXPECT_EQ(map->isLoaded, 0);
    EXPECT_EQ(map->isValid, 1);
    EXPECT_EQ(map->nCols, 5);
}

TEST_F(HdrHeader, TakesAnyNameOfTheFamily) {
    write("map.hdr", "NCOLS 3\n");
    write("map.hdr.hdr", "NCOLS 4\n");
    EXPECT_TRUE(map->loadHDRFile(path("map")));
    EXPECT_TRUE(map->loadHDRFile(path("map.bil")));
    EXPECT_TRUE(map->loadHDRFile(path("map.")));
    EXPECT_EQ(map->nCols, 3);
    EXPECT_TRUE(map->loadHDRFile(path("map.hdr.bil")));
    EXPECT_EQ(map->nCols, 4);
}

TEST_F(HdrHeader, KeepsWhatTheFileDoesNotName) {
    EXPECT_TRUE(load("NCOLS 3\nULXMAP 1\n"));
    EXPECT_TRUE(load("NROWS 4\n"));
    EXPECT_EQ(map->nCols, 3);
    EXPECT_EQ(map->originX, 1.0F);
    EXPECT_TRUE(load(""));
    EXPECT_EQ(map->nRows, 4);
}

}  // namespace

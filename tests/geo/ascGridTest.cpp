#include "mapFiles.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using Cells = std::vector<float>;

/// A header of six lines.
std::string header(int nCols, int nRows) {
    return "ncols " + std::to_string(nCols) + "\nnrows " + std::to_string(nRows) +
           "\nxllcorner -69.5\nyllcorner 45.25\ncellsize 0.5\nNODATA_value -9999\n";
}

class AscGrid : public MapFiles {
protected:
    bool load(const std::string& text) {
        write("map.asc", text);
        return map->loadASCFile(path("map.asc"));
    }

    /// Fills a row with 77, which shows untouched cells.
    void mark(int row) {
        for (float& cell : map->grid[row]) {
            cell = 77.0F;
        }
    }
};

TEST_F(AscGrid, ReadsHeaderAndRows) {
    EXPECT_TRUE(load(header(3, 2) + "1 2.5 -3e1\n+4 .5 6.\n"));
    EXPECT_EQ(map->nCols, 3);
    EXPECT_EQ(map->nRows, 2);
    EXPECT_EQ(map->originX, -69.5F);
    EXPECT_EQ(map->originY, 45.25F);
    EXPECT_EQ(map->cellSize, 0.5F);
    EXPECT_EQ(map->noData, -9999.0F);
    EXPECT_EQ(cells(*map, 0, 4), (Cells{1.0F, 2.5F, -30.0F, 0.0F}));
    EXPECT_EQ(cells(*map, 1, 4), (Cells{4.0F, 0.5F, 6.0F, 0.0F}));
    EXPECT_EQ(map->isLoaded, 1);
    EXPECT_EQ(map->isValid, 1);
    EXPECT_EQ(message(), kLoaded);
    EXPECT_EQ(map->isFloat, 0);
}

TEST_F(AscGrid, ReadsTheColourTableBesideIt) {
    write("map.clr", "1 10 20 30\n2 40 50 60\n");
    EXPECT_TRUE(load(header(3, 1) + "1 2 3"));
    EXPECT_EQ(map->colorCount, 1);
    EXPECT_EQ(map->lowValue[0], 1.0F);
    EXPECT_EQ(map->highBlue[0], 60);
    EXPECT_EQ(message(), kLoaded);
}

TEST_F(AscGrid, LoadsWithoutAColourTable) {
    map->colorCount = 5;
    map->lowValue[0] = 3.0F;
    EXPECT_TRUE(load(header(3, 1) + "1 2 3"));
    EXPECT_EQ(map->colorCount, 1);
    EXPECT_EQ(map->lowValue[0], -9999.0F);
    EXPECT_EQ(map->highValue[0], 9999.0F);
    EXPECT_EQ(message(), kLoaded);
}

TEST_F(AscGrid, MatchesKeysExactly) {
    EXPECT_TRUE(
        load("NCOLS 3\nNROWS 3\nXLLCORNER 3\nYLLCORNER 3\nCELLSIZE 3\nNODATA_VALUE 3\n"
             "nodata_value 3\nxllcenter 3\nULXMAP 3\nXDIM 3\nNODATA 3\nncol 3\n"));
    expectNoHeaderField();
    EXPECT_EQ(map->isLoaded, 1);
}

TEST_F(AscGrid, PlacesRowsBehindTheNoDataLine) {
    const struct {
        const char* why;
        const char* text;
        std::vector<std::pair<int, float>> firstCells;  // row and its first cell
    } kCases[] = {
        {"right behind it", "ncols 3\nNODATA_value -1\n1 0 0\n2 0 0\n", {{0, 1}, {1, 2}, {2, 77}}},
        {"a blank line takes a row's place",
         "ncols 3\nNODATA_value -1\n\n1 0 0\n\n2 0 0\n",
         {{0, 77}, {1, 1}, {2, 77}, {3, 2}}},
        {"so does a line of one token", "ncols 3\nNODATA_value -1\nx\n1 0 0\n", {{0, 77}, {1, 1}}},
        {"and a late header line", "ncols 3\nNODATA_value -1\nnrows 3\n1 0 0\n", {{0, 77}, {1, 1}}},
        {"lines before the header count", "\n\nncols 3\nNODATA_value -1\n1 0 0\n", {{0, 1}}},
        {"without it, by the line's number",
         "ncols 3\nnrows 2\n1 0 0\n2 0 0\n",
         {{0, 77}, {1, 77}, {2, 1}, {3, 2}}},
        {"rows before it, by the line's number",
         "ncols 3\n5 0 0\nNODATA_value -1\n1 0 0\n",
         {{0, 1}, {1, 5}, {2, 77}}},
        {"a second one counts anew",
         "ncols 3\nNODATA_value 0\n1 0 0\n2 0 0\nNODATA_value 0\n3 0 0",
         {{0, 3}, {1, 2}, {2, 77}}},
        {"rows beyond nrows are stored",
         "ncols 3\nnrows 1\nNODATA_value 0\n1 0 0\n2 0 0\n3 0 0",
         {{0, 1}, {1, 2}, {2, 3}, {3, 77}}},
        {"with no rows announced at all", "ncols 3\nNODATA_value 0\n1 0 0", {{0, 1}}},
        {"with a negative number announced", "ncols 3\nnrows -5\nNODATA_value 0\n1 0 0", {{0, 1}}},
    };
    for (const auto& row : kCases) {
        map = std::make_unique<veltaGEO>();
        for (int r = 0; r < 5; ++r) {
            mark(r);
        }
        EXPECT_TRUE(load(row.text));
        for (const auto& [index, value] : row.firstCells) {
            EXPECT_EQ(map->grid[index][0], value) << row.why << ", row " << index;
        }
    }
}

TEST_F(AscGrid, StoresTheFirstColumnsOfARow) {
    const struct {
        const char* why;
        int nCols;
        const char* line;
        Cells expected;  // the first five cells, 77 where untouched
    } kCases[] = {
        {"as many as columns", 3, "1 2 3", {1, 2, 3, 77, 77}},
        {"more tokens than columns", 3, "1 2 3 4 5", {1, 2, 3, 77, 77}},
        {"fewer tokens than columns", 5, "1 2 3", {1, 2, 3, 0, 0}},
        {"no column", 0, "1 2 3", {77, 77, 77, 77, 77}},
        {"a negative number of columns", -4, "1 2 3", {77, 77, 77, 77, 77}},
        {"one column, three tokens", 1, "1 2 3", {1, 77, 77, 77, 77}},
        {"two columns, three tokens", 2, "1 2 3", {1, 2, 77, 77, 77}},
        {"a grid one column wide is not read", 1, "1", {77, 77, 77, 77, 77}},
        {"a grid two columns wide is not read", 2, "1 2", {77, 77, 77, 77, 77}},
        {"text is 0", 4, "a 2x -z 4", {0, 2, 0, 4, 77}},
        {"commas separate", 4, "1,5 2,5", {1, 5, 2, 5, 77}},
        {"tabs and carriage returns separate", 3, "1\t2\r3\r", {1, 2, 3, 77, 77}},
        {"quoted tokens count", 3, "\"1\" \"2 x\" 3\"4\"", {1, 2, 34, 77, 77}},
        {"a quoted token in the middle", 4, "1 2 3 \"4 5\"6", {1, 2, 3, 4, 77}},
        {"no-data cells are kept", 3, "-9999 1 -9999", {-9999, 1, -9999, 77, 77}},
        {"plus signs, points, exponents", 5, "+1 .5 2. 1e1 -2E-1", {1, 0.5F, 2, 10, -0.2F}},
        {"hexadecimal", 3, "0x10 -0x1p4 0x", {16, -16, 0, 77, 77}},
        {"two dots, two signs", 4, "1.2.3 1-2 +-3 4e", {1.2F, 1, 0, 4, 77}},
    };
    for (const auto& row : kCases) {
        map = std::make_unique<veltaGEO>();
        mark(0);
        EXPECT_TRUE(load(header(row.nCols, 1) + row.line)) << row.why;
        EXPECT_EQ(cells(*map, 0, 5), row.expected) << row.why;
    }
}

TEST_F(AscGrid, ReadsNumbersBeyondTheRangesOfFloats) {
    EXPECT_TRUE(load(header(8, 1) + "1e39 -1e39 1e999 1e-60 inf -inf nan 16777217.00000000001"));
    const float inf = std::numeric_limits<float>::infinity();
    EXPECT_EQ(cells(*map, 0, 6), (Cells{inf, -inf, inf, 0.0F, inf, -inf}));
    EXPECT_TRUE(std::isnan(map->grid[0][6]));
    EXPECT_EQ(map->grid[0][7], 16777216.0F) << "rounded to double, then to float";
}

TEST_F(AscGrid, CutsTokensTo63Characters) {
    const std::string zeros(61, '0');
    EXPECT_TRUE(load(header(3, 1) + zeros + "123 " + zeros + "12 \"" + zeros + "123\""));
    EXPECT_EQ(cells(*map, 0, 3), (Cells{12.0F, 12.0F, 12.0F}));
}

TEST_F(AscGrid, ReadsRowsUpTo2048Columns) {
    for (const int tokens : {1023, 1024, 1025, 2047, 2048, 2049, 3000}) {
        map = std::make_unique<veltaGEO>();
        mark(0);
        mark(1);
        std::string row;
        for (int i = 1; i <= tokens; ++i) {
            row += std::to_string(i) + ' ';
        }
        EXPECT_TRUE(load(header(2048, 1) + row));
        for (int column = 0; column < 2048; ++column) {
            const float expected = column < tokens ? static_cast<float>(column + 1) : 0.0F;
            ASSERT_EQ(map->grid[0][column], expected) << tokens << " tokens, column " << column;
        }
        EXPECT_EQ(map->grid[1][0], 77.0F) << "the next row is untouched";
    }
}

TEST_F(AscGrid, IsSafeWithAColumnCountThatNoFileGave) {
    map->nCols = 1000000;
    mark(0);
    mark(1);
    EXPECT_TRUE(load("NODATA_value 0\n1 2 3"));
    EXPECT_EQ(cells(*map, 0, 4), (Cells{1, 2, 3, 0}));
    EXPECT_EQ(map->grid[0][2047], 0.0F);
    EXPECT_EQ(map->grid[1][0], 77.0F);
    map->nCols = -2147483647 - 1;
    EXPECT_TRUE(load("NODATA_value 0\n4 5 6"));
    EXPECT_EQ(map->grid[0][0], 1.0F);
}

TEST_F(AscGrid, IgnoresRowsPast2047) {
    std::string text = header(3, 2048);
    for (int row = 0; row < 2100; ++row) {
        text += std::to_string(row) + " 1 2\n";
    }
    EXPECT_TRUE(load(text + "cellsize 9\n"));
    EXPECT_EQ(map->grid[0][0], 0.0F);
    EXPECT_EQ(map->grid[2046][0], 2046.0F);
    EXPECT_EQ(cells(*map, 2047, 4), (Cells{2047, 1, 2, 0}));
    EXPECT_EQ(message(), kLoaded);
    EXPECT_EQ(map->cellSize, 9.0F) << "header lines behind them still count";

    // Without a no-data line the row is the line's number: lines 0 to 2047 fit.
    text = "ncols 3\n";
    for (int line = 1; line < 2050; ++line) {
        text += std::to_string(line) + " 1 2\n";
    }
    EXPECT_TRUE(load(text));
    EXPECT_EQ(map->grid[2047][0], 2047.0F);
    EXPECT_EQ(map->grid[1][0], 1.0F);
}

TEST_F(AscGrid, RefusesMoreThanTheGridHolds) {
    const struct {
        const char* text;
        bool accepted;
        const char* message;
        std::int32_t nCols;
        std::int32_t nRows;
    } kCases[] = {
        {"ncols 2048\nnrows 3\n", true, kLoaded, 2048, 3},
        {"ncols 2049\nnrows 3\n", false, kTooManyColumns, 2049, 0},
        {"nrows 2048\nncols 3\n", true, kLoaded, 3, 2048},
        {"nrows 2049\nncols 3\n", false, kTooManyRows, 0, 2049},
        {"ncols 99999999999\n", false, kTooManyColumns, 2147483647, 0},
        {"nrows 99999999999\n", false, kTooManyRows, 0, 2147483647},
        {"ncols -99999999999\nnrows -1\n", true, kLoaded, -2147483647 - 1, -1},
        {"NCOLS 2049\nNROWS 2049\n", true, kLoaded, 0, 0},
        {"ncols 2049 x\n", true, kLoaded, 0, 0},
    };
    for (const auto& row : kCases) {
        map = std::make_unique<veltaGEO>();
        map->isLoaded = 1;
        EXPECT_EQ(load(row.text), row.accepted) << row.text;
        EXPECT_EQ(message(), row.message) << row.text;
        EXPECT_EQ(map->nCols, row.nCols) << row.text;
        EXPECT_EQ(map->nRows, row.nRows) << row.text;
        EXPECT_EQ(map->isLoaded, row.accepted ? 1 : 0) << row.text;
        EXPECT_EQ(map->isValid, row.accepted ? 1 : 0) << row.text;
    }
}

TEST_F(AscGrid, WithoutSizesKeepsThoseOfARefusedHeader) {
    EXPECT_FALSE(load("ncols 5000\nnrows 2\n"));
    EXPECT_TRUE(load("NODATA_value -9\n1 2 3\n"));
    EXPECT_EQ(map->nCols, 5000);
    EXPECT_EQ(map->nRows, 0);
    EXPECT_EQ(map->isLoaded, 1);
    EXPECT_EQ(cells(*map, 0, 4), (Cells{1, 2, 3, 0}));
}

TEST_F(AscGrid, ARefusedSizeStopsTheLoad) {
    write("map.clr", "1 10 20 30\n2 40 50 60\n");
    mark(0);
    map->isValid = 1;
    EXPECT_FALSE(
        load("cellsize 4\nncols 3\nNODATA_value 0\n1 2 3\nnrows 2049\ncellsize 5\n4 5 6\n"));
    EXPECT_EQ(map->cellSize, 4.0F);
    EXPECT_EQ(cells(*map, 0, 3), (Cells{1, 2, 3})) << "what was read before is kept";
    EXPECT_EQ(map->grid[2][0], 0.0F);
    EXPECT_EQ(map->colorCount, 0) << "no colour table is read";
    EXPECT_EQ(map->isLoaded, 0);
    EXPECT_EQ(map->isValid, 1) << "no loader sets it back";
}

TEST_F(AscGrid, IsNotFound) {
    map->isLoaded = 1;
    map->isValid = 1;
    write("map.ASC", header(3, 1));
    write("map.clr", "1 10 20 30\n2 40 50 60\n");
    EXPECT_FALSE(map->loadASCFile(path("map.asc")));
    EXPECT_EQ(message(), "ASC file not found");
    EXPECT_EQ(map->isLoaded, 0);
    EXPECT_EQ(map->isValid, 1);
    EXPECT_EQ(map->colorCount, 0);
}

TEST_F(AscGrid, TakesAnyNameOfTheFamily) {
    write("map.asc", header(3, 1) + "1 2 3");
    write("map.clr", "1 10 20 30\n2 40 50 60\n");
    for (const char* name : {"map", "map.bil", "map.clr", "map.ASC"}) {
        map = std::make_unique<veltaGEO>();
        EXPECT_TRUE(map->loadASCFile(path(name))) << name;
        EXPECT_EQ(map->grid[0][2], 3.0F) << name;
        EXPECT_EQ(map->highRed[0], 40) << name;
    }
}

TEST_F(AscGrid, ASecondLoadOverwritesInPlace) {
    EXPECT_TRUE(load(header(4, 2) + "1 2 3 4\n5 6 7 8\n"));
    EXPECT_TRUE(load("ncols 3\nnrows 1\nNODATA_value 0\n11 12 13 14\n"));
    EXPECT_EQ(cells(*map, 0, 4), (Cells{11, 12, 13, 4}));
    EXPECT_EQ(cells(*map, 1, 4), (Cells{5, 6, 7, 8}));
    EXPECT_EQ(map->originX, -69.5F);
}

TEST_F(AscGrid, AnEmptyFileIsLoaded) {
    map->nCols = 7;
    EXPECT_TRUE(load(""));
    EXPECT_EQ(map->isLoaded, 1);
    EXPECT_EQ(message(), kLoaded);
    EXPECT_EQ(map->nCols, 7);
}

TEST_F(AscGrid, CutsLinesTo1023999Characters) {
    constexpr std::size_t kMaxLine = 1023999;
    const struct {
        const char* why;
        std::string line;
        Cells expected;
    } kCases[] = {
        {"the last character counts", padded("1 2", kMaxLine, "3"), {1, 2, 3}},
        {"the one behind it does not: two tokens", padded("1 2", kMaxLine + 1, "3"), {77, 77, 77}},
        {"a number is cut", padded("1 2", kMaxLine - 1, "345"), {1, 2, 34}},
        {"what is cut off makes no row", padded("1 2 3 ", kMaxLine + 1, "4 5 6"), {1, 2, 3}},
        {"however long it is", padded("1 2 3", 4000000, "4 5 6"), {1, 2, 3}},
    };
    for (const auto& row : kCases) {
        mark(0);
        EXPECT_TRUE(load(header(3, 2) + row.line + "\n7 8 9"));
        EXPECT_EQ(cells(*map, 0, 3), row.expected) << row.why;
        EXPECT_EQ(cells(*map, 1, 3), (Cells{7, 8, 9})) << row.why;
    }
}

TEST_F(AscGrid, ANulEndsALine) {
    std::string text = header(3, 2) + "1 2 3" + '\0' + " 4\n5 6" + '\0' + "7\n8 9 10\n";
    mark(1);
    EXPECT_TRUE(load(text));
    EXPECT_EQ(cells(*map, 0, 3), (Cells{1, 2, 3}));
    EXPECT_EQ(map->grid[1][0], 77.0F) << "two tokens are no row";
    EXPECT_EQ(cells(*map, 2, 3), (Cells{8, 9, 10}));
}

TEST_F(AscGrid, ReadsWindowsTextWithAByteOrderMark) {
    EXPECT_TRUE(load("\xEF\xBB\xBFncols 3\r\nnrows 1\r\nNODATA_value -1\r\n1 2 3\r\n"));
    EXPECT_EQ(map->nCols, 3);
    EXPECT_EQ(cells(*map, 0, 3), (Cells{1, 2, 3}));
}

TEST_F(AscGrid, LoneCarriageReturnsEndNoLine) {
    EXPECT_TRUE(load("ncols 3\rNODATA_value -1\r1 2 3\r"));
    EXPECT_EQ(map->nCols, 0) << "one line of seven tokens";
    EXPECT_EQ(map->isLoaded, 1);
}

TEST_F(AscGrid, ReadsQtResources) {
    EXPECT_TRUE(map->loadASCFile(QStringLiteral(":/maps/tiny.asc")));
    EXPECT_EQ(cells(*map, 1, 3), (Cells{4, 5, 6}));
    EXPECT_FALSE(map->loadASCFile(QStringLiteral(":/maps/none.asc")));
    EXPECT_FALSE(map->loadASCFile(QStringLiteral(":/maps")));
}

}  // namespace

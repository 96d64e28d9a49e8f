#include "mapFiles.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace {

class ColorTable : public MapFiles {
protected:
    bool load(const std::string& text) {
        write("map.clr", text);
        return map->LoadColorTable(path("map.asc"));
    }

    void expectLow(int entry, float value, int red, int green, int blue) const {
        EXPECT_EQ(map->lowValue[entry], value) << entry;
        EXPECT_EQ(map->lowRed[entry], red) << entry;
        EXPECT_EQ(map->lowGreen[entry], green) << entry;
        EXPECT_EQ(map->lowBlue[entry], blue) << entry;
    }

    void expectHigh(int entry, float value, int red, int green, int blue) const {
        EXPECT_EQ(map->highValue[entry], value) << entry;
        EXPECT_EQ(map->highRed[entry], red) << entry;
        EXPECT_EQ(map->highGreen[entry], green) << entry;
        EXPECT_EQ(map->highBlue[entry], blue) << entry;
    }

    /// Sets values that the default table replaces or keeps.
    void mark() {
        map->colorCount = 20;
        map->lowValue[0] = map->highValue[0] = 5.0F;
        map->lowRed[0] = map->lowGreen[0] = map->lowBlue[0] = 6;
        map->highRed[0] = 7;
        map->highGreen[0] = 8;
        map->highBlue[0] = 9;
    }

    void expectDefaultOverMark() const {
        EXPECT_EQ(map->colorCount, 1);
        expectLow(0, -9999.0F, 0, 0, 0);
        expectHigh(0, 9999.0F, 7, 8, 9);
    }
};

TEST_F(ColorTable, TwoLinesMakeAnEntry) {
    map->setErrMsg(QStringLiteral("kept"));
    EXPECT_TRUE(load("-10.5 1 2 3\n20 4 5 6\n20 7 8 9\n1e3 10 11 12\n"));
    EXPECT_EQ(map->colorCount, 2);
    expectLow(0, -10.5F, 1, 2, 3);
    expectHigh(0, 20.0F, 4, 5, 6);
    expectLow(1, 20.0F, 7, 8, 9);
    expectHigh(1, 1000.0F, 10, 11, 12);
    EXPECT_EQ(message(), "kept");
    EXPECT_EQ(map->isLoaded, 0);
    EXPECT_EQ(map->isValid, 0);
}

TEST_F(ColorTable, StoresColoursAsWritten) {
    EXPECT_TRUE(load("1 300 -5 99999999999\n2 12.9 x 0x10\n"));
    expectLow(0, 1.0F, 300, -5, 2147483647);
    expectHigh(0, 2.0F, 12, 0, 0);
}

TEST_F(ColorTable, ReadsEachColourAsADecimalInteger) {
    const struct {
        const char* text;
        int value;
    } kCases[] = {{"1e2", 1}, {"0x10", 0}, {"010", 10}, {"12.9", 12}};
    for (const auto& row : kCases) {
        for (std::size_t place = 0; place < 6; ++place) {
            std::vector<std::string> texts(6, "7");
            std::vector<int> expected(6, 7);
            texts[place] = row.text;
            expected[place] = row.value;
            EXPECT_TRUE(load("1 " + texts[0] + ' ' + texts[1] + ' ' + texts[2] + "\n2 " + texts[3] +
                             ' ' + texts[4] + ' ' + texts[5] + '\n'));
            SCOPED_TRACE(std::string(row.text) + " at " + std::to_string(place));
            expectLow(0, 1.0F, expected[0], expected[1], expected[2]);
            expectHigh(0, 2.0F, expected[3], expected[4], expected[5]);
        }
    }
}

TEST_F(ColorTable, IsNotFound) {
    mark();
    EXPECT_FALSE(map->LoadColorTable(path("map.clr")));
    EXPECT_EQ(message(), "CLR file not found. Unable to display in color.");
    expectDefaultOverMark();
}

TEST_F(ColorTable, AnEmptyFileGivesTheDefaultTable) {
    mark();
    EXPECT_TRUE(load(""));
    expectDefaultOverMark();
    EXPECT_EQ(message(), "");
}

TEST_F(ColorTable, OneLineGivesTheDefaultTable) {
    for (const char* text : {"1 2 3 4", "1 2 3 4\n", "\n", "x"}) {
        mark();
        EXPECT_TRUE(load(text));
        expectDefaultOverMark();
    }
}

TEST_F(ColorTable, TheDefaultIsInstalledBeforeAnyLineIsRead) {
    mark();
    EXPECT_TRUE(load("no colour line\nnor is this one a one\n"));
    expectDefaultOverMark();
    mark();
    EXPECT_TRUE(load("1 2 3 4\n\n"));
    EXPECT_EQ(map->colorCount, 1);
    expectLow(0, 1.0F, 2, 3, 4);
    expectHigh(0, 9999.0F, 7, 8, 9);
}

TEST_F(ColorTable, AThirdLineFillsAnEntryThatDoesNotCount) {
    EXPECT_TRUE(load("1 2 3 4\n5 6 7 8\n9 10 11 12\n"));
    EXPECT_EQ(map->colorCount, 1);
    expectLow(1, 9.0F, 10, 11, 12);
    expectHigh(1, 0.0F, 0, 0, 0);
}

TEST_F(ColorTable, ABlankLineShiftsThePairing) {
    mark();
    EXPECT_TRUE(load("1 2 3 4\n\n5 6 7 8\n"));
    EXPECT_EQ(map->colorCount, 1);
    expectLow(0, 1.0F, 2, 3, 4);
    expectHigh(0, 9999.0F, 7, 8, 9);
    expectLow(1, 5.0F, 6, 7, 8);
}

TEST_F(ColorTable, LinesOfOtherThanFourTokensCountButHoldNoColour) {
    EXPECT_TRUE(load("1 2 3\n1 2 3 4 5\n5 6 7 8 # sea\n9 10 11 12\n"));
    EXPECT_EQ(map->colorCount, 2);
    expectLow(0, -9999.0F, 0, 0, 0);
    expectHigh(0, 9999.0F, 0, 0, 0);
    expectLow(1, 0.0F, 0, 0, 0);
    expectHigh(1, 9.0F, 10, 11, 12);
}

TEST_F(ColorTable, ReadsAnySeparators) {
    EXPECT_TRUE(
        load("\xEF\xBB\xBF"
             "1.5,2,3,4\r\n\"5\"\t6;7/8\r\n"));
    EXPECT_EQ(map->colorCount, 1);
    expectLow(0, 1.5F, 2, 3, 4);
    expectHigh(0, 5.0F, 6, 7, 8);
}

TEST_F(ColorTable, Holds64Lines) {
    for (const int lines : {62, 63, 64, 65, 66, 1000}) {
        map = std::make_unique<veltaGEO>();
        std::string text;
        for (int n = 0; n < lines; ++n) {
            text += std::to_string(n + 1) + ' ' + std::to_string(n + 1000) + " 2 3\n";
        }
        EXPECT_TRUE(load(text));
        EXPECT_EQ(map->colorCount, lines < 64 ? lines / 2 : 32) << lines;
        expectLow(0, 1.0F, 1000, 2, 3);
        expectLow(31, lines > 62 ? 63.0F : 0.0F, lines > 62 ? 1062 : 0, lines > 62 ? 2 : 0,
                  lines > 62 ? 3 : 0);
        expectHigh(31, lines > 63 ? 64.0F : 0.0F, lines > 63 ? 1063 : 0, lines > 63 ? 2 : 0,
                   lines > 63 ? 3 : 0);
        EXPECT_EQ(map->utmZone, 0) << "the field behind the table";
    }
}

TEST_F(ColorTable, CutsLinesTo1023Characters) {
    const struct {
        const char* why;
        std::string line;
        int blue;  // 0 if it is no colour line
    } kCases[] = {
        {"the last character counts", padded("1 2 3", 1023, "4"), 4},
        {"the one behind it does not", padded("1 2 3", 1024, "4"), 0},
        {"a number is cut", padded("1 2 3", 1022, "456"), 45},
        {"what is cut off makes no fifth token", padded("1 2 3 4", 1024, "5"), 4},
        {"what is cut off makes no line", padded("1 2 3 4", 70000, "5 6 7 8"), 4},
    };
    for (const auto& row : kCases) {
        map = std::make_unique<veltaGEO>();
        EXPECT_TRUE(load(row.line + "\n5 6 7 8\n"));
        EXPECT_EQ(map->lowBlue[0], row.blue) << row.why;
        EXPECT_EQ(map->lowValue[0], row.blue != 0 ? 1.0F : -9999.0F) << row.why;
        expectHigh(0, 5.0F, 6, 7, 8);
        EXPECT_EQ(map->colorCount, 1);
    }
}

}  // namespace

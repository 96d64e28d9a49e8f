#include "mapFiles.h"

#include <support/codecStream.h>

#include <QFile>
#include <QTextCodec>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using Cells = std::vector<float>;

constexpr float kNoData = -9999.0F;

class BilGrid : public MapFiles {
protected:
    /// Sets up a float raster whose cells are all 77.
    void prepare(int nCols, int nRows) {
        map->nCols = nCols;
        map->nRows = nRows;
        map->isFloat = 1;
        map->noData = kNoData;
        for (int row = 0; row < 6; ++row) {
            for (float& cell : map->grid[row]) {
                cell = 77.0F;
            }
        }
    }

    bool load(const std::string& bytes) {
        write("map.bil", bytes);
        return map->loadBILFile(path("map.bil"));
    }
};

TEST_F(BilGrid, ReadsHeaderAndCells) {
    const ScopedCodec codec("ISO 8859-1");
    write("map.hdr", "NCOLS 3\nNROWS 2\nPIXELTYPE FLOAT\nNODATA -9999\nULXMAP 5\n");
    write("map.bil", bytesOf({1.5F, -2.25F, 1e30F, 4.0F, kNoData, -0.001F}));
    write("map.clr", "1 10 20 30\n2 40 50 60\n");
    EXPECT_TRUE(map->loadHDRFile(path("map.bil")));
    EXPECT_EQ(map->isLoaded, 0);
    EXPECT_TRUE(map->loadBILFile(path("map.bil")));
    EXPECT_EQ(cells(*map, 0, 4), (Cells{1.5F, -2.25F, 1e30F, 0.0F}));
    EXPECT_EQ(cells(*map, 1, 4), (Cells{4.0F, kNoData, -0.001F, 0.0F}));
    EXPECT_EQ(map->isLoaded, 1);
    EXPECT_EQ(map->isValid, 1);
    EXPECT_EQ(map->highGreen[0], 50);
    EXPECT_EQ(message(), kLoaded);
}

TEST_F(BilGrid, CellsAreLittleEndianSingles) {
    const ScopedCodec codec("ISO 8859-1");
    prepare(2, 1);
    // 1.0F is 0x3F800000
    EXPECT_TRUE(load(std::string("\x00\x00\x80\x3F\x3F\x80\x00\x00", 8)));
    EXPECT_EQ(map->grid[0][0], 1.0F);
    EXPECT_NE(map->grid[0][1], 1.0F);
}

TEST_F(BilGrid, KeepsEveryByteUnderAnEightBitCodec) {
    const ScopedCodec codec("ISO 8859-1");
    prepare(64, 1);
    std::string bytes(256, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(i);
    }
    EXPECT_TRUE(load(bytes));
    EXPECT_EQ(std::memcmp(map->grid[0], bytes.data(), bytes.size()), 0);
    EXPECT_EQ(map->grid[0][64], 77.0F);
}

TEST_F(BilGrid, ReadsOneRowAsWideAsTheGridWithoutTheNext) {
    const ScopedCodec codec("ISO 8859-1");
    for (const std::size_t cellsOfFile : {std::size_t{2048}, std::size_t{2 * 2048}}) {
        prepare(2048, 1);
        EXPECT_TRUE(load(bytesOf(Cells(cellsOfFile, 5.0F))));
        EXPECT_EQ(cells(*map, 0, 2048), Cells(2048, 5.0F));
        EXPECT_EQ(cells(*map, 1, 2048), Cells(2048, 77.0F));
    }
}

TEST_F(BilGrid, LeavesTheGridAloneUnlessFloat) {
    const ScopedCodec codec("ISO 8859-1");
    for (const std::int32_t isFloat : {0, 2, -1}) {
        for (const std::string& bytes :
             {std::string(), std::string(3, 'a'), std::string(24, 'a')}) {
            prepare(3, 2);
            map->isFloat = isFloat;
            map->isLoaded = 0;
            EXPECT_TRUE(load(bytes));
            EXPECT_EQ(cells(*map, 0, 3), (Cells{77, 77, 77}));
            EXPECT_EQ(cells(*map, 1, 3), (Cells{77, 77, 77}));
            EXPECT_EQ(map->isLoaded, 1);
            EXPECT_EQ(map->isValid, 1);
            EXPECT_EQ(map->colorCount, 1);
            EXPECT_EQ(message(), kLoaded);
        }
    }
}

TEST_F(BilGrid, FillsWhatAShortFileLeavesOutWithNoData) {
    const std::string bytes = bytesOf({1, 2, 3, 4, 5, 6});
    for (const char* name : {"ISO 8859-1", "UTF-8"}) {  // UTF-8 only with cells of ASCII bytes
        const ScopedCodec codec(name);
        const std::string whole = name[0] == 'I' ? bytes : bytesOf({2, 2, 2, 2, 2, 2});
        const Cells expected = name[0] == 'I' ? Cells{1, 2, 3, 4, 5, 6} : Cells{2, 2, 2, 2, 2, 2};
        for (std::size_t length = 0; length <= whole.size(); ++length) {
            prepare(3, 3);
            EXPECT_TRUE(load(whole.substr(0, length)));
            Cells wanted(9, kNoData);
            std::copy_n(expected.begin(), length / 4, wanted.begin());
            for (int row = 0; row < 3; ++row) {
                const auto at = wanted.begin() + 3 * row;
                EXPECT_EQ(cells(*map, row, 3), Cells(at, at + 3)) << name << ' ' << length;
                EXPECT_EQ(map->grid[row][3], 77.0F);
            }
            EXPECT_EQ(map->grid[3][0], 77.0F);
            EXPECT_EQ(message(), kLoaded);
        }
    }
}

TEST_F(BilGrid, IgnoresBytesBehindTheLastRow) {
    const ScopedCodec codec("ISO 8859-1");
    prepare(2, 2);
    EXPECT_TRUE(load(bytesOf({1, 2, 3, 4, 5, 6, 7})));
    EXPECT_EQ(cells(*map, 0, 3), (Cells{1, 2, 77}));
    EXPECT_EQ(cells(*map, 1, 3), (Cells{3, 4, 77}));
    EXPECT_EQ(map->grid[2][0], 77.0F);
}

TEST_F(BilGrid, RefusesSizesOutsideTheGrid) {
    const ScopedCodec codec("ISO 8859-1");
    const struct {
        int nCols;
        int nRows;
        const char* message;
    } kCases[] = {
        {0, 0, kLoaded},
        {2048, 1, kLoaded},
        {1, 2048, kLoaded},
        {2048, 2048, kLoaded},
        {2049, 1, kTooManyColumns},
        {1, 2049, kTooManyRows},
        {2049, 2049, kTooManyColumns},
        {2147483647, 1, kTooManyColumns},
        {1, 2147483647, kTooManyRows},
        {-1, 1, kLoaded},
        {1, -1, kLoaded},
        {-1, -1, kLoaded},
        {2048, -2147483647 - 1, kLoaded},
        {-2147483647 - 1, 2048, kLoaded},
        {-1, 2049, kTooManyRows},
        {2049, -1, kTooManyColumns},
    };
    write("map.clr", "1 10 20 30\n2 40 50 60\n");
    for (const std::int32_t isFloat : {1, 0}) {
        for (const auto& row : kCases) {
            const bool accepted = row.message == kLoaded;
            prepare(row.nCols, row.nRows);
            map->isFloat = isFloat;
            map->isLoaded = 5;
            map->isValid = 0;
            map->colorCount = 0;
            EXPECT_EQ(load("abcd"), accepted) << row.nCols << ' ' << row.nRows;
            EXPECT_EQ(message(), row.message) << row.nCols << ' ' << row.nRows;
            EXPECT_EQ(map->isLoaded, accepted ? 1 : 5) << "a refused load leaves it as it was";
            EXPECT_EQ(map->isValid, accepted ? 1 : 0);
            EXPECT_EQ(map->colorCount, accepted ? 1 : 0);
            EXPECT_EQ(map->nCols, row.nCols);
            EXPECT_EQ(map->nRows, row.nRows);
            if (!accepted || row.nCols < 1 || row.nRows < 1) {
                EXPECT_EQ(map->grid[0][0], 77.0F);
            }
        }
    }
}

TEST_F(BilGrid, IsNotFoundWhateverTheSize) {
    map->nCols = 5000;
    map->isLoaded = 1;
    EXPECT_FALSE(map->loadBILFile(path("map.bil")));
    EXPECT_EQ(message(), "BIL file not found");
    EXPECT_EQ(map->isLoaded, 1) << "this loader does not set it back";
    EXPECT_EQ(map->isValid, 0);
    EXPECT_EQ(map->colorCount, 0);
}

TEST_F(BilGrid, ReadsTheWholeGrid) {
    const ScopedCodec codec("ISO 8859-1");
    Cells all(2048 * 2048);
    for (std::size_t i = 0; i < all.size(); ++i) {
        all[i] = static_cast<float>(i) * 0.5F;
    }
    map->nCols = 2048;
    map->nRows = 2048;
    map->isFloat = 1;
    EXPECT_TRUE(load(bytesOf(all)));
    EXPECT_EQ(std::memcmp(map->grid, all.data(), sizeof(map->grid)), 0);
    EXPECT_EQ(message(), kLoaded);
}

TEST_F(BilGrid, Utf8LosesBytesAbove127) {
    const ScopedCodec codec("UTF-8");
    prepare(3, 1);
    // C3 A9 is one character, U+00E9, so that the rest moves up by a byte; E2 82 AC is U+20AC,
    // which ISO 8859-1 lacks.
    EXPECT_TRUE(
        load(std::string("\xC3\xA9"
                         "abc\xE2\x82\xAC"
                         "defghijk",
                         16)));
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(map->grid[0]), 12),
              "\xE9"
              "abc?defghij");
}

/// The bytes of the rows as read through a text stream.
std::string throughTextStream(const QString& file, int nCols, int nRows) {
    QFile device(file);
    device.open(QIODevice::ReadOnly);
    rfu::test::TextStream stream(&device);
    std::string bytes;
    for (int row = 0; row < nRows; ++row) {
        bytes += stream.read(nCols * 4).toLatin1().toStdString();
    }
    return bytes;
}

TEST_F(BilGrid, GivesWhatATextStreamGives) {
    std::mt19937 random(7);
    const std::string noise = [&random] {
        std::string bytes(40000, '\0');
        for (char& byte : bytes) {
            byte = static_cast<char>(random());
        }
        bytes[0] = 'x';
        return bytes;
    }();
    const struct {
        const char* why;
        std::string bytes;
    } kFiles[] = {
        {"noise", noise},
        {"UTF-8 mark", "\xEF\xBB\xBF" + noise},
        {"UTF-16 mark, big-endian", "\xFE\xFF" + noise},
        {"UTF-16 mark, little-endian", "\xFF\xFE" + noise},
        {"UTF-32 mark, big-endian", std::string("\0\0\xFE\xFF", 4) + noise},
        {"UTF-32 mark, little-endian", std::string("\xFF\xFE\0\0", 4) + noise},
        {"UTF-8 mark only", "\xEF\xBB\xBF"},
        {"UTF-8 mark and a character", "\xEF\xBB\xBF\xC3\xA9zz"},
        {"two bytes of a UTF-8 mark", "\xEF\xBB"},
        {"two bytes of a UTF-8 mark and no third",
         "\xEF\xBB"
         "abcdef"},
        {"UTF-16 mark only", "\xFE\xFF"},
        {"UTF-16 mark only", "\xFF\xFE"},
        {"UTF-16 mark and half a character", "\xFF\xFEx"},
        {"one byte of a mark", "\xFF"},
        {"three bytes of a UTF-32 mark", std::string("\0\0\xFE", 3)},
        {"three bytes of a UTF-32 mark", std::string("\xFF\xFE\0", 3)},
        {"a mark that does not stand first", "x\xEF\xBB\xBFyyyy"},
        {"carriage returns and newlines", "a\r\nb\rc\nd\r\n\r\n\r\rzz"},
        {"zeros", std::string(40, '\0')},
        {"control Z",
         "abc\x1A"
         "defgh"},
        {"empty", ""},
    };
    for (const char* name :
         {"ISO 8859-1", "UTF-8", "windows-1252", "ISO 8859-15", "US-ASCII", "Shift_JIS"}) {
        ASSERT_NE(QTextCodec::codecForName(name), nullptr) << name;
        const ScopedCodec codec(name);
        for (const auto& file : kFiles) {
            for (const auto& [nCols, nRows] :
                 {std::pair{3, 2}, {100, 30}, {2048, 3}, {4096 / 4, 7}}) {
                SCOPED_TRACE(std::string(name) + ", " + file.why + ", " + std::to_string(nCols));
                write("map.bil", file.bytes);
                const std::string bytes = throughTextStream(path("map.bil"), nCols, nRows);
                map->nCols = nCols;
                map->nRows = nRows;
                map->isFloat = 1;
                map->noData = kNoData;
                EXPECT_TRUE(map->loadBILFile(path("map")));
                std::string expected = bytes.substr(0, bytes.size() / 4 * 4);
                const auto size = static_cast<std::size_t>(nCols * nRows);
                expected += bytesOf(Cells(size - expected.size() / 4, kNoData));
                std::string got;
                for (int row = 0; row < nRows; ++row) {
                    got += bytesOf(cells(*map, row, nCols));
                }
                EXPECT_TRUE(got == expected);
            }
        }
    }
}

TEST_F(BilGrid, TheCodecEncodesFileNamesTooOnQt5) {
    const ScopedCodec codec("ISO 8859-1");
    const QString decodedUnderIt = QString::fromLatin1(
        "gr\xC3\xB6\xC3\x9F"
        "e.bil");
    const QString decodedBefore = QString::fromUtf8(
        "gr\xC3\xB6\xC3\x9F"
        "e.bil");
    {
        const ScopedCodec system("UTF-8");
        QFile file(dir.filePath(decodedBefore));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    EXPECT_EQ(map->loadBILFile(dir.filePath(decodedUnderIt)), !rfu::qt::kIsQt6);
    EXPECT_EQ(map->loadBILFile(dir.filePath(decodedBefore)), rfu::qt::kIsQt6);
}

TEST_F(BilGrid, DecodesAFileThatBeginsWithAMarkUnderAnyCodec) {
    const ScopedCodec codec("ISO 8859-1");
    prepare(1, 1);
    EXPECT_TRUE(load(std::string("\xFF\xFE\x61\0\x62\0\x63\0\x64\0", 10)));
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(map->grid[0]), 4), "abcd");
}

TEST_F(BilGrid, OnlyAPixelTypeLineChangesIsFloat) {
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

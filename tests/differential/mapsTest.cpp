#include <support/mapModel.h>
#include <support/samples.h>
#include <support/tempFiles.h>

#include <rfUtils/geo/veltaGEO.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace rfu::test;

const std::string kAnyByte = [] {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return bytes;
}();

TEST(DifferentialMaps, makeToken) {
    const auto map = std::make_unique<veltaGEO>();
    const auto record = std::make_unique<stPaser>();
    const std::string dense = "ab0.+-_\" ,\t=\"";
    Samples samples(20240922);
    for (int i = caseCount(); i > 0; --i) {
        std::string line = samples.text(samples.coin() ? dense : kAnyByte, 80);
        if (samples.below(50) == 0) {  // tokens about as long as the limit
            line += samples.text("x\"", 140);
        }
        if (samples.below(500) == 0) {  // about as many tokens as the limit
            for (std::uint64_t more = 1000 + samples.below(60); more > 0; --more) {
                line += " t";
            }
        }
        std::vector<std::string> expected = tokensOf(line.substr(0, line.find('\0')));
        expected.resize(std::min<std::size_t>(expected.size(), 1024));
        record->count = -1;
        map->makeToken(record.get(), line.c_str());
        ASSERT_EQ(record->count, static_cast<int>(expected.size())) << testing::PrintToString(line);
        for (std::size_t token = 0; token < expected.size(); ++token) {
            ASSERT_STREQ(record->token[token], expected[token].c_str())
                << testing::PrintToString(line);
        }
    }
}

TEST(DifferentialMaps, GetFileNameExt) {
    const auto map = std::make_unique<veltaGEO>();
    Samples samples(20240923);
    for (int i = caseCount(); i > 0; --i) {
        std::string name = samples.text("abcilpqsABCILPQS.", 4);
        if (samples.coin()) {
            name += (samples.coin() ? "." : "") +
                    samples.oneOf(std::vector<std::string>{"asc", "ASC", "bil", "BIL", "bip", "BIP",
                                                           "bsq", "BSQ", "Bil", "aSC"}) +
                    samples.text("x.", 1);
        }
        std::size_t begin = 0;
        for (std::size_t at = name.size(); at > 1; --at) {
            if (name[at - 1] == '.') {
                begin = at;
                break;
            }
        }
        const std::string extension = name.substr(begin, 3);
        int expected = -1;
        if (extension == "ASC" || extension == "asc") {
            expected = 0;
        } else if (extension == "BIL" || extension == "bil") {
            expected = 1;
        } else if (extension == "BIP" || extension == "bip") {
            expected = 2;
        } else if (extension == "BSQ" || extension == "bsq") {
            expected = 3;
        }
        ASSERT_EQ(map->GetFileNameExt(name.c_str()), expected) << name;
    }
}

TEST(DifferentialMaps, GetFileNameExtDel) {
    const auto map = std::make_unique<veltaGEO>();
    Samples samples(20240924);
    for (int i = caseCount(); i > 0; --i) {
        const std::string name = samples.text("ab./", 10);
        ASSERT_EQ(map->GetFileNameExtDel(QString::fromStdString(name)).toStdString(),
                  name.substr(0, name.rfind('.')))
            << name;
    }
}

/// A number in any spelling, or none.
std::string cell(Samples& samples) {
    static const std::vector<std::string> kOdd = {"nan", "-inf",    "1e99", "0x1F", "1e-60",
                                                  "x",   "\"5 x\"", "-",    "+",    "1.5e"};
    static const Range kCells{-10000.0, 10000.0, {-9999.0}};
    switch (samples.below(6)) {
        case 0:
            return samples.oneOf(kOdd);
        case 1:
            return printed(samples.number(kCells), static_cast<int>(samples.below(4)));
        case 2:
            return samples.text("0123456789", 70);
        default:
            return std::to_string(static_cast<int>(samples.below(512)) - 255);
    }
}

std::string separator(Samples& samples) {
    static const std::vector<std::string> kSeparators = {" ", "  ", "\t", ",", " = ", "\r", "; "};
    return samples.below(4) == 0 ? samples.oneOf(kSeparators) : " ";
}

/// A line of a grid: header, cells or noise.
std::string gridLine(Samples& samples, const std::vector<std::string>& keys, std::size_t cells) {
    std::string line;
    switch (samples.below(8)) {
        case 0:
            return samples.text(kAnyByte, 60);
        case 1:
            return samples.text("ab 1.5\",-", 30);
        case 2:
        case 3:
            line = samples.oneOf(keys) + separator(samples) +
                   (samples.coin() ? cell(samples) : std::to_string(samples.below(12)));
            break;
        default:
            for (std::size_t i = samples.below(cells + 2); i > 0; --i) {
                line += cell(samples) + separator(samples);
            }
            break;
    }
    return samples.below(4) == 0 ? line + "\r" : line;
}

/// Lines in any order, sometimes behind a header, sometimes cut.
std::string gridFile(Samples& samples, const std::string& header,
                     const std::vector<std::string>& keys, int& lines) {
    std::string text = samples.coin() ? header : "";
    for (std::uint64_t i = 1 + samples.below(60); i > 0; --i) {
        text += gridLine(samples, keys, 10) + "\n";
    }
    if (samples.below(3) == 0) {
        text.resize(samples.below(text.size()));
    }
    lines += static_cast<int>(linesOf(text, text.size()).size());
    return text;
}

constexpr int kTouchedRows = 80;  // more than the files above reach
constexpr int kTouchedColumns = 16;

class DifferentialMapFiles : public testing::Test {
protected:
    using Model = bool (*)(std::string_view, veltaGEO&, MapRows&);
    using Loader = bool (veltaGEO::*)(const QString&);

    /// Loads a text as this file and compares the fields and cells with the model's.
    void expectModelled(const char* name, const std::string& text, Model model, Loader loader) {
        resetFields(*expected);
        MapRows rows;
        const bool loads = model(text, *expected, rows);
        if (loads && expected->nCols > kTouchedColumns) {
            return;  // wider than the cells compared below
        }
        files.write(name, text);
        resetFields(*map);
        for (int row = 0; row < kTouchedRows; ++row) {
            std::fill(map->grid[row], map->grid[row] + kTouchedColumns, 77.0F);
        }
        const bool loaded = (map.get()->*loader)(QString::fromStdString(files.path(name)));
        ASSERT_EQ(loaded, loads) << testing::PrintToString(text);
        ASSERT_EQ(map->errMsg, expected->errMsg) << testing::PrintToString(text);
        ASSERT_TRUE(sameFields(*map, *expected)) << testing::PrintToString(text);
        for (int row = 0; row < kTouchedRows; ++row) {
            std::vector<float>& cells = rows[row];
            cells.resize(kTouchedColumns, 77.0F);
            ASSERT_TRUE(std::equal(cells.begin(), cells.end(), map->grid[row],
                                   [](float a, float b) { return same(a, b); }))
                << row << ' ' << testing::PrintToString(text);
        }
    }

    TempFiles files;
    const std::unique_ptr<veltaGEO> map = std::make_unique<veltaGEO>();
    const std::unique_ptr<veltaGEO> expected = std::make_unique<veltaGEO>();
};

TEST_F(DifferentialMapFiles, loadASCFile) {
    const std::vector<std::string> keys = {"ncols",    "nrows",        "xllcorner", "yllcorner",
                                           "cellsize", "NODATA_value", "NCOLS",     "other"};
    Samples samples(20240925);
    for (int lines = 0; lines < caseCount() && !HasFatalFailure();) {
        const std::string text =
            gridFile(samples, "ncols 10\nnrows 5\nNODATA_value -9999\n", keys, lines);
        expectModelled("map.asc", text, ascModel, &veltaGEO::loadASCFile);
    }
}

TEST_F(DifferentialMapFiles, loadHDRFile) {
    const std::vector<std::string> keys = {"NCOLS",  "NROWS",     "ULXMAP", "ULYMAP", "XDIM",
                                           "NODATA", "PIXELTYPE", "ncols",  "YDIM"};
    Samples samples(20240926);
    for (int lines = 0; lines < caseCount() && !HasFatalFailure();) {
        const std::string text =
            gridFile(samples, "NCOLS 10\nNROWS 5\nPIXELTYPE FLOAT\n", keys, lines);
        expectModelled("map.hdr", text, hdrModel, &veltaGEO::loadHDRFile);
    }
}

TEST_F(DifferentialMapFiles, LoadColorTable) {
    Samples samples(20240927);
    for (int lines = 0; lines < caseCount() && !HasFatalFailure();) {
        std::string text;
        for (std::uint64_t i = samples.below(70); i > 0; --i) {
            const std::uint64_t tokens = samples.below(8) == 0 ? samples.below(7) : 4;
            for (std::uint64_t token = 0; token < tokens; ++token) {
                text += cell(samples) + separator(samples);
            }
            text += samples.below(30) == 0 ? samples.text(kAnyByte, 30) + "\n" : "\n";
        }
        if (samples.below(3) == 0) {
            text.resize(samples.below(text.size() + 1));
        }
        lines += 1 + static_cast<int>(linesOf(text, text.size()).size());
        expectModelled("map.clr", text, clrModel, &veltaGEO::LoadColorTable);
    }
}

/// Replaces each '#' of a text by a number.
std::string withNumbers(Samples& samples, const std::string& text) {
    std::string result;
    for (const char c : text) {
        result += c == '#' ? cell(samples) : std::string(1, c);
    }
    return result;
}

TEST_F(DifferentialMapFiles, loadTabFile) {
    const std::vector<std::string> lines = {
        "!#",
        "File \"#.bil\"",
        "Type \"RASTER\"",
        "Units \"degree\"",
        "Units \"m\"",
        "CoordSys Earth Projection 8, 104, \"m\", #, #, 0.9996, #, #",
        "(#,#) (1,2) Label \"Pt 1\",",
        "(#,#) (#,#) Label \"Pt 2\"",
        "# # # # # \"Pt 3\"",
        "(#,#) (1,2) Label \"Pt 4\" #",
        "(#,#) (1,2) Label \"Pt 4\",",
        "(#,#) (1,2) Label \"Pt 5\","};
    Samples samples(20240928);
    for (int done = 0; done < caseCount() && !HasFatalFailure();) {
        std::string text;
        for (std::uint64_t i = samples.below(20); i > 0; --i, ++done) {
            text += samples.below(10) == 0 ? samples.text(kAnyByte, 30)
                                           : withNumbers(samples, samples.oneOf(lines));
            text += samples.below(4) == 0 ? "\r\n" : "\n";
        }
        text += samples.below(20) == 0 ? "Type \"NATIVE\"\nUnits \"m\"" : "";
        expectModelled("map.tab", text, tabModel, &veltaGEO::loadTabFile);
    }
}

TEST_F(DifferentialMapFiles, CutAtAnyLengthAndWithAnyByteChanged) {
    const struct {
        const char* name;
        std::string text;
        Model model;
        Loader loader;
    } kFiles[] = {
        {"map.asc",
         "ncols 4\nnrows 2\nxllcorner -1.5\nyllcorner 2\ncellsize 3\nNODATA_value -9\n"
         "1 2 3 4\r\n5.5 -6e2 \"7 x\" 0x8\n\xEF\xBB\xBF 1 \"2 3",
         ascModel, &veltaGEO::loadASCFile},
        {"map.hdr",
         "NROWS 12\nNCOLS 9\nPIXELTYPE FLOAT\nULXMAP -69.25\r\nULYMAP 45\nXDIM 0.1\nNODATA -1e3\n",
         hdrModel, &veltaGEO::loadHDRFile},
        {"map.clr", "-10 0 0 255\n0 0 255 0\n0 255 0 0\n1e3 255 255 255\n", clrModel,
         &veltaGEO::LoadColorTable},
        {"map.tab",
         "!table\nDefinition Table\nFile \"map.bil\"\nType \"RASTER\"\n"
         "(500000,0) (0,0) Label \"Pt 1\",\n(5e5,9) (0,0) Label \"Pt 4\",\n"
         "CoordSys Earth Projection 8, 104, \"m\", -69, 0, 0.9996, 500000, 10000000\n"
         "Units \"m\"\n",
         tabModel, &veltaGEO::loadTabFile},
    };
    for (const auto& file : kFiles) {
        for (std::size_t at = 0; at < file.text.size(); ++at) {
            expectModelled(file.name, file.text.substr(0, at), file.model, file.loader);
            for (const char byte : {'\0', '\n', '\r', '"', ' ', '9', '-', 'e', '\xFF'}) {
                std::string text = file.text;
                text[at] = byte;
                expectModelled(file.name, text, file.model, file.loader);
            }
        }
    }
}

}  // namespace

#include <support/mapModel.h>
#include <support/samples.h>
#include <support/tempFiles.h>

#include <rfUtils/geo/veltaGEO.h>

#include <gtest/gtest.h>

#include <memory>

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
        if (samples.below(50) == 0) {  // tokens about as long as one may be
            line += samples.text("x\"", 140);
        }
        if (samples.below(500) == 0) {  // about as many as there may be
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

/// Numbers as files write them, and what is none.
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

/// Some lines, in their usual order or in any, now and then without a last line end.
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
            return;  // a random number of columns that the comparison of cells would not see
        }
        files.write(name, text);
        resetFields(*map);
        for (int row = 0; row < kTouchedRows; ++row) {
            std::fill(map->grid[row], map->grid[row] + kTouchedColumns, 77.0F);
        }
        ASSERT_EQ((map.get()->*loader)(family), loads) << testing::PrintToString(text);
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
    const QString family = QString::fromStdString(files.path("map"));
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

TEST_F(DifferentialMapFiles, GridFilesCutAtAnyLength) {
    const std::string asc =
        "ncols 4\nnrows 2\nxllcorner -1.5\nyllcorner 2\ncellsize 3\nNODATA_value -9\n"
        "1 2 3 4\r\n5.5 -6e2 \"7 x\" 0x8\n\xEF\xBB\xBF 1 \"2 3";
    const std::string hdr =
        "NROWS 12\nNCOLS 9\nPIXELTYPE FLOAT\nULXMAP -69.25\r\nULYMAP 45\nXDIM 0.1\nNODATA -1e3\n";
    for (std::size_t length = 0; length <= asc.size(); ++length) {
        expectModelled("map.asc", asc.substr(0, length), ascModel, &veltaGEO::loadASCFile);
    }
    for (std::size_t length = 0; length <= hdr.size(); ++length) {
        expectModelled("map.hdr", hdr.substr(0, length), hdrModel, &veltaGEO::loadHDRFile);
    }
}

}  // namespace

// Files that pass the checks, whole or damaged, hold what the library reads: each value is compared
// with a reading that knows the formats' grammar, but no limit, order or spelling of the loaders.
#include <support/cText.h>
#include <support/samples.h>
#include <support/scopedCodec.h>

#include <QPointF>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <numeric>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "analysis/maps/rasterFile.h"
#include "analysis/maps/tabFile.h"
#include "mapFiles.h"

namespace rfu::test {
namespace {

// The other reading ------------------------------------------------------------------------------

using Tokens = std::vector<std::string>;

/// The tokens of each line, quotes included, where a NUL is a blank. Comments have none.
std::vector<Tokens> linesOf(const std::string& file, char comment = '\n') {
    static const std::string kLetters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+-._";
    std::vector<Tokens> lines(1);
    std::string token;
    bool isQuoted = false;
    bool isComment = false;
    bool isFirst = true;
    for (const char c : file + '\n') {
        isQuoted = c != '\n' && isQuoted != (c == '"');
        isComment = isFirst ? c == comment : isComment && c != '\n';
        isFirst = c == '\n';
        if (isComment) {
            continue;
        }
        if (c == '"' || (isQuoted && c != '\0') || kLetters.find(c) != std::string::npos) {
            token += c;
        } else if (!token.empty()) {
            if (token.find_first_not_of('"') != std::string::npos) {
                lines.back().push_back(token);
            }
            token.clear();
        }
        if (c == '\n') {
            lines.emplace_back();
        }
    }
    return lines;
}

std::string unquoted(std::string token) {
    token.erase(std::remove(token.begin(), token.end(), '"'), token.end());
    return token;
}

std::string inCapitals(std::string word) {
    for (char& c : word) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return word;
}

/// A whole token as a number, by strtod, which no hexadecimal one is.
std::optional<double> numberOf(const std::string& token) {
    const CLocale scope;
    char* end = nullptr;
    const double value = std::strtod(token.c_str(), &end);
    const bool isWhole = !token.empty() && *end == '\0';
    return isWhole && token.find_first_of("xX") == std::string::npos ? std::optional(value)
                                                                     : std::nullopt;
}

/// A value that no reading leaves out; the comparison with it fails.
constexpr double kUnreadable = 1.2345e-5;

double valueOf(const Tokens& tokens, std::size_t index) {
    return index < tokens.size() ? numberOf(tokens[index]).value_or(kUnreadable) : kUnreadable;
}

struct Grid {
    std::map<std::string, double> header;  // by key in capitals
    std::map<std::string, std::string> words;
    std::vector<std::vector<float>> rows;

    double valueOr0(const char* key) const {
        const auto found = header.find(key);
        return found != header.end() ? found->second : 0.0;
    }
};

/// Lines of two tokens are header lines, longer ones are rows in their order.
Grid gridOf(const std::string& file) {
    Grid grid;
    for (const Tokens& tokens : linesOf(file)) {
        if (tokens.size() == 2) {
            const std::string key = inCapitals(unquoted(tokens[0]));
            grid.header[key] = valueOf(tokens, 1);
            grid.words[key] = inCapitals(unquoted(tokens[1]));
        } else if (tokens.size() > 2) {
            grid.rows.emplace_back();
            for (std::size_t i = 0; i < tokens.size(); ++i) {
                grid.rows.back().push_back(static_cast<float>(valueOf(tokens, i)));
            }
        }
    }
    return grid;
}

// Files ------------------------------------------------------------------------------------------

std::string spelled(Samples& samples, double value) {
    static const char* const kForms[] = {"%.0f", "%.2f", "%.9g", "%.17g", "%e", "%+.1f", "%07.2f"};
    const CLocale scope;
    char text[64];
    std::snprintf(text, sizeof text, samples.oneOf(kForms), value);
    return text;
}

std::string number(Samples& samples) {
    switch (samples.below(12)) {
        case 0:
            return samples.oneOf(std::vector<std::string>{"nan", "-inf", "1e38", "1e-50", "-0"});
        case 1:
            return samples.text("0123456789", 25) + "1";
        default:
            return spelled(samples, samples.between(-10000.0, 10000.0));
    }
}

std::string blank(Samples& samples) {
    return samples.oneOf(std::vector<std::string>{" ", " ", " ", "  ", "\t", ", "});
}

const std::string kAnyByte = [] {
    std::string bytes(256, '\0');
    std::iota(bytes.begin(), bytes.end(), '\0');
    return bytes;
}();

/// Damages a text in a few places, as editors, transfers and other programs do.
void damage(Samples& samples, std::string& text) {
    static const std::string kBytes("0159 \n\r\t\",;.-+ex#\0NO\xC3", 21);
    for (std::uint64_t times = 1 + samples.below(2); times > 0; --times) {
        const std::size_t at = samples.below(text.size() + 1);
        const std::size_t end = std::min(text.find('\n', at), text.size());
        const std::size_t begin = at == 0 ? 0 : text.rfind('\n', at - 1) + 1;
        const std::string line = text.substr(begin, end - begin) + "\n";
        switch (samples.below(10)) {
            case 0:  // another byte
                text.replace(at, 1, 1, samples.oneOf(kBytes));
                break;
            case 1:  // one more
                text.insert(at, 1, samples.oneOf(kBytes));
                break;
            case 2:  // some less
                text.erase(at, 1 + samples.below(3));
                break;
            case 3:  // a line twice
                text.insert(begin, line);
                break;
            case 4:  // a line less
                text.erase(begin, line.size());
                break;
            case 5:  // a line elsewhere
                text.erase(begin, line.size());
                text.insert(samples.coin() ? 0 : text.size(), line);
                break;
            case 6:  // a number too long
                text.insert(text.find_first_of("0123456789", at) == std::string::npos
                                ? 0
                                : text.find_first_of("0123456789", at),
                            std::string(60 + samples.below(8), '0'));
                break;
            case 7:  // a key in another case
                for (std::size_t i = begin; i < std::min(begin + 6, end); ++i) {
                    text[i] = static_cast<char>(samples.coin() ? std::toupper(text[i])
                                                               : std::tolower(text[i]));
                }
                break;
            case 8:  // any bytes
                text.insert(at, samples.text(kAnyByte, 80));
                break;
            default:  // the end cut off
                text.resize(at);
                break;
        }
    }
}

constexpr int kMaxSide = 9;
constexpr float kBefore = 77.25F;  // in cells that no load has written

class ReadingTest : public MapFiles {
protected:
    /// Calls passes(text) with random files, most of them damaged: whether the file passes its
    /// check, in which case the library has to have read what the other reading does.
    template <typename Make, typename Passes>
    void forEachFile(std::uint64_t seed, Make make, Passes passes) {
        const int count = caseCount() / 20;
        int passed = 0;
        int refused = 0;
        Samples samples(seed);
        for (int i = 0; i < count && !HasFailure(); ++i) {
            std::string text = make(samples);
            const bool isWhole = samples.below(4) == 0;
            if (!isWhole) {
                damage(samples, text);
            }
            SCOPED_TRACE(testing::PrintToString(text));
            const bool isPassed = passes(text);
            EXPECT_TRUE(isPassed || !isWhole);
            (isPassed ? passed : refused) += isWhole ? 0 : 1;
        }
        EXPECT_GT(passed, count / 20) << "damaged files";
        EXPECT_GT(refused, count / 4);
    }

    static bool hasError(const RasterCheck& check) {
        return std::any_of(check.files.begin(), check.files.end(),
                           [](const Findings& findings) { return findings.hasError(); });
    }

    void clear() {
        for (int row = 0; row < 2 * kMaxSide; ++row) {
            std::fill(map->grid[row], map->grid[row] + 2 * kMaxSide, kBefore);
        }
        map->nCols = map->nRows = map->isFloat = map->unitKind = 0;
        map->originX = map->originY = map->cellSize = map->noData = 0.0F;
        map->centralMeridian = map->originLatitude = 0.0F;
        map->falseEasting = map->falseNorthing = 0.0F;
    }

    void expectSingle(float read, double written, const char* what) const {
        EXPECT_TRUE(same(read, static_cast<float>(written)))
            << what << ": " << read << " for " << written;
    }

    /// @param places keys of x, y, cell size and no-data value
    void expectHeader(const Grid& grid, const std::array<const char*, 4>& places) const {
        EXPECT_EQ(static_cast<double>(map->nCols), grid.valueOr0("NCOLS"));
        EXPECT_EQ(static_cast<double>(map->nRows), grid.valueOr0("NROWS"));
        const float* const fields[] = {&map->originX, &map->originY, &map->cellSize, &map->noData};
        for (std::size_t i = 0; i < places.size(); ++i) {
            expectSingle(*fields[i], grid.valueOr0(places[i]), places[i]);
        }
    }

    const ScopedCodec codec{"ISO 8859-1"};
    const std::unique_ptr<veltaGEO> map = std::make_unique<veltaGEO>();
};

std::string ascFile(Samples& samples) {
    const std::size_t columns = 3 + samples.below(kMaxSide - 2);
    const std::size_t rows = 1 + samples.below(kMaxSide);
    const std::string end = samples.below(4) == 0 ? "\r\n" : "\n";
    std::string text = "ncols " + std::to_string(columns) + end + "nrows " + std::to_string(rows);
    for (const char* key : {"xllcorner ", "yllcorner ", "cellsize ", "NODATA_value "}) {
        text += end + key + number(samples);
    }
    for (std::size_t cell = 0; cell < rows * columns; ++cell) {
        text += (cell % columns == 0 ? end : blank(samples)) + number(samples);
    }
    return text + end;
}

TEST_F(ReadingTest, OfAsciiGrids) {
    forEachFile(20250301, ascFile, [&](const std::string& text) {
        const QString name = write("map.asc", text);
        if (hasError(checkRaster(name))) {
            return false;
        }
        clear();
        EXPECT_TRUE(map->loadASCFile(name));
        const Grid grid = gridOf(text);
        expectHeader(grid, {"XLLCORNER", "YLLCORNER", "CELLSIZE", "NODATA_VALUE"});
        EXPECT_EQ(grid.rows.size(), static_cast<std::size_t>(map->nRows));
        for (std::size_t row = 0; row < grid.rows.size(); ++row) {
            EXPECT_EQ(grid.rows[row].size(), static_cast<std::size_t>(map->nCols));
            for (std::size_t column = 0; column < grid.rows[row].size(); ++column) {
                EXPECT_TRUE(same(map->grid[row][column], grid.rows[row][column]))
                    << "row " << row << ", column " << column;
            }
        }
        return true;
    });
}

std::string hdrFile(Samples& samples) {
    const std::string columns = std::to_string(1 + samples.below(kMaxSide));
    const std::string rowBytes = samples.coin() ? columns : std::to_string(4 * std::stoi(columns));
    const std::string cell = number(samples);
    std::vector<std::string> lines = {
        "NCOLS " + columns,          "NROWS " + std::to_string(1 + samples.below(kMaxSide)),
        "PIXELTYPE FLOAT",           "ULXMAP " + number(samples),
        "ULYMAP " + number(samples), "XDIM " + cell,
        "NODATA " + number(samples)};
    const std::vector<std::string> layout = {
        "BYTEORDER I",
        "LAYOUT BIL",
        "NBANDS 1",
        "SKIPBYTES 0",
        "NBITS 32",
        "YDIM " + cell,
        "TOTALROWBYTES " + std::to_string(4 * std::stoi(columns))};
    lines.insert(lines.end(), layout.begin(),
                 layout.begin() + static_cast<std::ptrdiff_t>(samples.below(layout.size() + 1)));
    std::string text;
    while (!lines.empty()) {
        const auto line = lines.begin() + static_cast<std::ptrdiff_t>(samples.below(lines.size()));
        text += *line + "\n";
        lines.erase(line);
    }
    return text;
}

TEST_F(ReadingTest, OfFloatGrids) {
    Samples samples(20250302);
    std::vector<float> cells(100 * kMaxSide);
    forEachFile(20250303, hdrFile, [&](const std::string& text) {
        std::generate(cells.begin(), cells.end(), [&] { return samples.anySinglePattern(); });
        const QString name = write("map.hdr", text);
        write("map.bil", bytesOf(cells));
        if (hasError(checkRaster(name))) {
            return false;
        }
        clear();
        EXPECT_TRUE(map->loadHDRFile(name) && map->loadBILFile(name));
        Grid grid = gridOf(text);
        expectHeader(grid, {"ULXMAP", "ULYMAP", "XDIM", "NODATA"});
        const bool isFloat = grid.words["PIXELTYPE"] == "FLOAT";
        EXPECT_EQ(map->isFloat == 1, isFloat);
        for (const auto& [key, wanted] :
             std::map<std::string, std::string>{{"BYTEORDER", "I"}, {"LAYOUT", "BIL"}}) {
            EXPECT_TRUE(grid.words.count(key) == 0 || grid.words[key] == wanted) << key;
        }
        const double rowBytes = 4.0 * map->nCols;
        for (const auto& [key, wanted, ofFloats] :
             std::vector<std::tuple<const char*, double, bool>>{
                 {"NBANDS", 1.0, false},
                 {"SKIPBYTES", 0.0, false},
                 {"NBITS", 32.0, true},
                 {"TOTALROWBYTES", rowBytes, true}}) {
            EXPECT_TRUE(grid.header.count(key) == 0 || grid.header[key] == wanted ||
                        (ofFloats && !isFloat))
                << key;
        }
        if (grid.header.count("YDIM") > 0) {
            expectSingle(std::abs(map->cellSize), std::abs(grid.header["YDIM"]), "YDIM");
        }
        std::size_t next = 0;
        for (int row = 0; row < map->nRows && isFloat; ++row) {
            for (int column = 0; column < map->nCols; ++column) {
                EXPECT_EQ(std::memcmp(&map->grid[row][column], &cells[next++], sizeof(float)), 0)
                    << "row " << row << ", column " << column;
            }
        }
        return true;
    });
}

std::string tabFile(Samples& samples) {
    std::string text =
        "!table\n!version 300\n\nDefinition Table\n  File \"map.asc\"\n"
        "  Type \"RASTER\"\n";
    for (const char* point : {"1", "2", "3", "4"}) {
        text += "  (" + spelled(samples, samples.between(1e5, 9e5)) + "," +
                spelled(samples, samples.between(1e6, 9e6)) + ") (" +
                std::to_string(samples.below(300)) + ", " + std::to_string(samples.below(300)) +
                ") Label \"Pt " + point + "\",\n";
    }
    text += "  CoordSys Earth Projection 8, 104, \"m\", " +
            std::to_string(6 * static_cast<int>(samples.below(60)) - 177) +
            ", 0, 0.9996, 500000, " + (samples.coin() ? "0" : "10000000") + "\n";
    return text +
           samples.oneOf(std::vector<std::string>{"  Units \"m\"\n", "  Units \"degree\"\n", ""});
}

TEST_F(ReadingTest, OfGeoreferences) {
    forEachFile(20250304, tabFile, [&](const std::string& text) {
        const QString name = write("map.tab", text);
        const TabCheck check = checkTab(name);
        if (check.findings.hasError()) {
            return false;
        }
        clear();
        EXPECT_TRUE(map->loadTabFile(name));
        std::array<std::array<double, 4>, 4> points{};
        std::array<double, 4> system{};  // meridian, latitude, false easting and northing
        std::string unit;
        std::string file;
        for (const Tokens& tokens : linesOf(text, '!')) {
            const std::string key = tokens.empty() ? "" : inCapitals(unquoted(tokens[0]));
            if (tokens.size() == 2 && key == "FILE") {
                file = unquoted(tokens[1]);
            } else if (tokens.size() == 2 && key == "UNITS") {
                unit = unquoted(tokens[1]);
            } else if (tokens.size() == 11 && key == "COORDSYS" && numberOf(tokens[6])) {
                system = {valueOf(tokens, 6), valueOf(tokens, 7), valueOf(tokens, 9),
                          valueOf(tokens, 10)};
            }
            for (std::size_t i = 0; i < points.size() && tokens.size() == 6; ++i) {
                if (unquoted(tokens[5]) == "Pt " + std::to_string(i + 1)) {
                    points[i] = {valueOf(tokens, 0), valueOf(tokens, 1), valueOf(tokens, 2),
                                 valueOf(tokens, 3)};
                }
            }
        }
        EXPECT_EQ(map->rasterFileName, file);
        expectSingle(map->centralMeridian, system[0], "meridian");
        expectSingle(map->originLatitude, system[1], "latitude");
        expectSingle(map->falseEasting, system[2], "false easting");
        expectSingle(map->falseNorthing, system[3], "false northing");
        const int zone = static_cast<int>((system[0] + 183.0) / 6.0);
        for (std::size_t i = 0; i < points.size(); ++i) {
            expectSingle(check.points[i].x, points[i][0], "x");
            expectSingle(check.points[i].y, points[i][1], "y");
            EXPECT_EQ(check.points[i].pixel, QPointF(points[i][2], points[i][3]));
            veltaGEO::ControlPoint expected = {check.points[i].x, check.points[i].y};
            if (!unit.empty() && unit != "degree") {
                map->utmToLatLng(expected.x, expected.y, zone, system[3] != 0.0, &expected.y,
                                 &expected.x);
            }
            expectSingle(map->controlPoint[i].x, static_cast<double>(expected.x), "map x");
            expectSingle(map->controlPoint[i].y, static_cast<double>(expected.y), "map y");
        }
        return true;
    });
}

}  // namespace
}  // namespace rfu::test

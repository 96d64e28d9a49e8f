// The checks of maps say something, more than a note, exactly where the library does not read all that a file says: files,
// whole or damaged, are compared with a reading that knows the formats' grammar, but no limit, order or spelling of the
// loaders. Each row, colour and point that is not read has a finding at its line, or follows one that has it.
#include <support/cText.h>
#include <support/samples.h>
#include <support/scopedCodec.h>

#include <QPointF>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <numeric>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "readingTest.h"

#include "analysis/maps/ascCheck.h"
#include "analysis/maps/bilCheck.h"
#include "analysis/maps/clrCheck.h"
#include "analysis/maps/tabFile.h"

namespace rfu::test {
namespace {

// The other reading ------------------------------------------------------------------------------

using Tokens = std::vector<std::string>;

constexpr std::string_view kLetters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+-._";

/// The tokens of each line, quotes included, where a NUL is a blank that ends quotes. Comments have none.
std::vector<Tokens> linesOf(const std::string& file, char comment = '\n') {
    std::vector<Tokens> lines(1);
    std::string token;
    bool isQuoted = false;
    bool isComment = false;
    bool isFirst = true;
    for (const char c : file + '\n') {
        isQuoted = c != '\n' && c != '\0' && isQuoted != (c == '"');
        isComment = c != '\n' && (isFirst ? c == comment : isComment);
        isFirst = c == '\n';
        if (isComment) {
            continue;
        }
        if (c == '"' || isQuoted || kLetters.find(c) != std::string_view::npos) {
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

/// All that a file says. It is whole if nothing else is in it, and nothing twice.
struct Content {
    struct Row {
        long long line;  // counted from 1
        std::vector<double> cells;
    };

    bool isWhole = true;
    std::map<std::string, double> numbers;  // of the header, by key in capitals
    std::map<std::string, std::string> words;
    std::vector<Row> rows;

    double valueOr(const char* key, float other) const {
        const auto found = numbers.find(key);
        return found != numbers.end() ? found->second : static_cast<double>(other);
    }
};

std::optional<Content::Row> rowOf(const Tokens& tokens, long long line) {
    Content::Row row{line, {}};
    for (const std::string& token : tokens) {
        const auto number = numberOf(token, Tiny::IsZero);
        if (!number) {
            return std::nullopt;
        }
        row.cells.push_back(*number);
    }
    return row;
}

/// Whether something stands behind a NUL in its line. No loader reads that, whatever it is.
bool hasTextBehindNul(const std::string& file) {
    bool isBehind = false;
    for (const char c : file) {
        isBehind = c != '\n' && (isBehind || c == '\0');
        if (isBehind && (kLetters.find(c) != std::string_view::npos || c == '"')) {
            return true;
        }
    }
    return false;
}

/// Lines of a known key and a value, lines of numbers, and blank lines.
/// @param wordKeys keys whose values are words
/// @param mayRepeat keys that may have the same value twice, as those of wordKeys
/// @param anyValue keys whose values nobody reads
Content contentOf(const std::string& file, const std::vector<std::string>& keys,
                  const std::vector<std::string>& wordKeys = {},
                  const std::vector<std::string>& mayRepeat = {},
                  const std::vector<std::string>& anyValue = {}) {
    Content content;
    content.isWhole = !hasTextBehindNul(file);
    long long line = 0;
    const auto isOneOf = [](const std::vector<std::string>& words, const std::string& word) {
        return std::find(words.begin(), words.end(), word) != words.end();
    };
    for (const Tokens& tokens : linesOf(file)) {
        ++line;
        if (tokens.empty()) {
            continue;
        }
        const std::string written = unquoted(tokens[0]);
        const std::string key = inCapitals(written);
        if (tokens.size() == 2 && isOneOf(anyValue, key)) {
            continue;
        }
        if (auto row = rowOf(tokens, line)) {
            content.rows.push_back(std::move(*row));
        } else if (tokens.size() == 2 && isOneOf(wordKeys, key)) {
            const bool isForLoader = key == "PIXELTYPE";  // the others say what it presumes
            const std::string word = inCapitals(isForLoader ? unquoted(tokens[1]) : tokens[1]);
            const auto [known, isFirst] = content.words.emplace(key, word);
            content.isWhole &=
                isForLoader ? isFirst && written == key : isFirst || known->second == word;
        } else if (const auto value = numberOf(tokens.back(), Tiny::IsZero);
                   tokens.size() == 2 && isOneOf(keys, key) && value) {
            const auto [known, isFirst] = content.numbers.emplace(key, *value);
            content.isWhole &= isFirst || (isOneOf(mayRepeat, key) && same(known->second, *value));
        } else {
            content.isWhole = false;
        }
    }
    return content;
}

bool isRead(float read, double written) {
    return same(read, static_cast<float>(written)) && std::isinf(read) == std::isinf(written);
}

bool areRead(const float* read, const std::vector<double>& written) {
    return std::all_of(written.begin(), written.end(),
                       [&](double number) { return isRead(*read++, number); });
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
            return samples.oneOf(
                std::vector<std::string>{"nan", "-inf", "1e38", "1e-50", "-1e-400", "-0"});
        case 1:
            return samples.text("0123456789", 25) + "1";
        default:
            return spelled(samples, samples.between(-10000.0, 10000.0));
    }
}

std::string blank(Samples& samples) {
    return samples.oneOf(std::vector<std::string>{" ", " ", " ", "  ", "\t", ", "});
}

constexpr int kMaxSide = 9;
constexpr std::size_t kSeenSide = 18;  // rows and columns of a grid that are compared
constexpr float kBefore = 77.25F;      // in cells that no load has written

class MapReadingTest : public ReadingTest {
protected:
    /// Whether some entry that counts has this value and colour at one of its ends.
    bool isColour(const std::vector<double>& cells) const {
        for (int entry = 0; entry < map->colorCount; ++entry) {
            const bool isLow = isRead(map->lowValue[entry], cells[0]) &&
                               map->lowRed[entry] == cells[1] && map->lowGreen[entry] == cells[2] &&
                               map->lowBlue[entry] == cells[3];
            const bool isHigh =
                isRead(map->highValue[entry], cells[0]) && map->highRed[entry] == cells[1] &&
                map->highGreen[entry] == cells[2] && map->highBlue[entry] == cells[3];
            if (isLow || isHigh) {
                return true;
            }
        }
        return false;
    }

    void clear() {
        for (std::size_t row = 0; row < kSeenSide; ++row) {
            std::fill_n(map->grid[row], kSeenSide, kBefore);
        }
        map->nCols = map->nRows = map->isFloat = map->unitKind = 0;
        map->originX = map->originY = map->cellSize = map->noData = kBefore;
        map->centralMeridian = map->originLatitude = 0.0F;
        map->falseEasting = map->falseNorthing = 0.0F;
    }

    /// @param keys of columns, rows, x, y, cell size and no-data value
    bool isHeaderRead(const Content& content, const std::array<const char*, 6>& keys) const {
        const float* const fields[] = {&map->originX, &map->originY, &map->cellSize, &map->noData};
        bool isSame = static_cast<double>(map->nCols) == content.valueOr(keys[0], 0.0F) &&
                      static_cast<double>(map->nRows) == content.valueOr(keys[1], 0.0F) &&
                      map->nCols > 0 && map->nRows > 0;
        for (std::size_t i = 0; i < std::size(fields); ++i) {
            isSame = isSame && isRead(*fields[i], content.valueOr(keys[i + 2], kBefore));
        }
        return isSame;
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

TEST_F(MapReadingTest, OfAsciiGrids) {
    static const std::vector<std::string> kKeys = {"NCOLS",     "NROWS",    "XLLCORNER",
                                                   "YLLCORNER", "CELLSIZE", "NODATA_VALUE"};
    forEachFile(20250301, ascFile, [&](const std::string& text) {
        const QString name = write("map.asc", text);
        const Findings findings = checkAsc(name).findings;
        const Content content = contentOf(text, kKeys);
        clear();
        const bool isLoaded = map->loadASCFile(name);
        const auto isRow = [&](const Content::Row& row, std::size_t index) {
            return row.cells.size() == static_cast<std::size_t>(map->nCols) &&
                   areRead(map->grid[index], row.cells);
        };
        bool isReadWhole = content.isWhole && isLoaded &&
                           isHeaderRead(content, {"NCOLS", "NROWS", "XLLCORNER", "YLLCORNER",
                                                  "CELLSIZE", "NODATA_VALUE"}) &&
                           content.rows.size() == static_cast<std::size_t>(map->nRows);
        const bool isEmpty =
            !isLoaded || map->nCols <= 0 || map->nRows <= 0;  // an error of the file
        bool isInRun = false;                                 // of rows that are not read
        for (std::size_t i = 0; i < content.rows.size() && !isEmpty; ++i) {
            const Content::Row& row = content.rows[i];
            if (i < kSeenSide && isRow(row, i) && static_cast<int>(i) < map->nRows) {
                isInRun = false;
                continue;
            }
            isReadWhole = false;
            bool isElsewhere = false;
            for (int other = 0; other < std::min(map->nRows, static_cast<int>(kSeenSide));
                 ++other) {
                isElsewhere = isElsewhere || isRow(row, static_cast<std::size_t>(other));
            }
            if (!isElsewhere && !std::exchange(isInRun, true)) {
                expectFindingAt(findings, row.line, "the row");
            }
        }
        return expectToSay(findings, isReadWhole);
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

/// Whether a header asks for the only layout that is read.
bool isLayoutRead(const Content& content, const veltaGEO& map, bool isFloat) {
    const double rowBytes = 4.0 * map.nCols;
    const std::tuple<const char*, double, bool> kNumbers[] = {{"NBANDS", 1.0, false},
                                                              {"SKIPBYTES", 0.0, false},
                                                              {"NBITS", 32.0, true},
                                                              {"BANDROWBYTES", rowBytes, true},
                                                              {"TOTALROWBYTES", rowBytes, true}};
    for (const auto& [key, wanted, ofFloats] : kNumbers) {
        const auto found = content.numbers.find(key);
        if (found != content.numbers.end() && found->second != wanted && (isFloat || !ofFloats)) {
            return false;
        }
    }
    for (const auto& [key, wanted] : {std::pair("BYTEORDER", "I"), std::pair("LAYOUT", "BIL")}) {
        const auto found = content.words.find(key);
        if (found != content.words.end() && found->second != wanted) {
            return false;
        }
    }
    const auto height = content.numbers.find("YDIM");
    if (height == content.numbers.end()) {
        return true;
    }
    const auto cell = static_cast<float>(content.valueOr("XDIM", 0.0F));  // of a new object
    const auto written = static_cast<float>(height->second);
    return cell == written || (std::isnan(cell) && std::isnan(written));
}

TEST_F(MapReadingTest, OfFloatGrids) {
    static const std::vector<std::string> kKeys = {
        "NCOLS",  "NROWS",     "ULXMAP", "ULYMAP", "XDIM",         "NODATA",
        "NBANDS", "SKIPBYTES", "YDIM",   "NBITS",  "BANDROWBYTES", "TOTALROWBYTES"};
    Samples samples(20250302);
    std::vector<float> cells(std::size_t{100} * kMaxSide);
    forEachFile(20250303, hdrFile, [&](const std::string& text) {
        std::generate(cells.begin(), cells.end(), [&] { return samples.anySinglePattern(); });
        const QString name = write("map.hdr", text);
        const HdrCheck check = checkHdr(name);
        const auto contentBut = [&text](const std::vector<std::string>& anyValue) {
            return contentOf(text, kKeys, {"PIXELTYPE", "BYTEORDER", "LAYOUT"},
                             {kKeys.begin() + 6, kKeys.end()}, anyValue);
        };
        Content content = contentBut({});
        const auto pixels = content.words.find("PIXELTYPE");
        const bool isFloat = pixels != content.words.end() && pixels->second == "FLOAT";
        if (!isFloat) {
            content = contentBut({"NBITS", "BANDROWBYTES", "TOTALROWBYTES"});
        }
        clear();
        const bool isLoaded = map->loadHDRFile(name);
        const bool isReadWhole =
            content.isWhole && isLoaded && content.rows.empty() &&
            isHeaderRead(content, {"NCOLS", "NROWS", "ULXMAP", "ULYMAP", "XDIM", "NODATA"}) &&
            isFloat == (map->isFloat == 1) && isLayoutRead(content, *map, isFloat);
        if (!expectToSay(check.findings, isReadWhole)) {
            return false;
        }
        if (!isFloat) {
            return true;  // no cell is read
        }
        const auto columns = static_cast<std::size_t>(map->nCols);
        const std::size_t count = columns * static_cast<std::size_t>(map->nRows);
        std::vector<float> used(cells.begin(), cells.begin() + static_cast<std::ptrdiff_t>(count));
        const std::size_t missing = samples.below(4) == 0 ? 1 + samples.below(used.size()) : 0;
        used.resize(used.size() - missing);
        used.resize(used.size() + (missing == 0 ? samples.below(2) : 0));
        write("map.bil", bytesOf(used));
        EXPECT_TRUE(map->loadBILFile(name));
        bool areSame = used.size() == count;
        for (std::size_t i = 0; i < used.size() && areSame; ++i) {
            areSame = same(map->grid[i / columns][i % columns], used[i]);
        }
        expectToSay(checkBil(named("map.bil"), check), areSame);
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

/// What a georeference says.
struct Georeference {
    bool isWhole = true;
    std::array<std::optional<std::array<double, 4>>, 4> points;  // x, y, column, row
    std::array<long long, 4> pointLines{};
    std::optional<Tokens> system;  // if it has eleven words
    std::vector<std::string> units;
    std::vector<std::string> files;
    bool isRaster = true;
    bool isOrdered = true;  // whether the units come after all that they convert
};

/// Whether a word in capitals has one letter more, less or other than a key, or its letters in another order, or begins
/// with it.
bool isNearly(const std::string& word, const std::string& key) {
    const auto isOneMore = [](const std::string& more, const std::string& less) {
        for (std::size_t i = 0; i < more.size(); ++i) {
            if (more.substr(0, i) + more.substr(i + 1) == less) {
                return true;
            }
        }
        return false;
    };
    const auto sorted = [](std::string letters) {
        std::sort(letters.begin(), letters.end());
        return letters;
    };
    const bool isOneOther =
        word.size() == key.size() && std::inner_product(word.begin(), word.end(), key.begin(), 0,
                                                        std::plus<>(), std::not_equal_to<>()) == 1;
    return isOneMore(word, key) || isOneMore(key, word) || isOneOther ||
           sorted(word) == sorted(key) || word.rfind(key, 0) == 0;
}

Georeference georeferenceOf(const std::string& text) {
    static const std::map<std::string, std::size_t> kTokens = {
        {"TYPE", 2}, {"FILE", 2}, {"UNITS", 2}, {"COORDSYS", 11}};
    Georeference result;
    std::set<std::string> keys;
    std::set<std::string> nearKeys;
    long long line = 0;
    for (const Tokens& tokens : linesOf(text, '!')) {
        ++line;
        const std::string key = tokens.empty() ? "" : inCapitals(unquoted(tokens[0]));
        const bool isPoint =
            std::any_of(tokens.begin(), tokens.end(), [&tokens](const auto& token) {
                const std::string word = inCapitals(unquoted(token));
                return word == "LABEL" || (&token == &tokens.back() && word.substr(0, 3) == "PT ");
            });
        const bool isConverted = !result.units.empty() && result.units[0] != "degree";
        for (const auto& [known, count] : kTokens) {
            if (!isPoint && tokens.size() == count && key == known) {
                keys.insert(known);
            } else if (!isPoint && tokens.size() == count && isNearly(key, known)) {
                nearKeys.insert(known);
            }
        }
        if (isPoint) {
            const std::string label = unquoted(tokens.back());
            const bool isNamed = tokens.size() == 6 && label.size() == 4 &&
                                 label.substr(0, 3) == "Pt " && label[3] >= '1' && label[3] <= '4';
            if (!isNamed) {
                result.isWhole = false;
                continue;
            }
            const auto index = static_cast<std::size_t>(label[3] - '1');
            result.pointLines[index] = line;  // the last one counts, also without numbers
            const auto numbers = rowOf({tokens.begin(), tokens.begin() + 4}, line);
            if (!numbers) {
                result.isWhole = false;
                continue;
            }
            result.isWhole &= !result.points[index];
            result.isOrdered &= !isConverted;
            const std::vector<double>& cells = numbers->cells;
            result.points[index] = {cells[0], cells[1], cells[2], cells[3]};
        } else if (key == "COORDSYS") {
            result.isWhole &= unquoted(tokens[0]) == "CoordSys";
            result.isOrdered &= !isConverted;
            if (tokens.size() == 11) {
                result.isWhole &= !result.system;
                result.system = tokens;
            }
        } else if (key == "FILE" || key == "UNITS" || key == "TYPE") {
            static const std::vector<std::string> kSpellings = {"File", "Units", "Type"};
            result.isWhole &=
                tokens.size() == 2 && std::find(kSpellings.begin(), kSpellings.end(),
                                                unquoted(tokens[0])) != kSpellings.end();
            const std::string value = tokens.size() == 2 ? unquoted(tokens[1]) : "";
            if (key == "TYPE") {
                result.isRaster &= value == "RASTER";
            } else {
                (key == "FILE" ? result.files : result.units).push_back(value);
            }
        }
    }
    // A key that is nearly another one is that one, if the other one stands nowhere.
    result.isWhole &= std::includes(keys.begin(), keys.end(), nearKeys.begin(), nearKeys.end());
    return result;
}

/// Whether the points are those of a projection that the library converts.
bool isUtm(const Tokens& system) {
    const auto is = [&](std::size_t index, std::initializer_list<double> values) {
        const auto number = numberOf(unquoted(system[index]).substr(0, 63), Tiny::IsZero);
        return number && std::find(values.begin(), values.end(), *number) != values.end();
    };
    const auto meridian = numberOf(unquoted(system[6]), Tiny::IsZero);
    return is(3, {8.0}) && unquoted(system[5]) == "m" && meridian && std::abs(*meridian) <= 177.0 &&
           std::remainder(*meridian - 3.0, 6.0) == 0.0 && is(7, {0.0}) && is(8, {0.9996}) &&
           is(9, {500000.0}) && is(10, {0.0, 1e7});
}

TEST_F(MapReadingTest, OfGeoreferences) {
    forEachFile(20250304, tabFile, [&](const std::string& text) {
        if (hasTextBehindNul(text)) {
            return false;  // it matters in some lines only
        }
        const QString name = write("map.tab", text);
        const TabCheck check = checkTab(name);
        const Georeference meant = georeferenceOf(text);
        clear();
        for (veltaGEO::ControlPoint& point : map->controlPoint) {
            point = {kBefore, kBefore};
        }
        map->rasterFileName[0] = '\0';
        const bool isLoaded = map->loadTabFile(name);
        const std::string unit = meant.units.empty() ? "" : meant.units[0];
        const auto converts = [](const std::string& word) {
            return !word.empty() && word != "degree";
        };
        const bool isConverted = converts(unit);
        const bool mayBeConverted = std::any_of(meant.units.begin(), meant.units.end(), converts);
        const bool areAllDegrees =
            std::all_of(meant.units.begin(), meant.units.end(),
                        [](const std::string& word) { return word == "degree"; });
        bool isReadWhole = isLoaded && meant.isWhole && meant.isRaster && meant.isOrdered &&
                           (meant.units.size() <= 1 || areAllDegrees) && meant.files.size() == 1 &&
                           map->rasterFileName == meant.files.front() &&
                           map->unitKind == (unit.empty()  ? 0
                                             : isConverted ? 2
                                                           : 1) &&
                           (!isConverted || (unit == "m" && meant.system && isUtm(*meant.system)));
        double meridian = 0.0;
        if (meant.system) {
            const float* const fields[] = {&map->centralMeridian, &map->originLatitude,
                                           &map->falseEasting, &map->falseNorthing};
            constexpr std::size_t kTokens[] = {6, 7, 9, 10};
            for (std::size_t i = 0; i < std::size(fields); ++i) {
                const auto number = numberOf((*meant.system)[kTokens[i]], Tiny::IsZero);
                isReadWhole = isReadWhole && number && isRead(*fields[i], *number);
                meridian = i == 0 && number ? *number : meridian;
            }
        }
        const int zone = static_cast<int>(std::clamp((meridian + 183.0) / 6.0, -1e9, 1e9));
        for (std::size_t i = 0; i < meant.points.size(); ++i) {
            if (!meant.points[i]) {
                isReadWhole = false;
                continue;
            }
            const auto& [x, y, column, row] = *meant.points[i];
            veltaGEO::ControlPoint expected = {static_cast<float>(x), static_cast<float>(y)};
            bool isSame = isRead(expected.x, x) && isRead(expected.y, y);
            if (isReadWhole && isSame && isSilent(check.findings)) {
                EXPECT_TRUE(isRead(check.points[i].x, x) && isRead(check.points[i].y, y));
                EXPECT_EQ(check.points[i].pixel, QPointF(column, row));
            }
            if (isReadWhole && isConverted) {
                map->utmToLatLng(expected.x, expected.y, zone, map->southHemisphere, &expected.y,
                                 &expected.x);
            }
            isSame = isSame && same(map->controlPoint[i].x, expected.x) &&
                     same(map->controlPoint[i].y, expected.y);
            if (!isSame && isLoaded && !mayBeConverted) {
                expectFindingAt(check.findings, meant.pointLines[i], "the point");
            }
            isReadWhole = isReadWhole && isSame;
        }
        return expectToSay(check.findings, isReadWhole);
    });
}

std::string clrFile(Samples& samples) {
    std::string text;
    // Up to as many entries as a table has, and sometimes about as many.
    const std::uint64_t entries =
        samples.below(8) == 0 ? 32 - samples.below(3) : 1 + samples.below(6);
    for (std::uint64_t line = 2 * entries; line > 0; --line) {
        text += number(samples);
        for (int component = 0; component < 3; ++component) {
            text += blank(samples) + std::to_string(samples.below(256));
        }
        text += samples.below(8) == 0 ? "\r\n" : "\n";
    }
    return text;
}

TEST_F(MapReadingTest, OfColourTables) {
    constexpr std::size_t kEntries = 32;
    forEachFile(20250305, clrFile, [&](const std::string& text) {
        const QString name = write("map.clr", text);
        const Findings findings = checkClr(name);
        const Content content = contentOf(text, {});
        std::fill_n(map->lowValue, kEntries, kBefore);
        std::fill_n(map->highValue, kEntries, kBefore);
        EXPECT_TRUE(map->LoadColorTable(name));
        // A table without colours is one of a single entry, which the file does not hold.
        bool isReadWhole = content.isWhole && content.rows.size() > 1 &&
                           content.rows.size() == 2 * static_cast<std::size_t>(map->colorCount);
        bool isInRun = false;  // of colours that are not read
        for (std::size_t i = 0; i < content.rows.size(); ++i) {
            const Content::Row& row = content.rows[i];
            const std::size_t entry = i / 2;
            bool isRead = row.cells.size() == 4 && static_cast<int>(entry) < map->colorCount;
            if (isRead) {
                const bool isLow = i % 2 == 0;
                isRead =
                    test::isRead((isLow ? map->lowValue : map->highValue)[entry], row.cells[0]);
                const std::int32_t* const components[] = {isLow ? map->lowRed : map->highRed,
                                                          isLow ? map->lowGreen : map->highGreen,
                                                          isLow ? map->lowBlue : map->highBlue};
                for (std::size_t k = 0; k < std::size(components); ++k) {
                    isRead = isRead && components[k][entry] == row.cells[k + 1];
                }
            }
            isReadWhole = isReadWhole && isRead;
            const bool isElsewhere = row.cells.size() == 4 && isColour(row.cells);
            const bool isLost = !isRead && !isElsewhere && map->colorCount > 1;
            if (isLost && !isInRun) {
                // Where the table is cut, one finding is about all lines behind.
                constexpr auto kCut = static_cast<long long>(2 * kEntries) + 1;
                expectFindingWithin(findings, std::min(row.line, kCut), row.line, "the colour");
            }
            isInRun = isLost;
        }
        return expectToSay(findings, isReadWhole);
    });
}

}  // namespace
}  // namespace rfu::test

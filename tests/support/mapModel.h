// The rules of the map's text files, restated without regard to speed. The loaders are compared with
// these models by random files and by the fuzz targets.
#pragma once

#include "cText.h"

#include <rfUtils/geo/veltaGEO.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace rfu::test {

/// The first cells of some rows, by row.
using MapRows = std::map<int, std::vector<float>>;

/// The lines of a file, each cut to `limit` characters and at its first NUL. Only '\n' ends a line;
/// one at the very end of the file begins no further line.
inline std::vector<std::string> linesOf(std::string_view file, std::size_t limit) {
    std::vector<std::string> lines;
    while (!file.empty()) {
        const std::size_t end = std::min(file.find('\n'), file.size());
        const std::string_view line = file.substr(0, std::min(end, limit));
        lines.emplace_back(line.substr(0, line.find('\0')));
        file.remove_prefix(std::min(end + 1, file.size()));
    }
    return lines;
}

inline bool isTokenCharacter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' ||
           c == '-' || c == '.' || c == '_';
}

/// All tokens of a line, each cut to 63 characters.
inline std::vector<std::string> tokensOf(std::string_view line) {
    std::vector<std::string> tokens;
    std::string token;
    const auto finish = [&] {
        if (!token.empty()) {
            tokens.push_back(token.substr(0, 63));
            token.clear();
        }
    };
    bool inQuotes = false;
    for (const char c : line) {
        if (c == '"') {
            inQuotes = !inQuotes;
        } else if (inQuotes || isTokenCharacter(c)) {
            token += c;
        } else {
            finish();
        }
    }
    finish();
    return tokens;
}

inline float singleOf(const std::string& text) {
    return static_cast<float>(decimalOf(text));
}

/// Keys of a header: columns, rows, x and y of the origin, cell size, no-data value.
using HeaderKeys = const char* [6];

/// Stores the value of a header line; false where the grid cannot hold the size.
inline bool storeHeader(veltaGEO& map, const HeaderKeys& keys, const std::string& key,
                        const std::string& value) {
    float* const numbers[] = {&map.originX, &map.originY, &map.cellSize, &map.noData};
    for (std::size_t i = 0; i < std::size(numbers); ++i) {
        if (key == keys[i + 2]) {
            *numbers[i] = singleOf(value);
        }
    }
    if (key == keys[0] && (map.nCols = integerOf(value)) > 2048) {
        map.errMsg = QStringLiteral("Too many columns in the file. Unable to open");
        return false;
    }
    if (key == keys[1] && (map.nRows = integerOf(value)) > 2048) {
        map.errMsg = QStringLiteral("Too many rows in the file. Unable to open");
        return false;
    }
    return true;
}

inline void storeDefaultColors(veltaGEO& map) {
    map.colorCount = 1;
    map.lowValue[0] = -9999.0F;
    map.highValue[0] = 9999.0F;
    map.lowRed[0] = map.lowGreen[0] = map.lowBlue[0] = 0;
}

/// The fields after a whole raster without a colour table beside it.
inline void storeLoaded(veltaGEO& map) {
    map.isLoaded = 1;
    map.isValid = 1;
    storeDefaultColors(map);
    map.errMsg = QStringLiteral("Raster file loaded");
}

/// loadASCFile() on a file: the fields that it leaves in `map`, and the cells that it writes.
inline bool ascModel(std::string_view file, veltaGEO& map, MapRows& rows) {
    static constexpr HeaderKeys kKeys = {"ncols",     "nrows",    "xllcorner",
                                         "yllcorner", "cellsize", "NODATA_value"};
    map.isLoaded = 0;
    int row = 0;  // of the next line, if it is one of cells
    for (const std::string& line : linesOf(file, 1023999)) {
        const std::vector<std::string> tokens = tokensOf(line);
        const int rowOfLine = row++;
        if (tokens.size() == 2) {
            if (!storeHeader(map, kKeys, tokens[0], tokens[1])) {
                return false;
            }
            if (tokens[0] == "NODATA_value") {
                row = 0;
            }
        } else if (tokens.size() > 2 && rowOfLine < 2048 && map.nCols > 0) {
            // A second header may place a row again: the cells behind it stay.
            const auto columns = static_cast<std::size_t>(map.nCols);
            std::vector<float>& cells = rows[rowOfLine];
            cells.resize(std::max(cells.size(), columns));
            for (std::size_t column = 0; column < columns; ++column) {
                cells[column] = column < tokens.size() ? singleOf(tokens[column]) : 0.0F;
            }
        }
    }
    storeLoaded(map);
    return true;
}

/// loadHDRFile() on a file.
inline bool hdrModel(std::string_view file, veltaGEO& map, MapRows&) {
    static constexpr HeaderKeys kKeys = {"NCOLS", "NROWS", "ULXMAP", "ULYMAP", "XDIM", "NODATA"};
    map.isLoaded = 0;
    for (const std::string& line : linesOf(file, 10239)) {
        const std::vector<std::string> tokens = tokensOf(line);
        if (tokens.size() != 2) {
            continue;
        }
        if (!storeHeader(map, kKeys, tokens[0], tokens[1])) {
            return false;
        }
        if (tokens[0] == "PIXELTYPE") {
            map.isFloat = tokens[1] == "FLOAT" ? 1 : 0;
        }
    }
    return true;
}

/// LoadColorTable() on a file.
inline bool clrModel(std::string_view file, veltaGEO& map, MapRows&) {
    storeDefaultColors(map);
    const std::vector<std::string> lines = linesOf(file, 1023);
    const std::size_t count = std::min<std::size_t>(lines.size(), 64);
    for (std::size_t i = 0; i < count; ++i) {
        const std::vector<std::string> tokens = tokensOf(lines[i]);
        const std::size_t entry = i / 2;
        if (tokens.size() != 4) {
            continue;
        }
        if (i % 2 == 0) {
            map.lowValue[entry] = singleOf(tokens[0]);
            map.lowRed[entry] = integerOf(tokens[1]);
            map.lowGreen[entry] = integerOf(tokens[2]);
            map.lowBlue[entry] = integerOf(tokens[3]);
        } else {
            map.highValue[entry] = singleOf(tokens[0]);
            map.highRed[entry] = integerOf(tokens[1]);
            map.highGreen[entry] = integerOf(tokens[2]);
            map.highBlue[entry] = integerOf(tokens[3]);
        }
    }
    if (count < 2) {
        storeDefaultColors(map);
    } else {
        map.colorCount = static_cast<std::int32_t>(count / 2);
    }
    return true;
}

inline void storeUnits(veltaGEO& map, const std::string& unit) {
    if (unit == "degree") {
        map.unitKind = 1;
        return;
    }
    map.unitKind = 2;
    map.utmZone = map.LatLngToUTMZone(map.originLatitude, map.centralMeridian);
    map.southHemisphere = map.falseNorthing == 0.0F ? 0 : 1;
    for (veltaGEO::ControlPoint& point : map.controlPoint) {
        float latitude = 0.0F;
        float longitude = 0.0F;
        map.utmToLatLng(point.x, point.y, map.utmZone, map.southHemisphere, &latitude, &longitude);
        point = {longitude, latitude};
    }
}

/// loadTabFile() on a file.
inline bool tabModel(std::string_view file, veltaGEO& map, MapRows&) {
    for (const std::string& line : linesOf(file, 1023999)) {
        if (!line.empty() && line[0] == '!') {
            continue;
        }
        const std::vector<std::string> tokens = tokensOf(line);
        if (tokens.size() == 6 && tokens[5].size() == 4 && tokens[5].substr(0, 3) == "Pt " &&
            tokens[5][3] >= '1' && tokens[5][3] <= '4') {
            map.controlPoint[tokens[5][3] - '1'] = {singleOf(tokens[0]), singleOf(tokens[1])};
        } else if (tokens.size() == 11 && tokens[0] == "CoordSys") {
            map.centralMeridian = singleOf(tokens[6]);
            map.originLatitude = singleOf(tokens[7]);
            map.falseEasting = singleOf(tokens[9]);
            map.falseNorthing = singleOf(tokens[10]);
        } else if (tokens.size() == 2 && tokens[0] == "File") {
            std::memset(map.rasterFileName, 0, sizeof map.rasterFileName);
            std::strcpy(map.rasterFileName, tokens[1].c_str());
            map.fileKind = map.GetFileNameExt(map.rasterFileName);
        } else if (tokens.size() == 2 && tokens[0] == "Type" && tokens[1] != "RASTER") {
            map.errMsg = QStringLiteral("File not supported");
            return false;
        } else if (tokens.size() == 2 && tokens[0] == "Units") {
            storeUnits(map, tokens[1]);
        }
    }
    return true;
}

constexpr std::size_t kMapFieldBytes =
    offsetof(veltaGEO, grid);  // all fields but cells and message

/// Gives every field but the cells a value that no loader leaves: a zero written in error would not
/// show among zeros. Sizes are 0.
inline void resetFields(veltaGEO& map) {
    std::memset(static_cast<void*>(&map), 0x5A, kMapFieldBytes);
    map.nCols = 0;
    map.nRows = 0;
    map.errMsg = QStringLiteral("untouched");
}

/// Whether all fields but the cells are the same to the bit.
inline bool sameFields(const veltaGEO& a, const veltaGEO& b) {
    return std::memcmp(static_cast<const void*>(&a), static_cast<const void*>(&b),
                       kMapFieldBytes) == 0 &&
           a.errMsg == b.errMsg;
}

}  // namespace rfu::test

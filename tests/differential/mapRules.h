// The rules of the map's text files: lines, tokens, and what each line is.
#pragma once

#include "cText.h"

#include <map>
#include <string>
#include <vector>

namespace rfu::test {

/// The lines of a file: each ends at '\n', is cut at the limit, and its text ends at a NUL.
inline std::vector<std::string> linesOf(const std::string& bytes, std::size_t limit) {
    std::vector<std::string> lines;
    std::string line;
    for (const char c : bytes) {
        if (c == '\n') {
            lines.push_back(line);
            line.clear();
        } else {
            line += c;
        }
    }
    if (!line.empty()) {
        lines.push_back(line);
    }
    for (std::string& text : lines) {
        text = text.substr(0, limit);
        text = text.substr(0, text.find('\0'));
    }
    return lines;
}

inline bool isTokenCharacter(char c) {
    if ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) {
        return true;
    }
    return c == '+' || c == '-' || c == '.' || c == '_';
}

/// All tokens of a line, each cut to 63 characters.
inline std::vector<std::string> tokensOf(const std::string& line) {
    std::vector<std::string> tokens;
    std::string token;
    bool quoted = false;
    for (const char c : line) {
        if (c == '"') {
            quoted = !quoted;
        } else if (quoted || isTokenCharacter(c)) {
            token += c;
        } else if (!token.empty()) {
            tokens.push_back(token.substr(0, 63));
            token.clear();
        }
    }
    if (!token.empty()) {
        tokens.push_back(token.substr(0, 63));
    }
    return tokens;
}

inline float singleOf(const std::string& text) {
    return static_cast<float>(decimalOf(text));
}

/// What a grid's text file leaves in the map that read it.
struct GridText {
    bool done = true;
    std::string message;
    std::int32_t isLoaded = 0;
    std::int32_t isFloat = 0;
    std::int32_t nCols = 0;
    std::int32_t nRows = 0;
    float originX = 0.0F;
    float originY = 0.0F;
    float cellSize = 0.0F;
    float noData = 0.0F;
    std::map<long, std::vector<float>> rows;

    void refuse(const std::string& why) {
        done = false;
        message = why;
    }
};

inline GridText ascText(const std::string& bytes) {
    GridText grid;
    long lineNumber = 0;
    long headerEnd = 0;
    for (const std::string& line : linesOf(bytes, 1023999)) {
        const std::vector<std::string> tokens = tokensOf(line);
        if (tokens.size() == 2) {
            if (tokens[0] == "ncols") {
                grid.nCols = integerOf(tokens[1]);
                if (grid.nCols > 2048) {
                    grid.refuse("Too many columns in the file. Unable to open");
                    return grid;
                }
            } else if (tokens[0] == "nrows") {
                grid.nRows = integerOf(tokens[1]);
                if (grid.nRows > 2048) {
                    grid.refuse("Too many rows in the file. Unable to open");
                    return grid;
                }
            } else if (tokens[0] == "xllcorner") {
                grid.originX = singleOf(tokens[1]);
            } else if (tokens[0] == "yllcorner") {
                grid.originY = singleOf(tokens[1]);
            } else if (tokens[0] == "cellsize") {
                grid.cellSize = singleOf(tokens[1]);
            } else if (tokens[0] == "NODATA_value") {
                grid.noData = singleOf(tokens[1]);
                headerEnd = lineNumber + 1;
            }
        } else if (tokens.size() > 2 && lineNumber - headerEnd < 2048) {
            std::vector<float>& row = grid.rows[lineNumber - headerEnd];
            for (std::size_t column = 0; static_cast<int>(column) < grid.nCols; ++column) {
                row.resize(std::max(row.size(), column + 1));
                row[column] = column < tokens.size() ? singleOf(tokens[column]) : 0.0F;
            }
        }
        ++lineNumber;
    }
    grid.isLoaded = 1;
    grid.message = "Raster file loaded";
    return grid;
}

inline GridText hdrText(const std::string& bytes) {
    GridText grid;
    for (const std::string& line : linesOf(bytes, 10239)) {
        const std::vector<std::string> tokens = tokensOf(line);
        if (tokens.size() != 2) {
            continue;
        }
        if (tokens[0] == "NCOLS") {
            grid.nCols = integerOf(tokens[1]);
            if (grid.nCols > 2048) {
                grid.refuse("Too many columns in the file. Unable to open");
                return grid;
            }
        } else if (tokens[0] == "NROWS") {
            grid.nRows = integerOf(tokens[1]);
            if (grid.nRows > 2048) {
                grid.refuse("Too many rows in the file. Unable to open");
                return grid;
            }
        } else if (tokens[0] == "ULXMAP") {
            grid.originX = singleOf(tokens[1]);
        } else if (tokens[0] == "ULYMAP") {
            grid.originY = singleOf(tokens[1]);
        } else if (tokens[0] == "XDIM") {
            grid.cellSize = singleOf(tokens[1]);
        } else if (tokens[0] == "NODATA") {
            grid.noData = singleOf(tokens[1]);
        } else if (tokens[0] == "PIXELTYPE") {
            grid.isFloat = tokens[1] == "FLOAT" ? 1 : 0;
        }
    }
    return grid;
}

struct ColourEnd {
    float value = 0.0F;
    std::int32_t red = 0;
    std::int32_t green = 0;
    std::int32_t blue = 0;
};

struct ColourText {
    std::int32_t count = 1;
    ColourEnd low[32];
    ColourEnd high[32];

    void installDefault() {
        count = 1;
        low[0] = {-9999.0F, 0, 0, 0};
        high[0].value = 9999.0F;
    }
};

inline ColourText clrText(const std::string& bytes) {
    ColourText table;
    table.installDefault();
    int n = 0;
    for (const std::string& line : linesOf(bytes, 1023)) {
        const std::vector<std::string> tokens = tokensOf(line);
        if (tokens.size() == 4 && n < 64) {
            const ColourEnd end{singleOf(tokens[0]), integerOf(tokens[1]), integerOf(tokens[2]),
                                integerOf(tokens[3])};
            if (n % 2 == 0) {
                table.low[n / 2] = end;
            } else {
                table.high[n / 2] = end;
            }
        }
        ++n;
    }
    table.count = std::min(n / 2, 32);
    if (table.count == 0) {
        table.installDefault();
    }
    return table;
}

}  // namespace rfu::test

// Private to the library: not installed, may change in any release.
#pragma once

#include "tokenizer.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace rfu::detail {

/// A line of a TAB file.
struct TabLine {
    enum class Kind {
        Ignored,
        Type,      // tokens: key, type
        File,      // key, raster file
        Units,     // key, unit
        CoordSys,  // key, five ignored ones, central meridian, origin latitude, scale, false
                   // easting, false northing
        Point      // x, y, column, row, "Label", "Pt n"
    };
    static constexpr std::size_t kMaxTokens = 11;  // of the longest kind

    Kind kind = Kind::Ignored;
    std::size_t point = 0;  // index of the control point
    std::array<std::string_view, kMaxTokens + 1> tokens;
};

/// Splits a NUL-terminated line, compacting quoted tokens in place. Comments have no tokens.
inline TabLine tabLine(char* line) noexcept {
    // clang-format off
    constexpr struct {
        std::size_t tokens;
        std::size_t keyToken;
        std::string_view key;
        TabLine::Kind kind;
        std::size_t point;
    } kKinds[] = {
        {2,  0, "Type",     TabLine::Kind::Type,     0},
        {2,  0, "File",     TabLine::Kind::File,     0},
        {2,  0, "Units",    TabLine::Kind::Units,    0},
        {11, 0, "CoordSys", TabLine::Kind::CoordSys, 0},
        {6,  5, "Pt 1",     TabLine::Kind::Point,    0},
        {6,  5, "Pt 2",     TabLine::Kind::Point,    1},
        {6,  5, "Pt 3",     TabLine::Kind::Point,    2},
        {6,  5, "Pt 4",     TabLine::Kind::Point,    3}};
    // clang-format on
    TabLine result;
    if (line[0] == '!') {
        return result;
    }
    const std::size_t count = Tokenizer(line).take(result.tokens);
    for (const auto& row : kKinds) {
        if (count == row.tokens && result.tokens[row.keyToken] == row.key) {
            result.kind = row.kind;
            result.point = row.point;
        }
    }
    return result;
}

}  // namespace rfu::detail

// Raster files of any size.
#pragma once

#include "support/random.h"
#include "support/scratchFolder.h"

#include <cstdio>
#include <string>
#include <vector>

namespace rfu::bench {

/// Spelling and range of a grid's cells.
struct CellStyle {
    const char* name;
    const char* format;
    double low;
    double high;
};

inline constexpr CellStyle kTwoDecimals = {"two_decimals", "%.2f", -120.0, 4200.0};

/// An ASCII grid.
inline std::string gridText(int side, const CellStyle& style = kTwoDecimals) {
    Random random(20240919);
    const std::string size = std::to_string(side);
    std::string text = "ncols " + size + "\nnrows " + size +
                       "\nxllcorner 300000\nyllcorner 5000000\ncellsize 30\nNODATA_value -9999\n";
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            char number[32];
            const int length = std::snprintf(number, sizeof number, style.format,
                                             random.between(style.low, style.high));
            text.append(number, static_cast<std::size_t>(length));
            text += column + 1 < side ? ' ' : '\n';
        }
    }
    return text;
}

/// Writes a band of floats and its header.
/// @return path of the band
inline std::string writeBand(int side) {
    const std::string size = std::to_string(side);
    const std::string name = "band" + size;
    writeScratch(name + ".hdr", "NROWS " + size + "\nNCOLS " + size +
                                    "\nNBANDS 1\nNBITS 32\nPIXELTYPE FLOAT\nBYTEORDER I\n"
                                    "LAYOUT BIL\nULXMAP 300000\nULYMAP 5000000\nXDIM 30\nYDIM 30\n"
                                    "NODATA -9999\n");
    Random random(20240920);
    std::vector<float> cells(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
    for (float& cell : cells) {
        cell = static_cast<float>(random.between(-120.0, 4200.0));
    }
    return writeScratch(
        name + ".bil", {reinterpret_cast<const char*>(cells.data()), cells.size() * sizeof(float)});
}

}  // namespace rfu::bench

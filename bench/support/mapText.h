// Raster files of any size.
#pragma once

#include "support/random.h"

#include <cstdio>
#include <cstring>
#include <string>

namespace rfu::bench {

/// An ASCII grid of heights with two decimals.
inline std::string gridText(int side) {
    Random random(11);
    const std::string number = std::to_string(side);
    std::string text = "ncols " + number + "\nnrows " + number +
                       "\nxllcorner 0\nyllcorner 0\ncellsize 30\nNODATA_value -9999\n";
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            char cell[32];
            std::snprintf(cell, sizeof cell, column == 0 ? "%.2f" : " %.2f",
                          random.between(-100.0, 3000.0));
            text += cell;
        }
        text += '\n';
    }
    return text;
}

/// A band of floats.
inline std::string bandBytes(int side) {
    Random random(12);
    std::string bytes;
    for (int i = 0; i < side * side; ++i) {
        const auto cell = static_cast<float>(random.between(-100.0, 3000.0));
        char raw[sizeof cell];
        std::memcpy(raw, &cell, sizeof cell);
        bytes.append(raw, sizeof cell);
    }
    return bytes;
}

inline std::string bandHeader(int side) {
    const std::string number = std::to_string(side);
    return "NCOLS " + number + "\nNROWS " + number +
           "\nXDIM 30\nULXMAP 0\nULYMAP 0\nNODATA -9999\nPIXELTYPE FLOAT\n";
}

}  // namespace rfu::bench

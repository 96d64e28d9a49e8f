#pragma once

#include <QColor>
#include <vector>

#include "analysis/maps/rasterFile.h"

namespace rfu {

/// A range of values with the colours at its ends. The second value may be the smaller one.
struct ColorRange {
    struct Color {
        double red;
        double green;
        double blue;
    };

    double low;
    double high;
    Color lowColor;
    Color highColor;

    bool holds(double value) const;
    /// The distance from a value to the nearer end.
    double distance(double value) const;
    /// The colour of a value: linear between the ends, beyond them that of the nearer end.
    QRgb color(double value) const;
};

/// The entries of a raster's colour table. If there is only the default table: a ramp from black at the
/// smallest measured value to white at the largest, or nothing if no cell was measured.
std::vector<ColorRange> colorRangesOf(const Raster& raster);

/// The first range that holds a value; without one the range with the nearest end.
/// @param ranges at least one
const ColorRange& colorRangeOf(const std::vector<ColorRange>& ranges, double value);

}  // namespace rfu

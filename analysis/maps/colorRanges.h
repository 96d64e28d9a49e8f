#pragma once

#include <QColor>
#include <vector>

#include "analysis/maps/rasterFile.h"

namespace rfu {

/// The colours of the values from one to another, which may be the smaller one.
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
    /// From a value to the nearer end.
    double distance(double value) const;
    /// Linear between the ends, beyond them that of the nearer one.
    QRgb color(double value) const;
};

/// The entries of a raster's colour table. Where only the default table is there, a ramp from black
/// at the smallest measured value to white at the largest; none where nothing was measured.
std::vector<ColorRange> colorRangesOf(const Raster& raster);

}  // namespace rfu

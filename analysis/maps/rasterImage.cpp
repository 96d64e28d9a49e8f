#include "analysis/maps/rasterImage.h"

#include <vector>

#include "analysis/maps/colorRanges.h"

namespace rfu {

QImage draw(const Raster& raster) {
    const std::vector<ColorRange> ranges = colorRangesOf(raster);
    QImage image(raster.map->nCols, raster.map->nRows, QImage::Format_ARGB32);
    for (int row = 0; row < image.height(); ++row) {
        auto* const pixels = reinterpret_cast<QRgb*>(image.scanLine(row));
        for (int column = 0; column < image.width(); ++column) {
            const float value = raster.cell(column, row);
            pixels[column] = raster.isMeasured(value)
                                 ? colorRangeOf(ranges, static_cast<double>(value))
                                       .color(static_cast<double>(value))
                                 : qRgba(0, 0, 0, 0);
        }
    }
    return image;
}

}  // namespace rfu

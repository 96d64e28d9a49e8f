#include "analysis/maps/rasterImage.h"

#include <algorithm>
#include <vector>

#include "analysis/maps/colorRanges.h"

namespace rfu {

namespace {

const ColorRange& colorRangeOf(const std::vector<ColorRange>& ranges, double value) {
    const auto holding =
        std::find_if(ranges.begin(), ranges.end(),
                     [value](const ColorRange& range) { return range.holds(value); });
    if (holding != ranges.end()) {
        return *holding;
    }
    return *std::min_element(ranges.begin(), ranges.end(),
                             [value](const ColorRange& a, const ColorRange& b) {
                                 return a.distance(value) < b.distance(value);
                             });
}

}  // namespace

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

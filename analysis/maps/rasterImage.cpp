#include "analysis/maps/rasterImage.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace rfu {

namespace {

struct Color {
    double red;
    double green;
    double blue;
};

double component(int written) {
    return std::clamp(written, 0, 255);
}

/// The colours between two cell values.
struct Range {
    double low;
    double high;
    Color lowColor;
    Color highColor;

    bool holds(double value) const {
        return value >= std::min(low, high) && value <= std::max(low, high);
    }

    double distance(double value) const {
        return std::min(std::abs(value - low), std::abs(value - high));
    }

    QRgb color(double value) const {
        const double part = (value - low) / (high - low);
        // A range of one value has no inside; values beyond it take its ends.
        const double used = std::isnan(part) ? 0.0 : std::clamp(part, 0.0, 1.0);
        const auto between = [used](double from, double to) {
            return static_cast<int>(std::lround(from + (to - from) * used));
        };
        return qRgb(between(lowColor.red, highColor.red), between(lowColor.green, highColor.green),
                    between(lowColor.blue, highColor.blue));
    }
};

bool isDefaultTable(const veltaGEO& map) {
    return map.colorCount == 1 && map.lowValue[0] == -9999.0F && map.highValue[0] == 9999.0F &&
           map.lowRed[0] == 0 && map.lowGreen[0] == 0 && map.lowBlue[0] == 0 &&
           map.highRed[0] == 0 && map.highGreen[0] == 0 && map.highBlue[0] == 0;
}

std::vector<Range> rangesOf(const Raster& raster) {
    const veltaGEO& map = *raster.map;
    std::vector<Range> ranges;
    if (isDefaultTable(map)) {
        const RasterStatistics statistics = statisticsOf(raster);
        ranges.push_back({static_cast<double>(statistics.smallest.value_or(0.0F)),
                          static_cast<double>(statistics.largest.value_or(0.0F)),
                          {0.0, 0.0, 0.0},
                          {255.0, 255.0, 255.0}});
        return ranges;
    }
    for (int i = 0; i < map.colorCount; ++i) {
        ranges.push_back(
            {static_cast<double>(map.lowValue[i]),
             static_cast<double>(map.highValue[i]),
             {component(map.lowRed[i]), component(map.lowGreen[i]), component(map.lowBlue[i])},
             {component(map.highRed[i]), component(map.highGreen[i]), component(map.highBlue[i])}});
    }
    return ranges;
}

const Range& rangeOf(const std::vector<Range>& ranges, double value) {
    const auto holding = std::find_if(ranges.begin(), ranges.end(),
                                      [value](const Range& range) { return range.holds(value); });
    if (holding != ranges.end()) {
        return *holding;
    }
    return *std::min_element(ranges.begin(), ranges.end(), [value](const Range& a, const Range& b) {
        return a.distance(value) < b.distance(value);
    });
}

}  // namespace

QImage draw(const Raster& raster) {
    const std::vector<Range> ranges = rangesOf(raster);
    QImage image(raster.map->nCols, raster.map->nRows, QImage::Format_ARGB32);
    for (int row = 0; row < image.height(); ++row) {
        auto* const pixels = reinterpret_cast<QRgb*>(image.scanLine(row));
        for (int column = 0; column < image.width(); ++column) {
            const float value = raster.cell(column, row);
            pixels[column] =
                raster.isMeasured(value)
                    ? rangeOf(ranges, static_cast<double>(value)).color(static_cast<double>(value))
                    : qRgba(0, 0, 0, 0);
        }
    }
    return image;
}

}  // namespace rfu

#include "analysis/maps/colorRanges.h"

#include <algorithm>
#include <cmath>

namespace rfu {

namespace {

double component(int written) {
    return std::clamp(written, 0, 255);
}

bool isDefaultTable(const veltaGEO& map) {
    return map.colorCount == 1 && map.lowValue[0] == -9999.0F && map.highValue[0] == 9999.0F &&
           map.lowRed[0] == 0 && map.lowGreen[0] == 0 && map.lowBlue[0] == 0 &&
           map.highRed[0] == 0 && map.highGreen[0] == 0 && map.highBlue[0] == 0;
}

}  // namespace

bool ColorRange::holds(double value) const {
    return value >= std::min(low, high) && value <= std::max(low, high);
}

double ColorRange::distance(double value) const {
    return std::min(std::abs(value - low), std::abs(value - high));
}

QRgb ColorRange::color(double value) const {
    const double part = (value - low) / (high - low);
    // A range of a single value: smaller values have the colour of one end, larger ones that of the other.
    const double used = std::isnan(part) ? 0.0 : std::clamp(part, 0.0, 1.0);
    const auto between = [used](double from, double to) {
        return static_cast<int>(std::lround(from + (to - from) * used));
    };
    return qRgb(between(lowColor.red, highColor.red), between(lowColor.green, highColor.green),
                between(lowColor.blue, highColor.blue));
}

std::vector<ColorRange> colorRangesOf(const Raster& raster) {
    const veltaGEO& map = *raster.map;
    std::vector<ColorRange> ranges;
    if (isDefaultTable(map)) {
        const RasterStatistics statistics = statisticsOf(raster);
        if (statistics.measured > 0) {
            ranges.push_back({static_cast<double>(*statistics.smallest),
                              static_cast<double>(*statistics.largest),
                              {0.0, 0.0, 0.0},
                              {255.0, 255.0, 255.0}});
        }
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

}  // namespace rfu

#include "analysis/recordings/bins.h"

#include <algorithm>

#include "analysis/support/numbers.h"

namespace rfu {

std::vector<double> binEnds(const FrequencyAxis& axis) {
    std::vector<double> ends(axis.points.size());
    std::size_t point = axis.points.size();
    for (auto band = axis.bands.rbegin(); band != axis.bands.rend(); ++band) {
        double end = band->high;
        while (point > band->firstPoint) {
            --point;
            ends[point] = end;
            end = std::min(end, axis.points[point]);
        }
    }
    return ends;
}

std::vector<std::size_t> firstPointsOf(const FrequencyAxis& axis) {
    std::vector<std::size_t> points;
    points.reserve(axis.bands.size());
    for (const FrequencyAxis::Band& band : axis.bands) {
        points.push_back(band.firstPoint);
    }
    return points;
}

std::string describe(const std::vector<FrequencyAxis::Band>& bands) {
    constexpr std::size_t kMaxBands = 8;
    std::string text;
    for (std::size_t i = 0; i < std::min(bands.size(), kMaxBands); ++i) {
        text += i == 0 ? "" : i + 1 == bands.size() ? " and " : ", ";
        text += "from " + megahertzText(bands[i].low) + " to " + megahertzText(bands[i].high);
    }
    return bands.size() <= kMaxBands
               ? text
               : text + " and " + std::to_string(bands.size() - kMaxBands) + " more bands";
}

}  // namespace rfu

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

std::vector<Bin> filledBins(const FrequencyAxis& axis) {
    const std::vector<double> ends = binEnds(axis);
    std::vector<Bin> bins;
    bins.reserve(ends.size());
    for (std::size_t i = 0; i < ends.size(); ++i) {
        if (axis.points[i] < ends[i]) {
            bins.push_back({i, axis.points[i], ends[i]});
        }
    }
    return bins;
}

std::size_t bandOf(const FrequencyAxis& axis, std::size_t point) {
    const auto next = std::upper_bound(
        axis.bands.begin(), axis.bands.end(), point,
        [](std::size_t at, const FrequencyAxis::Band& band) { return at < band.firstPoint; });
    return static_cast<std::size_t>(next - axis.bands.begin()) - 1;
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

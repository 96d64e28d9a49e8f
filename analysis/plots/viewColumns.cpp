#include "analysis/plots/viewColumns.h"

#include <algorithm>
#include <cmath>

#include "analysis/recordings/bins.h"

namespace rfu {

namespace {

constexpr double kEdgeRounding = 1e-6;  // of a column, at the border of two columns

/// A column from -1, left of the view, to its width, right of it.
int columnWithin(double column, int width) {
    return static_cast<int>(std::clamp(column, -1.0, static_cast<double>(width)));
}

}  // namespace

std::vector<ColumnPoints> columnsOfView(const FrequencyAxis& axis, std::size_t points,
                                        const ValueRange& shown, int width) {
    const std::vector<double> ends = binEnds(axis);
    const double scale = width / (shown.high - shown.low);
    std::vector<ColumnPoints> columns;
    int next = 0;            // the first column that is not decided
    std::size_t newest = 0;  // the bin that began last,
    int newestEnd = 0;       // and the column behind it
    const auto coverTo = [&](int end) {
        for (; next < std::min(end, newestEnd); ++next) {
            columns.push_back({next, newest, newest + 1});
        }
    };
    for (std::size_t i = 0; i < points; ++i) {
        const double begin = ends.empty() ? static_cast<double>(i) : axis.points[i];
        const double end = ends.empty() ? begin + 1.0 : ends[i];
        if (begin >= end) {
            continue;  // the bin of the next hop covers it
        }
        const int first =
            columnWithin(std::floor((begin - shown.low) * scale + kEdgeRounding), width);
        coverTo(first);
        if (first == width) {
            break;
        }
        if (!columns.empty() && columns.back().column == first) {
            columns.back().end = i + 1;
        } else if (first >= 0) {
            columns.push_back({first, i, i + 1});
            next = first + 1;
        }
        newest = i;
        newestEnd = columnWithin(std::ceil((end - shown.low) * scale - kEdgeRounding), width);
    }
    coverTo(width);
    return columns;
}

}  // namespace rfu

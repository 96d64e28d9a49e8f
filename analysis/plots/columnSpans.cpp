#include "analysis/plots/columnSpans.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace rfu {

namespace {

constexpr double kFarAway = 1e6;  // pixels: finite, and far enough to keep the slope of a line

/// The ranges while they grow.
class CoveredColumns {
public:
    explicit CoveredColumns(int columns)
        : ranges_(static_cast<std::size_t>(std::max(columns, 0)), ColumnRange{kNone, kNone}) {}

    void cover(int column, double top, double bottom) {
        if (column < 0 || column >= columns()) {
            return;
        }
        ColumnRange& range = ranges_[static_cast<std::size_t>(column)];
        // The new one where there is none: fmin() and fmax() take NaN for a missing number.
        range.top = std::fmin(range.top, top);
        range.bottom = std::fmax(range.bottom, bottom);
    }

    /// A line between two points, the first not to the right of the second.
    void coverLine(double x1, double y1, double x2, double y2) {
        const int first = static_cast<int>(std::floor(std::max(x1, 0.0)));
        const int last = static_cast<int>(std::floor(std::min(x2, columns() - 1.0)));
        const auto at = [&](double x) { return y1 + (y2 - y1) * (x - x1) / (x2 - x1); };
        for (int column = first; column <= last; ++column) {
            const double begin = x1 < column ? at(column) : y1;
            const double end = x2 > column + 1.0 ? at(column + 1.0) : y2;
            cover(column, std::min(begin, end), std::max(begin, end));
        }
    }

    std::vector<ColumnRange> take() { return std::move(ranges_); }

private:
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

    int columns() const { return static_cast<int>(ranges_.size()); }

    std::vector<ColumnRange> ranges_;
};

double near(double y) {
    return std::clamp(y, -kFarAway, kFarAway);
}

PixelSpan cut(double first, double end, int rows) {
    const double last = rows;
    return {static_cast<int>(std::clamp(first, 0.0, last)),
            static_cast<int>(std::clamp(end, 0.0, last))};
}

}  // namespace

std::vector<ColumnRange> columnRanges(const double* x, const double* y,
                                      const std::vector<ColumnPoints>& groups,
                                      const std::vector<std::size_t>& breaks, int columns,
                                      int stroke) {
    const std::vector<ColumnValues> values = decimate(y, groups, breaks);
    CoveredColumns covered(columns);
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const ColumnValues& column = values[i];
        if (column.measured == 0) {
            continue;
        }
        const double top = near(column.minimum);
        const double bottom = near(column.maximum);
        covered.cover(groups[i].column, top, bottom);
        if (column.isJoined) {
            // The point before is measured, so that these two are neighbours.
            const std::size_t first = groups[i].begin;
            covered.coverLine(x[first - 1], near(y[first - 1]), x[first], near(y[first]));
        } else if (column.minimum == column.maximum &&
                   (i + 1 == groups.size() || !values[i + 1].isJoined)) {
            for (int beside = -stroke; beside <= stroke; ++beside) {
                covered.cover(groups[i].column + beside, top - stroke, bottom + stroke);
            }
        }
    }
    return covered.take();
}

PixelSpan strokeOf(const ColumnRange& range, int rows, int stroke) {
    if (std::isnan(range.top)) {
        return {0, 0};
    }
    const double above = (stroke - 1) / 2.0;
    const double first = std::floor(range.top - above);
    return cut(first, std::floor(range.bottom - above) + stroke, rows);
}

PixelSpan fillBetween(const ColumnRange& upper, const ColumnRange& lower, int rows) {
    if (std::isnan(upper.top) || std::isnan(lower.bottom)) {
        return {0, 0};
    }
    return cut(std::floor(upper.top), std::floor(lower.bottom) + 1.0, rows);
}

}  // namespace rfu

#pragma once

#include <cstddef>
#include <vector>

#include "analysis/plots/decimation.h"

namespace rfu {

// What a curve covers of each pixel column of a plot, for painters without lines: each column is drawn
// as one vertical stroke. Pixels count from the top left corner, x to the right and y downwards.

/// The part of a column that a curve covers, before it is cut to the plot: top <= bottom, or NaN for both
/// where there is nothing.
struct ColumnRange {
    double top;
    double bottom;
};

/// The pixels of a column from the first to before the end; empty unless first < end.
struct PixelSpan {
    int first;
    int end;

    bool isEmpty() const { return first >= end; }
};

/// The range of each column, in time linear in the points: all points of the column, and the lines to the
/// points beside it. A point without neighbours is as wide and high as three lines.
/// @param x       of the points, ascending
/// @param y       of the points; NaN was not measured and breaks the line
/// @param groups  of the points, see groupByColumn()
/// @param breaks  indexes of points that are not joined to the one before, ascending
/// @param columns number of columns of the plot
/// @param stroke  how thick the line will be, in pixels
std::vector<ColumnRange> columnRanges(const double* x, const double* y,
                                      const std::vector<ColumnPoints>& groups,
                                      const std::vector<std::size_t>& breaks, int columns,
                                      int stroke);

/// The pixels of a line of a range.
/// @param rows   of the plot
/// @param stroke how thick the line is at least, in pixels
PixelSpan strokeOf(const ColumnRange& range, int rows, int stroke);

/// The pixels from the top of a range to the bottom of another, as between maximum and minimum.
PixelSpan fillBetween(const ColumnRange& upper, const ColumnRange& lower, int rows);

}  // namespace rfu

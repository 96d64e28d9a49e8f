#pragma once

#include <cstddef>
#include <vector>

namespace rfu {

// Decimation of series to the pixel columns of a picture, in time linear in the points. The points
// are grouped by column once; every series over the same points (maximum and minimum, or the rows
// of a waterfall) is then reduced by the same groups.

/// The points that lie in one pixel column.
struct ColumnPoints {
    int column;
    std::size_t begin;
    std::size_t end;
};

/// Groups points by column, leaving out columns without points.
/// @param places of the points in pixels, ascending and within the range of an int; the columns are
/// their integer parts
std::vector<ColumnPoints> groupByColumn(const double* places, std::size_t count);

/// The values of a series within one pixel column. Without a measured value all are NaN.
struct ColumnValues {
    double first;
    double last;
    double minimum;
    double maximum;
    std::size_t measured;  // number of finite values
    bool isJoined;  // every point between the previous measured one and the first was measured
                    // too, and no break lies there
};

/// The values of each group; a value that is not finite was not measured.
/// @param values of all points
/// @param breaks points to which no line leads from the one before, ascending
std::vector<ColumnValues> decimate(const double* values, const std::vector<ColumnPoints>& groups,
                                   const std::vector<std::size_t>& breaks = {});

}  // namespace rfu

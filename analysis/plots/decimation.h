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
    // Whether a line joins the first measured point to the one before it: between them there is neither
    // a break nor a point that was not measured.
    bool isJoined;
};

/// The values of each group; a value that is not finite was not measured.
/// @param values of all points
/// @param breaks indexes of points that are not joined to the one before, ascending
std::vector<ColumnValues> decimate(const double* values, const std::vector<ColumnPoints>& groups,
                                   const std::vector<std::size_t>& breaks = {});

}  // namespace rfu

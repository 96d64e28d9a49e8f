#include "analysis/plots/decimation.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace rfu {

std::vector<ColumnPoints> groupByColumn(const double* places, std::size_t count) {
    std::vector<ColumnPoints> groups;
    for (std::size_t i = 0; i < count; ++i) {
        const int column = static_cast<int>(std::floor(places[i]));
        if (groups.empty() || groups.back().column != column) {
            groups.push_back({column, i, i});
        }
        groups.back().end = i + 1;
    }
    return groups;
}

std::vector<ColumnValues> decimate(const double* values, const std::vector<ColumnPoints>& groups,
                                   const std::vector<std::size_t>& breaks) {
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    std::vector<ColumnValues> columns;
    columns.reserve(groups.size());
    bool isJoined = false;
    auto nextBreak = breaks.begin();
    for (const ColumnPoints& group : groups) {
        ColumnValues column = {kNone, kNone, kNone, kNone, 0, false};
        for (std::size_t i = group.begin; i < group.end; ++i) {
            while (nextBreak != breaks.end() && *nextBreak <= i) {
                isJoined = false;
                ++nextBreak;
            }
            const double value = values[i];
            if (!std::isfinite(value)) {
                isJoined = false;
                continue;
            }
            if (column.measured == 0) {
                column.isJoined = isJoined;
                column.first = column.minimum = column.maximum = value;
            }
            column.last = value;
            column.minimum = std::min(column.minimum, value);
            column.maximum = std::max(column.maximum, value);
            ++column.measured;
            isJoined = true;
        }
        columns.push_back(column);
    }
    return columns;
}

}  // namespace rfu

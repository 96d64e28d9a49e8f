#include "analysis/plots/viewColumns.h"

#include <gtest/gtest.h>

#include <string>

using rfu::ColumnPoints;
using rfu::columnsOfView;
using rfu::FrequencyAxis;

namespace {

/// Bands of bins 1 MHz wide, from these frequencies in MHz on.
FrequencyAxis axisOf(const std::vector<std::pair<double, int>>& bands) {
    FrequencyAxis axis;
    for (const auto& [low, bins] : bands) {
        axis.bands.push_back({axis.points.size(), low, low + bins});
        for (int i = 0; i < bins; ++i) {
            axis.points.push_back(low + i);
        }
    }
    return axis;
}

/// "column:first point-last point" of each.
std::string describe(const std::vector<ColumnPoints>& columns) {
    std::string text;
    for (const ColumnPoints& column : columns) {
        text += (text.empty() ? "" : " ") + std::to_string(column.column) + ":" +
                std::to_string(column.begin) + "-" + std::to_string(column.end - 1);
    }
    return text;
}

const FrequencyAxis kOneBand = axisOf({{100.0, 8}});
const FrequencyAxis kTwoBands = axisOf({{100.0, 2}, {106.0, 2}});

struct Row {
    const char* name;
    FrequencyAxis axis;
    std::size_t points;
    double low;
    double high;
    int width;
    const char* columns;
};

// Worked out on paper: point i begins at column (place - low) * width / (high - low).
const Row kRows[] = {
    {"as many points as columns", kOneBand, 8, 100, 108, 8,
     "0:0-0 1:1-1 2:2-2 3:3-3 4:4-4 5:5-5 6:6-6 7:7-7"},
    {"more points", kOneBand, 8, 100, 108, 3, "0:0-2 1:3-5 2:6-7"},
    {"fewer points", kOneBand, 8, 104, 106, 6, "0:4-4 1:4-4 2:4-4 3:5-5 4:5-5 5:5-5"},
    {"uneven", kOneBand, 8, 100, 103, 4, "0:0-0 1:1-1 2:2-2 3:2-2"},
    {"from the middle of a bin on", kOneBand, 8, 100.5, 102.5, 4, "0:0-0 1:1-1 2:1-1 3:2-2"},
    {"wider than the axis", kOneBand, 8, 96, 112, 4, "1:0-3 2:4-7"},
    {"beside the axis", kOneBand, 8, 108, 110, 4, ""},
    {"before the axis", kOneBand, 8, 90, 100, 4, ""},
    {"a gap", kTwoBands, 4, 100, 108, 8, "0:0-0 1:1-1 6:2-2 7:3-3"},
    {"a gap within a column", kTwoBands, 4, 100, 108, 2, "0:0-1 1:2-3"},
    {"within a gap", kTwoBands, 4, 103, 105, 4, ""},
    {"from band to gap", kTwoBands, 4, 101, 103, 4, "0:1-1 1:1-1"},
    {"numbers of points", {}, 6, 0, 6, 3, "0:0-1 1:2-3 2:4-5"},
    {"some numbers of points", {}, 6, 2.5, 4.5, 4, "0:2-2 1:3-3 2:3-3 3:4-4"},
    {"no points", {}, 0, 0, 1, 3, ""},
    {"no width", kOneBand, 8, 100, 108, 0, ""}};

}  // namespace

TEST(ViewColumns, HaveThePointsThatBeginInThemOrCoverThem) {
    for (const Row& row : kRows) {
        EXPECT_EQ(describe(columnsOfView(row.axis, row.points, {row.low, row.high}, row.width)),
                  row.columns)
            << row.name;
    }
}

TEST(ViewColumns, LeaveOutBinsThatTheNextHopCovers) {
    // Bins from 100, 101 and 102 MHz, then the next hop from 101.5 MHz on.
    FrequencyAxis axis;
    axis.points = {100.0, 101.0, 102.0, 101.5, 102.5};
    axis.bands = {{0, 100.0, 103.5}};
    EXPECT_EQ(describe(columnsOfView(axis, 5, {100.0, 103.5}, 7)),
              "0:0-0 1:0-0 2:1-1 3:3-3 4:3-3 5:4-4 6:4-4");
}

TEST(ViewColumns, DoNotShiftByRounding) {
    // 0.1 MHz is not a binary number: 300 bins of it, one column each.
    FrequencyAxis axis;
    for (int i = 0; i < 300; ++i) {
        axis.points.push_back(88.0 + 0.1 * i);
    }
    axis.bands = {{0, 88.0, 118.0}};
    const std::vector<ColumnPoints> columns = columnsOfView(axis, 300, {88.0, 118.0}, 300);
    ASSERT_EQ(columns.size(), 300U);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        EXPECT_EQ(columns[i].column, static_cast<int>(i));
        EXPECT_EQ(columns[i].begin, i);
        EXPECT_EQ(columns[i].end, i + 1);
    }
}

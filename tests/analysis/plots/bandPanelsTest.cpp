#include "analysis/plots/bandPanels.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>

#include "analysis/plots/style.h"

using rfu::BandPanels;
using rfu::FrequencyAxis;

namespace {

/// Bands of bins of a width, "88:108 430:440".
FrequencyAxis axisOf(const std::vector<std::pair<double, double>>& bands, double step) {
    FrequencyAxis axis;
    for (const auto& [low, high] : bands) {
        axis.bands.push_back({axis.points.size(), low, high});
        for (int i = 0; low + i * step < high - step / 2; ++i) {
            axis.points.push_back(low + i * step);
        }
    }
    return axis;
}

BandPanels panelsOf(const FrequencyAxis& axis, int left, int right) {
    return {axis, axis.points.size(), left, right};
}

std::string columnsOf(const BandPanels& panels) {
    std::string text;
    for (std::size_t i = 0; i < panels.columns().size(); ++i) {
        const rfu::ColumnPoints& column = panels.columns()[i];
        text += (text.empty() ? "" : " ") + std::to_string(column.column) + '-' +
                std::to_string(panels.endOf(i)) + ':' + std::to_string(column.begin) + '-' +
                std::to_string(column.end);
    }
    return text;
}

std::string labelsOf(const BandPanels& panels) {
    std::string text;
    for (const rfu::PlaceTick& tick : panels.ticks()) {
        text += (text.empty() ? "" : " ") + tick.label.toStdString();
    }
    return text;
}

}  // namespace

TEST(BandPanels, GiveEachPointItsColumns) {
    EXPECT_EQ(columnsOf(panelsOf(axisOf({{100, 104}}, 1.0), 10, 18)),
              "10-12:0-1 12-14:1-2 14-16:2-3 16-18:3-4")
        << "points of several columns";
    EXPECT_EQ(columnsOf(panelsOf(axisOf({{100, 108}}, 1.0), 10, 14)),
              "10-11:0-2 11-12:2-4 12-13:4-6 13-14:6-8")
        << "columns of several points";
    EXPECT_EQ(columnsOf({FrequencyAxis(), 3, 0, 9}), "0-3:0-1 3-6:1-2 6-9:2-3")
        << "without frequencies";
    FrequencyAxis overlapping = axisOf({{100, 104}}, 1.0);
    overlapping.points[2] = 100.5;
    EXPECT_EQ(columnsOf(panelsOf(overlapping, 10, 18)), "10-12:0-1 12-16:1-3 16-18:3-4")
        << "bins that overlap";
}

TEST(BandPanels, CutTheAxisBetweenBands) {
    // 214 columns: 14 of the cut, 40 to each and the other 120 as 1 to 2
    const BandPanels panels = panelsOf(axisOf({{100, 101}, {200, 202}}, 1.0), 0, 214);
    ASSERT_EQ(panels.panels().size(), 2U);
    EXPECT_EQ(panels.panels()[0].left, 0);
    EXPECT_EQ(panels.panels()[0].right, 80);
    EXPECT_EQ(panels.panels()[1].left, 94);
    EXPECT_EQ(panels.panels()[1].right, 214);
    EXPECT_EQ(columnsOf(panels), "0-80:0-1 94-154:1-2 154-214:2-3") << "nothing in the cut";
    EXPECT_DOUBLE_EQ(panels.panels()[1].x(201.0), 154.0);
}

TEST(BandPanels, ShowEachPointOfManyBands) {
    for (const int count : {10, 100, 1000}) {
        std::vector<std::pair<double, double>> bands;
        for (int i = 0; i < count; ++i) {
            bands.emplace_back(100.0 + 2 * i, 101.0 + 2 * i);
        }
        const FrequencyAxis axis = axisOf(bands, 0.5);
        const BandPanels panels = panelsOf(axis, 50, 250);
        std::size_t next = 0;
        int end = 50;
        for (std::size_t i = 0; i < panels.columns().size(); ++i) {
            const rfu::ColumnPoints& column = panels.columns()[i];
            EXPECT_EQ(column.begin, next) << count;
            EXPECT_GE(column.column, end) << count;
            EXPECT_GT(panels.endOf(i), column.column) << count;
            next = column.end;
            end = panels.endOf(i);
        }
        EXPECT_EQ(next, axis.points.size()) << count;
        EXPECT_LE(end, 250) << count;
    }
}

TEST(BandPanels, LabelEachBandWithoutTouching) {
    EXPECT_EQ(labelsOf(panelsOf(axisOf({{88, 108}}, 0.5), 0, 1000)),
              "88 90 92 94 96 98 100 102 104 106 108");
    EXPECT_EQ(labelsOf(panelsOf(axisOf({{88, 108}}, 0.5), 0, 180)), "90 95 100 105");
    EXPECT_EQ(labelsOf({FrequencyAxis(), 4, 0, 1000}), "0 1 2 3");
    // The narrow band has no round frequency.
    const BandPanels panels =
        panelsOf(axisOf({{88, 108}, {433.01, 433.04}, {1000, 1020}}, 0.01), 0, 400);
    EXPECT_EQ(labelsOf(panels), "90 95 100 433.01 1000 1010 1020");
    const QFontMetricsF metrics(rfu::fontOf(13));
    double end = -100.0;
    for (const rfu::PlaceTick& tick : panels.ticks()) {
        const double half = metrics.horizontalAdvance(tick.label) / 2;
        EXPECT_GE(tick.at - half, end + 14.0) << tick.label.toStdString();
        end = tick.at + half;
    }
}

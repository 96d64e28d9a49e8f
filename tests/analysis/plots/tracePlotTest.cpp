#include "analysis/plots/tracePlot.h"

#include <gtest/gtest.h>
#include <support/deadline.h>
#include <support/limits.h>
#include <support/samples.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using rfu::TracePlot;
using rfu::test::kNan;

namespace {

using Levels = std::vector<double>;

constexpr QRgb kMaximum = qRgb(0xc8, 0x55, 0x3d);
constexpr QRgb kAverage = qRgb(0x1f, 0x4e, 0x79);
constexpr QRgb kMinimum = qRgb(0x4f, 0x9d, 0x8f);
constexpr QRgb kMark = qRgb(0x7a, 0x3e, 0x9d);
constexpr QRgb kGrid = qRgb(0xe2, 0xe6, 0xea);

/// Points without frequencies. The first lies at column 84, the last at column 1252.
TracePlot plotOf(const Levels& maximum, const Levels& average, const Levels& minimum) {
    TracePlot plot;
    plot.levelUnit = "dBm";
    plot.placeName = "point";
    for (std::size_t i = 0; i < maximum.size(); ++i) {
        plot.places.push_back(static_cast<double>(i));
    }
    plot.end = plot.places.back();
    plot.isCounted = true;
    plot.maximum = maximum;
    plot.average = average;
    plot.minimum = minimum;
    return plot;
}

TracePlot plotOf(const Levels& levels) {
    return plotOf(levels, levels, levels);
}

/// Bins of 1 MHz from 100 to 104 MHz, at columns 84, 376, 668 and 960.
TracePlot bandOf(const Levels& levels) {
    TracePlot plot = plotOf(levels);
    plot.places = {100.0, 101.0, 102.0, 103.0};
    plot.end = 104.0;
    plot.isCounted = false;
    return plot;
}

int distance(QRgb a, QRgb b) {
    return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
           std::abs(qBlue(a) - qBlue(b));
}

/// Row inside the plot's frame where a colour stands out most in a column; -1 where it does not
/// occur. A thin line is mixed with the white around it, less than half.
int rowOf(const QImage& image, int x, QRgb color) {
    int nearest = distance(color, qRgb(255, 255, 255)) / 2;
    int row = -1;
    for (int y = 96; y < 616; ++y) {
        if (distance(image.pixel(x, y), color) < nearest) {
            nearest = distance(image.pixel(x, y), color);
            row = y;
        }
    }
    return row;
}

/// How many rows of a column from one to another have a colour.
int rowsOf(const QImage& image, int x, QRgb color, int begin, int end) {
    int rows = 0;
    for (int y = begin; y < end; ++y) {
        rows += int{distance(image.pixel(x, y), color) < 150};
    }
    return rows;
}

bool isMarked(const QImage& image, int x) {
    return rowsOf(image, x, kMark, 400, 616) > 100;
}

bool isShaded(const QImage& image, int x, int y) {
    return distance(image.pixel(x, y), qRgb(232, 237, 242)) < 10;
}

bool isDot(const QImage& image, int x, int y, QRgb color) {
    return distance(image.pixel(x - 2, y), color) < 60 &&
           distance(image.pixel(x + 1, y), color) < 60 &&
           distance(image.pixel(x, y - 2), color) < 60 &&
           distance(image.pixel(x, y + 1), color) < 60;
}

/// Columns with a line of the grid, looked for in a row between two level lines.
std::vector<int> gridColumns(const QImage& image, int y) {
    std::vector<int> columns;
    for (int x = 86; x < 1250; ++x) {
        if (distance(image.pixel(x, y), kGrid) < 15) {
            columns.push_back(x);
        }
    }
    return columns;
}

}  // namespace

TEST(TracePlot, DrawsMaximumAverageAndMinimum) {
    const QImage image = draw(plotOf({-2, -2}, {-22, -22}, {-42, -42}));
    ASSERT_EQ(image.size(), QSize(1280, 680));
    // 0 dBm lies at row 74, -45 dBm at row 618
    EXPECT_NEAR(rowOf(image, 700, kMaximum), 98.2, 1.0);
    EXPECT_NEAR(rowOf(image, 700, kAverage), 340.0, 1.0);
    EXPECT_NEAR(rowOf(image, 700, kMinimum), 581.7, 1.0);
}

TEST(TracePlot, BreaksLinesAtGaps) {
    const QImage image = draw(plotOf({-10, -10, -10, kNan, -10}));
    EXPECT_GT(rowOf(image, 500, kAverage), 0);
    EXPECT_EQ(rowOf(image, 960, kAverage), -1) << "nothing was measured there";
    EXPECT_EQ(rowOf(image, 1100, kAverage), -1) << "no line leads out of a gap";
    const QImage early = draw(plotOf({-10, kNan, -10, -10, -10}));
    EXPECT_GT(rowOf(early, 700, kAverage), 0) << "the first line behind a gap";
}

TEST(TracePlot, BreaksLinesAndShadingBetweenBands) {
    TracePlot plot = plotOf({-2, -2, -2, -2}, {-22, -22, -22, -22}, {-42, -42, -42, -42});
    plot.breaks = {2};
    const QImage image = draw(plot);  // points at columns 84, 473, 863 and 1252
    for (const int x : {300, 1000}) {
        EXPECT_TRUE(isShaded(image, x, 200)) << x;
        EXPECT_GT(rowOf(image, x, kAverage), 0) << x;
    }
    EXPECT_FALSE(isShaded(image, 600, 200));
    EXPECT_EQ(rowOf(image, 600, kAverage), -1);
    EXPECT_EQ(rowOf(image, 600, kMaximum), -1);
}

TEST(TracePlot, DrawsPointsWithoutNeighboursAsDots) {
    // Levels reach from -2 to -42: 0 dBm lies at row 74, -45 dBm at row 618.
    const QImage image = draw(plotOf({kNan, -2, kNan, -22, -22}, {kNan, -22, kNan, -22, -22},
                                     {kNan, -42, kNan, -22, -22}));
    EXPECT_TRUE(isDot(image, 376, 98, kMaximum));
    EXPECT_TRUE(isDot(image, 376, 340, kAverage));
    EXPECT_TRUE(isDot(image, 376, 582, kMinimum));
    const QImage one = draw(plotOf({-2}, {-22}, {-42}));
    EXPECT_TRUE(isDot(one, 668, 98, kMaximum));
    EXPECT_TRUE(isDot(one, 668, 340, kAverage));
    EXPECT_TRUE(isDot(one, 668, 582, kMinimum));
}

TEST(TracePlot, ShowsTheExtremesOfCrowdedColumns) {
    Levels levels(100001, -50.0);
    levels[25000] = -11.0;  // column 376; -10 dBm lies at row 74, -90 dBm at row 618
    levels[50000] = -89.0;  // column 668
    const QImage image = draw(plotOf(levels));
    EXPECT_NEAR(rowOf(image, 500, kAverage), 346, 1);
    EXPECT_EQ(rowsOf(image, 376, kAverage, 90, 340), 250);
    EXPECT_EQ(rowsOf(image, 376, kAverage, 352, 610), 0);
    EXPECT_EQ(rowsOf(image, 668, kAverage, 352, 605), 253);
    EXPECT_EQ(rowsOf(image, 668, kAverage, 90, 340), 0);
}

TEST(TracePlot, JoinsCrowdedColumns) {
    Levels levels(100001, -20.0);
    std::fill(levels.begin() + 12500, levels.end(), -80.0);  // from column 230 on
    const QImage image = draw(plotOf(levels));
    EXPECT_GT(rowsOf(image, 229, kAverage, 80, 612) + rowsOf(image, 230, kAverage, 80, 612), 400);
}

TEST(TracePlot, ShadesFromMaximumToMinimum) {
    for (const std::size_t count : {101U, 100001U}) {
        Levels maximum(count, -20.0);
        std::fill(maximum.begin() + count / 2, maximum.begin() + count * 3 / 4, kNan);
        Levels minimum(maximum);
        for (double& level : minimum) {
            level -= 60.0;
        }
        // -20 dBm lies at row 74, -80 dBm at row 618
        const QImage image = draw(plotOf(maximum, minimum, minimum));
        EXPECT_TRUE(isShaded(image, 300, 85) && isShaded(image, 300, 400) &&
                    isShaded(image, 300, 610))
            << count;
        EXPECT_FALSE(isShaded(image, 800, 400)) << count;
        EXPECT_TRUE(isShaded(image, 1100, 400)) << count;
    }
}

TEST(TracePlot, BreaksLinesOfCrowdedColumnsAtGaps) {
    Levels levels(100001, -10.0);
    std::fill(levels.begin() + 60000, levels.begin() + 80000, kNan);  // columns 785 to 1018
    const QImage image = draw(plotOf(levels));
    EXPECT_GT(rowOf(image, 780, kAverage), 0);
    EXPECT_EQ(rowOf(image, 800, kAverage), -1);
    EXPECT_EQ(rowOf(image, 1000, kAverage), -1);
    EXPECT_GT(rowOf(image, 1025, kAverage), 0);
}

TEST(TracePlot, DrawsManyPointsInTime) {
    const Deadline deadline(60);  // took minutes when each point was a corner of one line
    rfu::test::Samples samples(9);
    Levels noise(300000);
    for (double& level : noise) {
        level = samples.between(-90.0, -50.0);
    }
    EXPECT_EQ(draw(plotOf(noise)).size(), QSize(1280, 680));
}

TEST(TracePlot, PutsGridLinesOnRoundPlaces) {
    // points 0 to 2: only the one in the middle; -10 dBm everywhere
    EXPECT_EQ(gridColumns(draw(plotOf({-10, -10, -10})), 200), std::vector<int>{668});
    EXPECT_EQ(gridColumns(draw(plotOf({-10})), 200), std::vector<int>{668});
    // 100 to 104 MHz with the last bin, in steps of 0.5
    EXPECT_EQ(gridColumns(draw(bandOf({-10, -10, -10, -10})), 200),
              (std::vector<int>{230, 376, 522, 668, 814, 960, 1106}));
}

TEST(TracePlot, DrawsMarkers) {
    TracePlot plot = bandOf({-50, -60, -70, -80});
    plot.marks = {{"103MHz", 3}};
    const QImage image = draw(plot);
    EXPECT_TRUE(isMarked(image, 960));
    EXPECT_FALSE(isMarked(image, 668));
}

TEST(TracePlot, DrawsLimitsWithinTheRange) {
    TracePlot plot = bandOf({-50, -50, -50, -50});
    // From -10 dBm at 100 MHz to -30 dBm at 102 MHz, and a step to -40 dBm; -60 dBm at 101 MHz only.
    plot.limits = {{{98, 10}, {102, -30}, {102, -40}, {200, -40}}, {{101, -60}, {101.5, -60}}};
    const QImage image = draw(plot);  // -10 dBm lies at row 74, -60 dBm at row 618
    const QRgb ink = qRgb(0x2b, 0x33, 0x3d);
    const auto hasInk = [&](int left, int right, int top, int bottom) {
        int found = 0;
        for (int x = left; x < right; ++x) {
            for (int y = top; y < bottom; ++y) {
                found += int{distance(image.pixel(x, y), ink) < 200};
            }
        }
        return found > 0;
    };
    EXPECT_TRUE(hasInk(90, 110, 76, 90)) << "at the left, cut from the line that begins at 98 MHz";
    EXPECT_TRUE(hasInk(370, 382, 178, 188)) << "-20 dBm at 101 MHz";
    EXPECT_TRUE(hasInk(666, 671, 295, 398)) << "the step";
    EXPECT_TRUE(hasInk(1200, 1250, 398, 404)) << "-40 dBm to the right end";
    EXPECT_TRUE(hasInk(380, 500, 614, 618)) << "-60 dBm";
    EXPECT_FALSE(hasInk(540, 660, 610, 616)) << "no limit behind its last point";
}

TEST(TracePlot, KeepsLabelsOfMarkersOffTheLevels) {
    TracePlot plot = bandOf({-50, -60, -70, -80});
    plot.marks = {{"100MHz", 0}, {"100.1MHz", 0}, {"100.2MHz", 0}};
    const QImage image = draw(plot);
    for (int x = 0; x < 77; ++x) {
        for (int y = 70; y < 640; ++y) {
            ASSERT_GT(distance(image.pixel(x, y), kMark), 60) << x << ' ' << y;
        }
    }
}

TEST(TracePlot, DrawsAnyLevels) {
    const Deadline deadline;
    for (const Levels& levels :
         {Levels{-1}, Levels{kNan}, Levels{kNan, kNan}, Levels{-50, -50},
          Levels{-50, -50.00000000000001}, Levels{998.9, -998.9}, Levels{1e-103, 1e97}}) {
        TracePlot plot = plotOf(levels);
        plot.marks = {{"0", 0}};
        EXPECT_EQ(draw(plot).size(), QSize(1280, 680)) << levels[0];
    }
}

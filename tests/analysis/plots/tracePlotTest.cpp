#include "analysis/plots/tracePlot.h"

#include <gtest/gtest.h>
#include <support/deadline.h>
#include <support/limits.h>
#include <support/samples.h>
#include <support/svg.h>

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

QImage draw(const TracePlot& plot) {
    return imageOf(drawingOf(plot));
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
    plot.limits = {{{98, 102, 102, 200}, {10, -30, -40, -40}}, {{101, 101.5}, {-60, -60}}};
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

TEST(TracePlot, DrawsMasksLikeLimits) {
    TracePlot plot = bandOf({-50, -50, -50, -50});
    plot.mask = {{{90, 102, 102, 102.5}, {-10, -10, -60, -60}}};
    const QImage image = draw(plot);  // -10 dBm lies at row 74, -60 dBm at row 618
    const QRgb gold = qRgb(0xb8, 0x86, 0x0b);
    EXPECT_LT(distance(image.pixel(400, 74), gold), 150);
    EXPECT_LT(distance(image.pixel(668, 300), gold), 150) << "the step";
    EXPECT_LT(distance(image.pixel(740, 617), gold), 150);
    EXPECT_GT(distance(image.pixel(900, 617), gold), 150) << "no limit behind its last point";
}

TEST(TracePlot, EndsAtTheLevels) {
    if (!rfu::canWriteSvg()) {
        GTEST_SKIP() << "a build without Qt SVG";
    }
    // 0 to 4 MHz at columns 84 to 1252, -40 dBm at row 74, -80 dBm at row 618
    TracePlot plot = plotOf({-20, -60, -100, -100, -60}, {kNan, -20, kNan, -60, kNan},
                            {-100, -100, -100, -100, -100});
    plot.shape.values = rfu::ValueRange{-80, -40};
    plot.limits = {{{0, 4}, {-30, -30}}};
    const rfu::test::Svg svg(svgOf(drawingOf(plot)));
    EXPECT_TRUE(svg.hasText("-40") && svg.hasText("-80"));
    // From -20 to -60 dBm half of the line is above, from -60 to -100 dBm half of it below.
    EXPECT_EQ(svg.linesOf("#c8553d"),
              (std::vector<rfu::test::Svg::Line>{{{84, 56}, {110, 56}},  // the legend
                                                 {{230, 74}, {376, 346}, {522, 618}},
                                                 {{1106, 618}, {1252, 346}}}));
    EXPECT_EQ(svg.linesOf("#4f9d8f").size(), 1U) << "the minimum lies below";
    EXPECT_EQ(svg.linesOf("#2b333d").size(), 1U) << "the limit lies above";
    const QImage image = draw(plot);
    EXPECT_TRUE(isDot(image, 960, 346, kAverage));
    EXPECT_FALSE(isDot(image, 376, 76, kAverage)) << "a dot above the levels";
    EXPECT_TRUE(isShaded(image, 150, 300) && isShaded(image, 400, 500));
    EXPECT_FALSE(isShaded(image, 400, 200));
}

TEST(TracePlot, HoldsAxesInTheSmallestSize) {
    TracePlot plot = bandOf({-50, -60, -70, -80});
    plot.shape.size = rfu::PlotShape::kSmallest;
    plot.limits = {{{100, 104}, {-55, -55}}};
    plot.mask = {{{100, 104}, {-45, -45}}};
    for (int i = 0; i < 6; ++i) {
        plot.marks.push_back({"101.123456MHz  -123.4 dBuV/m", 1});
    }
    // Two rows of legend, six of markers: the area reaches from row 214 to 298.
    const QImage image = draw(plot);
    ASSERT_EQ(image.size(), QSize(480, 360));
    EXPECT_EQ(image.pixel(300, 290), qRgb(255, 255, 255));
    EXPECT_LT(distance(image.pixel(300, 205), qRgb(0xfa, 0xfb, 0xfc)), 10);
    if (rfu::canWriteSvg()) {
        const rfu::test::Svg svg(svgOf(drawingOf(plot)));
        for (const char* text :
             {"maximum", "average", "minimum", "limit", "mask", "level in dBm"}) {
            EXPECT_TRUE(svg.hasText(text)) << text;
        }
    }
}

TEST(TracePlot, IsSvgOfBoundedSize) {
    if (!rfu::canWriteSvg()) {
        GTEST_SKIP() << "a build without Qt SVG";
    }
    rfu::test::Samples samples(10);
    std::vector<qint64> sizes;
    for (const std::size_t count : {50000U, 500000U}) {
        Levels noise(count);
        for (double& level : noise) {
            level = samples.between(-90.0, -50.0);
        }
        TracePlot plot = plotOf(noise);
        plot.mask = {{plot.places, noise}};
        plot.limits = plot.mask;
        sizes.push_back(svgOf(drawingOf(plot)).size());
    }
    // Five lines and an area of 1168 columns: two pairs of numbers for the range of a column, two for
    // the way to the next, at most 20 bytes each.
    EXPECT_LT(sizes[1], 1168 * 20 * (5 * 4 + 2) + 20000);
    EXPECT_LT(sizes[1], sizes[0] * 11 / 10);
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

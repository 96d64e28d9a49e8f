#include "analysis/plots/comparisonPlot.h"

#include <gtest/gtest.h>
#include <support/limits.h>

#include <QImage>
#include <cstdlib>

using rfu::ComparisonPlot;
using rfu::test::kNan;

namespace {

constexpr QRgb kOfA = qRgb(0x1f, 0x4e, 0x79);
constexpr QRgb kOfB = qRgb(0xc8, 0x55, 0x3d);
constexpr QRgb kDifference = qRgb(0x7a, 0x3e, 0x9d);

int distance(QRgb a, QRgb b) {
    return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
           std::abs(qBlue(a) - qBlue(b));
}

/// A thin line may lie between two rows, half of it in each.
bool has(const QImage& image, int x, int y, QRgb color) {
    for (int row = y - 2; row <= y + 2; ++row) {
        if (distance(image.pixel(x, row), color) < 300) {
            return true;
        }
    }
    return false;
}

/// Places 100 to 104 at columns 84 to 1252. The levels, from -80 at row 346 to -60 at row 74; the
/// differences, from -20 at row 618 to 20 at row 448.
ComparisonPlot plotOf() {
    ComparisonPlot plot;
    plot.title = "title";
    plot.levelUnit = "dBm";
    plot.placeName = "frequency in MHz";
    plot.places = {100, 101, 102, 103};
    plot.end = 104;
    plot.breaks = {0};
    plot.nameOfA = "a";
    plot.nameOfB = "b";
    plot.a = {-80, -80, -60, -60};
    plot.b = {-60, -60, -60, -80};
    plot.differences = {20, 20, 0, -20};
    return plot;
}

QImage draw(const ComparisonPlot& plot) {
    return imageOf(drawingOf(plot));
}

}  // namespace

TEST(ComparisonPlot, DrawsBothAndTheirDifference) {
    ComparisonPlot plot = plotOf();
    plot.b[1] = -40;
    const QImage image = draw(plot);
    ASSERT_EQ(image.size(), QSize(1280, 680));
    // Up to -40 dBm at row 74.
    EXPECT_TRUE(has(image, 230, 346, kOfA)) << "-80 dBm";
    EXPECT_TRUE(has(image, 376, 75, kOfB)) << "-40 dBm";
    EXPECT_TRUE(has(image, 800, 210, kOfA)) << "-60 dBm";
    EXPECT_TRUE(has(image, 230, 449, kDifference)) << "20 dB";
    EXPECT_TRUE(has(image, 668, 533, kDifference)) << "0 dB";
    EXPECT_TRUE(has(image, 959, 617, kDifference)) << "-20 dB";
    EXPECT_FALSE(has(image, 1100, 533, kDifference)) << "nothing behind the last point";
}

TEST(ComparisonPlot, DrawsTheThreshold) {
    ComparisonPlot plot = plotOf();
    plot.differences = {0, 0, 0, 0};
    plot.threshold = 20.0;
    const QImage image = draw(plot);
    const QRgb ink = qRgb(0x2b, 0x33, 0x3d);
    for (const int row : {449, 617}) {
        int dark = 0;
        for (int x = 90; x < 1250; ++x) {
            dark += int{has(image, x, row, ink)};
        }
        EXPECT_GT(dark, 500) << row;
    }
    EXPECT_TRUE(has(image, 500, 533, kDifference));
}

TEST(ComparisonPlot, LeavesOutWhatIsMissing) {
    ComparisonPlot plot = plotOf();
    plot.b = {kNan, kNan, -60, -80};
    plot.differences = {kNan, kNan, 0, -20};
    const QImage image = draw(plot);
    int red = 0;
    for (int x = 90; x < 660; ++x) {
        for (int y = 76; y < 346; ++y) {
            red += int{distance(image.pixel(x, y), kOfB) < 150};
        }
    }
    EXPECT_EQ(red, 0);
    EXPECT_TRUE(has(image, 814, 210, kOfB)) << "-70 dBm halfway";
    plot.a = plot.b = plot.differences = {kNan, kNan, kNan, kNan};
    EXPECT_EQ(draw(plot).size(), QSize(1280, 680));
    plot.shape.size = rfu::PlotShape::kSmallest;
    EXPECT_EQ(draw(plot).size(), QSize(480, 360));
}

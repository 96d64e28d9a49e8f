#include "analysis/plots/occupancyPlot.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

#include "analysis/plots/palette.h"

using rfu::HourlyOccupancy;
using rfu::OccupancyCounts;
using rfu::OccupancyPlot;

namespace {

constexpr QRgb kShare = qRgb(0x1f, 0x4e, 0x79);
constexpr QRgb kInterval = qRgb(0xb4, 0xc5, 0xd6);

int distance(QRgb a, QRgb b) {
    return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
           std::abs(qBlue(a) - qBlue(b));
}

bool has(const QImage& image, int x, int y, QRgb color) {
    for (int row = y - 1; row <= y + 1; ++row) {
        if (distance(image.pixel(x, row), color) < 60) {
            return true;
        }
    }
    return false;
}

rfu::Channel recorded(double low, double high) {
    return {{low, high}, 0, 1};
}

/// Channels of 1 MHz from 100 to 104 MHz, at columns 84, 376, 668, 960 and 1252; an occupancy of 0
/// lies at row 618, of 1 at row 74. The third channel has no samples; of the last nothing was recorded.
OccupancyPlot plotOf(HourlyOccupancy hours) {
    std::vector<rfu::Channel> channels;
    for (int i = 0; i < 4; ++i) {
        channels.push_back(recorded(100.0 + i, 101.0 + i));
    }
    channels.push_back({{1e300, 2e300}});
    return {channels, {100, 104}, hours};
}

OccupancyCounts countsOf(const std::vector<rfu::OccupancyCount>& channels) {
    OccupancyCounts counts;
    counts.channels = channels;
    return counts;
}

const OccupancyCounts kCounts = countsOf({{10, 5}, {10, 0}, {0, 0}, {10, 10}, {0, 0}});

}  // namespace

TEST(OccupancyPlot, DrawsALineWithItsInterval) {
    const QImage image = imageOf(drawingOf(plotOf({{rfu::kAllHours, kCounts}})));
    ASSERT_EQ(image.size(), QSize(1280, 680));
    EXPECT_TRUE(has(image, 230, 346, kShare)) << "5 of 10";
    // From 0.2366 to 0.7634.
    EXPECT_TRUE(has(image, 230, 206, kInterval));
    EXPECT_TRUE(has(image, 230, 486, kInterval));
    EXPECT_FALSE(has(image, 230, 200, kInterval));
    EXPECT_FALSE(has(image, 230, 492, kInterval));
    EXPECT_TRUE(has(image, 522, 617, kShare)) << "none of 10";
    EXPECT_TRUE(has(image, 522, 470, kInterval)) << "up to 0.2775";
    EXPECT_FALSE(has(image, 522, 463, kInterval));
    EXPECT_FALSE(has(image, 814, 617, kShare)) << "no samples";
    EXPECT_TRUE(has(image, 1106, 75, kShare)) << "10 of 10";
    EXPECT_TRUE(has(image, 375, 480, kShare) || has(image, 376, 480, kShare)) << "the step";
}

TEST(OccupancyPlot, JoinsTheMiddlesOfOverlappingChannels) {
    OccupancyPlot plot = plotOf({{rfu::kAllHours, kCounts}});
    plot.channels = {{100, 102}, {101, 103}, {101.5, 103.5}, {102, 104}};
    const QImage image = imageOf(drawingOf(plot));
    EXPECT_TRUE(has(image, 376, 346, kShare)) << "5 of 10 at 101 MHz";
    EXPECT_TRUE(has(image, 522, 482, kShare)) << "halfway to 0 at 102 MHz";
    EXPECT_FALSE(has(image, 230, 346, kShare)) << "nothing before the first middle";
}

TEST(OccupancyPlot, BreaksTheLineBetweenChannelsApart) {
    OccupancyPlot plot = plotOf({{rfu::kAllHours, kCounts}});
    plot.channels[1] = {101.5, 102};
    const QImage image = imageOf(drawingOf(plot));
    EXPECT_FALSE(has(image, 450, 480, kShare));
    EXPECT_FALSE(has(image, 376, 480, kShare)) << "no step";
    EXPECT_TRUE(has(image, 600, 617, kShare));
}

TEST(OccupancyPlot, ColoursTheHours) {
    const rfu::Palette& palette = rfu::kPalettes[0];
    const QImage image = imageOf(drawingOf(
        plotOf({{3, kCounts}, {20, countsOf({{10, 10}, {0, 0}, {0, 0}, {0, 0}, {0, 0}})}})));
    const auto rowOf = [](double hour) { return static_cast<int>(618 - hour / 24.0 * 544); };
    EXPECT_EQ(image.pixel(230, rowOf(3.5)), palette.color(128)) << "0.5 of 255, rounded";
    EXPECT_EQ(image.pixel(522, rowOf(3.5)), palette.color(0));
    EXPECT_EQ(image.pixel(850, rowOf(3.5)), qRgb(255, 255, 255)) << "no samples";
    EXPECT_EQ(image.pixel(1106, rowOf(3.5)), palette.color(255));
    EXPECT_EQ(image.pixel(230, rowOf(20.5)), palette.color(255));
    EXPECT_EQ(image.pixel(300, rowOf(10.5)), qRgb(255, 255, 255)) << "an hour without sweeps";
    // The scale from 0 to 1.
    EXPECT_EQ(image.pixel(102, 56), palette.color(0));
    EXPECT_EQ(image.pixel(102 + 255, 56), palette.color(255));
}

TEST(OccupancyPlot, ShowsTheHighestOfAPixel) {
    std::vector<rfu::Channel> channels;
    OccupancyCounts counts;
    for (int i = 0; i < 100000; ++i) {
        channels.push_back(recorded(100.0 + i * 1e-3, 100.0 + (i + 1) * 1e-3));
        counts.channels.push_back({10, i == 50000 ? 10 : 0});
    }
    const QImage image = imageOf(drawingOf(OccupancyPlot(channels, {100, 200}, {{0, counts}})));
    const rfu::Palette& palette = rfu::kPalettes[0];
    EXPECT_EQ(image.pixel(668, 610), palette.color(255));
    EXPECT_EQ(image.pixel(666, 610), palette.color(0));
    EXPECT_EQ(image.pixel(670, 610), palette.color(0));
}

#include "analysis/plots/profilePlot.h"

#include <gtest/gtest.h>
#include <support/deadline.h>
#include <support/limits.h>

#include <cmath>
#include <cstdlib>

namespace rfu::test {
namespace {

constexpr QRgb kGroundColor = qRgb(0xd9, 0xcd, 0xb8);
constexpr QRgb kSightColor = qRgb(0xc8, 0x55, 0x3d);
constexpr QRgb kLeastColor = qRgb(0x7a, 0x3e, 0x9d);
constexpr QRgb kWhite = qRgb(255, 255, 255);

int apart(QRgb a, QRgb b) {
    return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
           std::abs(qBlue(a) - qBlue(b));
}

/// 1000 m of ground at 0 m, antennas at 100 m, a zone of 50 m: heights from 0 to 160 m, 0 m at row
/// 618 and 160 m at row 94, the ends at columns 84 and 1252.
ProfilePlot levelPlot() {
    ProfilePlot plot;
    for (int i = 0; i <= 100; ++i) {
        plot.distances.push_back(10.0 * i);
        plot.ground.push_back(i == 0 || i == 100 ? 0.0 : 20.0);
    }
    plot.startAntenna = plot.endAntenna = 100.0;
    plot.fresnelRadius = 50.0;
    plot.clearRatio = 0.6;
    return plot;
}

int rowOfHeight(double height) {
    return 618 - static_cast<int>(std::lround(height * 524.0 / 160.0));
}

QImage draw(const ProfilePlot& plot) {
    return imageOf(drawingOf(plot));
}

TEST(ProfilePlot, ShowsGroundSightAndZone) {
    const QImage image = draw(levelPlot());
    ASSERT_EQ(image.size(), QSize(1280, 680));
    EXPECT_EQ(image.pixel(700, rowOfHeight(10)), kGroundColor);
    EXPECT_LT(apart(image.pixel(700, rowOfHeight(30)), kWhite), 20) << "between ground and zone";
    int nearest = 1000;
    for (int row = rowOfHeight(100) - 2; row <= rowOfHeight(100) + 2; ++row) {
        nearest = std::min(nearest, apart(image.pixel(700, row), kSightColor));
    }
    EXPECT_LT(nearest, 150);
    for (const double height : {125.0, 85.0}) {
        const QRgb zone = image.pixel(700, rowOfHeight(height));
        EXPECT_GT(apart(zone, kWhite), 30) << height;
        EXPECT_GT(qBlue(zone), qRed(zone)) << height;
    }
    EXPECT_EQ(image.pixel(700, rowOfHeight(155)), kWhite) << "above the zone";
    EXPECT_EQ(image.pixel(92, rowOfHeight(130)), kWhite) << "where the zone is narrow";
}

TEST(ProfilePlot, LeavesGroundOpenThatWasNotMeasured) {
    ProfilePlot plot = levelPlot();
    for (std::size_t i = 40; i < 60; ++i) {
        plot.ground[i] = kNan;
    }
    const QImage image = draw(plot);
    EXPECT_EQ(image.pixel(675, rowOfHeight(7)), kWhite);
    EXPECT_EQ(image.pixel(300, rowOfHeight(7)), kGroundColor);
    EXPECT_EQ(image.pixel(1000, rowOfHeight(7)), kGroundColor);
}

TEST(ProfilePlot, MarksWhereItIsLeastClear) {
    ProfilePlot plot = levelPlot();
    plot.mark = ProfilePlot::Mark{"clearance 80.0 m", 250.0, 20.0, 100.0};
    const QImage image = draw(plot);
    EXPECT_EQ(image.pixel(376, rowOfHeight(60)), kLeastColor);
    EXPECT_NE(draw(levelPlot()).pixel(376, rowOfHeight(60)), kLeastColor);
}

TEST(ProfilePlot, DrawsManySamplesInTime) {
    const Deadline deadline(30);
    ProfilePlot plot = levelPlot();
    plot.distances.clear();
    plot.ground.clear();
    for (int i = 0; i <= 300000; ++i) {
        plot.distances.push_back(i / 300.0);
        plot.ground.push_back(i % 7 * 10.0);
    }
    EXPECT_EQ(draw(plot).size(), QSize(1280, 680));
}

TEST(ProfilePlot, DrawsAnyHeights) {
    const Deadline deadline;
    for (const double height : {0.0, -400.0, 1e30, kNan}) {
        ProfilePlot plot = levelPlot();
        plot.ground.assign(plot.ground.size(), height);
        EXPECT_EQ(draw(plot).size(), QSize(1280, 680)) << height;
    }
}

}  // namespace
}  // namespace rfu::test

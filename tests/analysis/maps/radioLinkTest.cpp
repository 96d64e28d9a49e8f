#include "analysis/maps/radioLink.h"

#include <gtest/gtest.h>
#include <support/limits.h>
#include <support/samples.h>

#include <cmath>

namespace rfu::test {
namespace {

/// 10 km of flat ground with one triangular hill of 50 m halfway.
TerrainProfile hillProfile(double height) {
    TerrainProfile profile;
    profile.length = 10000.0;
    for (int i = 0; i <= 20; ++i) {
        profile.distances.push_back(500.0 * i);
        profile.heights.push_back(i == 10 ? height : i == 9 || i == 11 ? height / 2 : 0.0);
    }
    return profile;
}

TEST(RadioLink, GivesLossesOfFreeSpace) {
    // 32.4478 + 20 lg(f / MHz) + 20 lg(d / km)
    EXPECT_NEAR(freeSpaceLoss(1000.0, 299.792458 / 1.0), 32.4478, 1e-4);
    EXPECT_NEAR(freeSpaceLoss(10000.0, 299.792458 / 100.0), 32.4478 + 40 + 20, 1e-4);
    EXPECT_NEAR(freeSpaceLoss(6500.0, 299.792458 / 433.0), 101.4358, 1e-3);
}

TEST(RadioLink, GivesLossesOfAKnifeEdge) {
    // 6.9 + 20 lg(sqrt((v - 0.1)^2 + 1) + v - 0.1), worked out apart from the code
    EXPECT_NEAR(knifeEdgeLoss(0.0), 6.0329, 1e-4);
    EXPECT_NEAR(knifeEdgeLoss(0.1), 6.9, 1e-12);
    EXPECT_NEAR(knifeEdgeLoss(1.0), 13.9257, 1e-4);
    EXPECT_NEAR(knifeEdgeLoss(2.4), 20.5393, 1e-4);
    EXPECT_EQ(knifeEdgeLoss(-0.78), 0.0);
    EXPECT_NEAR(knifeEdgeLoss(-0.77999), 0.0, 0.03);
    EXPECT_EQ(knifeEdgeLoss(-5.0), 0.0);
    EXPECT_EQ(knifeEdgeLoss(kNan), 0.0);
}

TEST(RadioLink, GivesBulgeAndFresnelZone) {
    // 5 km * 5 km / (2 * 4/3 * 6371 km) = 1.4715 m; without refraction (k 1) 1.9620 m
    EXPECT_NEAR(earthBulge(5000.0, 5000.0, 4.0 / 3.0), 1.4715, 1e-4);
    EXPECT_NEAR(earthBulge(5000.0, 5000.0, 1.0), 1.9620, 1e-4);
    EXPECT_EQ(earthBulge(0.0, 10000.0, 1.0), 0.0);
    // 1 m wavelength: sqrt(5000 / 2) = 50
    EXPECT_NEAR(fresnelRadius(5000.0, 5000.0, 1.0), 50.0, 1e-12);
    EXPECT_NEAR(fresnelRadius(1000.0, 9000.0, 1.0), 30.0, 1e-12);
}

TEST(RadioLink, GivesTheParameterOfAnEdgeFromItsClearance) {
    // 2 / 1 m * (1 / 5000 + 1 / 5000) = 0.0008, its root 0.028284
    EXPECT_NEAR(diffractionParameter(-50.0, 5000.0, 5000.0, 1.0), std::sqrt(2.0), 1e-12);
    EXPECT_NEAR(diffractionParameter(30.0, 5000.0, 5000.0, 1.0), -0.848528, 1e-6);
}

TEST(RadioLink, KnowsTheClearanceOverAHill) {
    const RadioLink link = {60.0, 60.0, 299.792458, 4.0 / 3.0};
    const auto points = clearancesOf(hillProfile(50.0), link);
    ASSERT_EQ(points.size(), 21U);
    const auto least = leastClear(points);
    ASSERT_TRUE(least);
    EXPECT_EQ(least->distance, 5000.0);
    EXPECT_EQ(least->terrain, 50.0);
    EXPECT_EQ(least->lineOfSight, 60.0);
    EXPECT_NEAR(least->clearance, 60.0 - 50.0 - 1.4715, 1e-4);
    EXPECT_NEAR(least->fresnelRadius, 50.0, 1e-9);
    EXPECT_NEAR(least->ratio(), 0.17057, 1e-5);
}

TEST(RadioLink, DrawsTheLineOfSightBetweenTheAntennas) {
    TerrainProfile profile = hillProfile(0.0);
    profile.heights.front() = 100.0;
    const RadioLink link = {20.0, 40.0, 299.792458, 1.0};  // from 120 m down to 40 m
    const auto points = clearancesOf(profile, link);
    EXPECT_EQ(points.front().lineOfSight, 120.0);
    EXPECT_EQ(points[10].lineOfSight, 80.0);
    EXPECT_EQ(points.back().lineOfSight, 40.0);
}

TEST(RadioLink, LeavesTheEndsOutAndWhatIsNotMeasured) {
    TerrainProfile profile = hillProfile(50.0);
    const RadioLink link = {60.0, 60.0, 299.792458, 4.0 / 3.0};
    profile.heights[10] = kNan;
    const auto least = leastClear(clearancesOf(profile, link));
    ASSERT_TRUE(least);
    EXPECT_NE(least->distance, 5000.0);
    EXPECT_NE(least->distance, 0.0);
    for (std::size_t i = 1; i < 20; ++i) {
        profile.heights[i] = kNan;
    }
    EXPECT_FALSE(leastClear(clearancesOf(profile, link)));
}

/// The parameter is -sqrt(2) times the ratio, so that both are extreme at one point.
TEST(RadioLink, IsLeastClearWhereTheParameterIsLargest) {
    Samples samples(14);
    for (int i = 0; i < 1000; ++i) {
        TerrainProfile profile = hillProfile(0.0);
        for (double& height : profile.heights) {
            height = samples.between(0.0, 300.0);
        }
        const RadioLink link = {samples.between(0.0, 100.0), samples.between(0.0, 100.0),
                                samples.between(30.0, 6000.0), samples.between(0.6, 4.0)};
        const auto points = clearancesOf(profile, link);
        const ClearancePoint least = *leastClear(points);
        double largest = -1e300;
        for (std::size_t at = 1; at + 1 < points.size(); ++at) {
            const ClearancePoint& point = points[at];
            const double parameter = diffractionParameter(
                point.clearance, point.distance, 10000.0 - point.distance, link.wavelength());
            EXPECT_NEAR(parameter, -std::sqrt(2.0) * point.ratio(), 1e-9 * std::abs(parameter));
            largest = std::max(largest, parameter);
        }
        EXPECT_NEAR(largest, -std::sqrt(2.0) * least.ratio(), 1e-9 * std::abs(largest));
    }
}

}  // namespace
}  // namespace rfu::test

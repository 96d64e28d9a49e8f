#include "analysis/maps/terrainProfile.h"

#include "mapFiles.h"

#include <support/deadline.h>

#include <cmath>

namespace rfu::test {
namespace {

/// 4 x 3 cells of 10 m, their centres at x 5 to 35 and y 25 (above) to 5.
const std::string kSlope =
    "ncols 4\nnrows 3\nxllcorner 0\nyllcorner 0\ncellsize 10\nNODATA_value -1\n"
    "0 10 20 30\n100 110 120 130\n200 210 -1 230\n";

class TerrainProfileTest : public MapFiles {
protected:
    TerrainProfile between(QPointF start, QPointF end, const std::string& map = kSlope) const {
        const QString file = write("map.asc", map);
        const Raster raster = loadRaster(file);
        return terrainBetween(start, end, raster, requireGrid(raster, file), file);
    }
};

TEST_F(TerrainProfileTest, SamplesAtCentresAndHalfwayBetween) {
    const TerrainProfile profile = between({5, 25}, {35, 25});
    EXPECT_EQ(profile.length, 30.0);
    ASSERT_EQ(profile.distances.size(), 7U);
    for (std::size_t i = 0; i < 7; ++i) {
        EXPECT_NEAR(profile.distances[i], 5.0 * static_cast<double>(i), 1e-9);
        EXPECT_NEAR(profile.heights[i], 5.0 * static_cast<double>(i), 1e-9);
    }
}

TEST_F(TerrainProfileTest, IsBilinearBetweenFourCentres) {
    // From (7, 22) to (12, 17): x - 5 is 2 to 7, y below 25 is 3 to 8; the height is their sum in
    // tenths of 10 and of 100: 2 + 30 = 32 to 7 + 80 = 87, and 59.5 halfway.
    const TerrainProfile profile = between({7, 22}, {12, 17});
    ASSERT_EQ(profile.heights.size(), 3U);
    EXPECT_NEAR(profile.heights[0], 32.0, 1e-9);
    EXPECT_NEAR(profile.heights[1], 59.5, 1e-9);
    EXPECT_NEAR(profile.heights[2], 87.0, 1e-9);
    EXPECT_NEAR(profile.distances[1], std::sqrt(50.0) / 2, 1e-9);
}

TEST_F(TerrainProfileTest, MeetsThePeakOfASingleCell) {
    const std::string peak =
        "ncols 3\nnrows 3\nxllcorner 0\nyllcorner 0\ncellsize 10\nNODATA_value -1\n"
        "0 0 0\n0 100 0\n0 0 0\n";
    const TerrainProfile profile = between({1, 2}, {29, 28}, peak);  // through (15, 15)
    EXPECT_NEAR(*std::max_element(profile.heights.begin(), profile.heights.end()), 100.0, 1e-9);
}

TEST_F(TerrainProfileTest, TakesTheOutermostCellsToTheEdge) {
    const TerrainProfile profile = between({0, 30}, {40, 30});
    EXPECT_EQ(profile.heights.front(), 0.0);
    EXPECT_EQ(profile.heights.back(), 30.0);
    EXPECT_EQ(between({0, 15}, {0, 15.5}).heights.front(), 100.0);
}

TEST_F(TerrainProfileTest, LeavesOpenWhatWasNotMeasured) {
    const TerrainProfile profile = between({5, 5}, {35, 5});
    ASSERT_EQ(profile.heights.size(), 7U);
    for (std::size_t i = 0; i < 7; ++i) {
        EXPECT_EQ(std::isnan(profile.heights[i]), i >= 3 && i <= 5) << i;
    }
    // On the row of centres above, the cell that was not measured has no weight.
    for (const double height : between({5, 15}, {35, 15}).heights) {
        EXPECT_FALSE(std::isnan(height));
    }
}

TEST_F(TerrainProfileTest, RefusesLinesWithoutTwoEndsOnTheMap) {
    EXPECT_EQ(refusal([&] {
                  between({-1, 5}, {35, 5});
              }),
              "map.asc: has no cell at -1,5; x is 0 to 40, y is 0 to 30");
    EXPECT_EQ(refusal([&] {
                  between({5, 5}, {35, 31});
              }),
              "map.asc: has no cell at 35,31; x is 0 to 40, y is 0 to 30");
    EXPECT_EQ(refusal([&] {
                  between({5, 5}, {5, 5});
              }),
              "map.asc: has no profile from a point to itself");
    EXPECT_EQ(refusal([&] {
                  between({5, 5}, {25, 5});
              }),
              "map.asc: has no height measured at 25,5");
}

TEST_F(TerrainProfileTest, IsLinearInTheCellsOfTheLine) {
    const Deadline deadline(30);
    std::string map =
        "ncols 2048\nnrows 2048\nxllcorner 0\nyllcorner 0\ncellsize 1\nNODATA_value -1\n";
    std::string row;
    for (int column = 0; column < 2048; ++column) {
        row += "7 ";
    }
    for (int line = 0; line < 2048; ++line) {
        map += row + "\n";
    }
    const TerrainProfile profile = between({0, 0.3}, {2048, 2047}, map);
    EXPECT_LE(profile.heights.size(), 2U * (2 * 2048 + 1) + 1);
    EXPECT_GE(profile.heights.size(), 2U * 2048);
    EXPECT_NEAR(profile.heights[1000], 7.0, 1e-9);
}

}  // namespace
}  // namespace rfu::test

#include "analysis/statistics/peaks.h"

#include <gtest/gtest.h>
#include <rfUtils/trace/traceRssiBuffer.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "analysis/statistics/noise.h"

using namespace rfu;
using rfu::test::Noise;

namespace {

constexpr double kNone = traceRssiBuffer::kNoMeasurement;

/// Points 1 MHz apart from 100 MHz on, in bands that begin at some of them; between bands lie 100 MHz.
FrequencyAxis axisOf(std::size_t points, const std::vector<std::size_t>& bands = {0}) {
    FrequencyAxis axis;
    double low = 100.0;
    for (std::size_t i = 0; i < points; ++i, low += 1.0) {
        if (std::find(bands.begin(), bands.end(), i) != bands.end()) {
            low += i == 0 ? 0.0 : 100.0;
            axis.bands.push_back({i, low, low});
        }
        axis.points.push_back(low);
        axis.bands.back().high = low + 1.0;
    }
    return axis;
}

/// Sweeps whose time is their number, from 0 on.
/// @param level of a sweep and a point
PeakFinder finderOf(std::size_t sweeps, std::size_t points,
                    const std::function<double(std::size_t, std::size_t)>& level) {
    PeakFinder finder;
    for (std::size_t i = 0; i < sweeps; ++i) {
        Sweep sweep = {std::to_string(i), {}};
        for (std::size_t point = 0; point < points; ++point) {
            sweep.levels.push_back(level(i, point));
        }
        finder.add(sweep);
    }
    return finder;
}

std::vector<Signal> find(PeakFinder finder, const FrequencyAxis& axis,
                         const PeakOptions& options = {}) {
    return finder.find(axis, std::vector<bool>(axis.points.size(), false), options);
}

/// The signals of a single sweep of these levels over a floor of -90 dBm.
std::vector<Signal> findIn(std::vector<double> levels, const PeakOptions& options = {},
                           const std::vector<bool>& isLeftOut = std::vector<bool>(40)) {
    levels.resize(40, -90.0);
    return finderOf(1, 40, [&](std::size_t, std::size_t i) { return levels[i]; })
        .find(axisOf(40), isLeftOut, options);
}

std::vector<double> framed(std::vector<double> levels) {
    levels.insert(levels.begin(), 10, -90.0);
    return levels;
}

}  // namespace

TEST(Peaks, MeasureWidthAndMiddleBetweenPoints) {
    PeakOptions at3;
    at3.widthAt = 3.0;
    PeakOptions at20;
    at20.widthAt = 20.0;
    const struct {
        const char* name;
        std::vector<double> levels;  // from 110 MHz on
        PeakOptions options;
        double frequency;
        double width;
    } kRows[] = {
        // 4 dB per point: 6 dB are one and a half.
        {"a triangle", {-50, -46, -42, -38, -42, -46, -50}, {}, 113, 3},
        {"at 3 dB", {-50, -46, -42, -38, -42, -46, -50}, at3, 113, 1.5},
        {"at 20 dB, beyond the triangle: 12 + 8 / 40 of a point",
         {-50, -46, -42, -38, -42, -46, -50},
         at20,
         113,
         6.4},
        {"sides of 3 and 6 dB", {-49, -46, -43, -40, -46, -52, -58}, {}, 112.5, 3},
        // 6 dB below: 6 / 40 of a point at either side
        {"one point", {-50}, {}, 110, 0.3},
        {"a plateau", {-50, -50, -50}, {}, 111, 2.3},
        {"a valley of 10 dB within",
         {-50, -60, -52},
         {},
         // 4 dB below the second maximum, which falls by 38
         (110 - 6.0 / 40 + 112 + 4.0 / 38) / 2,
         2 + 6.0 / 40 + 4.0 / 38},
        {"a lower maximum beside is part of the run, not of the width",
         {-50, -60, -60, -60},
         {},
         (110 - 6.0 / 40 + 110 + 6.0 / 10) / 2,
         6.0 / 40 + 6.0 / 10},
        // The threshold lies 6 dB above the floor: 2 of 8 dB below the maximum.
        {"lower than the width is measured", {-82}, {}, 110, 0.5},
    };
    for (const auto& row : kRows) {
        const auto found = findIn(framed(row.levels), row.options);
        ASSERT_EQ(found.size(), 1U) << row.name;
        EXPECT_NEAR(found[0].frequency, row.frequency, 1e-6) << row.name;
        EXPECT_NEAR(found[0].width, row.width, 1e-6) << row.name;
        EXPECT_NEAR(found[0].floor, -90.0, 1e-9) << row.name;
    }
}

// The level of a Gaussian line falls with the square of the distance: 6 dB at 5 points.
TEST(Peaks, MeasureAGaussianLine) {
    const auto found = find(finderOf(3, 200,
                                     [](std::size_t, std::size_t i) {
                                         const double distance =
                                             (static_cast<double>(i) - 100.3) / 5.0;
                                         return std::max(-90.0, -40.0 - 6.0 * distance * distance);
                                     }),
                            axisOf(200));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_NEAR(found[0].frequency, 200.3, 0.02);
    EXPECT_NEAR(found[0].width, 10.0, 0.1);
}

TEST(Peaks, EndAtTheBorderOfTheirBand) {
    const auto found =
        find(finderOf(1, 40,
                      [](std::size_t, std::size_t i) {
                          return i == 19 || i == 20 ? -50.0 : i == 39 ? -60.0 : -90.0;
                      }),
             axisOf(40, {0, 20}));
    ASSERT_EQ(found.size(), 3U);
    EXPECT_NEAR(found[0].width, 0.15, 1e-9);  // of one side
    EXPECT_NEAR(found[0].frequency, 119 - 0.075, 1e-9);
    EXPECT_NEAR(found[1].frequency, 220 + 0.075, 1e-9);
    EXPECT_NEAR(found[2].frequency, 239 - 0.1, 1e-9);
    EXPECT_EQ(found[2].point, 39U);
}

TEST(Peaks, TellHowOftenAndWhenASignalWasThere) {
    // On air in sweeps 3, 4, 8, 13, 18, ...; sweeps 4 and 9 were not measured there.
    const auto level = [](std::size_t sweep, std::size_t point) {
        if (point != 12) {
            return -90.0;
        }
        return sweep == 4 || sweep == 9 ? kNone
               : sweep % 5 == 3         ? -60.0 - static_cast<double>(sweep)
                                        : -90.5;
    };
    const auto found = find(finderOf(22, 30, level), axisOf(30));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].maximum, -63.0);
    EXPECT_DOUBLE_EQ(found[0].present, 4.0 / 20.0);
    EXPECT_EQ(found[0].first, "3");
    EXPECT_EQ(found[0].last, "18");
    // -63, -68, -73, -78 and sixteen times -90.5
    EXPECT_NEAR(found[0].average, (-63.0 - 68.0 - 73.0 - 78.0 - 16.0 * 90.5) / 20.0, 1e-9);
}

TEST(Peaks, LieStrictlyAboveTheThreshold) {
    PeakOptions above10;
    above10.above = 10.0;
    const struct {
        const char* name;
        double level;
        PeakOptions options;
        std::size_t count;
    } kRows[] = {
        {"6 dB above the floor", -84.0, {}, 0},
        {"a hundredth more", -83.99, {}, 1},
        {"a thousandth more counts in hundredths", -83.999, {}, 0},
        {"below a level of one's own", -80.0, above10, 0},
        {"above it", -79.99, above10, 1},
    };
    for (const auto& row : kRows) {
        const auto found = findIn(framed({row.level}), row.options);
        EXPECT_EQ(found.size(), row.count) << row.name;
        if (!found.empty()) {
            EXPECT_GT(found[0].present, 0.0) << row.name;
            EXPECT_EQ(found[0].maximum, row.level) << row.name;
        }
    }
}

TEST(Peaks, CountNothingOfWhatIsLeftOut) {
    std::vector<bool> isLeftOut(40, false);
    isLeftOut[12] = true;
    isLeftOut[20] = true;
    std::vector<double> levels = framed({-50, -50, -10, -50});
    levels.resize(20, -90.0);
    levels.push_back(-20);
    const auto found = findIn(levels, {}, isLeftOut);
    ASSERT_EQ(found.size(), 1U);  // the points beside a spur are neighbours
    EXPECT_EQ(found[0].maximum, -50.0);
    EXPECT_NEAR(found[0].width, 3.3, 1e-9);
    EXPECT_TRUE(findIn(levels, {}, std::vector<bool>(40, true)).empty());
}

TEST(Peaks, AreNoneWithoutSignals) {
    const struct {
        const char* name;
        std::size_t sweeps;
        std::size_t points;
        double level;
    } kRows[] = {{"all cells alike", 10, 300, -90.0},
                 {"nothing measured", 10, 300, kNone},
                 {"one cell", 1, 1, -40.0},
                 {"a band shorter than a window", 5, 20, -90.0}};
    for (const auto& row : kRows) {
        const auto alike = [&](std::size_t, std::size_t) { return row.level; };
        EXPECT_TRUE(find(finderOf(row.sweeps, row.points, alike), axisOf(row.points)).empty())
            << row.name;
    }
}

// A million cells of single periodograms, which spread most.
TEST(Peaks, AreNotInventedInNoise) {
    Noise noise(1, 3);
    const auto found =
        find(finderOf(1000, 1000, [&](std::size_t, std::size_t) { return noise.level(-95.0); }),
             axisOf(1000));
    EXPECT_TRUE(found.empty());
}

// Bursts of one cell in a million, and signals that last, 15 dB above a sloping floor.
TEST(Peaks, AreNotMissedInNoise) {
    Noise noise(1, 4);
    const auto floorAt = [](std::size_t point) {
        return -100.0 + 0.02 * static_cast<double>(point);
    };
    const auto level = [&](std::size_t sweep, std::size_t point) {
        const bool isOnAir =
            (point % 100 == 50 && sweep == point) || (point % 100 == 80 && sweep % 3 == 0);
        return isOnAir ? floorAt(point) + 15.0 : noise.level(floorAt(point));
    };
    const auto found = find(finderOf(1000, 1000, level), axisOf(1000));
    ASSERT_EQ(found.size(), 20U);
    for (std::size_t i = 0; i < found.size(); ++i) {
        const bool isBurst = i % 2 == 0;
        EXPECT_EQ(found[i].point, i / 2 * 100 + (isBurst ? 50 : 80));
        EXPECT_NEAR(found[i].floor, floorAt(found[i].point), 0.5);
        EXPECT_NEAR(found[i].present, isBurst ? 0.001 : 0.334, 1e-9);
        EXPECT_EQ(found[i].first, isBurst ? std::to_string(found[i].point) : "0");
        EXPECT_EQ(found[i].last, isBurst ? std::to_string(found[i].point) : "999");
    }
}

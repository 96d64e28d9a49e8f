#include "analysis/statistics/noiseFloor.h"

#include <gtest/gtest.h>
#include <rfUtils/trace/traceRssiBuffer.h>

#include <cmath>
#include <functional>

#include "analysis/statistics/levelHistory.h"
#include "analysis/statistics/noise.h"

using rfu::LevelHistory;
using rfu::noiseFloor;
using rfu::NoiseFloor;
using rfu::test::Noise;

namespace {

constexpr std::size_t kWindow = 101;

/// Sweeps of noise around a median, with something above it.
LevelHistory noiseOf(int shape, std::size_t sweeps, std::size_t points,
                     const std::function<double(std::size_t)>& median,
                     const std::function<double(std::size_t)>& signal) {
    LevelHistory history;
    Noise noise(shape, 11);
    for (std::size_t i = 0; i < sweeps; ++i) {
        rfu::Sweep sweep;
        for (std::size_t point = 0; point < points; ++point) {
            sweep.levels.push_back(noise.level(median(point)) + signal(point));
        }
        history.add(sweep);
    }
    return history;
}

double none(std::size_t) {
    return 0.0;
}

}  // namespace

TEST(NoiseFloor, FollowsTheMedianOfNoise) {
    const auto flat = [](std::size_t) { return -95.0; };
    const auto rising = [](std::size_t point) {
        return -100.0 + 0.05 * static_cast<double>(point);
    };
    const auto falling = [](std::size_t point) { return -60.0 - 0.1 * static_cast<double>(point); };
    // 40 of every 101 points 20 dB up, in one piece.
    const auto wide = [](std::size_t point) {
        return point % 101 >= 30 && point % 101 < 70 ? 20.0 : 0.0;
    };
    // Every third point, from 3 to 30 dB up.
    const auto many = [](std::size_t point) {
        return point % 3 == 0 ? 3.0 + static_cast<double>(point % 10) * 3.0 : 0.0;
    };
    const struct {
        const char* name;
        int shape;
        std::size_t sweeps;
        std::function<double(std::size_t)> median;
        std::function<double(std::size_t)> signal;
    } kRows[] = {
        {"single periodograms", 1, 100, flat, none},
        {"averages of 10", 10, 100, flat, none},
        {"averages of 100", 100, 100, flat, none},
        {"an even count of few sweeps", 10, 4, flat, none},
        {"one sweep", 100, 1, flat, none},
        {"a rising floor", 1, 150, rising, none},
        {"a falling floor with wide signals", 1, 150, falling, wide},
        {"wide signals", 10, 50, flat, wide},
        {"a rising floor with wide signals", 100, 50, rising, wide},
        {"many narrow signals", 10, 50, flat, many},
        {"many narrow signals on a rising floor", 100, 50, rising, many},
    };
    constexpr std::size_t kPoints = 600;
    for (const auto& row : kRows) {
        LevelHistory history = noiseOf(row.shape, row.sweeps, kPoints, row.median, row.signal);
        const NoiseFloor floor = noiseFloor(history.medians(), {0}, kWindow);
        double worst = 0.0;
        for (std::size_t i = 0; i < kPoints; ++i) {
            worst = std::max(worst, std::abs(floor.levels[i] - row.median(i)));
        }
        EXPECT_LT(worst, 0.5) << row.name;
        const double shape = noiseShape(history, floor);
        EXPECT_GT(shape, 0.6 * row.shape) << row.name;
        EXPECT_LT(shape, 1.25 * row.shape) << row.name;
    }
}

TEST(NoiseFloor, TakesASteadySignalOfMoreThanHalfAWindowForNoise) {
    std::vector<double> medians(600, -95.0);
    std::fill(medians.begin() + 200, medians.begin() + 245, -75.0);
    EXPECT_NEAR(noiseFloor(medians, {0}, kWindow).levels[222], -95.0, 0.01);
    std::fill(medians.begin() + 200, medians.begin() + 300, -75.0);
    EXPECT_NEAR(noiseFloor(medians, {0}, kWindow).levels[250], -75.0, 0.01);
    EXPECT_NEAR(noiseFloor(medians, {0}, 251).levels[250], -95.0, 0.01);
}

TEST(NoiseFloor, EndsItsWindowsAtBands) {
    std::vector<double> medians(300, -95.0);
    std::fill(medians.begin() + 40, medians.end(), -70.0);  // most of a window around the border
    const NoiseFloor floor = noiseFloor(medians, {0, 40}, kWindow);
    for (const std::size_t point : {0U, 20U, 39U}) {
        EXPECT_NEAR(floor.levels[point], -95.0, 1e-9) << point;
    }
    for (const std::size_t point : {40U, 200U, 299U}) {
        EXPECT_NEAR(floor.levels[point], -70.0, 1e-9) << point;
    }
}

TEST(NoiseFloor, HasALevelWhereAnyPointWasMeasured) {
    const double nan = std::nan("");
    const struct {
        const char* name;
        std::vector<double> medians;
        std::vector<std::size_t> bands;
        std::vector<double> levels;
    } kRows[] = {
        {"no point", {}, {}, {}},
        {"one point", {-80}, {0}, {-80}},
        {"nothing measured", {nan, nan}, {0}, {nan, nan}},
        {"a band without measurement", {-80, -80, nan}, {0, 2}, {-80, -80, nan}},
        {"two points", {-80, -80}, {0}, {-80, -80}},
        {"a signal in a short band", {-80, -80, -40, -80, -80}, {0}, {-80, -80, -80, -80, -80}},
        {"a point not measured", {-80, nan, -80, -80}, {0}, {-80, -80, -80, -80}},
    };
    for (const auto& row : kRows) {
        const NoiseFloor floor = noiseFloor(row.medians, row.bands, kWindow);
        ASSERT_EQ(floor.levels.size(), row.levels.size()) << row.name;
        for (std::size_t i = 0; i < row.levels.size(); ++i) {
            EXPECT_EQ(std::isnan(floor.levels[i]), std::isnan(row.levels[i])) << row.name;
            if (!std::isnan(row.levels[i])) {
                EXPECT_NEAR(floor.levels[i], row.levels[i], 1e-9) << row.name << ", " << i;
            }
        }
    }
}

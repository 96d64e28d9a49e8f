#include "analysis/statistics/gammaNoise.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace rfu;

// Expected values: for a whole shape k the upper tail at x is exp(-x) times the sum of x^i / i! for i
// below k; percentiles by bisection of it.

TEST(GammaNoise, SpreadsAndExceedsByItsShape) {
    const struct {
        double shape;
        double spread;
        double hundredth;  // excess of these upper tails
        double tenThousandth;
        double hundredMillionth;
    } kRows[] = {
        {1, 6.855948, 8.224202, 11.234502, 14.244802},
        {2, 4.129936, 5.971785, 8.453915, 11.082790},
        {10, 1.557239, 2.883989, 4.328163, 6.034519},
        {100, 0.458870, 0.973942, 1.522981, 2.232020},
    };
    for (const auto& row : kRows) {
        EXPECT_NEAR(noiseSpread(row.shape), row.spread, 2e-6) << row.shape;
        EXPECT_NEAR(noiseShape(row.spread), row.shape, 1e-4 * row.shape) << row.shape;
        EXPECT_NEAR(noiseExcess(row.shape, 0.5, 0.0), 0.0, 1e-9) << row.shape;
        EXPECT_NEAR(noiseExcess(row.shape, 1e-2, 0.0), row.hundredth, 2e-6) << row.shape;
        EXPECT_NEAR(noiseExcess(row.shape, 1e-4, 0.0), row.tenThousandth, 2e-6) << row.shape;
        EXPECT_NEAR(noiseExcess(row.shape, 1e-8, 0.0), row.hundredMillionth, 2e-6) << row.shape;
    }
}

TEST(GammaNoise, KeepsItsShapeWithinBounds) {
    const struct {
        const char* name;
        double spread;
        double shape;
    } kRows[] = {
        {"all levels alike", 0.0, kMaxNoiseShape},
        {"wider than that of a single sample", 20.0, kMinNoiseShape},
        {"no number", std::numeric_limits<double>::quiet_NaN(), kMinNoiseShape},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(noiseShape(row.spread), row.shape) << row.name;
    }
}

// By a sum over 40001 places of the median within eight deviations.
TEST(GammaNoise, ExceedsFurtherWhereItsMedianIsUncertain) {
    EXPECT_NEAR(noiseExcess(1, 1e-8, 0.5), 14.7209, 1e-3);
    EXPECT_NEAR(noiseExcess(1, 1e-6, 0.2), 13.0540, 1e-3);
    EXPECT_NEAR(noiseExcess(10, 1e-8, 0.1), 6.0675, 1e-3);
}

#include "analysis/statistics/pointStatistics.h"

#include <gtest/gtest.h>
#include <rfUtils/trace/traceRssiBuffer.h>
#include <support/samples.h>

#include <cstddef>

using rfu::distributionOf;
using rfu::LevelDistribution;
using rfu::PointStatistics;
using rfu::PointTally;
using rfu::test::same;

namespace {

PointStatistics statisticsOf(const std::vector<double>& levels, double limit) {
    PointTally tally;
    for (const double level : levels) {
        tally.add(level, limit);
    }
    return tally.statistics();
}

}  // namespace

TEST(PointStatistics, LeaveOutWhatWasNotMeasured) {
    const struct {
        const char* name;
        std::vector<double> levels;
        double limit;
        PointStatistics expected;
    } kRows[] = {
        {"nothing", {}, -50, {0, 0, {}, {}, {}}},
        {"nothing measured, a limit below the mark", {-999, -999}, -2000, {0, 0, {}, {}, {}}},
        {"three levels, one of them the limit", {-50, -60, -70}, -60, {3, 1, -60, -50, -70}},
        {"the oldest is missing", {-999, -70, -60, -999}, -65, {2, 1, -65, -60, -70}},
        {"a limit below the mark", {-999, -70, -60}, -2000, {2, 2, -65, -60, -70}},
        {"powers are not averaged", {-10, -20}, 0, {2, 0, -15, -10, -20}},
    };
    for (const auto& row : kRows) {
        const PointStatistics found = statisticsOf(row.levels, row.limit);
        EXPECT_EQ(found.count, row.expected.count) << row.name;
        EXPECT_EQ(found.above, row.expected.above) << row.name;
        EXPECT_EQ(found.average, row.expected.average) << row.name;
        EXPECT_EQ(found.maximum, row.expected.maximum) << row.name;
        EXPECT_EQ(found.minimum, row.expected.minimum) << row.name;
    }
}

// The instrument's statistics are those of a marker that is fed the same levels.
TEST(PointStatistics, AreThoseOfTheInstrumentToTheLastBit) {
    rfu::test::Samples samples(5);
    const double kOddOnes[] = {-999.0, 0.0, -0.0, -60.0, 998.999, -998.999, 1e-300};
    for (int run = 0; run < 2000; ++run) {
        const auto size = static_cast<int>(1 + samples.below(40));
        traceRssiBuffer marker(0, size);
        PointTally tally;
        int measured = 0;
        for (int i = 0; i < size; ++i) {
            const double level = samples.below(2) == 0
                                     ? kOddOnes[samples.below(run % 2 == 0 ? 3 : 7)]
                                     : static_cast<double>(samples.below(12000)) / -100.0;
            measured += level == -999.0 ? 0 : 1;
            marker.appendMarkerPower(0, level);
            tally.add(level, -60.0);
        }
        const PointStatistics found = tally.statistics();
        ASSERT_EQ(found.count, measured);
        if (measured > 0) {
            double average = 0.0;
            double maximum = 0.0;
            double minimum = 0.0;
            int above = 0;
            marker.getAverageMarkerPower(0, &average);
            marker.getMaxMarkerPower(0, &maximum);
            marker.getMinMarkerPower(0, &minimum);
            marker.getCountLimitMarkerPower(0, -60.0, &above);
            ASSERT_TRUE(same(*found.average, average) && same(*found.maximum, maximum) &&
                        same(*found.minimum, minimum))
                << run;
            ASSERT_EQ(found.above, above);
        }
    }
}

TEST(LevelDistribution, IsEmptyWhereNothingWasMeasured) {
    for (const auto& levels : {std::vector<double>{}, std::vector<double>{-999, -999}}) {
        const LevelDistribution none = distributionOf(levels);
        EXPECT_FALSE(none.powerMean || none.median || none.deviation || none.strongest);
    }
}

TEST(LevelDistribution, TellsMeanPowerMedianAndDeviation) {
    const struct {
        const char* name;
        std::vector<double> levels;
        double powerMean;
        double median;
        double deviation;
        std::size_t strongest;
    } kRows[] = {
        {"one level", {-30}, -30, -30, 0, 0},
        // Powers 0.1, 0.01, 0.01 and 1e-9 mW: 10 lg(0.12 / 4). The middle two are -20 and -20.
        // Squares from the mean -35: 625 + 225 + 225 + 3025, / 4 = 1025.
        {"four levels, one not measured",
         {-20, -10, -999, -90, -20},
         -15.228787,
         -20,
         32.015621,
         1},
        // 10 lg((1e-7 + 2e-3) / 3); squares from -130 / 3: 711.11 + 177.78 + 177.78, / 3
        {"an odd count, the maximum twice", {-70, -30, -30}, -31.760695, -30, 18.856181, 1},
        {"an even count: the mean of the middle two",
         {-40, -10, -20, -30},
         -15.563459,
         -25,
         11.180340,
         1},
    };
    for (const auto& row : kRows) {
        const LevelDistribution found = distributionOf(row.levels);
        ASSERT_TRUE(found.powerMean && found.median && found.deviation && found.strongest);
        EXPECT_NEAR(*found.powerMean, row.powerMean, 1e-6) << row.name;
        EXPECT_EQ(*found.median, row.median) << row.name;
        EXPECT_NEAR(*found.deviation, row.deviation, 1e-6) << row.name;
        EXPECT_EQ(*found.strongest, row.strongest) << row.name;
    }
}

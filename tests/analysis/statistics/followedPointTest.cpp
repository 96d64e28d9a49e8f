#include "analysis/statistics/followedPoint.h"

#include <gtest/gtest.h>
#include <support/allocations.h>
#include <support/samples.h>

#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "analysis/statistics/sweepStore.h"

using rfu::FollowedPoint;
using rfu::MilliwattTable;
using rfu::PointStatistics;
using rfu::SweepStore;
using rfu::TraceHistory;

namespace {

/// Whole hundredths and others, one in ten not measured.
std::vector<double> someTrace(rfu::test::Samples& samples, std::size_t points) {
    std::vector<double> trace(points);
    for (double& level : trace) {
        const double any = samples.between(-120.0, -20.0);
        level = samples.below(10) == 0  ? -999.0
                : samples.below(2) == 0 ? any
                                        : std::round(any * 100.0) / 100.0;
    }
    return trace;
}

void expectSame(const FollowedPoint& levels, const SweepStore& store, std::size_t column,
                double limit) {
    MilliwattTable milliwatts;
    const PointStatistics ours = levels.statistics(limit);
    const PointStatistics theirs = store.statistics(column);
    EXPECT_EQ(ours.count, theirs.count);
    EXPECT_EQ(ours.above, theirs.above);
    EXPECT_EQ(ours.average, theirs.average);
    EXPECT_EQ(ours.maximum, theirs.maximum);
    EXPECT_EQ(ours.minimum, theirs.minimum);
    EXPECT_EQ(levels.powerMean(milliwatts), store.distribution(column).powerMean);
}

}  // namespace

TEST(FollowedPoint, HasStatistics) {
    TraceHistory history(10);
    history.add({-10.0});
    history.add({-999.0});
    history.add({-20.0});
    FollowedPoint levels;
    levels.follow(history, 0);
    const PointStatistics statistics = levels.statistics(-15.0);
    EXPECT_EQ(statistics.count, 2);
    EXPECT_EQ(statistics.above, 1);
    EXPECT_EQ(statistics.average, -15.0);
    EXPECT_EQ(statistics.maximum, -10.0);
    EXPECT_EQ(statistics.minimum, -20.0);
    // (0.1 mW + 0.01 mW) / 2 = 0.055 mW
    MilliwattTable milliwatts;
    EXPECT_NEAR(levels.powerMean(milliwatts).value(), -12.596373105057561, 1e-12);
}

TEST(FollowedPoint, HasTheStatisticsOfTheRecording) {
    constexpr double kLimit = -60.0;
    constexpr std::size_t kPoints = 3;
    for (const std::size_t depth : {1U, 2U, 7U, 100U}) {
        rfu::test::Samples samples(5);
        TraceHistory history(depth);
        SweepStore store(depth, true, kLimit);
        std::vector<FollowedPoint> levels(kPoints);
        for (int i = 0; i < 150; ++i) {
            const std::vector<double> trace = someTrace(samples, kPoints);
            history.add(trace);
            store.add({}, trace);
            levels[1].follow(history, 1);  // each time, the others now and then
            if (samples.below(9) == 0) {
                levels[0].follow(history, 0);
                expectSame(levels[0], store, 0, kLimit);
            }
            expectSame(levels[1], store, 1, kLimit);
        }
        levels[2].follow(history, 2);
        expectSame(levels[2], store, 2, kLimit);
        levels[2].follow(history, 1);
        expectSame(levels[2], store, 1, kLimit);
    }
}

TEST(FollowedPoint, FollowsWhatHappensToTheHistory) {
    struct Row {
        const char* name;
        void (*change)(TraceHistory& history);
        long long count;
        double minimum;
    };
    // clang-format off
    const Row rows[] = {
        {"nothing",        [](TraceHistory&) {},                                             3, -3.0},
        {"shallower",      [](TraceHistory& h) { h.setDepth(2); },                           2, -3.0},
        {"deeper",         [](TraceHistory& h) { h.setDepth(9); h.add({0.0, -8.0}); },       4, -8.0},
        {"other traces",   [](TraceHistory& h) { h.clear(); h.add({0.0, -7.0}); },           1, -7.0},
        {"another length", [](TraceHistory& h) { h.add({0.0, -6.0, 0.0}); },                 1, -6.0},
        {"more points",    [](TraceHistory& h) { h.grow({}, {1, 0}); },                      3, 0.0},
        {"much later",     [](TraceHistory& h) { for (int i = 0; i < 9; ++i) { h.add({0.0, -9.0}); } }, 3, -9.0}};
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TraceHistory history(3);
        for (const double level : {-1.0, -2.0, -3.0}) {
            history.add({0.0, level});
        }
        FollowedPoint levels;
        levels.follow(history, 1);
        row.change(history);
        levels.follow(history, 1);
        EXPECT_EQ(levels.statistics(0.0).count, row.count);
        EXPECT_EQ(levels.statistics(0.0).minimum, row.minimum);
    }
}

TEST(FollowedPoint, HasNothingWhereNothingWasMeasured) {
    FollowedPoint levels;
    MilliwattTable milliwatts;
    EXPECT_EQ(levels.statistics(0.0).count, 0);
    EXPECT_FALSE(levels.powerMean(milliwatts));
    TraceHistory history(3);
    history.add({-999.0});
    levels.follow(history, 0);
    EXPECT_FALSE(levels.statistics(0.0).average);
    EXPECT_FALSE(levels.powerMean(milliwatts));
}

TEST(FollowedPoint, AllocatesNothingOnceTheDepthIsReached) {
    constexpr int kDepth = 50;
    TraceHistory history(kDepth);
    FollowedPoint point;
    MilliwattTable milliwatts;
    const std::vector<double> trace = {-10.0, -20.0};
    const auto add = [&](int times) {
        for (int i = 0; i < times; ++i) {
            history.add(trace);
            point.follow(history, 1);
        }
    };
    add(10000);
    long long above = 0;
    double powerMean = 0.0;
    std::size_t count = 0;
    {
        const Allocations allocations;
        add(10000);
        above = point.statistics(-30.0).above;
        powerMean = point.powerMean(milliwatts).value();
        count = allocations.count();
    }
    EXPECT_EQ(above, kDepth);
    EXPECT_NEAR(powerMean, -20.0, 1e-12);
    EXPECT_EQ(count, 0U);
}

#include "analysis/statistics/traceHistory.h"

#include <gtest/gtest.h>
#include <support/allocations.h>
#include <support/samples.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

using rfu::FrequencyAxis;
using rfu::kNotMeasured;
using rfu::PackedLevel;
using rfu::TraceHistory;

namespace {

using Trace = std::vector<double>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

/// NaN equals NaN.
void expectTrace(const Trace& trace, const Trace& expected) {
    ASSERT_EQ(trace.size(), expected.size());
    for (std::size_t i = 0; i < trace.size(); ++i) {
        if (std::isnan(expected[i])) {
            EXPECT_TRUE(std::isnan(trace[i])) << i << ": " << trace[i];
        } else {
            EXPECT_DOUBLE_EQ(trace[i], expected[i]) << i;
        }
    }
}

FrequencyAxis axisOf(Trace points, double end) {
    FrequencyAxis axis;
    axis.bands = {{0, points.front(), end}};
    axis.points = std::move(points);
    return axis;
}

}  // namespace

TEST(TraceHistory, KeepsTheNewestTraces) {
    TraceHistory history(2);
    EXPECT_EQ(history.depth(), 2U);
    EXPECT_EQ(history.size(), 0U);
    EXPECT_EQ(history.points(), 0U);
    history.add({-10.0, -20.0}, 100);
    history.add({-30.0, -999.0});
    history.add({-20.0, -5.125}, 300);
    EXPECT_EQ(history.size(), 2U);
    EXPECT_EQ(history.count(), 3U);
    EXPECT_EQ(history.points(), 2U);
    EXPECT_EQ(history.level(0, 0), -30.0);
    EXPECT_TRUE(std::isnan(history.level(0, 1)));
    EXPECT_EQ(history.level(1, 1), -5.125);
    EXPECT_EQ(history.time(0), TraceHistory::kNoTime);
    EXPECT_EQ(history.time(1), 300);
    std::vector<PackedLevel> packed;
    history.copyRow(0, packed);
    EXPECT_EQ(packed, (std::vector<PackedLevel>{-3000, kNotMeasured}));
    history.copyRow(1, packed);
    EXPECT_EQ(packed, (std::vector<PackedLevel>{-2000, -513}));
    // The holds reach further back than the traces kept, the average does not.
    expectTrace(history.newest(), {-20.0, -5.125});
    expectTrace(history.maximum(), {-10.0, -5.125});
    expectTrace(history.minimum(), {-30.0, -20.0});
    expectTrace(history.average(), {-25.0, -5.125});
}

TEST(TraceHistory, TakesWhatWasNotMeasuredInSeveralWays) {
    const double none[] = {kNan, -999.0, std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::infinity()};
    for (const double level : none) {
        TraceHistory history(5);
        history.add({level});
        expectTrace(history.newest(), {kNan});
        expectTrace(history.maximum(), {kNan});
        expectTrace(history.minimum(), {kNan});
        expectTrace(history.average(), {kNan});
        history.add({-4.0});
        history.add({level});
        expectTrace(history.newest(), {kNan});
        expectTrace(history.maximum(), {-4.0});
        expectTrace(history.minimum(), {-4.0});
        expectTrace(history.average(), {-4.0});
    }
}

TEST(TraceHistory, ClearsHoldsAlone) {
    TraceHistory history(5);
    history.add({-1.0});
    history.add({-9.0});
    const std::uint64_t generation = history.generation();
    history.clearHolds();
    expectTrace(history.maximum(), {kNan});
    expectTrace(history.newest(), {-9.0});
    history.add({-5.0});
    expectTrace(history.maximum(), {-5.0});
    expectTrace(history.minimum(), {-5.0});
    expectTrace(history.average(), {-5.0});
    EXPECT_EQ(history.size(), 3U);
    EXPECT_EQ(history.generation(), generation);
}

TEST(TraceHistory, ForgetsEverything) {
    struct Row {
        const char* name;
        void (*change)(TraceHistory& history);
        std::size_t points;
        std::size_t size;
        std::size_t axisPoints;
    };
    // clang-format off
    const Row rows[] = {
        {"clear",          [](TraceHistory& h) { h.clear(); },                             2, 0, 2},
        {"axis",           [](TraceHistory& h) { h.setAxis(axisOf({1.0, 2.0, 3.0}, 4)); }, 3, 0, 3},
        {"no axis",        [](TraceHistory& h) { h.setAxis({}); },                         0, 0, 0},
        {"another length", [](TraceHistory& h) { h.add({-7.0}); },                         1, 1, 0}};
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TraceHistory history(3);
        history.setAxis(axisOf({88.0, 89.0}, 90.0));
        for (int i = 0; i < 5; ++i) {
            history.add({-1.0, -2.0}, i);
        }
        const std::uint64_t generation = history.generation();
        row.change(history);
        EXPECT_NE(history.generation(), generation);
        EXPECT_EQ(history.points(), row.points);
        EXPECT_EQ(history.size(), row.size);
        EXPECT_EQ(history.count(), row.size);
        EXPECT_EQ(history.axis().points.size(), row.axisPoints);
        const Trace none(row.points, row.size > 0 ? -7.0 : kNan);
        expectTrace(history.newest(), none);
        expectTrace(history.maximum(), none);
        expectTrace(history.minimum(), none);
        expectTrace(history.average(), none);
    }
}

TEST(TraceHistory, HasAnotherDepth) {
    TraceHistory history(4);
    for (int i = 0; i < 6; ++i) {
        history.add({-1.0 * i}, i);
    }
    history.setDepth(2);
    EXPECT_EQ(history.size(), 2U);
    EXPECT_EQ(history.count(), 6U);
    EXPECT_EQ(history.time(0), 4);
    EXPECT_EQ(history.level(0, 0), -4.0);
    expectTrace(history.average(), {-4.5});
    history.setDepth(3);
    history.add({-6.0}, 6);
    history.add({-7.0}, 7);
    EXPECT_EQ(history.size(), 3U);
    for (std::size_t row = 0; row < 3; ++row) {
        EXPECT_EQ(history.time(row), 5 + static_cast<std::int64_t>(row));
        EXPECT_EQ(history.level(row, 0), -5.0 - static_cast<double>(row));
    }
    history.setDepth(0);
    EXPECT_EQ(history.depth(), 1U);
    EXPECT_EQ(history.time(0), 7);
}

TEST(TraceHistory, GrowsByPoints) {
    TraceHistory history(2);
    history.setAxis(axisOf({88.0, 89.0}, 90.0));
    history.add({-5.0, -6.0}, 1);
    history.add({-1.0, -2.0}, 2);
    history.add({-3.0, -999.0}, 3);
    const std::uint64_t generation = history.generation();
    history.grow(axisOf({87.0, 88.0, 89.0}, 90.0), {rfu::SweepReader::kNewPoint, 0, 1});
    EXPECT_NE(history.generation(), generation);
    EXPECT_EQ(history.axis().points, (Trace{87.0, 88.0, 89.0}));
    EXPECT_EQ(history.points(), 3U);
    EXPECT_EQ(history.count(), 3U);
    EXPECT_EQ(history.time(0), 2);
    EXPECT_TRUE(std::isnan(history.level(0, 0)));
    EXPECT_EQ(history.level(0, 2), -2.0);
    history.add({-8.0, -5.0, -4.0}, 4);
    expectTrace(history.newest(), {-8.0, -5.0, -4.0});
    expectTrace(history.maximum(), {-8.0, -1.0, -2.0});
    expectTrace(history.minimum(), {-8.0, -5.0, -6.0});
    expectTrace(history.average(), {-8.0, -4.0, -4.0});
}

TEST(TraceHistory, AveragesWithoutDrift) {
    TraceHistory history(3);
    rfu::test::Samples samples(13);
    for (int i = 0; i < 100000; ++i) {
        history.add({samples.between(-150.0, 30.0)});
    }
    for (int i = 0; i < 3; ++i) {
        history.add({-80.1});
    }
    EXPECT_EQ(history.average()[0], -80.1);
    history.add({1e300});
    history.add({-80.1});
    expectTrace(history.average(), {(1e6 - 2 * 80.1) / 3.0});
    for (int i = 0; i < 3; ++i) {
        history.add({-80.1});
    }
    EXPECT_EQ(history.average()[0], -80.1);
}

TEST(TraceHistory, TakesTracesWithoutPoints) {
    TraceHistory history(2);
    history.add({});
    history.add({}, 5);
    EXPECT_EQ(history.size(), 2U);
    EXPECT_EQ(history.time(1), 5);
    EXPECT_TRUE(history.average().empty());
}

TEST(TraceHistory, AllocatesNothingOnceTheDepthIsReached) {
    struct Row {
        const char* name;
        double parts;  // of a dB, from level to level
    };
    for (const Row& row :
         {Row{"hundredths", 100.0}, Row{"both kinds", 1000.0}, Row{"others", 300.0}}) {
        for (const std::size_t points : {1U, 100U, 5000U}) {
            SCOPED_TRACE(row.name);
            constexpr int kDepth = 30;
            TraceHistory history(kDepth);
            std::vector<double> trace(points);
            const auto add = [&](int number) {
                for (std::size_t i = 0; i < points; ++i) {
                    trace[i] = -(static_cast<double>(i) + number + 1.0) / row.parts;
                }
                history.add(trace, number);
            };
            // As many more as a block of short rows may hold.
            for (int i = 0; i < kDepth + 2 * 8192 / static_cast<int>(points); ++i) {
                add(i);
            }
            std::size_t count = 0;
            {
                const Allocations allocations;
                for (int i = 0; i < 3 * 8192 / static_cast<int>(points) + 3 * kDepth; ++i) {
                    add(i);
                }
                count = allocations.count();
            }
            EXPECT_EQ(count, 0U) << points;
            EXPECT_EQ(history.level(kDepth - 1, points - 1), trace.back());
        }
    }
}

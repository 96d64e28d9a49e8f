#include "analysis/statistics/sweepStore.h"

#include <gtest/gtest.h>
#include <support/samples.h>

using rfu::LevelDistribution;
using rfu::PointStatistics;
using rfu::SweepStore;
using rfu::test::same;

namespace {

constexpr double kNone = -999.0;

void expectSame(const PointStatistics& a, const PointStatistics& b) {
    EXPECT_EQ(a.count, b.count);
    EXPECT_EQ(a.above, b.above);
    EXPECT_EQ(a.average.has_value(), b.average.has_value());
    if (a.average && b.average) {
        EXPECT_TRUE(same(*a.average, *b.average) && same(*a.maximum, *b.maximum) &&
                    same(*a.minimum, *b.minimum));
    }
}

/// Stores that differ in what they hold and not in what counts.
std::vector<SweepStore> storesOfEverything() {
    return {SweepStore(SweepStore::kAll, false, -60.0), SweepStore(SweepStore::kAll, true, -60.0),
            SweepStore(1000, false, -60.0)};
}

}  // namespace

TEST(SweepStore, KeepsTheMostRecentSweeps) {
    SweepStore store(2, true, 0.0);
    EXPECT_EQ(store.kept(), 0U);
    EXPECT_TRUE(store.tallies().empty());
    for (int i = 1; i <= 3; ++i) {
        ASSERT_TRUE(store.add("time " + std::to_string(i), {-10.0 * i, -1.0}));
    }
    EXPECT_EQ(store.count(), 3);
    ASSERT_EQ(store.kept(), 2U);
    EXPECT_EQ(store.number(0), 2);
    EXPECT_EQ(store.number(1), 3);
    EXPECT_EQ(store.firstTime(), "time 2");
    EXPECT_EQ(store.lastTime(), "time 3");
    EXPECT_EQ(store.time(0), "time 2");
    EXPECT_EQ(store.statistics(0).average, -25.0);
    EXPECT_EQ(store.distribution(0).strongest, 0U);
}

TEST(SweepStore, TalliesWhatItDoesNotHold) {
    rfu::test::Samples samples(3);
    std::vector<SweepStore> stores = storesOfEverything();
    // Rows that share blocks of memory, and some that do not.
    for (const std::size_t columns : {1U, 7U, 5000U, 9000U}) {
        stores = storesOfEverything();
        for (int sweep = 1; sweep <= 30; ++sweep) {
            std::vector<double> levels;
            for (std::size_t i = 0; i < columns; ++i) {
                levels.push_back(samples.below(5) == 0
                                     ? kNone
                                     : static_cast<double>(samples.below(9000)) / -100.0);
            }
            for (SweepStore& store : stores) {
                ASSERT_TRUE(store.add(std::to_string(sweep), levels));
            }
        }
        for (const SweepStore& store : stores) {
            EXPECT_EQ(store.kept(), 30U);
            EXPECT_EQ(store.firstTime() + store.lastTime(), "130");
            const auto tallies = store.tallies();
            ASSERT_EQ(tallies.size(), columns);
            for (std::size_t i = 0; i < columns; i += 7) {
                expectSame(store.statistics(i), stores[0].statistics(i));
                expectSame(tallies[i].statistics(), stores[0].statistics(i));
            }
        }
    }
}

TEST(SweepStore, HasTheNewestRowsWhereverItsBlocksEnd) {
    SweepStore store(3000, true, 0.0);
    for (int sweep = 1; sweep <= 10000; ++sweep) {
        ASSERT_TRUE(store.add("", {-0.01 * sweep, -0.02 * sweep, -0.03 * sweep}));
    }
    EXPECT_EQ(store.kept(), 3000U);
    EXPECT_EQ(store.number(0), 7001);
    EXPECT_EQ(store.statistics(1).maximum, -0.02 * 7001);
    EXPECT_EQ(store.statistics(2).minimum, -0.03 * 10000);
}

TEST(SweepStore, PutsNewColumnsBetweenTheOthers) {
    for (SweepStore& store : storesOfEverything()) {
        store.add("1", {-10.0, -20.0});
        store.add("2", {-30.0, -40.0});
        ASSERT_TRUE(store.rearrange({SweepStore::kNewColumn, 0, SweepStore::kNewColumn, 1}));
        store.add("3", {-1.0, -50.0, kNone, -60.0});
        std::string counts;
        for (const auto& tally : store.tallies()) {
            counts += std::to_string(tally.statistics().count) + ' ';
        }
        EXPECT_EQ(counts, "1 3 0 3 ");
        EXPECT_EQ(store.statistics(0).average, -1.0);
        EXPECT_EQ(store.statistics(1).average, -30.0);
        EXPECT_EQ(store.statistics(3).average, -40.0);
        EXPECT_EQ(store.kept(), 3U);
    }
}

TEST(SweepStore, CountsDistributionsFromTheOldestKeptSweep) {
    SweepStore store(SweepStore::kAll, true, 0.0);
    store.add("1", {-10.0});
    ASSERT_TRUE(store.rearrange({0, SweepStore::kNewColumn}));
    store.add("2", {-20.0, -5.0});
    EXPECT_EQ(store.distribution(0).strongest, 0U);
    EXPECT_EQ(store.distribution(1).strongest, 1U) << "the new column has a place in every sweep";
    EXPECT_EQ(store.distribution(0).median, -15.0);
}

TEST(SweepStore, HoldsNoMoreThanItsBound) {
    // 1000 levels of 8 bytes and a time of 64 bytes: 8064 bytes a sweep.
    const std::vector<double> levels(1000, -50.0);
    SweepStore store(1000, false, 0.0, 10 * 8064);
    int added = 0;
    while (added < 100 && store.add("", levels)) {
        ++added;
    }
    EXPECT_EQ(added, 10);
    EXPECT_FALSE(store.rearrange(std::vector<std::size_t>(1001)));
    EXPECT_EQ(store.kept(), 10U);
    EXPECT_EQ(store.statistics(999).count, 10);
    EXPECT_EQ(SweepStore::kMaxBytes, 1073741824U);
}

TEST(SweepStore, IsBoundByWhatItHoldsOnly) {
    const std::vector<double> levels(1000, -50.0);
    SweepStore recent(10, false, 0.0, 10 * 8064);
    SweepStore tallied(SweepStore::kAll, false, 0.0, 10 * 8064);
    for (int sweep = 0; sweep < 1000; ++sweep) {
        ASSERT_TRUE(recent.add("", levels));
        ASSERT_TRUE(tallied.add("", levels));
    }
    EXPECT_EQ(recent.statistics(999).count, 10);
    EXPECT_EQ(tallied.statistics(999).count, 1000);
}

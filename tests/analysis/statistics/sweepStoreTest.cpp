#include "analysis/statistics/sweepStore.h"

#include <gtest/gtest.h>

TEST(SweepStore, KeepsTheMostRecentSweeps) {
    rfu::SweepStore store(2);
    EXPECT_EQ(store.kept(), 0U);
    for (int i = 1; i <= 3; ++i) {
        rfu::Sweep sweep = {"time " + std::to_string(i), {-10.0 * i}};
        store.add(sweep);
    }
    EXPECT_EQ(store.count(), 3);
    ASSERT_EQ(store.kept(), 2U);
    EXPECT_EQ(store.number(0), 2);
    EXPECT_EQ(store.number(1), 3);
    EXPECT_EQ(store.time(0), "time 2");
    EXPECT_EQ(store.time(1), "time 3");
    store.buffer().calcMarkerPower(0, 0);
    std::vector<double> levels;
    ASSERT_TRUE(store.buffer().getDataMarkerPower(levels, 0));
    EXPECT_EQ(levels, (std::vector<double>{-20.0, -30.0}));
}

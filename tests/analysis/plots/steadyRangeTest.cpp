#include "analysis/plots/steadyRange.h"

#include <gtest/gtest.h>

using rfu::LevelRange;
using rfu::ValueRange;

namespace {

struct RangeRow {
    const char* name;
    std::optional<LevelRange> before;
    ValueRange levels;
    double origin;
    LevelRange range;
};

constexpr LevelRange kBefore = {-110.0, -20.0};

}  // namespace

TEST(SteadyRange, FollowsLevelsInSteps) {
    const RangeRow rows[] = {
        {"at first", {}, {-97.0, -52.0}, 0.0, {-100.0, -50.0}},
        {"with room", {}, {-99.0, -51.0}, 0.0, {-110.0, -40.0}},
        {"one level", {}, {-95.0, -95.0}, 0.0, {-100.0, -90.0}},
        {"steps of another unit", {}, {-95.0, -52.0}, 3.0, {-97.0, -47.0}},
        {"unchanged", kBefore, {-105.0, -25.0}, 0.0, kBefore},
        {"without room", kBefore, {-110.0, -20.0}, 0.0, kBefore},
        {"a step would be saved", kBefore, {-95.0, -35.0}, 0.0, kBefore},
        {"two steps are saved", kBefore, {-85.0, -45.0}, 0.0, {-90.0, -40.0}},
        {"lower levels", kBefore, {-110.1, -25.0}, 0.0, {-120.0, -20.0}},
        {"higher levels", kBefore, {-105.0, -19.9}, 0.0, {-110.0, -10.0}},
        {"elsewhere", kBefore, {20.0, 30.0}, 0.0, {10.0, 40.0}},
        {"far away", {}, {-1e300, 1e300}, 0.0, {-1010.0, 1010.0}},
    };
    for (const RangeRow& row : rows) {
        const LevelRange range = rfu::steadyRange(row.before, row.levels, row.origin);
        EXPECT_DOUBLE_EQ(range.low, row.range.low) << row.name;
        EXPECT_DOUBLE_EQ(range.high, row.range.high) << row.name;
    }
}

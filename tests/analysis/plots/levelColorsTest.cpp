#include "analysis/plots/levelColors.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

using rfu::LevelColors;
using rfu::LevelHistogram;
using rfu::LevelRange;
using rfu::PackedLevel;

TEST(LevelColors, DividesTheRangeEvenly) {
    // 25.6 dB: 0.1 dB for each entry
    const LevelColors colors(*rfu::findPalette("viridis"), {-100.0, -74.4});
    const struct {
        int level;
        int entry;
    } kRows[] = {{-10000, 0},  {-9991, 0},   {-9990, 1},  {-9981, 1},   {-8720, 128},
                 {-7441, 255}, {-7440, 255}, {-32767, 0}, {32767, 255}, {0, 255}};
    for (const auto& row : kRows) {
        const auto level = static_cast<PackedLevel>(row.level);
        EXPECT_EQ(colors.entry(level), row.entry) << row.level;
        EXPECT_EQ(colors.color(level), colors.palette().color(row.entry)) << row.level;
    }
    EXPECT_EQ(colors.color(rfu::kNotMeasured), 0U);
}

TEST(LevelColors, ReachFromTheFirstToTheLastPercentile) {
    LevelHistogram levels;
    std::vector<PackedLevel> all;
    for (int i = 1; i <= 2000; ++i) {
        all.push_back(static_cast<PackedLevel>(-10000 + i));
    }
    levels.add(all.data(), all.size());
    const LevelRange range = rfu::usualRange(levels);
    EXPECT_EQ(range.low, -99.80);   // the 20th
    EXPECT_EQ(range.high, -80.02);  // the 1998th
}

TEST(LevelColors, WidenARangeOfOneLevel) {
    LevelHistogram levels;
    EXPECT_EQ(rfu::usualRange(levels).low, -0.5) << "nothing measured";
    const PackedLevel same[] = {-5000, -5000, -4991};
    levels.add(same, 3);
    EXPECT_EQ(rfu::usualRange(levels).low, -50.5);
    EXPECT_EQ(rfu::usualRange(levels).high, -49.41);
}

TEST(LevelColors, KeepASteadyRange) {
    const struct {
        const char* name;
        std::optional<LevelRange> before;
        LevelRange usual;
        LevelRange steady;
    } kRows[] = {{"at first", {}, {-97.3, -31.2}, {-100.0, -30.0}},
                 {"at first, on the steps", {}, {-95.0, -30.0}, {-95.0, -30.0}},
                 {"the same", {{-100.0, -30.0}}, {-97.3, -31.2}, {-100.0, -30.0}},
                 {"little room", {{-100.0, -30.0}}, {-100.0, -30.0}, {-100.0, -30.0}},
                 {"much room", {{-100.0, -30.0}}, {-90.0, -40.0}, {-100.0, -30.0}},
                 {"lower", {{-100.0, -30.0}}, {-100.1, -30.0}, {-105.0, -30.0}},
                 {"higher", {{-100.0, -30.0}}, {-95.0, -29.9}, {-95.0, -25.0}},
                 {"too much room below", {{-100.0, -30.0}}, {-89.9, -31.0}, {-90.0, -30.0}},
                 {"too much room above", {{-100.0, -30.0}}, {-98.0, -40.1}, {-100.0, -40.0}}};
    for (const auto& row : kRows) {
        const LevelRange steady = rfu::steadyColors(row.before, row.usual);
        EXPECT_EQ(steady.low, row.steady.low) << row.name;
        EXPECT_EQ(steady.high, row.steady.high) << row.name;
    }
}

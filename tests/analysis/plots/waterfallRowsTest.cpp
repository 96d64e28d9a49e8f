#include "analysis/plots/waterfallRows.h"

#include <gtest/gtest.h>
#include <support/samples.h>

#include <algorithm>

using rfu::ColumnPoints;
using rfu::kNotMeasured;
using rfu::PackedLevel;
using rfu::Reduction;
using rfu::WaterfallRows;

namespace {

using Levels = std::vector<PackedLevel>;

const std::vector<ColumnPoints> kColumns = {{0, 0, 1}, {1, 1, 4}, {2, 4, 5}};

Levels reduced(Reduction reduction, const std::vector<Levels>& sweeps) {
    const auto rows = WaterfallRows::make(reduction, kColumns, 100);
    for (std::size_t i = 0; i < sweeps.size(); ++i) {
        rows->add(static_cast<std::int64_t>(i), 0, sweeps[i].data());
    }
    return rows->reduced(0, rows->size());
}

}  // namespace

TEST(WaterfallRows, ReducesTheMeasuredCells) {
    const std::vector<Levels> sweeps = {{-100, -10, -20, kNotMeasured, kNotMeasured},
                                        {-103, -40, -90, kNotMeasured, kNotMeasured}};
    EXPECT_EQ(reduced(Reduction::Maximum, sweeps), (Levels{-100, -10, kNotMeasured}));
    EXPECT_EQ(reduced(Reduction::Minimum, sweeps), (Levels{-103, -90, kNotMeasured}));
    EXPECT_EQ(reduced(Reduction::Mean, sweeps), (Levels{-102, -40, kNotMeasured}))
        << "-101.5 goes away from zero";
    EXPECT_EQ(reduced(Reduction::Minimum, {{32767, 5, 5, 5, -32767}}), (Levels{32767, 5, -32767}));
}

TEST(WaterfallRows, ReduceTheRowsAskedFor) {
    const auto rows = WaterfallRows::make(Reduction::Maximum, {{0, 0, 1}}, 100);
    for (PackedLevel level = 0; level < 5; ++level) {
        rows->add(level, 10 * level, &level);
    }
    EXPECT_EQ(rows->reduced(1, 3), Levels{2});
    EXPECT_EQ(rows->reduced(3, 3), Levels{kNotMeasured});
    EXPECT_EQ(rows->times(), (std::vector<std::int64_t>{0, 10, 20, 30, 40}));
}

TEST(WaterfallRows, MergesNeighboursWhenThereAreTooMany) {
    const auto rows = WaterfallRows::make(Reduction::Maximum, {{0, 0, 1}}, 4);
    for (PackedLevel level = 0; level < 5; ++level) {
        rows->add(level, level, &level);
    }
    EXPECT_EQ(rows->keys(), (std::vector<std::int64_t>{0, 2, 4}));
    EXPECT_EQ(rows->reduced(0, 1), Levels{1});
    EXPECT_EQ(rows->reduced(1, 2), Levels{3});
    const PackedLevel strong = 99;
    rows->add(5, 5, &strong);
    EXPECT_EQ(rows->size(), 3U) << "5 belongs to 4";
    EXPECT_EQ(rows->reduced(2, 3), Levels{99});
}

TEST(WaterfallRows, LosesNothingAndKeepsItsBounds) {
    rfu::test::Samples samples(21);
    for (const Reduction reduction : {Reduction::Maximum, Reduction::Mean, Reduction::Minimum}) {
        for (int run = 0; run < 20; ++run) {
            const std::size_t most = 4 + samples.below(60);
            const auto rows = WaterfallRows::make(reduction, {{0, 0, 2}}, most);
            std::int64_t key = 1000000;
            std::int64_t sum = 0;
            Levels all;
            for (int i = 0; i < 5000; ++i) {
                key += samples.below(100) == 0 ? 1000 : static_cast<std::int64_t>(samples.below(3));
                const PackedLevel cells[] = {static_cast<PackedLevel>(samples.below(30000)),
                                             static_cast<PackedLevel>(samples.below(30000))};
                all.insert(all.end(), cells, cells + 2);
                sum += cells[0] + cells[1];
                rows->add(key, key, cells);
                ASSERT_LE(rows->size(), most);
            }
            const PackedLevel whole = rows->reduced(0, rows->size())[0];
            const double mean = static_cast<double>(sum) / static_cast<double>(all.size());
            EXPECT_EQ(whole, reduction == Reduction::Maximum
                                 ? *std::max_element(all.begin(), all.end())
                             : reduction == Reduction::Minimum
                                 ? *std::min_element(all.begin(), all.end())
                                 : static_cast<PackedLevel>(std::lround(mean)));
            // Each stands for 2.7 / most of the axis at most.
            for (std::size_t i = 1; i < rows->size(); ++i) {
                EXPECT_GT(rows->keys()[i], rows->keys()[i - 1]);
            }
        }
    }
}

TEST(WaterfallRows, BearAClockThatGoesBackAndForth) {
    const auto rows = WaterfallRows::make(Reduction::Maximum, {{0, 0, 1}}, 8);
    for (PackedLevel level = 0; level < 1000; ++level) {
        const std::int64_t key = level % 2 == 0 ? 0 : std::int64_t{1} << 58;
        rows->add(key, key, &level);
        ASSERT_LE(rows->size(), 8U);
    }
    EXPECT_EQ(rows->reduced(0, rows->size()), Levels{999});
}

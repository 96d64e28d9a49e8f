#include "analysis/statistics/levelHistory.h"

#include <gtest/gtest.h>
#include <rfUtils/trace/traceRssiBuffer.h>
#include <support/samples.h>

#include <algorithm>
#include <cmath>

using rfu::LevelHistory;
using rfu::Sweep;
using rfu::test::Samples;

namespace {

constexpr double kNone = traceRssiBuffer::kNoMeasurement;

/// Sweeps whose time is their number.
std::vector<Sweep> numbered(const std::vector<std::vector<double>>& levels) {
    std::vector<Sweep> sweeps;
    for (const auto& row : levels) {
        sweeps.push_back({std::to_string(sweeps.size()), row});
    }
    return sweeps;
}

/// Levels to the hundredth between -120 and -60, some not measured, the third point never.
std::vector<Sweep> randomSweeps(std::size_t sweeps, std::size_t points) {
    Samples samples(7);
    std::vector<std::vector<double>> rows(sweeps, std::vector<double>(points, kNone));
    for (auto& row : rows) {
        for (std::size_t i = 0; i < points; ++i) {
            const bool isMeasured = i != 2 && samples.below(20) > 0;
            row[i] = isMeasured ? std::round(samples.between(-12000, -6000)) / 100.0 : kNone;
        }
    }
    return numbered(rows);
}

/// The measured levels of a point.
std::vector<double> column(const std::vector<Sweep>& sweeps, std::size_t point) {
    std::vector<double> levels;
    for (const Sweep& sweep : sweeps) {
        if (sweep.levels[point] != kNone) {
            levels.push_back(sweep.levels[point]);
        }
    }
    return levels;
}

double medianOf(std::vector<double> levels) {
    std::sort(levels.begin(), levels.end());
    const std::size_t half = levels.size() / 2;
    return levels.size() % 2 == 1 ? levels[half] : (levels[half - 1] + levels[half]) / 2.0;
}

LevelHistory historyOf(const std::vector<Sweep>& sweeps, std::size_t maxBytes) {
    LevelHistory history(maxBytes);
    for (const Sweep& sweep : sweeps) {
        history.add(sweep);
    }
    return history;
}

struct Kept {
    const char* name;
    std::size_t sweeps;
    std::size_t points;
    std::size_t maxBytes;
    double resolution;
};

/// What a history answers beside what sorting and searching the levels gives.
class LevelHistoryOf : public ::testing::TestWithParam<Kept> {
protected:
    std::vector<Sweep> sweeps_ = randomSweeps(GetParam().sweeps, GetParam().points);
    LevelHistory history_ = historyOf(sweeps_, GetParam().maxBytes);
};

}  // namespace

TEST_P(LevelHistoryOf, tellsMedians) {
    const std::vector<double> medians = history_.medians();
    EXPECT_EQ(history_.resolution(), GetParam().resolution);
    ASSERT_EQ(medians.size(), GetParam().points);
    for (std::size_t i = 0; i < medians.size(); ++i) {
        const std::vector<double> levels = column(sweeps_, i);
        if (levels.empty()) {
            EXPECT_TRUE(std::isnan(medians[i])) << i;
        } else if (GetParam().resolution == 0.0) {
            EXPECT_NEAR(medians[i], medianOf(levels), 1e-9) << i;
        } else {
            // The middle two levels may lie far apart.
            std::vector<double> sorted = levels;
            std::sort(sorted.begin(), sorted.end());
            EXPECT_GE(medians[i], sorted[(sorted.size() - 1) / 2] - GetParam().resolution) << i;
            EXPECT_LE(medians[i], sorted[sorted.size() / 2] + GetParam().resolution) << i;
        }
    }
}

TEST_P(LevelHistoryOf, tellsWhenALevelWasExceeded) {
    for (std::size_t point = 0; point < GetParam().points; ++point) {
        // Multiples of every bin's width.
        for (const double bound : {-130.0, -118.4, -100.0, -89.6, -67.2, -60.8, -60.0, -50.0}) {
            long long count = 0;
            std::string first;
            std::string last;
            for (const Sweep& sweep : sweeps_) {
                if (sweep.levels[point] > bound) {
                    first = count == 0 ? sweep.time : first;
                    last = sweep.time;
                    ++count;
                }
            }
            const auto found = history_.above(point, bound);
            EXPECT_EQ(found.count, count) << point << ", " << bound;
            EXPECT_EQ(found.first, first) << point << ", " << bound;
            EXPECT_EQ(found.last, last) << point << ", " << bound;
        }
    }
}

TEST_P(LevelHistoryOf, namesTheBinOfEveryLevel) {
    const double width = std::max(GetParam().resolution, 0.05);
    for (std::size_t point = 0; point < GetParam().points; ++point) {
        double sum = 0.0;
        long long count = 0;
        history_.forEachBin(point, [&](double level, long long times) {
            sum += level * static_cast<double>(times);
            count += times;
        });
        const std::vector<double> levels = column(sweeps_, point);
        ASSERT_EQ(count, static_cast<long long>(levels.size())) << point;
        double expected = 0.0;
        for (const double level : levels) {
            expected += level;
        }
        EXPECT_NEAR(sum, expected, static_cast<double>(count) * width / 2.0 + 1e-6);
    }
}

INSTANTIATE_TEST_SUITE_P(All, LevelHistoryOf,
                         ::testing::Values(Kept{"held", 701, 70, 1000000, 0.0},
                                           Kept{"heldOfOddCount", 3, 130, 1000000, 0.0},
                                           Kept{"drainedOnce", 300, 5, 100000, 0.0},
                                           Kept{"histograms", 2000, 70, 350000, 0.05},
                                           Kept{"wideHistograms", 2000, 70, 60000, 0.4}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(LevelHistory, CountsBeyondSixteenBits) {
    LevelHistory history(10000);
    for (int i = 0; i < 140000; ++i) {
        history.add({std::to_string(i), {i < 3 ? -50.0 : -70.0}});
    }
    ASSERT_GT(history.resolution(), 0.0);
    EXPECT_NEAR(history.medians()[0], -70.0, 0.05);
    EXPECT_EQ(history.above(0, -60.0).count, 3);
    EXPECT_EQ(history.above(0, -60.0).last, "2");
    EXPECT_EQ(history.above(0, -80.0).count, 140000);
    EXPECT_EQ(history.above(0, -80.0).last, "139999");
}

TEST(LevelHistory, RoundsToHundredths) {
    const struct {
        const char* name;
        double level;
        double rounded;
    } kRows[] = {
        {"two decimals", -51.23, -51.23}, {"none", -51, -51},       {"three, up", -51.235, -51.24},
        {"three, down", -51.234, -51.23}, {"above 0", 0.126, 0.13}, {"too high", 500, 327.67},
        {"too low", -998.9, -327.67},
    };
    for (const auto& row : kRows) {
        EXPECT_DOUBLE_EQ(LevelHistory::rounded(row.level), row.rounded) << row.name;
        EXPECT_DOUBLE_EQ(historyOf(numbered({{row.level}}), 1000).medians()[0], row.rounded)
            << row.name;
    }
}

TEST(LevelHistory, HasThresholdsOnAGrid) {
    const struct {
        double level;
        double onGrid;
    } kRows[] = {{-89.0, -89.0}, {-88.99, -88.95},     {-89.0 + 1e-9, -89.0}, {-0.01, 0.0},
                 {0.01, 0.05},   {-89.9 + 0.1, -89.8}, {-95.3 + 6.0, -89.3}};
    for (const auto& row : kRows) {
        EXPECT_EQ(LevelHistory::onGrid(row.level), row.onGrid) << row.level;
    }
}

TEST(LevelHistory, IsFullWhereItsHistogramsWouldNotFit) {
    const std::vector<double> levels(LevelHistory::kMaxPoints + 1, -90.0);
    LevelHistory history(3 * levels.size());
    history.add({"0", levels});
    EXPECT_FALSE(history.isFull());
    history.add({"1", levels});
    EXPECT_TRUE(history.isFull());
    LevelHistory few(100);
    few.add({"0", std::vector<double>(100, -90.0)});
    EXPECT_FALSE(few.isFull());
}

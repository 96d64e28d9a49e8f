#include "analysis/statistics/comparison.h"

#include <gtest/gtest.h>
#include <rfUtils/trace/traceRssiBuffer.h>
#include <support/limits.h>

#include <cmath>

using namespace rfu;
using rfu::test::kNan;

namespace {

constexpr double kNone = traceRssiBuffer::kNoMeasurement;

/// Bins of a width from a frequency on, in one band.
FrequencyAxis axisOf(double low, double width, std::size_t points) {
    FrequencyAxis axis;
    for (std::size_t i = 0; i < points; ++i) {
        axis.points.push_back(low + static_cast<double>(i) * width);
    }
    axis.bands.push_back({0, low, low + static_cast<double>(points) * width});
    return axis;
}

std::vector<double> levelsOf(PointStatistic statistic,
                             const std::vector<std::vector<double>>& sweeps) {
    PointLevels levels(statistic);
    for (const auto& sweep : sweeps) {
        levels.add({"2024-05-04 21:15:00", sweep});
    }
    EXPECT_EQ(levels.resolution(), 0.0);
    return levels.levels();
}

void expectAlike(const std::vector<double>& found, const std::vector<double>& expected,
                 const char* name) {
    ASSERT_EQ(found.size(), expected.size()) << name;
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_EQ(std::isnan(found[i]), std::isnan(expected[i])) << name << ' ' << i;
        if (!std::isnan(expected[i])) {
            EXPECT_NEAR(found[i], expected[i], 1e-9) << name << ' ' << i;
        }
    }
}

std::vector<std::vector<std::size_t>> changesOf(const std::vector<double>& differences,
                                                const std::vector<std::size_t>& bands = {0}) {
    std::vector<std::vector<std::size_t>> found;
    for (const LevelChange& change : changesAbove(3.0, differences, bands)) {
        found.push_back({change.first, change.last, change.largest});
    }
    return found;
}

using Changes = std::vector<std::vector<std::size_t>>;

}  // namespace

TEST(Comparison, TakesAStatisticOfEachPoint) {
    const std::vector<std::vector<double>> sweeps = {
        {-50, -70, kNone}, {-60, kNone, kNone}, {-40, -72, kNone}, {-44, kNone, kNone}};
    expectAlike(levelsOf(PointStatistic::Average, sweeps), {-48.5, -71, kNan}, "average");
    expectAlike(levelsOf(PointStatistic::Maximum, sweeps), {-40, -70, kNan}, "maximum");
    expectAlike(levelsOf(PointStatistic::Minimum, sweeps), {-60, -72, kNan}, "minimum");
    expectAlike(levelsOf(PointStatistic::Median, sweeps), {-47, -71, kNan}, "median");
}

TEST(Comparison, TellsWhyPointsLieApart) {
    const auto traceOf = [](const FrequencyAxis& axis, std::size_t points) {
        return LevelTrace{axis, std::vector<double>(points)};
    };
    const LevelTrace a = traceOf(axisOf(100, 1, 4), 4);
    FrequencyAxis apart = axisOf(100, 1, 4);
    apart.points[2] += 0.011;
    FrequencyAxis near = axisOf(100, 1, 4);
    near.points[2] += 0.009;
    FrequencyAxis banded = axisOf(100, 1, 4);
    banded.bands = {{0, 100, 102}, {2, 102, 104}};
    const struct {
        const char* name;
        LevelTrace trace;
        std::optional<std::string> reason;
    } kRows[] = {
        {"the same", a, std::nullopt},
        {"within a hundredth of a bin", traceOf(near, 4), std::nullopt},
        {"more than that", traceOf(apart, 4), "point 2 lies at 102.011 MHz, not at 102 MHz"},
        {"fewer", traceOf(axisOf(100, 1, 3), 3),
         "3 points from 100 MHz to 103 MHz, not 4 points from 100 MHz to 104 MHz"},
        {"other bands", traceOf(banded, 4),
         "4 points from 100 MHz to 102 MHz and from 102 MHz to 104 MHz, not 4 points from 100 MHz "
         "to "
         "104 MHz"},
        {"no frequencies", traceOf({}, 4),
         "4 points without frequencies, not 4 points from 100 MHz to 104 MHz"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(whyApart(row.trace, a), row.reason) << row.name;
    }
    EXPECT_EQ(whyApart(traceOf({}, 4), traceOf({}, 4)), std::nullopt);
    EXPECT_TRUE(whyApart(traceOf({}, 3), traceOf({}, 4)).has_value());
}

TEST(Comparison, TakesLevelsBetweenTheMiddlesOfBins) {
    FrequencyAxis twoBands = axisOf(100, 1, 4);
    twoBands.points = {100, 101, 110, 111};
    twoBands.bands = {{0, 100, 102}, {2, 110, 112}};
    FrequencyAxis covered = axisOf(100, 1, 4);
    covered.points = {100, 101, 101, 102};
    covered.bands[0].high = 103;
    const struct {
        const char* name;
        LevelTrace trace;
        FrequencyAxis axis;
        std::vector<double> levels;
    } kRows[] = {
        {"the same bins", {axisOf(100, 1, 3), {-10, -20, -40}}, axisOf(100, 1, 3), {-10, -20, -40}},
        {"half a bin further",
         {axisOf(100, 1, 3), {-10, -20, -40}},
         axisOf(100.5, 1, 3),
         {-15, -30, kNan}},
        // Middles at 100.25, 100.75, ... between those at 100.5, 101.5 and 102.5.
        {"bins of half the width",
         {axisOf(100, 1, 3), {-10, -20, -40}},
         axisOf(100, 0.5, 6),
         {-10, -12.5, -17.5, -25, -35, -40}},
        // Middles at 101 and 103, where the band ends.
        {"bins of twice the width",
         {axisOf(100, 1, 3), {-10, -20, -40}},
         axisOf(100, 2, 2),
         {-15, kNan}},
        {"beside a level that is missing",
         {axisOf(100, 1, 3), {-10, kNan, -40}},
         axisOf(99.75, 0.25, 8),
         // Middles at 99.875, 100.125, ... 101.625
         {kNan, -10, -10, kNan, kNan, kNan, kNan, kNan}},
        {"at a level that is not", {axisOf(100, 1, 2), {-10, kNan}}, axisOf(100, 1, 1), {-10}},
        {"nothing across a gap",
         {twoBands, {-10, -20, -30, -40}},
         axisOf(100.25, 1.5, 8),
         // Middles at 101, 102.5, 104, ... 110, 111.5
         {-15, kNan, kNan, kNan, kNan, kNan, -30, -40}},
        {"not from a bin that the next hop covers",
         {covered, {-10, 0, -20, -30}},
         axisOf(100, 1, 3),
         {-10, -20, -30}},
        {"onto a bin that the next hop covers",
         {axisOf(100, 1, 3), {-10, -20, -40}},
         covered,
         {-10, kNan, -20, -40}},
    };
    for (const auto& row : kRows) {
        expectAlike(resampled(row.trace, row.axis), row.levels, row.name);
    }
}

TEST(Comparison, GathersWhatRoseAndWhatFell) {
    EXPECT_EQ(changesOf({0, 4, 6, 5, 0, 0, -7, -4}), (Changes{{1, 3, 2}, {6, 7, 6}}));
    EXPECT_EQ(changesOf({3, -3, 3.01, -3.01}), (Changes{{2, 2, 2}, {3, 3, 3}}));
    EXPECT_EQ(changesOf({4, 0, 5, 0, 0, 6}), (Changes{{0, 2, 2}, {5, 5, 5}})) << "a point between";
    EXPECT_EQ(changesOf({4, 5, 6, 4}, {0, 2}), (Changes{{0, 1, 1}, {2, 3, 2}})) << "two bands";
    EXPECT_EQ(changesOf({kNan, 4, kNan}), (Changes{{1, 1, 1}}));
    EXPECT_EQ(changesOf({4, -4, 4}), (Changes{{0, 2, 0}, {1, 1, 1}})) << "the first of equals";
    EXPECT_TRUE(changesOf({}).empty());
}

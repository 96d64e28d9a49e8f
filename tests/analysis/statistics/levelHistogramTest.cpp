#include "analysis/statistics/levelHistogram.h"

#include <gtest/gtest.h>
#include <rfUtils/trace/traceRssiBuffer.h>
#include <support/limits.h>
#include <support/samples.h>

#include <algorithm>

using rfu::kNotMeasured;
using rfu::LevelHistogram;
using rfu::PackedLevel;
using rfu::test::kNan;

namespace {

PackedLevel packed(double level, double offset = 0.0) {
    PackedLevel result = 0;
    rfu::packLevels(&level, &offset, 1, &result);
    return result;
}

}  // namespace

TEST(PackedLevel, IsAWholeNumberOfHundredths) {
    const struct {
        const char* name;
        double level;
        double offset;
        int packed;
    } kRows[] = {
        {"as written", -51.23, 0.0, -5123},
        {"zero", 0.0, 0.0, 0},
        {"up to the next", -51.234, 0.0, -5123},
        {"down to the next", 51.236, 0.0, 5124},
        {"a tie goes away from zero", -50.125, 0.0, -5013},
        {"with an offset", -51.23, 106.99, 5576},
        {"the lowest", -327.67, 0.0, -32767},
        {"below it", -998.9, 0.0, -32767},
        {"the highest", 327.67, 0.0, 32767},
        {"above it", 998.9, 0.0, 32767},
        {"not measured", traceRssiBuffer::kNoMeasurement, 0.0, kNotMeasured},
        {"not measured, with an offset", traceRssiBuffer::kNoMeasurement, 900.0, kNotMeasured},
        {"no number", kNan, 0.0, kNotMeasured},
        {"an offset that is none", -50.0, kNan, kNotMeasured},
        {"an infinite offset", -50.0, INFINITY, 32767},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(packed(row.level, row.offset), row.packed) << row.name;
    }
    EXPECT_EQ(rfu::unpacked(-5123), -51.23);
    const double level = -40.0;
    PackedLevel result = 0;
    rfu::packLevels(&level, nullptr, 1, &result);
    EXPECT_EQ(result, -4000) << "without offsets";
}

TEST(LevelHistogram, TellsPercentilesByNearestRank) {
    LevelHistogram histogram;
    EXPECT_FALSE(histogram.percentile(0.5).has_value());
    const PackedLevel levels[] = {-32767, 32767, -5000, -5000, kNotMeasured};
    histogram.add(levels, 5);
    EXPECT_EQ(histogram.measured(), 4);
    EXPECT_EQ(histogram.notMeasured(), 1);
    const struct {
        double share;
        int level;
    } kRows[] = {{0.0001, -32767}, {0.25, -32767}, {0.26, -5000},
                 {0.75, -5000},    {0.76, 32767},  {1.0, 32767}};
    for (const auto& row : kRows) {
        EXPECT_EQ(histogram.percentile(row.share), row.level) << row.share;
    }
}

TEST(LevelHistogram, AgreesWithSortedLevels) {
    rfu::test::Samples samples(12);
    std::vector<PackedLevel> levels(5000);
    for (PackedLevel& level : levels) {
        level = static_cast<PackedLevel>(-12000 + static_cast<int>(samples.below(9000)));
    }
    LevelHistogram histogram;
    histogram.add(levels.data(), 2000);
    histogram.add(levels.data() + 2000, 3000);
    std::sort(levels.begin(), levels.end());
    for (const int rank : {1, 50, 2500, 4995, 5000}) {
        EXPECT_EQ(histogram.percentile(rank / 5000.0), levels[static_cast<std::size_t>(rank - 1)]);
    }
}

#include "analysis/statistics/limitMask.h"

#include <gtest/gtest.h>
#include <support/limits.h>
#include <support/tempFiles.h>

#include <string>

#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"

using rfu::FrequencyAxis;
using rfu::LimitMask;
using rfu::MaskResult;
using rfu::test::kNan;

namespace {

LimitMask maskOf(const std::string& bytes, bool isLinear = false) {
    const TempFiles files;
    return rfu::readLimitMask(QString::fromStdString(files.write("mask.csv", bytes)), isLinear);
}

/// Bins of 1 MHz from 100 MHz on; a second band begins at a point.
FrequencyAxis axisOf(std::size_t points, std::size_t secondBand = 0) {
    FrequencyAxis axis;
    for (std::size_t i = 0; i < points; ++i) {
        axis.points.push_back(100.0 + static_cast<double>(i));
    }
    axis.bands = {{0, 100.0, 200.0}};
    if (secondBand > 0) {
        axis.bands.push_back({secondBand, 0.0, 0.0});
    }
    return axis;
}

std::string text(double number) {
    return std::string(rfu::ShortestText(number).view());
}

/// "3-5 at 4: upper -40, -2.5" for each violation.
std::string violationsOf(const std::string& mask, const std::vector<double>& levels,
                         std::size_t secondBand = 0, double decibelsPerDecade = 0.0) {
    const MaskResult result = judge(maskOf(mask, decibelsPerDecade > 0.0),
                                    axisOf(levels.size(), secondBand), levels, decibelsPerDecade);
    std::string all;
    for (const rfu::Violation& violation : result.violations) {
        all += all.empty() ? "" : "; ";
        all += std::to_string(violation.first) + "-" + std::to_string(violation.last) + " at " +
               std::to_string(violation.worst) + ": " + (violation.isUpper ? "upper " : "lower ") +
               text(violation.limit) + ", " + text(violation.margin);
    }
    return all;
}

}  // namespace

TEST(LimitMask, GoesStraightFromPointToPoint) {
    const LimitMask mask =
        maskOf("100,-40,-90\n104,-60,\n104,-50,\n106,-50,-80\n108,,-90\n108,,-70\n");
    const struct {
        double frequency;
        std::optional<double> upper;
        std::optional<double> lower;
    } kRows[] = {
        {99.999, {}, {}},
        {100, -40, -90},
        {101, -45, -90 + 10.0 / 6.0},
        {103, -55, -85},
        {104, -60, -90 + 40.0 / 6.0},  // the lower of the two upper limits
        {105, -50, -90 + 50.0 / 6.0},
        {106, -50, -80},
        {106.5, {}, -82.5},  // the upper limit ends at 106 MHz
        {107, {}, -85},
        {108, {}, -70},  // the higher of the two lower limits
        {108.001, {}, {}},
    };
    for (const auto& row : kRows) {
        const auto upper = mask.upper.at(row.frequency);
        const auto lower = mask.lower.at(row.frequency);
        ASSERT_EQ(upper.has_value(), row.upper.has_value()) << row.frequency;
        ASSERT_EQ(lower.has_value(), row.lower.has_value()) << row.frequency;
        if (upper) {
            EXPECT_DOUBLE_EQ(*upper, *row.upper) << row.frequency;
        }
        if (lower) {
            EXPECT_DOUBLE_EQ(*lower, *row.lower) << row.frequency;
        }
    }
    EXPECT_EQ(maskOf("100,-40\n").upper.at(100), -40);
    EXPECT_FALSE(LimitMask().upper.at(100));
}

TEST(LimitMask, RefusesLinearLimitsWithoutLevel) {
    EXPECT_EQ(maskOf("100,0,-1\n").lower.at(100), -1);
    for (const char* bytes : {"100,1\n101,0\n", "100,1\n101,2,-1\n"}) {
        try {
            maskOf(bytes, true);
            ADD_FAILURE() << bytes;
        } catch (const rfu::InputError& error) {
            EXPECT_EQ(error.line(), 2) << bytes;
            EXPECT_NE(error.problem().find("has no level, it is not above zero"),
                      std::string::npos);
        }
    }
}

TEST(LimitMask, GathersPointsBeyondALimit) {
    const std::string flat = "100,-40,-90\n200,-40,-90\n";
    const struct {
        const char* name;
        std::string mask;
        std::vector<double> levels;
        std::size_t secondBand;
        const char* violations;
    } kRows[] = {
        {"within", flat, {-50, -60, -70}, 0, ""},
        {"at the limits", flat, {-40, -90, -40}, 0, ""},
        {"just beyond",
         flat,
         {-39.99, -50, -50, -90.5},
         0,
         "0-0 at 0: upper -40, -0.00999999999999801; 3-3 at 3: lower -90, -0.5"},
        {"the worst point of several",
         flat,
         {-50, -39, -35, -38, -50},
         0,
         "1-3 at 2: upper -40, -5"},
        {"the first of equally bad ones", flat, {-39, -39}, 0, "0-1 at 0: upper -40, -1"},
        {"one point within between two",
         flat,
         {-39, -50, -38, -50, -50, -37},
         0,
         "0-2 at 2: upper -40, -2; 5-5 at 5: upper -40, -3"},
        {"a border between bands",
         flat,
         {-39, -38, -39, -37},
         2,
         "0-1 at 1: upper -40, -2; 2-3 at 3: upper -40, -3"},
        {"upper and lower apart",
         flat,
         {-95, -95, -30, -30},
         0,
         "0-1 at 0: lower -90, -5; 2-3 at 2: upper -40, -10"},
        {"a slope: the worst is not the strongest",
         "100,-30\n104,-70\n",
         {-25, -35, -45, -45, -69},
         0,
         "0-4 at 3: upper -60, -15"},
        {"a step",
         "100,-40\n102,-40\n102,-60\n104,-60\n",
         {-50, -50, -50, -50, -50},
         0,
         "2-4 at 2: upper -60, -10"},
        {"outside the mask", "101,-40\n102,-40\n", {-10, -50, -50, -10}, 0, ""},
        {"not measured", flat, {kNan, -30, kNan}, 0, "1-1 at 1: upper -40, -10"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(violationsOf(row.mask, row.levels, row.secondBand), row.violations) << row.name;
    }
}

TEST(LimitMask, TellsMarginsOfLinearUnitsInDecibels) {
    const std::string mask = "100,2,0.5\n110,2,0.5\n";
    EXPECT_EQ(violationsOf(mask, {1, 20, 0.05}, 0, 20.0),
              "1-1 at 1: upper 2, -20; 2-2 at 2: lower 0.5, -20");
    EXPECT_EQ(violationsOf(mask, {2, 20, 0.5}, 0, 10.0), "1-1 at 1: upper 2, -10");
}

TEST(LimitMask, CountsWhatItJudged) {
    const LimitMask mask = maskOf("101,-40,\n103,-40,-90\n105,,-90\n");
    const std::vector<double> levels = {-50, -50, kNan, -50, -50, -50, -50};
    EXPECT_EQ(judge(mask, axisOf(7), levels, 0.0).judged, 4U);  // 101, 103, 104 and 105 MHz
    EXPECT_EQ(judge(maskOf("300,-40\n"), axisOf(7), levels, 0.0).judged, 0U);
}

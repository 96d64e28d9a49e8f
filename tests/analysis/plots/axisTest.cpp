#include "analysis/plots/axis.h"

#include <gtest/gtest.h>
#include <support/samples.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <string>

using rfu::Axis;
using Ends = Axis::Ends;

namespace {

std::string labelsOf(const Axis& axis) {
    std::string labels;
    for (const double tick : axis.ticks()) {
        labels += (labels.empty() ? "" : " ") + axis.label(tick).toStdString();
    }
    return labels;
}

}  // namespace

TEST(Axis, PutsTicksOnRoundNumbers) {
    const struct {
        const char* name;
        Axis axis;
        const char* labels;
    } kRows[] = {
        {"ends on ticks", {88.0, 108.0, Ends::Exact, 7}, "88 90 92 94 96 98 100 102 104 106 108"},
        {"ends between ticks", {88.5, 107.9, Ends::Exact, 7}, "90 92 94 96 98 100 102 104 106"},
        {"steps of one", {0.0, 10.0, Ends::Exact, 7}, "0 1 2 3 4 5 6 7 8 9 10"},
        {"steps of five", {0.0, 21.0, Ends::Exact, 7}, "0 5 10 15 20"},
        {"steps of a tenth",
         {-0.2, 0.3, Ends::Exact, 7},
         "-0.2 -0.15 -0.1 -0.05 0 0.05 0.1 0.15 "
         "0.2 0.25 0.3"},
        {"whole steps only", {0.0, 3.0, Ends::Exact, 7, 1.0}, "0 1 2 3"},
        {"rounded ends", {-98.4, -37.7, Ends::Rounded, 7}, "-100 -90 -80 -70 -60 -50 -40 -30"},
        {"rounded ends that are round",
         {-60.0, -50.0, Ends::Rounded, 7},
         "-60 -59 -58 -57 -56 -55 -54 -53 -52 -51 -50"},
        {"from -0", {-0.0, 4.0, Ends::Exact, 7, 1.0}, "0 1 2 3 4"},
        {"as many digits as asked for",
         {2437.0, 2437.00046, Ends::Exact, 9},
         "2437 2437.00005 2437.0001 2437.00015 2437.0002 2437.00025 2437.0003 2437.00035 2437.0004 "
         "2437.00045"},
        {"thousands of terahertz",
         {1e9, 4e9, Ends::Exact, 12, 1e9},
         "1000000000 2000000000 3000000000 4000000000"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(labelsOf(row.axis), row.labels) << row.name;
    }
}

TEST(Axis, WidensARangeThatItsLabelsDoNotResolve) {
    const struct {
        const char* name;
        Axis axis;
        double low;
        double high;
    } kRows[] = {
        {"one level", {-50.0, -50.0, Ends::Exact, 7}, -50.5, -49.5},
        {"1 % of a large one", {200.0, 200.0, Ends::Exact, 7}, 198.0, 202.0},
        {"zero", {0.0, 0.0, Ends::Exact, 7}, -0.5, 0.5},
        {"neighbouring doubles", {-50.00000000000001, -50.0, Ends::Exact, 7}, -50.5, -49.5},
        {"one hertz at 10^15 Hz, in MHz", {1e9, 1e9 + 1e-6, Ends::Exact, 12}, 9.9e8, 1.01e9},
        {"the smallest double", {0.0, 5e-324, Ends::Exact, 7}, -0.5, 0.5},
        {"steps of the sixth decimal", {100.0, 100.001, Ends::Exact, 7}, 99.0, 101.001},
        {"steps of the fourth decimal", {100.0, 100.0011, Ends::Exact, 7}, 100.0, 100.0011},
    };
    for (const auto& row : kRows) {
        EXPECT_NEAR(row.axis.low(), row.low, std::abs(row.low) * 1e-9) << row.name;
        EXPECT_NEAR(row.axis.high(), row.high, std::abs(row.high) * 1e-9) << row.name;
    }
}

TEST(Axis, HasAFewTicksWithLabelsThatDiffer) {
    rfu::test::Samples samples(3);
    for (int i = 0; i < 20000; ++i) {
        const double low =
            samples.below(3) == 0
                ? 0.0
                : samples.signedAtRandom(std::pow(10.0, samples.between(-200.0, 200.0)));
        const double high =
            low + std::max(1.0, std::abs(low)) * std::pow(10.0, samples.between(-20.0, 20.0));
        const Ends ends = samples.coin() ? Ends::Exact : Ends::Rounded;
        const int digits = 7 + static_cast<int>(samples.below(7));
        const Axis axis(low, high, ends, digits);
        SCOPED_TRACE(testing::Message() << low << " to " << high << ", " << digits << " digits");
        const std::vector<double> ticks = axis.ticks();
        ASSERT_GE(ticks.size(), 4U);
        ASSERT_LE(ticks.size(), 13U);
        std::set<QString> labels;
        for (const double tick : ticks) {
            labels.insert(axis.label(tick));
        }
        ASSERT_EQ(labels.size(), ticks.size());
        ASSERT_GE(axis.position(ticks.front()), -1e-3);
        ASSERT_LE(axis.position(ticks.back()), 1.0 + 1e-3);
        if (ends == Ends::Rounded) {
            ASSERT_NEAR(axis.position(ticks.front()), 0.0, 1e-3);
            ASSERT_NEAR(axis.position(ticks.back()), 1.0, 1e-3);
        }
    }
}

TEST(Axis, PlacesValuesBetweenItsEnds) {
    const Axis axis(88.0, 108.0, Ends::Exact, 7);
    EXPECT_EQ(axis.position(88.0), 0.0);
    EXPECT_EQ(axis.position(93.0), 0.25);
    EXPECT_EQ(axis.position(108.0), 1.0);
}

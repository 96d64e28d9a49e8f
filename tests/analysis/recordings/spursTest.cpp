#include "analysis/recordings/spurs.h"

#include <gtest/gtest.h>

#include <string>

using rfu::FrequencyAxis;
using rfu::Spur;

TEST(Spurs, TakeTheBinsThatTheyReachInto) {
    // Hops 100 to 104 and 104 to 108 MHz in bins of 1 MHz.
    FrequencyAxis axis;
    axis.hops = {{{100e6, 104e6, 1e6}, 0, 4}, {{104e6, 108e6, 1e6}, 0, 4}};
    axis.points.resize(8);
    const struct {
        const char* name;
        std::vector<Spur> spurs;
        std::string points;
    } kRows[] = {
        {"none", {}, "--------"},
        {"within a bin", {{101.5, 0.1}}, "-x------"},
        {"at the border of two bins", {{102.0, 0.1}}, "-xx-----"},
        {"that touches its neighbours", {{101.5, 1.0}}, "-x------"},
        {"that reaches into them", {{101.5, 1.1}}, "xxx-----"},
        {"several", {{100.5, 0.1}, {107.5, 0.1}}, "x------x"},
        {"outside", {{99.0, 1.0}, {109.0, 2.0}}, "--------"},
        {"hops", {{std::nullopt, 0.1}}, "-xx--xx-"},
    };
    for (const auto& row : kRows) {
        std::string points;
        for (const bool isIn : pointsInSpurs(axis, row.spurs)) {
            points += isIn ? 'x' : '-';
        }
        EXPECT_EQ(points, row.points) << row.name;
    }
}

TEST(Spurs, LieInTheMiddleOfAHopOfWhichSomeBinsArePoints) {
    FrequencyAxis axis;
    axis.hops = {{{100e6, 104e6, 1e6}, 1, 3}, {{104e6, 108e6, 1e6}, 3, 1}};
    axis.points.resize(4);
    EXPECT_EQ(pointsInSpurs(axis, {{std::nullopt, 0.1}}),
              (std::vector<bool>{true, true, false, false}));
}

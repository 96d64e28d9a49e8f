#include "analysis/recordings/bins.h"

#include <gtest/gtest.h>

using rfu::binEnds;
using rfu::FrequencyAxis;

TEST(Bins, EndWhereTheNextBegins) {
    const struct {
        const char* name;
        FrequencyAxis axis;
        std::vector<double> ends;
    } kRows[] = {
        {"none", {}, {}},
        {"one", {{100}, {{0, 100, 101}}, {}}, {101}},
        {"two bands",
         {{100, 101, 105, 106}, {{0, 100, 102}, {2, 105, 107}}, {}},
         {101, 102, 106, 107}},
        {"a rounded gap belongs to the bin before",
         {{100, 101.4}, {{0, 100, 102.4}}, {}},
         {101.4, 102.4}},
        {"the last bin of a hop begins with the next hop",
         {{100, 101, 101, 102}, {{0, 100, 103}}, {}},
         {101, 101, 102, 103}},
        {"a bin of the next hop covers two",
         {{100, 101, 102, 101, 111}, {{0, 100, 121}}, {}},
         {101, 101, 101, 111, 121}},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(binEnds(row.axis), row.ends) << row.name;
    }
}

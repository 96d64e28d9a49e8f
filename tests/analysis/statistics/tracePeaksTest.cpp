#include "analysis/statistics/tracePeaks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

using rfu::peaksOf;

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

using Points = std::vector<std::size_t>;

struct Case {
    const char* name;
    std::vector<double> levels;
    double excursion;
    Points peaks;
};

// clang-format off
const Case kCases[] = {
    {"nothing",                   {},                                  6.0, {}},
    {"nothing measured",          {kNan, kNan},                        6.0, {}},
    {"flat",                      {-80, -80, -80},                     6.0, {}},
    {"one",                       {-80, -50, -80},                     6.0, {1}},
    {"just enough",               {-80, -74, -80},                     6.0, {1}},
    {"too little on the left",    {-79, -74, -80},                     6.0, {}},
    {"too little on the right",   {-80, -74, -79},                     6.0, {}},
    {"two",                       {-80, -50, -60, -40, -80},           6.0, {1, 3}},
    {"shoulder before",           {-80, -50, -55, -40, -80},           6.0, {3}},
    {"shoulder behind",           {-80, -40, -45, -42, -80},           6.0, {1}},
    {"slope over several points", {-80, -78, -75, -72, -75, -80},      6.0, {3}},
    {"flat top",                  {-80, -50, -50, -80},                6.0, {1}},
    {"cut by the beginning",      {-50, -80, -80},                     6.0, {}},
    {"cut by the end",            {-80, -80, -50},                     6.0, {}},
    {"behind one that was cut",   {-50, -80, -60, -80},                6.0, {2}},
    {"gaps",                      {-80, kNan, -50, kNan, -80, kNan},   6.0, {2}},
    {"every local maximum",       {-80, -79.9, -80, -80, -79, -79.5},  0.0, {1, 4}},
    {"negative excursion",        {-80, -80, -79, -79, -80},          -5.0, {2}},
    {"excursion without number",  {-80, -50, -80},                    kNan, {}},
};
// clang-format on

}  // namespace

TEST(TracePeaks, StandOutOnBothSides) {
    for (const Case& row : kCases) {
        EXPECT_EQ(peaksOf(row.levels, row.excursion), row.peaks) << row.name;
    }
}

#include "analysis/statistics/milliwatts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using rfu::dBmOf;
using rfu::milliwattsOf;
using rfu::MilliwattTable;

TEST(Milliwatts, AreTenToATenthOfTheLevel) {
    EXPECT_EQ(milliwattsOf(0.0), 1.0);
    EXPECT_EQ(milliwattsOf(30.0), 1000.0);
    EXPECT_DOUBLE_EQ(milliwattsOf(-20.0), 0.01);
    EXPECT_DOUBLE_EQ(milliwattsOf(10.0 * std::log10(2.0)), 2.0);
    EXPECT_EQ(dBmOf(1.0), 0.0);
    EXPECT_DOUBLE_EQ(dBmOf(0.01), -20.0);
}

TEST(MilliwattTable, GivesTheSameAsTheFormula) {
    MilliwattTable table;
    for (const int pass : {1, 2}) {
        for (int hundredths = -33000; hundredths <= 33000; hundredths += 7) {
            const double level = hundredths / 100.0;
            for (const double near :
                 {level, std::nextafter(level, 1000.0), level + 0.004, level - 0.005, -level}) {
                ASSERT_EQ(table.of(near), milliwattsOf(near)) << near << ' ' << pass;
            }
        }
        for (const double level :
             {-0.0, 327.66, 327.67, -327.67, 327.68, 998.99, -998.99, -999.0}) {
            EXPECT_EQ(table.of(level), milliwattsOf(level)) << level;
        }
    }
}

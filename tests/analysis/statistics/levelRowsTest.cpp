#include "analysis/statistics/levelRows.h"

#include <gtest/gtest.h>
#include <support/samples.h>

#include <cstdlib>
#include <deque>
#include <string>
#include <vector>

using rfu::LevelRows;
using rfu::test::same;

namespace {

using Row = std::vector<double>;

void expectRows(const LevelRows& rows, const std::deque<Row>& expected) {
    ASSERT_EQ(rows.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        Row copy(rows.columns());
        rows.copyRow(i, copy.data());
        for (std::size_t column = 0; column < copy.size(); ++column) {
            EXPECT_TRUE(same(copy[column], expected[i][column])) << expected[i][column];
            EXPECT_TRUE(same(rows.level(i, column), expected[i][column]));
        }
    }
}

}  // namespace

TEST(LevelRows, GiveLevelsBackBitForBit) {
    const double beyondHundredths[] = {-0.0,    -70.125, 327.68,       -327.68, 500.0,
                                       -998.99, 1e-9,    -70.12 + 3.0, -0.001};
    for (const double level : beyondHundredths) {
        LevelRows rows(3);
        std::deque<Row> expected = {{-70.12, -999.0, 0.0},
                                    {327.67, -327.67, 0.01},
                                    {-70.12, level, -999.0},
                                    {-1.1, -2.2, -3.3}};
        for (const Row& row : expected) {
            rows.append(row);
        }
        expectRows(rows, expected);
        rows.dropOldest();
        expected.pop_front();
        expectRows(rows, expected);
    }
}

TEST(LevelRows, HoldEveryHundredth) {
    for (int hundredths = -32767; hundredths <= 32767; ++hundredths) {
        LevelRows rows(1);
        // As the text of the level reads.
        const double level = std::strtod((std::to_string(hundredths) + "e-2").c_str(), nullptr);
        rows.append({level});
        ASSERT_EQ(rows.level(0, 0), level) << hundredths;
    }
}

TEST(LevelRows, DropOneForEachThatComes) {
    rfu::test::Samples samples(4);
    for (const std::size_t columns : {1U, 3000U, 9000U}) {
        LevelRows rows(columns);
        std::deque<Row> expected;
        for (int i = 0; i < 40; ++i) {
            Row row(columns, -0.01 * i);
            row[columns / 2] = samples.below(3) == 0 ? samples.between(-100.0, 0.0) : -50.0;
            rows.append(row);
            expected.push_back(row);
            if (expected.size() > 7) {
                rows.dropOldest();
                expected.pop_front();
            }
        }
        expectRows(rows, expected);
    }
}

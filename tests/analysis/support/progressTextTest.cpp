#include "analysis/support/progressText.h"

#include <gtest/gtest.h>

TEST(ProgressText, SaysHowFarReadingIs) {
    const struct {
        std::int64_t read;
        std::int64_t all;
        double seconds;
        const char* text;
    } kRows[] = {
        {840000000, 2000000000, 1.0, "42 % of 2000 MB, 840 MB/s, 2 s left"},
        {1999999999, 2000000000, 2.0, "99 % of 2000 MB, 1000 MB/s, 1 s left"},
        {2000000000, 2000000000, 2.0, "100 % of 2000 MB, 1000 MB/s, 0 s left"},
        {2500000000, 2000000000, 2.0, "100 % of 2000 MB, 1250 MB/s, 0 s left"},
        {1000000, 120000000, 1.0, "0 % of 120 MB, 1.0 MB/s, 119 s left"},
        {1000000, 121000000, 1.0, "0 % of 121 MB, 1.0 MB/s, 2 min left"},
        {1000000, 121100000, 1.0, "0 % of 121 MB, 1.0 MB/s, 3 min left"},
        {1000000, 7141000000, 1.0, "0 % of 7141 MB, 1.0 MB/s, 119 min left"},
        {1000000, 7500000000, 1.0, "0 % of 7500 MB, 1.0 MB/s, 2 h 05 min left"},
        {1, 9000000000000000000, 1000.0, "0 % of 9000000000000 MB, 0.0 MB/s, 2400 h 00 min left"},
        {0, 1000000, 1.0, "0 % of 1.0 MB, 0.0 MB/s, waiting"},
        {12000000, 0, 30.0, "12 MB, 0.4 MB/s"},
        {0, 0, 1.0, "0.0 MB, 0.0 MB/s"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(rfu::progressText(row.read, row.all, row.seconds), row.text);
    }
}

#include "analysis/recordings/timeStamp.h"

#include <gtest/gtest.h>

using namespace rfu;

TEST(TimeStamp, KnowsDaysThatExist) {
    for (const char* date :
         {"2024-05-04", "2024-02-29", "2000-02-29", "2023-12-31", "2024-04-30"}) {
        EXPECT_TRUE(isDate(date)) << date;
    }
    for (const char* date :
         {"2024-13-04", "2024-00-04", "2024-04-31", "2024-04-00", "2023-02-29", "2100-02-29"}) {
        EXPECT_FALSE(isDate(date)) << date;
        EXPECT_TRUE(looksLikeDate(date)) << date;
    }
    for (const char* text :
         {"", "2024-5-04", "2024/05/04", "24-05-0004", "2024-05-04 ", "10:00:00"}) {
        EXPECT_FALSE(looksLikeDate(text)) << text;
        EXPECT_FALSE(isDate(text)) << text;
    }
}

TEST(TimeStamp, KnowsTimesOfDay) {
    for (const char* time :
         {"00:00:00", "23:59:59", "23:59:60", "10:00:00.5", "10:00:00.308551123"}) {
        EXPECT_TRUE(isTime(time)) << time;
    }
    for (const char* time : {"24:00:00", "23:60:00", "23:59:61", "10:00:00.", "10:00:00.5x",
                             "10:00:00,5", "10h", "9:00:00", ""}) {
        EXPECT_FALSE(isTime(time)) << time;
    }
}

TEST(TimeStamp, CountsMicroseconds) {
    const struct {
        const char* date;
        const char* time;
        const char* laterDate;
        const char* laterTime;
        std::int64_t microseconds;
    } kRows[] = {
        {"2024-05-04", "10:00:00", "2024-05-04", "11:01:01", 3661000000},
        {"2024-05-04", "10:00:00", "2024-05-04", "10:00:00.308551", 308551},
        {"2024-05-04", "10:00:00.5", "2024-05-04", "10:00:00.50", 0},
        {"2024-05-04", "10:00:00", "2024-05-04", "10:00:00.0000019", 1},
        {"2024-02-29", "23:59:59.5", "2024-03-01", "00:00:00.5", 1000000},
        {"2024-12-31", "23:59:59", "2025-01-01", "00:00:00", 1000000},
        {"2100-02-28", "23:59:59", "2100-03-01", "00:00:00", 1000000},
        {"2024-01-01", "00:00:00", "2025-01-01", "00:00:00", 366 * 86400000000},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(microsecondsOf(row.laterDate, row.laterTime) - microsecondsOf(row.date, row.time),
                  row.microseconds)
            << row.date << ' ' << row.time;
    }
}

TEST(TimeStamp, IsWrittenAsItWasRead) {
    const std::int64_t time = rfu::microsecondsOf("2024-05-04 21:05:09.308551");
    EXPECT_EQ(time, rfu::microsecondsOf("2024-05-04", "21:05:09.308551"));
    EXPECT_EQ(rfu::dateText(time), "2024-05-04");
    EXPECT_EQ(rfu::timeText(time), "21:05:09");
    EXPECT_EQ(rfu::timeText(time, 2), "21:05:09.30");
    EXPECT_EQ(rfu::timeText(time, 6), "21:05:09.308551");
    EXPECT_EQ(rfu::timeText(rfu::microsecondsOf("2024-05-04 00:00:00.000007"), 6),
              "00:00:00.000007");
}

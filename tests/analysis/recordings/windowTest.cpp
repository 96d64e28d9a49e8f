#include "analysis/recordings/window.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "analysis/recordings/timeStamp.h"

using rfu::FrequencyAxis;
using rfu::parseWindowTime;
using Origin = rfu::WindowTime::Origin;

TEST(WindowTime, IsOfADayOrBeforeTheEnd) {
    const std::int64_t day = rfu::microsecondsOf("2024-05-04", "00:00:00");
    constexpr std::int64_t kMinute = 60000000;
    constexpr std::int64_t kHour = 60 * kMinute;
    const struct {
        const char* text;
        Origin origin;
        std::int64_t microseconds;
    } kRows[] = {
        {"2024-05-04 21:15", Origin::FixedDay, day + 21 * kHour + 15 * kMinute},
        {"2024-05-04 21:15:30", Origin::FixedDay, day + 21 * kHour + 15 * kMinute + kMinute / 2},
        {" 2024-05-04  00:00:00.000001 ", Origin::FixedDay, day + 1},
        {"2024-02-29 00:00", Origin::FixedDay, day - 1560 * kHour},
        {"21:15", Origin::FirstDay, 21 * kHour + 15 * kMinute},
        {"00:00:30.25", Origin::FirstDay, 30250000},
        {"23:59:60", Origin::FirstDay, 24 * kHour},
        {"-90s", Origin::End, -90000000},
        {"-10m", Origin::End, -10 * kMinute},
        {"-1.5h", Origin::End, -90 * kMinute},
        {"-2d", Origin::End, -48 * kHour},
        {"-0s", Origin::End, 0},
        {"-0.0000015s", Origin::End, -2},
        {"-1157407d", Origin::End, -99999964800000000},
    };
    for (const auto& row : kRows) {
        const auto time = parseWindowTime(row.text);
        ASSERT_TRUE(time) << row.text;
        EXPECT_EQ(time->origin, row.origin) << row.text;
        EXPECT_EQ(time->microseconds, row.microseconds) << row.text;
    }
    for (const char* text : {"",
                             " ",
                             "-",
                             "-10",
                             "- 10m",
                             "10m",
                             "+10m",
                             "-10M",
                             "-10min",
                             "-m",
                             "--10m",
                             "-nan s",
                             "-1e300d",
                             "-1157408d",
                             "2024-05-04",
                             "2024-05-04 ",
                             "2024-05-04T21:15",
                             "2024-05-04 21:15 UTC",
                             "2024-04-31 21:15",
                             "21",
                             "21:1",
                             "9:15",
                             "24:00",
                             "21:60",
                             "21:15:",
                             "21:15:30.",
                             "21:15:30Z",
                             "04.05.2024 21:15",
                             "\t21:15 21:15"}) {
        EXPECT_FALSE(parseWindowTime(text)) << text;
    }
}

TEST(WindowTime, WithoutADayIsOfThatOfTheFirstSweep) {
    rfu::WindowOptions options;
    options.from = parseWindowTime("23:00");
    options.to = parseWindowTime("23:30");
    rfu::Window window(options);
    const struct {
        const char* stamp;
        bool isWanted;
    } kRows[] = {
        {"2024-12-31 22:59:59.9", false}, {"2024-12-31 23:00:00", true},
        {"2024-12-31 23:30:00", true},    {"2024-12-31 23:30:00.000001", false},
        {"2025-01-01 23:00:00", false},
    };
    for (const auto& row : kRows) {
        const std::int64_t time = rfu::microsecondsOf(row.stamp);
        EXPECT_EQ(window.wantsSweep(time), row.isWanted) << row.stamp;
        window.begin(time);
    }
}

TEST(Window, HasAnAxisOfItsPoints) {
    // Hops of four bins of 1 MHz at 100, 104 and 110 MHz; the second one ends early.
    FrequencyAxis axis;
    axis.points = {100, 101, 102, 103, 104, 105, 106, 107, 110, 111, 112, 113};
    axis.bands = {{0, 100, 107.8}, {8, 110, 114}};
    axis.hops = {
        {{100e6, 104e6, 1e6}, 0, 4}, {{104e6, 107.8e6, 1e6}, 0, 4}, {{110e6, 114e6, 1e6}, 0, 4}};
    const struct {
        const char* name;
        std::vector<std::size_t> points;
        const char* bands;
        const char* hops;
    } kRows[] = {
        {"all",
         {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11},
         "0:100-107.8 8:110-114",
         "100+0:4 104+0:4 110+0:4"},
        {"across two hops", {2, 3, 4}, "0:102-105", "100+2:2 104+0:1"},
        {"the end of a hop", {6, 7}, "0:106-107.8", "104+2:2"},
        {"across two bands", {7, 8}, "0:107-107.8 1:110-111", "104+3:1 110+0:1"},
        {"two pieces of a hop", {0, 2, 3}, "0:100-101 1:102-104", "100+0:1 100+2:2"},
        {"the last bin", {11}, "0:113-114", "110+3:1"},
        {"none", {}, "", ""},
    };
    for (const auto& row : kRows) {
        const FrequencyAxis part = axisOf(axis, row.points);
        std::string bands;
        for (const FrequencyAxis::Band& band : part.bands) {
            bands += (bands.empty() ? "" : " ") + std::to_string(band.firstPoint) + ':' +
                     std::string(rfu::ShortestText(band.low).view()) + '-' +
                     std::string(rfu::ShortestText(band.high).view());
        }
        EXPECT_EQ(bands, row.bands) << row.name;
        std::string hops;
        for (const rfu::AxisHop& hop : part.hops) {
            hops += (hops.empty() ? "" : " ") +
                    std::string(rfu::ShortestText(hop.low / 1e6).view()) + '+' +
                    std::to_string(hop.firstBin) + ':' + std::to_string(hop.bins);
        }
        EXPECT_EQ(hops, row.hops) << row.name;
        ASSERT_EQ(part.points.size(), row.points.size()) << row.name;
        for (std::size_t i = 0; i < row.points.size(); ++i) {
            EXPECT_EQ(part.points[i], axis.points[row.points[i]]) << row.name;
        }
    }
    const FrequencyAxis part = axisOf(axisOf(axis, {1, 2, 3}), {1, 2});
    EXPECT_EQ(part.points, (std::vector<double>{102, 103}));
    ASSERT_EQ(part.hops.size(), 1U);
    EXPECT_EQ(part.hops[0].firstBin, 2U);
}

#include "analysis/plots/timeAxis.h"

#include <gtest/gtest.h>

#include <cmath>

#include "analysis/recordings/timeStamp.h"

using rfu::microsecondsOf;
using rfu::TimeStretch;
using rfu::TimeTick;

namespace {

TimeStretch stretch(const char* begin, const char* end, double top, double bottom) {
    return {{microsecondsOf(begin), microsecondsOf(end)}, top, bottom};
}

/// "100=[2024-05-04] 21:15 ..."
std::string ticksOf(const std::vector<TimeStretch>& stretches) {
    std::string text;
    for (const TimeTick& tick : timeTicks(stretches)) {
        text += (text.empty() ? "" : " ") + std::to_string(std::lround(tick.at)) + '=';
        text += tick.date.isEmpty() ? "" : '[' + tick.date.toStdString() + ']';
        text += tick.label.toStdString();
    }
    return text;
}

}  // namespace

TEST(TimeAxis, PutsTicksOnRoundTimes) {
    const struct {
        const char* name;
        TimeStretch stretch;
        const char* ticks;
    } kRows[] = {
        {"minutes", stretch("2024-05-04 21:14:00", "2024-05-04 21:34:00", 100, 300),
         "110=[2024-05-04]21:15 160=21:20 210=21:25 260=21:30"},
        {"seconds", stretch("2024-05-04 21:14:59", "2024-05-04 21:15:19", 0, 200),
         "10=[2024-05-04]21:15:00 60=21:15:05 110=21:15:10 160=21:15:15"},
        {"parts of a second", stretch("2024-05-04 21:14:59.9", "2024-05-04 21:15:00.1", 0, 200),
         "0=[2024-05-04]21:14:59.90 50=21:14:59.95 100=21:15:00.00 150=21:15:00.05"},
        {"a new day", stretch("2024-12-31 21:00:00", "2025-01-01 02:00:00", 0, 300),
         "0=[2024-12-31]21:00 60=22:00 120=23:00 180=[2025-01-01]00:00 240=01:00"},
        {"days", stretch("2024-02-27 12:00:00", "2024-03-02 12:00:00", 0, 240),
         "30=2024-02-28 90=2024-02-29 150=2024-03-01 210=2024-03-02"},
        {"too short for a round time", stretch("2024-05-04 21:15:01", "2024-05-04 21:15:02", 0, 9),
         "0=[2024-05-04]21:15:01"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(ticksOf({row.stretch}), row.ticks) << row.name;
    }
}

TEST(TimeAxis, NamesTheTimeBehindAJump) {
    EXPECT_EQ(ticksOf({stretch("2024-05-04 21:00:00", "2024-05-04 22:00:00", 0, 100),
                       stretch("2024-05-04 23:29:50", "2024-05-05 00:29:50", 100, 200)}),
              "0=[2024-05-04]21:00 50=21:30 100=23:29:50 150=[2024-05-05]00:00");
    EXPECT_EQ(ticksOf({stretch("2024-10-27 02:00:00", "2024-10-27 03:00:00", 0, 100),
                       stretch("2024-10-27 02:00:00", "2024-10-27 03:00:00", 100, 200)}),
              "0=[2024-10-27]02:00 50=02:30 100=02:00 150=02:30")
        << "back";
    EXPECT_EQ(ticksOf({stretch("2024-05-04 21:00:00", "2024-05-04 21:35:00", 0, 58),
                       stretch("2024-05-06 12:10:00", "2024-05-06 13:00:00", 58, 142)}),
              "0=[2024-05-04]21:00 58=[2024-05-06]12:10 92=12:30")
        << "it takes the place of the round time, whose label its date would touch";
}

TEST(TimeAxis, KeepsLabelsApart) {
    std::vector<TimeStretch> stretches;
    for (int i = 0; i < 300; ++i) {
        const std::int64_t begin = i * 7 * rfu::kMicrosecondsPerDay / 3;
        stretches.push_back({{begin, begin + 60000000}, i * 3.0, i * 3.0 + 3.0});
    }
    const std::vector<TimeTick> ticks = timeTicks(stretches);
    EXPECT_GT(ticks.size(), 20U);
    for (std::size_t i = 1; i < ticks.size(); ++i) {
        EXPECT_GE(ticks[i].at - ticks[i - 1].at, ticks[i].date.isEmpty() ? 18.0 : 34.0) << i;
    }
}

#include "analysis/recordings/sweepSpans.h"

#include <gtest/gtest.h>

#include <cmath>
#include <locale>
#include <sstream>

namespace {

std::vector<std::int64_t> microseconds(const std::vector<double>& seconds) {
    std::vector<std::int64_t> times;
    for (const double time : seconds) {
        times.push_back(std::llround(time * 1e6));
    }
    return times;
}

/// In seconds, as "0-10 10-20".
std::string spansOf(const std::vector<double>& begins) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    for (const rfu::TimeSpan& span : rfu::spansOf(microseconds(begins))) {
        text << (text.tellp() > 0 ? " " : "") << static_cast<double>(span.begin) / 1e6 << '-'
             << static_cast<double>(span.end) / 1e6;
    }
    return text.str();
}

}  // namespace

TEST(SweepSpans, ReachToTheNextSweepOrAsUsual) {
    const struct {
        const char* name;
        std::vector<double> begins;
        const char* spans;
    } kRows[] = {
        {"none", {}, ""},
        {"one, of which nothing is known", {5}, "5-6"},
        {"regular", {0, 10, 20}, "0-10 10-20 20-30"},
        {"one is missing", {0, 10, 20, 40, 50}, "0-10 10-20 20-30 40-50 50-60"},
        {"the first step is the gap", {0, 40, 50, 60}, "0-10 40-50 50-60 60-70"},
        {"no gap: one and a half times and a second, as times are cut",
         {0, 10, 20, 36, 46},
         "0-10 10-20 20-36 36-46 46-56"},
        {"a gap: a second longer", {0, 10, 20, 37, 47}, "0-10 10-20 20-30 37-47 47-57"},
        {"seconds that were cut", {0, 1, 2, 4, 5, 6}, "0-1 1-2 2-4 4-5 5-6 6-7"},
        {"fractions: no gap",
         {0, 0.1, 0.2, 0.35, 0.45},
         "0-0.1 0.1-0.2 0.2-0.35 0.35-0.45 0.45-0.55"},
        {"fractions: a gap",
         {0, 0.1, 0.2, 0.36, 0.46},
         "0-0.1 0.1-0.2 0.2-0.3 0.36-0.46 0.46-0.56"},
        {"sweeps of one second share it", {0, 0, 1, 1, 2}, "0-0.5 0.5-1 1-1.5 1.5-2 2-3"},
        {"all at once", {7, 7}, "7-7.5 7.5-8"},
        {"jitter of the clock", {0, 10, 9.5, 20}, "0-10 10-15 15-20 20-30"},
        {"the clock was moved back", {100, 110, 50, 60}, "100-110 110-120 50-60 60-70"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(spansOf(row.begins), row.spans) << row.name;
    }
}

TEST(SweepSpans, FollowAReceiverThatChangesItsPace) {
    std::vector<double> begins;
    for (int i = 0; i < 100; ++i) {
        begins.push_back(i);
    }
    for (int i = 0; i < 100; ++i) {
        begins.push_back(100 + 60 * i);
    }
    const auto spans = rfu::spansOf(microseconds(begins));
    for (std::size_t i = 0; i + 1 < spans.size(); ++i) {
        EXPECT_FALSE(rfu::isGap(spans[i], spans[i + 1])) << i;
    }
    EXPECT_EQ(spans.back().end - spans.back().begin, 60000000);
}

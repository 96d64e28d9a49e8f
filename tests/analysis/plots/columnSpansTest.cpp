#include "analysis/plots/columnSpans.h"

#include <gtest/gtest.h>
#include <support/limits.h>
#include <support/samples.h>

#include <algorithm>
#include <cmath>
#include <locale>
#include <sstream>
#include <string>

using rfu::ColumnRange;
using rfu::PixelSpan;
using rfu::test::kNan;

namespace {

using Values = std::vector<double>;
using Breaks = std::vector<std::size_t>;

constexpr int kColumns = 6;

std::vector<ColumnRange> rangesOf(const Values& x, const Values& y, const Breaks& breaks = {},
                                  int columns = kColumns, int stroke = 1) {
    const auto groups = rfu::groupByColumn(x.data(), x.size());
    return rfu::columnRanges(x.data(), y.data(), groups, breaks, columns, stroke);
}

/// "3-5 4 . 7": from top to bottom, or a single place, or a column without.
std::string textOf(const std::vector<ColumnRange>& ranges) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    for (const ColumnRange& range : ranges) {
        text << (text.tellp() > 0 ? " " : "");
        if (std::isnan(range.top) || std::isnan(range.bottom)) {
            text << (std::isnan(range.top) && std::isnan(range.bottom) ? "." : "odd");
        } else if (range.top == range.bottom) {
            text << range.top;
        } else {
            text << range.top << '-' << range.bottom;
        }
    }
    return text.str();
}

std::string textOf(const PixelSpan& span) {
    return span.isEmpty() ? "none" : std::to_string(span.first) + "-" + std::to_string(span.end);
}

struct RangeCase {
    const char* name;
    Values x;
    Values y;
    Breaks breaks;
    const char* ranges;
};

}  // namespace

TEST(ColumnSpans, CoverPointsAndTheLinesBetweenThem) {
    // By hand: a line from (0.5, 10) to (4.5, 50) has y = 10 (x + 0.5).
    const RangeCase cases[] = {
        {"a line over several columns",
         {0.5, 4.5},
         {10, 50},
         {},
         "10-15 15-25 25-35 35-45 45-50 ."},
        {"a falling one", {0.5, 2.5}, {50, 10}, {}, "40-50 20-40 10-20 . . ."},
        {"a level one", {0.5, 3.5}, {7, 7}, {}, "7 7 7 7 . ."},
        {"within a column", {1.2, 1.8}, {4, 9}, {}, ". 4-9 . . . ."},
        {"straight down", {1.5, 1.5, 1.5}, {4, 9, 6}, {}, ". 4-9 . . . ."},
        {"crowded columns are joined", {0.1, 0.9, 1.1, 1.9}, {3, 1, 9, 8}, {}, "1-5 5-9 . . . ."},
        {"points outside the plot",
         {-1.5, 0.5, 8.5},
         {0, 20, 100},
         {},
         "15-25 25-35 35-45 45-55 55-65 65-75"},
        {"a gap", {0.5, 1.5, 2.5, 3.5, 4.5}, {2, 4, kNan, 6, 8}, {}, "2-3 3-4 . 6-7 7-8 ."},
        {"infinite levels are gaps",
         {0.5, 1.5, 2.5, 3.5, 4.5},
         {2, 4, INFINITY, 6, 8},
         {},
         "2-3 3-4 . 6-7 7-8 ."},
        {"a break", {0.5, 1.5, 2.5, 3.5}, {2, 4, 6, 8}, {2}, "2-3 3-4 6-7 7-8 . ."},
        {"a break far away", {0.5, 1.5, 4.5, 5.5}, {2, 4, 6, 8}, {2}, "2-3 3-4 . . 6-7 7-8"},
        {"a single point", {2.5}, {9}, {}, ". 8-10 8-10 8-10 . ."},
        {"single points at the edges", {0.5, 2.5, 5.5}, {9, kNan, 4}, {}, "8-10 8-10 . . 3-5 3-5"},
        {"nothing measured", {0.5, 1.5}, {kNan, kNan}, {}, ". . . . . ."},
        {"no points", {}, {}, {}, ". . . . . ."},
    };
    for (const RangeCase& row : cases) {
        EXPECT_EQ(textOf(rangesOf(row.x, row.y, row.breaks)), row.ranges) << row.name;
    }
}

TEST(ColumnSpans, HasNoColumnsInANarrowPlot) {
    EXPECT_TRUE(rangesOf({0.5, 1.5}, {1, 2}, {}, 0).empty());
    EXPECT_EQ(textOf(rangesOf({-0.5, 1.5}, {1, 3}, {}, 1)), "1.5-2.5");
}

TEST(ColumnSpans, KeepsFarPointsFinite) {
    const auto ranges = rangesOf({0.5, 1.5}, {-1e300, 1e300});
    EXPECT_EQ(ranges[0].top, -1e6);
    EXPECT_EQ(ranges[1].bottom, 1e6);
    EXPECT_EQ(textOf(rfu::strokeOf(ranges[0], 100, 1)), "0-1") << "half way at the edge";
}

TEST(ColumnSpans, ShowsASpikeOfOnePointAmongMany) {
    constexpr std::size_t kPoints = 16384;
    constexpr int kWide = 1000;
    Values x(kPoints);
    for (std::size_t i = 0; i < kPoints; ++i) {
        x[i] = (static_cast<double>(i) + 0.5) * kWide / static_cast<double>(kPoints);
    }
    for (const std::size_t spike : {std::size_t{0}, std::size_t{8000}, kPoints - 1}) {
        Values y(kPoints, 300.0);
        y[spike] = 20.0;
        const auto ranges = rangesOf(x, y, {}, kWide);
        for (int column = 0; column < kWide; ++column) {
            const bool isThere = column == static_cast<int>(x[spike]);
            const PixelSpan span = rfu::strokeOf(ranges[static_cast<std::size_t>(column)], 400, 1);
            const bool isBeside = std::abs(column - static_cast<int>(x[spike])) == 1;
            EXPECT_TRUE(isThere ? span.first == 20 : isBeside || span.first == 300) << column;
            EXPECT_EQ(span.end, 301) << column;
        }
    }
}

TEST(ColumnSpans, CutsStrokesToThePlot) {
    struct StrokeCase {
        const char* name;
        ColumnRange range;
        int stroke;
        const char* span;
    };
    const StrokeCase cases[] = {
        {"the pixel that a level lies in", {10.9, 10.9}, 1, "10-11"},
        {"of several levels", {10.0, 12.0}, 1, "10-13"},
        {"two pixels, half above", {10.5, 10.5}, 2, "10-12"},
        {"three pixels", {10.5, 10.5}, 3, "9-12"},
        {"the first row", {0.0, 0.0}, 1, "0-1"},
        {"the last row", {99.9, 99.9}, 1, "99-100"},
        {"above", {-50.0, -1.0}, 1, "none"},
        {"below", {100.0, 200.0}, 1, "none"},
        {"across", {-1e6, 1e6}, 1, "0-100"},
        {"nothing", {kNan, kNan}, 1, "none"},
    };
    for (const StrokeCase& row : cases) {
        EXPECT_EQ(textOf(rfu::strokeOf(row.range, 100, row.stroke)), row.span) << row.name;
    }
}

TEST(ColumnSpans, FillsBetweenTwoCurves) {
    EXPECT_EQ(textOf(rfu::fillBetween({10.5, 12.0}, {40.0, 42.5}, 100)), "10-43");
    EXPECT_EQ(textOf(rfu::fillBetween({-90.0, -80.0}, {40.0, 42.5}, 100)), "0-43")
        << "the upper curve is above the plot";
    EXPECT_EQ(textOf(rfu::fillBetween({-90.0, -80.0}, {400.0, 420.0}, 100)), "0-100");
    EXPECT_EQ(textOf(rfu::fillBetween({kNan, kNan}, {40.0, 42.5}, 100)), "none");
    EXPECT_EQ(textOf(rfu::fillBetween({10.5, 12.0}, {kNan, kNan}, 100)), "none");
}

TEST(ColumnSpans, AgreesWithSamplesAlongTheCurve) {
    rfu::test::Samples samples(11);
    for (int run = 0; run < 200; ++run) {
        constexpr int kWide = 40;
        const std::size_t count = 2 + samples.below(120);
        Values x(count);
        Values y(count);
        for (std::size_t i = 0; i < count; ++i) {
            x[i] = samples.between(-10.0, kWide + 10.0);
            y[i] = samples.below(8) == 0 ? kNan : samples.between(0.0, 100.0);
        }
        std::sort(x.begin(), x.end());
        std::vector<ColumnRange> expected(kWide, ColumnRange{INFINITY, -INFINITY});
        const auto cover = [&expected](double at, double level) {
            if (at >= 0.0 && at < kWide) {
                ColumnRange& range = expected[static_cast<std::size_t>(at)];
                range.top = std::min(range.top, level);
                range.bottom = std::max(range.bottom, level);
            }
        };
        for (std::size_t i = 0; i + 1 < count; ++i) {
            constexpr int kSteps = 200;
            for (int step = 0; step <= kSteps; ++step) {
                const double part = static_cast<double>(step) / kSteps;
                cover(x[i] + part * (x[i + 1] - x[i]), y[i] + part * (y[i + 1] - y[i]));
            }
        }
        const auto ranges = rangesOf(x, y, {}, kWide);
        for (std::size_t column = 0; column < kWide; ++column) {
            if (std::isinf(expected[column].top)) {
                continue;  // nothing, or a point without neighbours
            }
            // The samples may miss the very ends of a range.
            EXPECT_LE(ranges[column].top, expected[column].top + 1e-9) << run << ' ' << column;
            EXPECT_GE(ranges[column].bottom, expected[column].bottom - 1e-9)
                << run << ' ' << column;
        }
    }
}

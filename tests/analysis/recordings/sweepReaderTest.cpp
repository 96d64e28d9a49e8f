#include "analysis/recordings/sweepReader.h"

#include <gtest/gtest.h>
#include <support/samples.h>
#include <support/tempFiles.h>

#include <cmath>
#include <cstddef>

#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "hopLines.h"

using rfu::FrequencyAxis;
using rfu::InputError;
using rfu::Sweep;
using rfu::SweepReader;
using rfu::test::hopLine;
using rfu::test::hopLines;

namespace {

constexpr std::size_t kLearned = 4;

struct Recording {
    std::vector<Sweep> sweeps;
    FrequencyAxis axis;
    std::string failure;  // "line: problem"
    long long cutLine = 0;
};

Recording read(const std::string& bytes, std::size_t learned = kLearned) {
    const TempFiles files;
    const QString file = QString::fromStdString(files.write("sweeps.csv", bytes));
    Recording recording;
    SweepReader reader(file, learned);
    try {
        Sweep sweep;
        while (reader.next(sweep)) {
            recording.sweeps.push_back(sweep);
        }
        EXPECT_FALSE(reader.next(sweep));
    } catch (const InputError& error) {
        EXPECT_EQ(error.file(), file);
        recording.failure = std::to_string(error.line()) + ": " + error.problem();
    }
    recording.axis = reader.axis();
    recording.cutLine = reader.cutLine();
    return recording;
}

/// Sweeps as the levels of hopLines() without their sign, in order of frequency, "_" for a point
/// that was not measured: "1 2|3 _".
std::string sweepsOf(const Recording& recording) {
    std::string text = recording.failure;
    for (const Sweep& sweep : recording.sweeps) {
        text += text.empty() ? "" : "|";
        for (std::size_t i = 0; i < sweep.levels.size(); ++i) {
            const long level = std::lround(-sweep.levels[i]);
            text += (i == 0 ? "" : " ") + (level == 999 ? "_" : std::to_string(level));
        }
    }
    return text;
}

/// The first point and the bounds of each band.
std::string bandsOf(const FrequencyAxis& axis) {
    const auto number = [](double value) { return std::string(rfu::ShortestText(value).view()); };
    std::string text;
    for (const FrequencyAxis::Band& band : axis.bands) {
        text += (text.empty() ? "" : ", ") + std::to_string(band.firstPoint) + ": " +
                number(band.low) + '-' + number(band.high);
    }
    return text;
}

std::string timesOf(const Recording& recording) {
    std::string text;
    for (const Sweep& sweep : recording.sweeps) {
        text += (text.empty() ? "" : "|") + sweep.time;
    }
    return text;
}

}  // namespace

TEST(SweepReader, FindsTheBoundsOfSweeps) {
    const struct {
        const char* name;
        const char* lines;
        const char* sweeps;
    } kRows[] = {
        {"one sweep", "a0 b0 c0", "1 2 3"},
        {"all hops within one second", "a0 b0 a0 b0", "1 2|3 4"},
        {"falling order, a second apart", "b0.25 a0.75 b1.25 a2.25", "2 1|4 3"},
        {"pauses as long as those of the first sweep", "a0 b7 a14 b21 a28 b35", "1 2|3 4|5 6"},
        {"a pause of more than a second", "a0 b0 b5.000000 a6.000001 b6.000001", "1 2|_ 3|4 5"},
        {"a clock that is set back", "a0 b0 b5 a0", "1 2|_ 3|4 _"},
        {"first hop lost, a sweep per second", "a0 b0 c0 a1 b1 c1 b2 c2 a3 b3 c3",
         "1 2 3|4 5 6|_ 7 8|9 10 11"},
        {"first hop lost, sweeps in less than a second", "a0.0 b0.0 a0.05 b0.05 b0.1 a0.15 b0.15",
         "1 2|3 4|_ 5|6 7"},
        {"last hop lost", "a0 b0 c0 a1 b1 a2 b2 c2", "1 2 3|4 5 _|6 7 8"},
        {"all but the last lost, all but the first lost", "a0 b0 c0 c1 a2 a3 b3 c3",
         "1 2 3|_ _ 4|5 _ _|6 7 8"},
        {"a second that rolls over within a sweep", "a0 b0 c0 a1 b1 c2 a2 b2 c2",
         "1 2 3|4 5 6|7 8 9"},
        {"any order within one time stamp", "a0 b0 c0 c1 b1 a1 a2 b2 c2", "1 2 3|6 5 4|7 8 9"},
        {"in the order of the first sweep", "b0 a0 c0 b1 a1 c1 a2 c2 b3 a3 c3",
         "2 1 3|5 4 6|7 _ 8|10 9 11"},
        {"begins in the middle", "c0 a10 b10 c10 a20 b20 c20 b30 c30 a40 b40 c40",
         "_ _ 1|2 3 4|5 6 7|_ 8 9|10 11 12"},
        {"begins in the middle, less than a second before",
         "b0.0 c0.0 a0.02 b0.02 c0.02 a0.04 c0.04", "_ 1 2|3 4 5|6 _ 7"},
        {"begins in the middle and lost the hop that comes again first",
         "b0 c0 a10 c10 a20 b20 c20", "_ 1 2|3 _ 4|5 6 7"},
        {"the order starts where sweeps do", "c0 a10 b10 c10 c10.5 a11 b11 c11",
         "_ _ 1|2 3 4|_ _ 5|6 7 8"},
        {"the pause before the bound is none within sweeps",
         "c0 a10 b10 c10 a12 b14 c16 a18 b18 c18", "_ _ 1|2 3 4|5 _ _|_ 6 _|_ _ 7|8 9 10"},
        {"begins in the middle, and the next sweep lost what came first", "c0 a10 b10 a10 b10 c10",
         "_ _ 1|2 3 _|4 5 6"},
        {"a new hop in front of all", "b0 c0 b1 c1 a2 b2 c2 a3 b3.1 c3.2",
         "_ 1 2|_ 3 4|5 6 7|8 9 10"},
        {"the first sweep lost a middle hop", "a0 c0 a1 b1 c1 a2 b2 c2", "1 _ 2|3 4 5|6 7 8"},
        {"the first sweeps lost hops by turns",
         "b0 d0 a1 c1 d1 a2 b2 d2 a3 b3 c3 d3 b4 c4 a5 b5 c5 d5",
         "_ 1 _ 2|3 _ 4 5|6 7 _ 8|9 10 11 12|_ 13 14 _|15 16 17 18"},
        {"a lost hop has its turn where it came", "a0 c0.1 a0.2 b0.3 c0.4 a0.5 b0.6 c0.7",
         "1 _ 2|3 4 5|6 7 8"},
        {"a new hop after a pause begins a sweep", "a0 a10 b15", "1 _|2 _|_ 3"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(sweepsOf(read(hopLines(row.lines))), row.sweeps) << row.name;
    }
}

TEST(SweepReader, StampsASweepWithItsFirstLine) {
    EXPECT_EQ(timesOf(read(hopLines("a0.25 b0.75 a1.25 b2.25"))),
              "2024-01-01 10:00:00.25|2024-01-01 10:00:01.25");
    EXPECT_EQ(timesOf(read(hopLines("c0 a10 b10.5 c10.7 a20 b20 c20"))),
              "2024-01-01 10:00:00|2024-01-01 10:00:10|2024-01-01 10:00:20");
    EXPECT_EQ(timesOf(read("-1\n")), "");
}

TEST(SweepReader, LearnsHopsFromAsManySweepsAsToldTo) {
    const std::string late = hopLines("a0 a10 a20 a30 b40");
    EXPECT_EQ(read(late).failure,
              "5: the hop 101000000 to 102000000 Hz in steps of 1000000 Hz is not one of the first "
              "4 sweeps");
    EXPECT_EQ(sweepsOf(read(late, 5)), "1 _|2 _|3 _|4 _|_ 5");
    const Recording first = read(hopLines("a0 a10 b10"), 1);
    EXPECT_EQ(first.failure,
              "3: the hop 101000000 to 102000000 Hz in steps of 1000000 Hz is not one of the first "
              "sweep");
    EXPECT_EQ(first.sweeps.size(), 2U) << "handed out before the bad line is read";
    EXPECT_EQ(sweepsOf(read(hopLines("c0 a10 b10 c10 a20 b20 c20"), 1)), "_ _ 1|2 3 4|5 6 7");
}

namespace {

/// A live source: its sweeps as sweepsOf() writes them, "+" before one that has grown, and the lines
/// that were skipped.
std::string follow(const std::string& bytes) {
    const TempFiles files;
    const QString file = QString::fromStdString(files.write("sweeps.csv", bytes));
    std::string skipped;
    SweepReader reader(
        file, 1, {},
        [&](const InputError& error) {
            skipped += " (" + std::to_string(error.line()) + ": " + error.problem() + ")";
        },
        true);
    std::string text;
    std::vector<double> points;
    for (Sweep sweep; reader.next(sweep);) {
        text += text.empty() ? "" : "|";
        text += (reader.hasGrown() ? "+" : "") + sweepsOf({{sweep}, {}, "", 0});
        const std::vector<std::size_t>& former = reader.formerPoints();
        EXPECT_EQ(former.size(), reader.hasGrown() ? sweep.levels.size() : 0U);
        for (std::size_t i = 0, old = 0; i < former.size(); ++i) {
            if (former[i] != SweepReader::kNewPoint) {
                EXPECT_EQ(former[i], old++);
                EXPECT_EQ(reader.axis().points[i], points[former[i]]);
            }
        }
        points = reader.axis().points;
        EXPECT_EQ(points.empty() ? sweep.levels.size() : points.size(), sweep.levels.size());
    }
    return text + skipped;
}

}  // namespace

TEST(SweepReader, LearnsTheHopsOfALiveSourceAsTheyCome) {
    const struct {
        const char* name;
        const char* lines;
        const char* sweeps;
    } kRows[] = {
        {"nothing new", "a0 b0 c0 a10 b10 c10", "1 2 3|4 5 6"},
        {"the first sweep lost a middle hop", "a0 c0 a10 b10 c10 a20 b20 c20", "1 2|+3 4 5|6 7 8"},
        {"it lost the first hop, which is the first to come", "b0 c0 a10 b10 c10 a20 b20 c20",
         "_ 1 2|3 4 5|6 7 8"},
        {"it lost all but one", "b0 a10 b10 c10 a20 b20 c20", "_ 1|2 3|+_ _ 4|5 6 7"},
        {"it lost the last hop: that sweep seems complete", "a0 b0 a10 b10 c10 a20 b20 c20",
         "1 2|3 4|+_ _ 5|6 7 8"},
        {"two sweeps bring one each", "a0 d0 a10 b10 d10 a20 b20 c20 d20 a30 b30 c30 d30",
         "1 2|+3 4 5|+6 7 8 9|10 11 12 13"},
        {"in the order of the receiver", "c0 a0 c10 b10 a10 c20 b20 a20", "2 1|+5 4 3|8 7 6"},
        {"behind the whole sweep, in that order", "c0 a0 c1 a1 b1 c2 a2 b2 c3 a3 b3",
         "2 1|4 3|+_ 5 _|7 8 6|10 11 9"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(follow(hopLines(row.lines)), row.sweeps) << row.name;
    }
}

TEST(SweepReader, SkipsTheBrokenLinesOfALiveSource) {
    const std::string a = hopLine('a', "0", "-1");
    const std::string b = hopLine('b', "0", "-2");
    const std::string again = hopLine('a', "10", "-3") + hopLine('b', "10", "-4");
    const struct {
        const char* name;
        std::string bytes;
        std::string sweeps;
    } kRows[] = {
        {"a level", a + b + hopLine('a', "10", "-3x") + hopLine('b', "10", "-4"),
         "1 2|_ 4 (3: \"-3x\" is not a level in dBm)"},
        {"a head in the middle of a sweep", a + "2024-01-01, 10h\n" + b + again,
         "1 2|3 4 (2: \"10h\" is not a time (21:15:00))"},
        {"a line that would end the sweep", a + hopLine('a', "5", "-") + b + again,
         "1 2|3 4 (2: \"-\" is not a level in dBm)"},
        {"an unknown hop with a bad level", a + b + hopLine('c', "0", "x") + again,
         "1 2|3 4 (3: \"x\" is not a level in dBm)"},
        {"a hop that overlaps another",
         a + b + "2024-01-01, 10:00:05, 100500000, 103000000, 500000, 5, -1,-1,-1,-1,-1\n" + again,
         "1 2|3 4 (3: the hop 100500000 to 103000000 Hz in steps of 500000 Hz overlaps the hop "
         "101000000 to 102000000 Hz in steps of 1000000 Hz)"},
        {"too few levels",
         a + "2024-01-01, 10:00:00, 101000000, 103000000, 1000000, 5, -1\n" + b + again,
         "1 2|3 4 (2: 1 levels, while 2 fit between Hz low and Hz high)"},
        {"the first line", "-\n" + a + b + again,
         "1 2|3 4 (1: neither a line of a sweep (date, time, Hz low, Hz high, Hz step, samples, "
         "dB, "
         "...) nor a trace of levels in dBm)"},
        {"the first head", "2024-01-01, 10h\n" + a + b + again,
         "1 2|3 4 (1: \"10h\" is not a time (21:15:00))"},
        {"traces", "-1,-2\n-3\n-4,x\n-5,-6\n",
         "1 2|5 6 (2: a trace of 1 levels, while the first has 2) (3: \"x\" is not a level in "
         "dBm)"},
        {"the first trace", "-1,x,-9\n-1,-2\n", "1 2 (1: \"x\" is not a level in dBm)"},
        {"no other hop", "2024-01-01, 10h\n", " (1: \"10h\" is not a time (21:15:00))"},
        {"nothing else", "x y\n-x\n",
         " (2: neither a line of a sweep (date, time, Hz low, Hz high, Hz step, samples, dB, ...) "
         "nor a trace of levels in dBm)"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(follow(row.bytes), row.sweeps) << row.name;
    }
}

TEST(SweepReader, OrdersPointsByFrequency) {
    const Recording recording = read(
        "2024-05-04, 14:02:11, 2400000000, 2402000000, 1000000.00, 20, -1, -2\n"
        "2024-05-04, 14:02:11, 2404000000, 2406000000, 1000000.00, 20, -5, -6\n"
        "2024-05-04, 14:02:11, 2402000000, 2404000000, 1000000.00, 20, -3, -4\n");
    EXPECT_EQ(sweepsOf(recording), "1 2 3 4 5 6");
    EXPECT_EQ(recording.axis.points, (std::vector<double>{2400, 2401, 2402, 2403, 2404, 2405}));
    EXPECT_EQ(bandsOf(recording.axis), "0: 2400-2406");
    // Neighbours may share a bin, whichever comes first.
    const std::string low = "2024-01-01, 10:00:00, 100000000, 102000000, 1000000, 5, -1, -2\n";
    const std::string high = "2024-01-01, 10:00:00, 101000000, 103000000, 1000000, 5, -3, -4\n";
    for (const std::string& bytes : {low + high, high + low}) {
        EXPECT_EQ(sweepsOf(read(bytes)), "1 2 3 4");
        EXPECT_EQ(read(bytes).axis.points, (std::vector<double>{100, 101, 101, 102}));
    }
}

TEST(SweepReader, SplitsBandsWhereHalfABinIsMissing) {
    EXPECT_EQ(bandsOf(read(hopLines("a0 b0 d0 e0 h0")).axis), "0: 100-102, 2: 103-105, 4: 107-108");
    EXPECT_EQ(bandsOf(read(hopLines("h0 a0 b0")).axis), "0: 100-102, 2: 107-108");
    const auto bandsWith = [](const char* secondHop) {
        return bandsOf(read("2024-01-01, 10:00:00, 100000000, 102000000, 1000000, 5, -1, -2\n"
                            "2024-01-01, 10:00:00, " +
                            std::string(secondHop) + "\n")
                           .axis);
    };
    EXPECT_EQ(bandsWith("102499999, 103499999, 1000000, 5, -3"), "0: 100-103.499999");
    EXPECT_EQ(bandsWith("102500000, 103500000, 1000000, 5, -3"), "0: 100-102, 2: 102.5-103.5");
    EXPECT_EQ(bandsWith("102100000, 102400000, 100000, 5, -3, -4, -5"),
              "0: 100-102, 2: 102.1-102.4")
        << "the narrower bin decides";
    EXPECT_EQ(bandsWith("101100000, 101900000, 900000, 5, -3"), "0: 100-102") << "overlapping";
}

TEST(SweepReader, IgnoresTheRepeatedLastLevelOfALine) {
    const Recording recording =
        read("2024-01-01, 10:00:00, 100000000, 100100000, 33333.33, 5, -1, -2, -3, -3\n");
    EXPECT_EQ(sweepsOf(recording), "1 2 3");
    EXPECT_EQ(recording.axis.points, (std::vector<double>{100.0, 100.03333333, 100.06666666}));
    EXPECT_EQ(bandsOf(recording.axis), "0: 100-100.1");
}

TEST(SweepReader, ReadsTracesWithoutFrequencies) {
    const Recording recording = read("-10, ,-30\r\n\r\n  \n -20,nan, -50 \n-1,-2,-3");
    EXPECT_EQ(sweepsOf(recording), "10 _ 30|20 _ 50|1 2 3");
    EXPECT_TRUE(recording.axis.points.empty());
    EXPECT_EQ(sweepsOf(read(",-1\n")), "_ 1");
    EXPECT_EQ(read("-1,-2\n-3\n").failure, "2: a trace of 1 levels, while the first has 2");
    EXPECT_EQ(read("-1\n\n-3,-4\n").failure, "3: a trace of 2 levels, while the first has 1");
}

TEST(SweepReader, SkipsWhatHoldsNoData) {
    const std::string hops = hopLines("a0 b0 a1 b1");
    const struct {
        const char* name;
        std::string bytes;
        const char* sweeps;
    } kRows[] = {
        {"a header", "date,time,Hz low,Hz high,Hz step,samples,dB\n" + hops, "1 2|3 4"},
        {"a header of traces behind blank lines and comments", "\n# gain 40\n\nlow,high\n-1,-2\n",
         "1 2"},
        {"a byte-order mark", "\xEF\xBB\xBF" + hops, "1 2|3 4"},
        {"a byte-order mark before a header", "\xEF\xBB\xBFpower\n-1\n-2\n", "1|2"},
        {"comments within a sweep", hopLine('a', "0", "-1") + "# moved\n" + hopLine('b', "0", "-2"),
         "1 2"},
        {"a comment without line end", "-1\n# end", "1"},
        {"a header without line end", "power", ""},
        {"a second header", "power\nlevel\n",
         "2: neither a line of a sweep (date, time, Hz low, Hz high, Hz step, samples, dB, ...) "
         "nor a trace of levels in dBm"},
        {"a header further down", "-1\npower\n", "2: \"power\" is not a level in dBm|1"},
    };
    for (const auto& row : kRows) {
        const Recording recording = read(row.bytes);
        EXPECT_EQ(sweepsOf(recording), row.sweeps) << row.name;
        EXPECT_EQ(recording.cutLine, 0) << row.name;
    }
}

TEST(SweepReader, LeavesOutALastLineThatMayBeCut) {
    // Two bins per hop; rtl_power repeats the last level.
    const std::string head = "2024-01-01, 10:00:00, 100000000, 102000000, 1000000, 5, ";
    const std::string other = "2024-01-01, 10:00:00, 102000000, 104000000, 1000000, 5, ";
    const std::string first = head + "-1.00, -2.00, -2.00\n";
    const struct {
        const char* name;
        std::string bytes;
        const char* sweeps;
        long long cutLine;
    } kRows[] = {
        {"whole", first + other + "-3.00, -4.00, -4.00", "1 2 3 4", 0},
        {"whole without the repeated level", first + other + "-3.00, -4.00", "1 2 3 4", 0},
        {"whole with a line end, whatever the decimals", first + other + "-3.00, -4\n", "1 2 3 4",
         0},
        {"cut in the last decimals", first + other + "-3.00, -4.00, -4.0", "1 2", 2},
        {"cut before the point", first + other + "-3.00, -4.00, -4", "1 2", 2},
        {"cut behind the point", first + other + "-3.00, -4.00, -4.", "1 2", 2},
        {"cut behind the sign", first + other + "-3.00, -4.00, -", "1 2", 2},
        {"cut behind a comma", first + other + "-3.00, -4.00,", "1 2", 2},
        {"fewer levels than the hop has", first + other + "-3.00", "1 2", 2},
        {"decimals that differ", first + other + "-3.0, -4.00, -4.00", "1 2", 2},
        {"decimals that differ in the middle", first + other + "-3.00, -4.0, -4.00", "1 2", 2},
        {"points not measured", first + other + "nan, -4.00, -4.00", "1 2 _ 4", 0},
        {"the last not measured", first + other + "-3.00, nan", "1 2 3 _", 0},
        {"the last not measured, and cut", first + other + "-3.00, na", "1 2", 2},
        {"the only one measured, cut", first + other + "nan, -4", "1 2", 2},
        {"cut within the head", first + "2024-01-01, 10:00:00, 1020", "1 2", 2},
        {"cut within the date", first + "2024-0", "1 2", 2},
        {"the next sweep is cut",
         first + "2024-01-01, 10:00:10, 100000000, 102000000, 1000000, 5, -3.", "1 2", 2},
        {"cut in the middle of the second sweep",
         first + other + "-3.00, -4.00\n" + head + "-5.00, -6.00\n" + other + "-7.00, -8",
         "1 2 3 4|5 6 _ _", 4},
        {"one line, whole", head + "-1.00, -2.00", "1 2", 0},
        {"one line, cut", head + "-1.00, -2.0", "", 1},
        {"one line, cut in the head", head, "", 1},
        {"traces", "-1.5,-2.5\n-3.5,-4.5", "2 3|4 5", 0},
        {"traces of whole numbers", "-1,-2\n-3,-4", "1 2|3 4", 0},
        {"whole numbers, cut behind a point", "-1,-2\n-3,-4.", "1 2", 2},
        {"a trace that is cut", "-1.25,-2.25\n-3.25,-4.2", "1 2", 2},
        {"a trace that lacks levels", "-1.25,-2.25\n-3.25", "1 2", 2},
        {"a trace cut before its text makes sense", "-1.25\n-", "1", 2},
        {"one level per trace", "-1.25\n-3.25", "1|3", 0},
        {"one level per trace, cut", "-1.25\n-59.52\n-5", "1|60", 3},
        {"one trace", "-1.25", "1", 0},
        {"one trace, cut", "-1.25,-2.2", "", 1},
    };
    for (const auto& row : kRows) {
        const Recording recording = read(row.bytes);
        EXPECT_EQ(sweepsOf(recording), row.sweeps) << row.name;
        EXPECT_EQ(recording.cutLine, row.cutLine) << row.name;
    }
}

TEST(SweepReader, KeepsWhatCameBeforeACutAnywhere) {
    const std::string whole = hopLines("a0 b0 c0 a1 b1 c1");
    const std::string firstSweep = hopLines("a0 b0 c0");
    for (std::size_t size = firstSweep.size(); size < whole.size(); ++size) {
        const Recording recording = read(whole.substr(0, size));
        EXPECT_EQ(sweepsOf(recording).substr(0, 5), "1 2 3") << size;
        EXPECT_EQ(recording.failure, "") << size;
    }
}

TEST(SweepReader, TakesFourMillionPointsInASweep) {
    const auto hop = [](int number, int points) {  // without a level, 1 MHz from the one before
        const std::string low = std::to_string(number) + "000000";
        const std::string high = std::to_string(number * 1000000 + points);
        return "2024-01-01, 10:00:00, " + low + ", " + high + ", 1, 5, " +
               std::string(static_cast<std::size_t>(points) - 1, ',') + '\n';
    };
    std::string most;
    for (int number = 1; number <= 4; ++number) {
        most += hop(number, 999999);
    }
    most += hop(5, 4) + hop(6, 1);
    EXPECT_EQ(read(most).failure, "6: more than 4000000 points in a sweep");
}

TEST(SweepReader, NamesTheLineThatMakesNoSense) {
    const std::string first = hopLine('a', "0", "-1");
    const struct {
        const char* name;
        std::string bytes;
        const char* failure;
    } kRows[] = {
        {"nothing", "", ""},
        {"blank lines only", "\n  \n", ""},
        {"text", "\n-hello\n",
         "2: neither a line of a sweep (date, time, Hz low, Hz high, Hz step, samples, dB, ...) "
         "nor "
         "a trace of levels in dBm"},
        {"text without line end", "-hello",
         "1: neither a line of a sweep (date, time, Hz low, Hz high, Hz step, samples, dB, ...) "
         "nor "
         "a trace of levels in dBm"},
        {"a bad level", first + hopLine('b', "0", "x"), "2: \"x\" is not a level in dBm"},
        {"a date that is lost", first + "10:00:00, 1, 2, 1, 5, -1\n",
         "2: \"10:00:00\" is not a date (2024-05-04)"},
        {"fewer levels than fit", "2024-01-01, 10:00:00, 100, 104, 1, 5, -1, -2, -3\n",
         "1: 3 levels, while 4 fit between Hz low and Hz high"},
        {"overlapping from above",
         first + "2024-01-01, 10:00:00, 99000000, 104000000, 1000000, 5, -1\n",
         "2: the hop 99000000 to 104000000 Hz in steps of 1000000 Hz overlaps the hop 100000000 to "
         "101000000 Hz in steps of 1000000 Hz"},
        {"two shared bins",
         "2024-01-01, 10:00:00, 98, 102, 1, 5, -1, -2, -3, -4\n"
         "2024-01-01, 10:00:00, 100, 104, 1, 5, -1, -2, -3, -4\n",
         "2: the hop 100 to 104 Hz in steps of 1 Hz overlaps the hop 98 to 102 Hz in steps of 1 "
         "Hz"},
        {"overlapping from below",
         "2024-01-01, 10:00:00, 100, 104, 1, 5, -1, -2, -3, -4\n"
         "2024-01-01, 10:00:00, 98, 102, 1, 5, -1, -2, -3, -4\n",
         "2: the hop 98 to 102 Hz in steps of 1 Hz overlaps the hop 100 to 104 Hz in steps of 1 "
         "Hz"},
        {"another step", first + "2024-01-01, 10:00:10, 100000000, 101000000, 500000, 5, -1, -2\n",
         "2: the hop 100000000 to 101000000 Hz in steps of 500000 Hz overlaps the hop 100000000 to "
         "101000000 Hz in steps of 1000000 Hz"},
        {"another end within the first bin",
         "2024-01-01, 10:00:00, 100, 104, 4, 5, -1\n"
         "2024-01-01, 10:00:00, 100, 103, 1, 5, -1, -2, -3\n",
         "2: the hop 100 to 103 Hz in steps of 1 Hz overlaps the hop 100 to 104 Hz in steps of 4 "
         "Hz"},
    };
    for (const auto& row : kRows) {
        const Recording recording = read(row.bytes);
        EXPECT_EQ(recording.failure, row.failure) << row.name;
        EXPECT_TRUE(recording.sweeps.empty()) << row.name;
    }
}

TEST(SweepReader, EndsOnNoise) {
    rfu::test::Samples samples(1);
    for (int run = 0; run < 400; ++run) {
        // Every other run behind a good line, so that both readers get their share.
        std::string noise = run % 2 == 0 ? "" : hopLines("a0 b0");
        for (int i = 0; i < 300; ++i) {
            noise += run % 4 < 2 ? static_cast<char>(samples.below(256))
                                 : " ,.-0123456789e\n:n"[samples.below(18)];
        }
        EXPECT_NE(read(noise + "\nx").failure, "") << run;
    }
}

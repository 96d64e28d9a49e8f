#include "analysis/recordings/recording.h"

#include <gtest/gtest.h>
#include <support/tempFiles.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "hopLines.h"

using rfu::InputError;
using rfu::Recording;
using rfu::RecordingSource;
using rfu::Sweep;
using rfu::WindowOptions;
using rfu::WindowTime;
using rfu::test::hopLine;
using rfu::test::hopLines;

namespace {

/// Files as a recording: its sweeps as the levels of hopLines() without their sign, "_" for none:
/// "1 2|3 _"; behind it the notes and what ended it, in brackets, with "f1", "f2" for the files.
std::string readingOf(const std::vector<std::string>& files, RecordingSource source = {}) {
    const TempFiles folder;
    for (const std::string& bytes : files) {
        const std::string name = "f" + std::to_string(source.files.size() + 1);
        source.files += QString::fromStdString(folder.write(name, bytes));
    }
    std::string text;
    const auto tell = [&](const InputError& error) {
        std::string message = error.message();
        const std::string path = folder.path("");
        for (std::size_t at = message.find(path); at != std::string::npos;
             at = message.find(path)) {
            message.erase(at, path.size());
        }
        text += " [" + message + "]";
    };
    source.onNote = tell;
    try {
        Recording recording(source);
        std::size_t levels = 0;
        for (Sweep sweep; recording.next(sweep);) {
            text += text.empty() ? "" : "|";
            if (recording.hasGrown()) {
                text += "+";
                EXPECT_EQ(recording.formerPoints().size(), sweep.levels.size());
                levels = sweep.levels.size();
            }
            for (std::size_t i = 0; i < sweep.levels.size(); ++i) {
                const long level = std::lround(-sweep.levels[i]);
                text += (i == 0 ? "" : " ") + (level == 999 ? "_" : std::to_string(level));
            }
            EXPECT_TRUE(levels == 0 || levels == sweep.levels.size());
            levels = sweep.levels.size();
            EXPECT_EQ(recording.axis().points.size(), sweep.time.empty() ? 0 : levels);
        }
    } catch (const InputError& error) {
        tell(error);
    }
    return text;
}

RecordingSource strict() {
    RecordingSource source;
    source.isStrict = true;
    return source;
}

RecordingSource windowOf(WindowOptions window) {
    RecordingSource source;
    source.window = std::move(window);
    return source;
}

std::optional<WindowTime> at(const char* text) {
    return rfu::parseWindowTime(text);
}

}  // namespace

TEST(Recording, PutsFilesInTheOrderOfTime) {
    const std::string early = hopLines("a0 b0 a1 b1");
    const std::string late = hopLine('a', "2", "-5") + hopLine('b', "2", "-6");
    EXPECT_EQ(readingOf({early}), "1 2|3 4");
    EXPECT_EQ(readingOf({early, late}), "1 2|3 4|5 6");
    EXPECT_EQ(readingOf({late, early}), "1 2|3 4|5 6");
    EXPECT_EQ(readingOf({hopLine('a', "1", "-7") + hopLine('b', "1", "-8"), early}), "1 2|3 4|7 8")
        << "within the same second";
    EXPECT_EQ(readingOf({hopLines("a0.5 b0.5"), early}),
              "1 2|3 4 [f1: begins at 2024-01-01 10:00:00.5, before f2 ends at 2024-01-01 "
              "10:00:01]");
}

TEST(Recording, KeepsTheOrderOfFilesWithoutTimes) {
    EXPECT_EQ(readingOf({"-3,-4\n", "-1,-2\n-5,-6\n"}), "3 4|1 2|5 6");
}

TEST(Recording, TakesFilesOfOneSettingOnly) {
    const std::string two = hopLines("a0 b0 a1 b1");
    const struct {
        const char* name;
        std::vector<std::string> files;
        const char* reading;
    } kRows[] = {
        {"a file that lost a hop", {two, hopLine('b', "5", "-9")}, "1 2|3 4|_ 9"},
        {"another band",
         {two, hopLine('c', "5", "-9")},
         " [f2: is of another receiver setting than f1, which lacks the hop 102000000 to 103000000 "
         "Hz in steps of 1000000 Hz]"},
        {"narrower bins",
         {two, "2024-01-01, 10:00:05, 100000000, 101000000, 500000, 5, -1, -2\n"},
         " [f2: is of another receiver setting than f1, which lacks the hop 100000000 to 101000000 "
         "Hz in steps of 500000 Hz]"},
        {"traces of other lengths",
         {"-1,-2\n", "-1,-2,-3\n"},
         " [f2: has traces of 3 levels, while f1 has traces of 2]"},
        {"traces and sweeps",
         {two, "-1,-2\n"},
         " [f2: holds traces without frequencies, while f1 holds sweeps]"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(readingOf(row.files), row.reading) << row.name;
    }
}

TEST(Recording, SkipsBrokenLinesUnlessItIsStrict) {
    const std::string good = hopLines("a0 b0 a1 b1");
    const std::string broken = "2024-01-01, 10h\n";
    const std::string problem = "\"10h\" is not a time (21:15:00)";
    EXPECT_EQ(readingOf({good + broken}), " [f1:5: " + problem + "; the line is skipped]|1 2|3 4");
    EXPECT_EQ(readingOf({broken + broken + good}),
              " [f1:1: " + problem +
                  "; the line is skipped]|1 2|3 4 [f1: 2 lines in all made no "
                  "sense and were skipped]");
    EXPECT_EQ(
        readingOf({hopLines("a0 a1 a2 a3 a4 c5 a6")}),
        "1|2|3|4|5 [f1:6: the hop 102000000 to 103000000 Hz in steps of 1000000 Hz is not one "
        "of the first 4 sweeps; the line is skipped]|7");
    EXPECT_EQ(readingOf({good + broken}, strict()), " [f1:5: " + problem + "]");
    EXPECT_EQ(readingOf({broken + broken}), " [f1:1: " + problem + "]");
}

TEST(Recording, TellsOfEachFileWhatWasLeftOut) {
    const std::string good = hopLines("a0 b0 a1 b1");
    const std::string late = hopLine('a', "5", "-5") + hopLine('b', "5", "-6");
    const std::string broken = "2024-01-01, 10h\n";
    const std::string problem = "\"10h\" is not a time (21:15:00); the line is skipped";
    EXPECT_EQ(readingOf({good + broken, late + broken + "2024"}),
              " [f1:5: " + problem + "]|1 2|3 4 [f2:3: " + problem +
                  "]|5 6 [f2:4: the last line has no line end and may be cut; it is left out]");
}

TEST(Recording, RefusesAFileWithoutASweep) {
    EXPECT_EQ(readingOf({""}), " [f1: holds no sweep]");
    EXPECT_EQ(readingOf({hopLines("a0 a1"), "# nothing\n"}), " [f2: holds no sweep]");
}

TEST(Recording, HandsOutTheSweepsOfAWindow) {
    const std::string six = hopLines("a0 b0 a1 b1 a2 b2 a3 b3 a4 b4 a5 b5");
    const std::string late = hopLine('a', "20", "-21") + hopLine('b', "20", "-22") +
                             hopLine('a', "21", "-23") + hopLine('b', "21", "-24");
    WindowOptions everySecond;
    everySecond.every = 2;
    WindowOptions lastTwo;
    lastTwo.last = 2;
    WindowOptions lastTwoOfEverySecond = everySecond;
    lastTwoOfEverySecond.last = 2;
    WindowOptions everySecondUntil4 = everySecond;
    everySecondUntil4.from = at("10:00:01");
    everySecondUntil4.to = at("10:00:04");
    WindowOptions lastUntil4 = lastTwo;
    lastUntil4.to = at("10:00:04");
    WindowOptions more;
    more.last = 100;
    const struct {
        const char* name;
        std::vector<std::string> files;
        WindowOptions window;
        const char* reading;
    } kRows[] = {
        {"both times included",
         {six},
         {{}, at("10:00:01"), at("2024-01-01 10:00:03")},
         "3 4|5 6|7 8"},
        {"between two sweeps", {six}, {{}, at("10:00:00.5"), at("10:00:02.999")}, "3 4|5 6"},
        {"from", {six}, {{}, at("10:00:04"), {}}, "9 10|11 12"},
        {"to", {six}, {{}, {}, at("10:00:00")}, "1 2"},
        {"before the end", {six}, {{}, at("-2s"), at("-1s")}, "7 8|9 10"},
        {"no sweep",
         {six},
         {{}, at("10:00:06"), {}},
         " [f1: has no sweep between these times; it reaches from 2024-01-01 10:00:00 to "
         "2024-01-01 10:00:05]"},
        {"no sweep of several files",
         {late, six},
         {{}, at("10:00:06"), at("10:00:19")},
         " [f1: has no sweep between these times; it reaches from 2024-01-01 10:00:00 to "
         "2024-01-01 10:00:21]"},
        {"every second", {six}, everySecond, "1 2|5 6|9 10"},
        {"every second between the times", {six}, everySecondUntil4, "3 4|7 8"},
        {"the last two", {six}, lastTwo, "9 10|11 12"},
        {"the last two of every second", {six}, lastTwoOfEverySecond, "5 6|9 10"},
        {"the last two before a time", {six}, lastUntil4, "7 8|9 10"},
        {"more than there are", {hopLines("a0 b0 a1 b1")}, more, "1 2|3 4"},
        {"the last two of several files", {late, six}, lastTwo, "21 22|23 24"},
        {"across files", {late, six}, {{}, at("10:00:05"), at("10:00:20")}, "11 12|21 22"},
        {"every second across files",
         {hopLines("a0 b0 a1 b1 a2 b2"), late},
         everySecond,
         "1 2|5 6|23 24"},
        {"before the end of the last file", {late, six}, {{}, at("-16s"), {}}, "11 12|21 22|23 24"},
        {"a hop that a sweep lost",
         {hopLines("a0 b0 a1 b1 a2 b2 a3 b3 b4 a5 b5")},
         {{}, at("10:00:04"), {}},
         "_ 9|10 11"},
        {"traces", {"-1,-2\n-3,-4\n-5,-6\n"}, everySecond, "1 2|5 6"},
        {"the last traces", {"-1,-2\n-3,-4\n-5,-6\n"}, lastTwo, "3 4|5 6"},
        {"times of traces",
         {"-1,-2\n"},
         {{}, at("-2s"), {}},
         " [f1: holds no times to choose sweeps by]"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(readingOf(row.files, windowOf(row.window)), row.reading) << row.name;
    }
}

TEST(Recording, GoesOnBehindATime) {
    const std::string six = hopLines("a0 b0 a1 b1 a2 b2 a3 b3 a4 b4 a5 b5");
    const std::string late = hopLine('a', "20", "-21") + hopLine('b', "20", "-22");
    const auto goingOn = [](const char* to, long long last) {
        WindowOptions window;
        window.to = at(to);
        window.last = last;
        window.goesOn = true;
        return window;
    };
    const struct {
        const char* name;
        std::vector<std::string> files;
        WindowOptions window;
        const char* reading;
    } kRows[] = {
        {"the last two and all behind", {six}, goingOn("10:00:03", 2), "5 6|7 8|9 10|11 12"},
        {"between two sweeps", {six}, goingOn("10:00:03.5", 1), "7 8|9 10|11 12"},
        {"fewer than that", {six}, goingOn("10:00:01", 5), "1 2|3 4|5 6|7 8|9 10|11 12"},
        {"before the first", {six}, goingOn("09:00:00", 1), "1 2|3 4|5 6|7 8|9 10|11 12"},
        {"behind the last", {six}, goingOn("11:00:00", 2), "9 10|11 12"},
        {"of several files", {late, six}, goingOn("10:00:04", 1), "9 10|11 12|21 22"},
        {"into the next file", {late, six}, goingOn("10:00:20", 2), "11 12|21 22"},
        {"the clock is set back: counted up to the first that is later",
         {hopLines("a0 b0 a1 b1 a2 b2 a3 b3 a4 b4 a9 b9 a1 b1 a2 b2")},
         goingOn("10:00:05", 1),
         "9 10|11 12|13 14|15 16"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(readingOf(row.files, windowOf(row.window)), row.reading) << row.name;
    }
}

TEST(Recording, HandsOutThePointsOfAWindow) {
    const std::string two = hopLines("a0 b0 c0 d0 a1 b1 c1 d1");
    // Bins of 1 MHz: their middles are 100.5, 101.5, 102.5 and 103.5 MHz.
    const struct {
        const char* name;
        std::vector<std::string> files;
        WindowOptions window;
        const char* reading;
    } kRows[] = {
        {"all", {two}, {{{0, 1000}}, {}, {}}, "1 2 3 4|5 6 7 8"},
        {"the middles of two", {two}, {{{100.6, 102.6}}, {}, {}}, "2 3|6 7"},
        {"a middle at the low end is in it", {two}, {{{101.5, 102.5}}, {}, {}}, "2|6"},
        {"two bands in any order", {two}, {{{103, 104}, {100, 101}}, {}, {}}, "1 4|5 8"},
        {"bands that overlap", {two}, {{{100, 102}, {101, 103}}, {}, {}}, "1 2 3|5 6 7"},
        {"between two middles",
         {two},
         {{{100.6, 101.4}}, {}, {}},
         " [f1: has no point in the band; it reaches from 100 MHz to 104 MHz]"},
        {"a file that lost hops",
         {two, hopLine('d', "5", "-9")},
         {{{101, 104}}, {}, {}},
         "2 3 4|6 7 8|_ _ 9"},
        {"a band in a time", {two}, {{{102, 103}}, at("10:00:01"), {}}, "7"},
        {"traces",
         {"-1,-2\n"},
         {{{100, 104}}, {}, {}},
         " [f1: holds no frequencies to choose points by]"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(readingOf(row.files, windowOf(row.window)), row.reading) << row.name;
    }
}

TEST(Recording, TellsHowFarItHasRead) {
    const std::string two = hopLines("a0 b0 a1 b1");
    const std::string late = hopLine('a', "5", "-5") + hopLine('b', "5", "-6");
    const auto a = static_cast<std::int64_t>(two.size());
    const auto b = static_cast<std::int64_t>(late.size());
    WindowOptions fromEnd;
    fromEnd.from = at("-1s");
    WindowOptions last;
    last.last = 1;
    WindowOptions both = fromEnd;
    both.last = 1;
    const struct {
        const char* name;
        std::vector<std::string> files;
        WindowOptions window;
        std::int64_t bytes;
    } kRows[] = {
        {"one file", {two}, {}, a},
        {"several", {late, two}, {}, a + b},
        {"the last one twice", {late, two}, fromEnd, a + b + b},
        {"all twice", {late, two}, last, 2 * (a + b)},
        {"both", {late, two}, both, 2 * (a + b) + b},
    };
    for (const auto& row : kRows) {
        RecordingSource source = windowOf(row.window);
        std::int64_t before = 0;
        source.onRead = [&](std::int64_t read, std::int64_t all) {
            EXPECT_GT(read, before) << row.name;
            EXPECT_EQ(all, row.bytes) << row.name;
            before = read;
        };
        readingOf(row.files, source);
        EXPECT_EQ(before, row.bytes) << row.name;
    }
}

TEST(Recording, TellsOfGoingOnHowFarItHasReadLast) {
    std::string sweeps;
    for (int second = 10; second < 60; ++second) {
        for (char hop = 'a'; hop <= 'z'; ++hop) {
            sweeps += hopLine(hop, std::to_string(second), "-100.00");
        }
    }
    RecordingSource source;
    source.window.to = at("10:00:58");
    source.window.last = 1;
    source.window.goesOn = true;
    std::vector<std::int64_t> reads;
    source.onRead = [&](std::int64_t read, std::int64_t all) {
        EXPECT_EQ(all, static_cast<std::int64_t>(sweeps.size()));
        reads.push_back(read);
    };
    readingOf({sweeps}, source);
    EXPECT_EQ(reads.back(), static_cast<std::int64_t>(sweeps.size()));
    EXPECT_EQ(std::count(reads.begin(), reads.end(), reads.front()), 2) << "it begins again";
}

TEST(Recording, CountsBrokenLines) {
    const TempFiles folder;
    RecordingSource source;
    source.files += QString::fromStdString(
        folder.write("r.csv", hopLines("a0 b0") + "x\n2024\n" + hopLines("a1 b1 a2 b2") + "y\n"));
    source.isLive = true;
    Recording recording(source);
    std::string counts;
    for (Sweep sweep; recording.next(sweep);) {
        counts += std::to_string(recording.brokenLines()) + ' ';
    }
    EXPECT_EQ(counts, "2 2 2 ");
    EXPECT_EQ(recording.brokenLines(), 3);
}

TEST(Recording, CorrectsLevelsAtTheirFrequencies) {
    const TempFiles folder;
    const QString file = QString::fromStdString(folder.write("c.csv", "100,-10\n103,-40\n"));
    const std::string two = hopLines("a0 b0 c0 d0 a1 c1 d1");
    RecordingSource source;
    source.correction = rfu::LevelCorrection(-100.0);
    EXPECT_EQ(readingOf({"-1,nan\n"}, source), "101 _");
    source.correction = rfu::LevelCorrection(-100.0, file);
    EXPECT_EQ(source.inputs(), QStringList(file));
    EXPECT_EQ(readingOf({two}, source), "111 122 133 144|115 _ 136 147");
    EXPECT_EQ(readingOf({hopLine('d', "5", "-9"), two}, source),
              "111 122 133 144|115 _ 136 147|_ _ _ 149");
    EXPECT_EQ(readingOf({"-1,-2\n"}, source), " [f1: holds no frequencies to correct levels by]");
    source.window.bands = {{102, 104}};
    EXPECT_EQ(readingOf({two}, source), "133 144|136 147");
    source.window.bands = {};
    source.isLive = true;
    EXPECT_EQ(readingOf({hopLines("a0 c0 a10 b10 c10")}, source), "111 132|+113 124 135");
}

TEST(Recording, LeavesLevelsOutsideTheWindowUnread) {
    const std::string learned = hopLines("a0 b0 a1 b1 a2 b2 a3 b3 a4 b4");
    const std::string broken = hopLine('a', "5", "x") + hopLine('b', "5", "-12");
    const std::string last = hopLine('a', "6", "-13") + hopLine('b', "6", "-14");
    const std::string bytes = learned + broken + last;
    EXPECT_EQ(readingOf({bytes}, windowOf({{}, at("10:00:05"), {}})),
              " [f1:11: \"x\" is not a level in dBm; the line is skipped]|_ 12|13 14")
        << "the window has the line";
    EXPECT_EQ(readingOf({bytes}, windowOf({{{101, 102}}, at("10:00:05"), {}})), "12|14");
    EXPECT_EQ(readingOf({bytes}, windowOf({{}, at("10:00:06"), {}})), "13 14");
    EXPECT_EQ(readingOf({bytes}, windowOf({{}, {}, at("10:00:00")})), "1 2");
    EXPECT_EQ(readingOf({learned + "2024-01-01, 10h\n" + last}, windowOf({{}, at("10:00:05"), {}})),
              " [f1:11: \"10h\" is not a time (21:15:00); the line is skipped]|13 14")
        << "heads are read";
    EXPECT_EQ(readingOf({learned + last + "2024-01-01, 10h\n"}, windowOf({{}, {}, at("10:00:00")})),
              "1 2 [f1:13: \"10h\" is not a time (21:15:00); the line is skipped]");
}

TEST(Recording, RefusesFilesThatOverlapOutsideTheWindow) {
    const std::string early = hopLines("a0 b0 a2 b2");
    EXPECT_EQ(readingOf({early, hopLine('a', "1", "-5") + hopLine('b', "1", "-6")},
                        windowOf({{}, {}, at("10:00:00")})),
              "1 2 [f2: begins at 2024-01-01 10:00:01, before f1 ends at 2024-01-01 10:00:02]");
}

TEST(Recording, ChoosesFromALiveSource) {
    const auto live = [](WindowOptions window) {
        RecordingSource source = windowOf(std::move(window));
        source.isLive = true;
        return source;
    };
    const std::string grows = hopLines("a0 c0 a10 b10 c10 a20 b20 c20 a30 b30 c30");
    WindowOptions everyThird;
    everyThird.every = 3;
    WindowOptions bandOfEveryThird = everyThird;
    bandOfEveryThird.bands = {{100, 102}};
    const struct {
        const char* name;
        WindowOptions window;
        const char* reading;
    } kRows[] = {
        {"all", {}, "1 2|+3 4 5|6 7 8|9 10 11"},
        {"points come in a sweep that is left out", everyThird, "1 2|+9 10 11"},
        {"in a band", bandOfEveryThird, "1|+9 10"},
        {"a band that has none of them", {{{102, 103}}, {}, {}}, "2|5|8|11"},
        {"a band that has no point before", {{{101, 102}}, {}, {}}, "4|7|10"},
        {"from a time", {{}, at("10:00:20"), {}}, "6 7 8|9 10 11"},
        {"another band",
         {{{200, 201}}, {}, {}},
         " [f1: has no point in the band; it reaches from 100 MHz to 103 MHz]"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(readingOf({grows}, live(row.window)), row.reading) << row.name;
    }
}

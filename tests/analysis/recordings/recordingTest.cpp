#include "analysis/recordings/recording.h"

#include <gtest/gtest.h>
#include <support/tempFiles.h>

#include <cmath>
#include <string>
#include <vector>

#include "hopLines.h"

using rfu::InputError;
using rfu::Recording;
using rfu::RecordingSource;
using rfu::Sweep;
using rfu::test::hopLine;
using rfu::test::hopLines;

namespace {

/// Files as a recording: its sweeps as the levels of hopLines() without their sign, "_" for none:
/// "1 2|3 _"; behind it the notes and what ended it, in brackets, with "f1", "f2" for the files.
std::string readingOf(const std::vector<std::string>& files, bool isStrict = false) {
    const TempFiles folder;
    RecordingSource source;
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
    source.isStrict = isStrict;
    try {
        Recording recording(source);
        std::size_t levels = 0;
        for (Sweep sweep; recording.next(sweep);) {
            text += text.empty() ? "" : "|";
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
    EXPECT_EQ(readingOf({good + broken}, true), " [f1:5: " + problem + "]");
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

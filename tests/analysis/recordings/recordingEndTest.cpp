#include "analysis/recordings/recordingEnd.h"

#include <gtest/gtest.h>
#include <support/tempFiles.h>

#include <string>

#include "analysis/recordings/timeStamp.h"
#include "hopLines.h"

#include <unistd.h>

using rfu::test::hopLine;
using rfu::test::hopLines;

namespace {

/// Seconds of the last sweep behind 10:00:00; "none" where it is not found.
std::string lastSecondOf(const std::string& file, rfu::Waiting waiting = {}) {
    constexpr rfu::Hop kFirst = {100e6, 101e6, 1e6};
    const auto time = rfu::timeOfLastSweep(QString::fromStdString(file), kFirst, waiting);
    return time ? std::to_string((*time - rfu::microsecondsOf("2024-01-01 10:00:00")) /
                                 rfu::kMicrosecondsPerSecond)
                : "none";
}

}  // namespace

TEST(RecordingEnd, IsTheLastLineOfTheFirstHop) {
    const std::string four = hopLines("a0 b0 a1 b1");
    const std::string filling(static_cast<std::size_t>(rfu::kBytesOfEnd), '\n');
    const std::string next = hopLine('a', "2", "-5");
    const std::string withoutEnd = next.substr(0, next.size() - 1);
    const struct {
        const char* name;
        std::string bytes;
        const char* second;
    } kRows[] = {
        {"two sweeps", four, "1"},
        {"the stamp moves within a sweep", hopLines("a0 b2 a4 b6"), "4"},
        {"the last sweep has begun", four + next, "2"},
        {"its line has no end", four + withoutEnd, "1"},
        {"broken lines", four + "2024-01-01, 10h\n2024-01-01, 10:00:09, 1\nnonsense\n\n", "1"},
        {"comments", four + "# 2024-01-01, 10:00:09, 100000000, 101000000, 1000000, 5, -1\n", "1"},
        {"no line of the hop", hopLines("b0 c0"), "none"},
        {"traces", "-1,-2\n-3,-4\n", "none"},
        {"nothing", "", "none"},
        {"much before", filling + four, "1"},
        {"much behind", four + filling, "none"},
        {"a line without end", four + std::string(3u << 20, 'x'), "none"},
        {"compressed", "\x1f\x8b\x08\n" + filling + four, "none"},
    };
    const TempFiles folder;
    for (const auto& row : kRows) {
        EXPECT_EQ(lastSecondOf(folder.write("r.csv", row.bytes)), row.second) << row.name;
    }
}

TEST(RecordingEnd, IsOfRegularFilesOnly) {
    const TempFiles folder;
    EXPECT_EQ(lastSecondOf(folder.path("none")), "none");
    EXPECT_EQ(lastSecondOf(folder.makeFolder("folder")), "none");
    EXPECT_EQ(lastSecondOf(folder.makeFifo("fifo")), "none");
}

TEST(RecordingEnd, IsNotWaitedForOnceReadingIsStopped) {
    const TempFiles folder;
    int ends[2] = {-1, -1};
    ASSERT_EQ(::pipe(ends), 0);
    ASSERT_EQ(::write(ends[1], "x", 1), 1);
    EXPECT_EQ(lastSecondOf(folder.write("r.csv", hopLines("a0 b0")), {{}, ends[0]}), "none");
    ::close(ends[0]);
    ::close(ends[1]);
}

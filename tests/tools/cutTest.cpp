#include <analysis/recordings/hopLines.h>
#include <gtest/gtest.h>

#include <QFile>

#include "runCommand.h"

using rfu::test::hopLine;
using rfu::test::hopLines;

namespace {

const std::string kSix = hopLines("a0 b0 a1 b1 a2 b2 a3 b3 a4 b4 a5 b5");

std::string linesFrom(const char* hop) {
    return kSix.substr(kSix.find(hopLine(hop[0], hop + 1, "-").substr(0, 21)));
}

}  // namespace

TEST(Cut, writesAPartOfARecording) {
    const SampleFolder folder;
    folder.add("six.csv", kSix);
    folder.add("broken.csv", "# by hand\n" + hopLines("a0 b0") + "2024-01-01, x\n");
    folder.add("late.csv", hopLine('a', "9", "nan") + hopLine('b', "9", "-14"));
    const std::string broken = hopLines("a0 b0");
    expectCommands(
        {
            shows("all", "cut six.csv", kSix),
            shows("standard input", "cut -", kSix).given(kSix),
            shows("a band and a time", "cut six.csv --band 100:101 --from 10:00:04",
                  hopLine('a', "4", "-9") + hopLine('a', "5", "-11")),
            shows("several files", "cut late.csv six.csv --from 10:00:05",
                  hopLine('a', "5", "-11") + hopLine('b', "5", "-12") + hopLine('a', "9", "nan") +
                      hopLine('b', "9", "-14")),
            shows("corrected", "cut six.csv --last 1 --offset 0.5",
                  hopLine('a', "5", "-10.50") + hopLine('b', "5", "-11.50")),
            shows("another unit", "cut six.csv --last 1 --unit dBuV",
                  hopLine('a', "5", "95.99") + hopLine('b', "5", "94.99"))
                .noting("the levels are in dBuV, which the format does not tell; readers take "
                        "them for dBm"),
            // 107 + 20 lg 100 - 29.8 and 20 lg 101
            shows("a field at each point", "cut six.csv --last 1 --unit dBuV/m",
                  hopLine('a', "5", "106.20") + hopLine('b', "5", "105.29"))
                .noting("the levels are in dBuV/m, which the format does not tell; readers take "
                        "them for dBm"),
            shows("broken lines", "cut broken.csv", broken)
                .noting("broken.csv:4: \"x\" is not a time (21:15:00); the line is skipped"),
            shows("traces", "cut - --every 2", "-1,nan\n-5,-6\n").given("-1,\n-3,-4\n-5,-6\n"),
            shows("to a file", "cut six.csv --last 2 -o part.csv", ""),
            shows("to the same", "cut six.csv --last 1 --output=other.csv", ""),
        },
        folder);
    EXPECT_EQ(folder.read("part.csv"), linesFrom("a4"));
    EXPECT_EQ(folder.read("other.csv"), linesFrom("a5"));
}

TEST(Cut, writesWhatItReadsAgain) {
    const SampleFolder folder;
    folder.addSamples();
    for (const char* window : {"", "--band 90M:91M --band 97.5M:100.5M",
                               "--from 21:20 --to 21:30 --last 7", "--from -10m --band 88:108"}) {
        const QStringList words = splitWords(window);
        const QStringList out = QStringList{"cut", "fm_band.csv", "-o", "part.csv"} + words;
        ASSERT_EQ(runCommand(out, {}, folder).exitStatus, 0) << window;
        const std::string part = folder.read("part.csv");
        EXPECT_EQ(runCommand(QStringList{"cut", "part.csv"}, {}, folder).output, part) << window;
        EXPECT_EQ(runCommand(QStringList{"cut", "part.csv"} + words, {}, folder).output, part)
            << window;
        const QStringList points = {"--all-points", "--format", "csv"};
        EXPECT_EQ(
            runCommand(QStringList{"trace", "part.csv"} + points, {}, folder).output,
            runCommand(QStringList{"trace", "fm_band.csv"} + points + words, {}, folder).output)
            << window;
    }
}

TEST(Cut, overwritesNoInputAndLeavesNoHalfFile) {
    const SampleFolder folder;
    folder.add("six.csv", kSix);
    folder.add("cable.csv", "100,1\n");
    folder.add("old.csv", "old");
    expectCommands(
        {
            fails("the input", "cut six.csv -o six.csv",
                  "six.csv: cannot be written: it is the input six.csv"),
            fails("the correction", "cut six.csv --correction cable.csv -o cable.csv",
                  "cable.csv: cannot be written: it is the input cable.csv"),
            fails("a folder", "cut six.csv -o .", ".: cannot be written: it is not a regular file"),
            fails("no sweep", "cut six.csv -o old.csv --from 11:00",
                  "six.csv: has no sweep between these times; it reaches from 2024-01-01 10:00:00 "
                  "to 2024-01-01 10:00:05"),
            fails("a broken line", "cut - --strict -o old.csv",
                  "-:13: \"x\" is not a time (21:15:00)")
                .given(kSix + "2024-01-01, x\n"),
            misuses("a linear unit", "cut six.csv --unit V",
                    "--unit: a recording holds levels, and V is not one"),
            misuses("a format", "cut six.csv --format json",
                    "--format has no effect: a recording is written"),
            misuses("an antenna for dBm", "cut six.csv --center 100M",
                    "--center needs a --unit that depends on the antenna, such as dBuV/m"),
            misuses("no file", "cut -o x.csv", "FILE is missing"),
            misuses("no name", "cut six.csv -o", "--output OUT.csv: the value is missing"),
        },
        folder);
    EXPECT_EQ(folder.read("old.csv"), "old");
    EXPECT_EQ(folder.read("six.csv"), kSix);
    EXPECT_FALSE(QFile::exists(folder.path() + QStringLiteral("/x.csv")));
}

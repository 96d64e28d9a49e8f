#include "analysis/recordings/recordingWriter.h"

#include <gtest/gtest.h>
#include <support/tempFiles.h>

#include <optional>
#include <string>
#include <vector>

#include "hopLines.h"

using rfu::Recording;
using rfu::RecordingSource;
using rfu::RecordingWriter;
using rfu::Sweep;
using rfu::WindowOptions;
using rfu::test::hopLine;
using rfu::test::hopLines;

namespace {

/// What is written of files.
std::string written(const std::vector<std::string>& files, WindowOptions window = {},
                    double offset = 0.0, std::vector<double> unitOffsets = {}) {
    const TempFiles folder;
    RecordingSource source;
    for (const std::string& bytes : files) {
        const std::string name = "f" + std::to_string(source.files.size() + 1);
        source.files += QString::fromStdString(folder.write(name, bytes));
    }
    source.window = std::move(window);
    source.correction = rfu::LevelCorrection(offset);
    source.keepsLines = true;
    Recording recording(source);
    std::string text;
    std::optional<RecordingWriter> writer;
    for (Sweep sweep; recording.next(sweep);) {
        if (!writer) {
            writer.emplace(recording, offset != 0.0);
            if (!unitOffsets.empty()) {
                writer->setOffsets(unitOffsets);
            }
        }
        writer->write(sweep, text);
    }
    writer->finish(text);
    return text;
}

WindowOptions in(double low, double high) {
    WindowOptions window;
    window.bands = {{low, high}};
    return window;
}

WindowOptions last(long long sweeps) {
    WindowOptions window;
    window.last = sweeps;
    return window;
}

std::string line(const char* seconds, const char* rest) {
    return std::string("2024-01-01, 10:00:") + seconds + ", " + rest + "\n";
}

}  // namespace

TEST(RecordingWriter, KeepsLinesAndTheirOrder) {
    const struct {
        const char* name;
        std::string bytes;
    } kRows[] = {
        {"hops", hopLines("a0 b0 a1 b1")},
        {"in the order of the receiver", hopLines("c0 a0 b0 c1 a1 b1 c2 b2")},
        {"other blanks and decimals",
         "2024-01-01,10:00:00.25,100000000,102000000,1000000.00,1e3, -1,-2.5 \n"},
        {"a repeated last level", line("00", "100000000, 102000000, 1000000, 5, -1, -2, -2")},
        {"not measured", line("00", "100000000, 102000000, 1000000, 5, nan, -2, -2")},
        {"traces", "-1, -2\n-3,nan\n"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(written({row.bytes}), row.bytes) << row.name;
    }
}

TEST(RecordingWriter, LeavesOutWhatIsNoLine) {
    const std::string two = hopLines("a0 b0 a1 b1");
    EXPECT_EQ(written({"\xEF\xBB\xBF" + std::string("date,time,low\r\n# note\n\n") + two +
                       "2024-01-01, 10h\n" + hopLine('a', "2", "x") + "2024"}),
              two);
    std::string crlf = two;
    for (std::size_t at = 0; (at = crlf.find('\n', at)) != std::string::npos; at += 2) {
        crlf.insert(at, "\r");
    }
    EXPECT_EQ(written({crlf}), two);
    const std::string late = hopLine('a', "5", "-5") + hopLine('b', "5", "-6");
    EXPECT_EQ(written({late, two}), two + late);
}

TEST(RecordingWriter, NamesWhatWasNotMeasured) {
    EXPECT_EQ(written({line("00", "100000000, 105000000, 1000000, 5, -1, , -inf, -999,inf, -5")}),
              line("00", "100000000, 105000000, 1000000, 5, -1, nan, nan, nan,nan, -5"));
    EXPECT_EQ(written({"-1,,\n,+NaN,-3\n"}), "-1,nan,nan\nnan,nan,-3\n");
}

TEST(RecordingWriter, MakesALineOfEachRunOfBins) {
    const std::string hop =
        line("00", "100000000, 102000000, 500000.00, 5, -1.0, -2.00, -3, -4, -4") +
        line("00", "102000000, 104000000, 500000.00, 5, -5, nan, -7, -8");
    WindowOptions two;
    two.bands = {{100, 100.5}, {101, 101.5}};
    const struct {
        const char* name;
        WindowOptions window;
        std::string lines;
    } kRows[] = {
        {"the middle", in(100.5, 101.5),
         line("00", "100500000, 101500000, 500000.00, 5, -2.00, -3")},
        {"the end, without the repeated level", in(101.5, 102),
         line("00", "101500000, 102000000, 500000.00, 5, -4")},
        {"across two hops", in(101.5, 103.5),
         line("00", "101500000, 102000000, 500000.00, 5, -4") +
             line("00", "102000000, 103500000, 500000.00, 5, -5, nan, -7")},
        {"two of one hop", two,
         line("00", "100000000, 100500000, 500000.00, 5, -1.0") +
             line("00", "101000000, 101500000, 500000.00, 5, -3")},
        {"a whole hop", in(100, 102),
         line("00", "100000000, 102000000, 500000.00, 5, -1.0, -2.00, -3, -4, -4")},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(written({hop}, row.window), row.lines) << row.name;
        EXPECT_EQ(written({row.lines}, row.window), row.lines) << row.name;
        EXPECT_EQ(written({row.lines}), row.lines) << row.name;
    }
    EXPECT_EQ(written({line("00", "100000000, 100062500, 31250.0, 5, -1, -2")}, in(100.02, 101)),
              line("00", "100031250, 100062500, 31250.0, 5, -2"));
    EXPECT_EQ(written({line("00", "100000000, 100000003, 1.5, 5, -1, -2")}, in(100.000002, 101)),
              line("00", "100000001.5, 100000003, 1.5, 5, -2"))
        << "between whole hertz";
    EXPECT_EQ(written({line("00", "100000000, 101500000, 1000000, 5, -1, -2")}, in(101, 102)),
              line("00", "101000000, 102000000, 1000000, 5, -2"))
        << "half a bin would round to none";
}

TEST(RecordingWriter, GivesTheFirstSweepAllHops) {
    const auto none = [](char hop, const char* seconds) {
        const std::string line = hopLine(hop, seconds, "nan");
        return line.substr(0, line.find(", 5, ")) + ", 0, nan\n";
    };
    const std::string rest = hopLines("a1 b1 c1 a2 b2 c2");
    EXPECT_EQ(written({hopLine('a', "0", "-1") + hopLine('c', "0.5", "-2") + rest}),
              hopLine('a', "0", "-1") + none('b', "0") + hopLine('c', "0.5", "-2") + rest);
    EXPECT_EQ(written({hopLine('b', "0", "-1") + rest}),
              none('a', "0") + hopLine('b', "0", "-1") + none('c', "0") + rest);
    EXPECT_EQ(written({hopLine('c', "0", "-1") + hopLine('b', "0", "-1") +
                       hopLines("c1 a1 b1 c2 a2 b2")}),
              hopLine('c', "0", "-1") + none('a', "0") + hopLine('b', "0", "-1") +
                  hopLines("c1 a1 b1 c2 a2 b2"))
        << "in the order of the receiver";
    const std::string lost = hopLines("a0 b0 a1 b1 a2 b2 a3 b3 a4 b4") + hopLine('b', "5", "-7");
    EXPECT_EQ(written({lost}, last(1)), none('a', "5") + hopLine('b', "5", "-7"));
    EXPECT_EQ(written({lost}),
              lost.substr(0, lost.rfind("2024")) + none('a', "5") + hopLine('b', "5", "-7"))
        << "and each the first hop";
    EXPECT_EQ(written({lost}, in(100, 101)), hopLine('a', "0", "-1") + hopLine('a', "1", "-3") +
                                                 hopLine('a', "2", "-5") + hopLine('a', "3", "-7") +
                                                 hopLine('a', "4", "-9") + none('a', "5"));
    EXPECT_EQ(written({hopLines("a0 b0"), hopLine('b', "5", "-7")}),
              hopLines("a0 b0") + none('a', "5") + hopLine('b', "5", "-7"));
}

TEST(RecordingWriter, KeepsTheTimesOfSweeps) {
    EXPECT_EQ(written({hopLines("a0 b0.25 c0.5 a1 b1.25 c1.5")}, in(101, 103)),
              hopLine('b', "00", "-2") + hopLine('c', "00", "-3") + hopLine('b', "01", "-5") +
                  hopLine('c', "01", "-6"));
    EXPECT_EQ(written({hopLines("a0 b0.25 a1 b1.25")}, in(100, 101)),
              hopLine('a', "0", "-1") + hopLine('a', "1", "-3"));
}

TEST(RecordingWriter, KeepsAPauseFromDividingTheFirstSweep) {
    WindowOptions late;
    late.from = rfu::parseWindowTime("10:00:01");
    EXPECT_EQ(written({hopLines("a0 b0.1 a1 b1.9 a2 b2.9 a3 b3.1")}, late),
              hopLine('a', "1", "-3") + hopLine('b', "01", "-4") + hopLine('a', "2", "-5") +
                  hopLine('b', "2.9", "-6") + hopLine('a', "3", "-7") + hopLine('b', "3.1", "-8"));
    EXPECT_EQ(written({hopLines("a0 b0.1 a1 b1.5 a2 b2.9")}, late),
              hopLine('a', "1", "-3") + hopLine('b', "1.5", "-4") + hopLine('a', "2", "-5") +
                  hopLine('b', "2.9", "-6"))
        << "not longer than the pause behind the sweep";
}

TEST(RecordingWriter, WritesChangedLevelsWithTheirDecimals) {
    const struct {
        const char* name;
        const char* levels;
        double offset;
        const char* changed;
    } kRows[] = {
        {"two", "-68.10, -57.68", 3.0, "-65.10, -54.68"},
        {"two at least", "-68, 5", 0.25, "-67.75, 5.25"},
        {"as many as the first", "-68.125, 5", 0.5, "-67.625, 5.500"},
        {"six at most", "-68.1234567, 5", 1.0, "-67.123457, 6.000000"},
        {"behind one that was not measured", "nan, -1.125", 1.0, "nan, -0.125"},
        {"without the repeated level", "-1, -2, -2", 1.0, "0.00, -1.00"},
        {"within those that are read", "-990, 990", 20.0, "-970.00, 998.99"},
        {"within them below", "-990, 990", -20.0, "-998.99, 970.00"},
    };
    for (const auto& row : kRows) {
        const std::string head = "100000000, 102000000, 1000000, 5, ";
        EXPECT_EQ(written({line("00", (head + row.levels).c_str())}, {}, row.offset),
                  line("00", (head + row.changed).c_str()))
            << row.name;
    }
    // As doubles, 1.005 lies below the tie and 0.005 above it.
    EXPECT_EQ(written({"0.26,0.63,-1.38,-0.379,-0.37,99.625\n"}, {}, 0.375),
              "0.64,1.00,-1.00,-0.00,0.01,100.00\n");
    EXPECT_EQ(written({"-1,nan,3\n"}, {}, 0.125), "-0.88,nan,3.12\n") << "ties go to even";
    EXPECT_EQ(written({hopLines("a0 b0")}, {}, 1.0, {100.0, 200.0}),
              hopLine('a', "0", "100.00") + hopLine('b', "0", "199.00"));
}

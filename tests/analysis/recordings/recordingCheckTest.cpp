#include "analysis/recordings/recordingCheck.h"

#include <string>
#include <vector>

#include <analysis/maps/mapFiles.h>

#include "../support/packedSamples.h"
#include "analysis/support/compression.h"

namespace rfu::test {
namespace {

using Expected = std::vector<std::string>;

class RecordingCheckTest : public MapFiles {};

const std::string kHop = "2024-05-04, 21:15:00, 100, 130, 10, 1, -80.1, -80.2, -80.3\n";

/// In UTF-16, the low byte first, without a mark.
std::string wide(const std::string& text) {
    std::string bytes;
    for (const char c : text) {
        bytes += {c, '\0'};
    }
    return bytes;
}

TEST_F(RecordingCheckTest, SaysOnceThatARecordingIsInUtf16) {
    EXPECT_EQ(listed(checkRecording(write("a.csv", "\xFF\xFE" + wide(kHop + kHop)))),
              Expected{"1:1 error utf-16: UTF-16: the library reads bytes, and finds nothing in "
                       "the file"});
}

TEST_F(RecordingCheckTest, NamesEachLineThatIsLeftOut) {
    const struct {
        const char* name;
        std::string file;
        Expected findings;
    } rows[] = {
        {"hops", kHop + kHop, {}},
        {"traces", "-80.1,-80.2\n-80.1,nan\n", {}},
        {"a header, comments and blank lines", "date,time\n# a\n\n" + kHop, {}},
        {"a letter in a level",
         kHop + "2024-05-04, 21:15:01, 100, 130, 10, 1, -80.1, -8O.2, -80.3\n" + kHop,
         {"2: warning sweep-line-skipped: skipped: \"-8O.2\" is not a level in dBm"}},
        {"a shorter trace",
         "-80.1,-80.2\n-80.1\n",
         {"2: warning sweep-line-skipped: skipped: a trace of 1 levels, while the first has 2"}},
        {"a last line that is cut",
         kHop + "2024-05-04, 21:15:01, 100, 130, 10, 1, -80.1, -80",
         {"2: warning last-line-cut: skipped: the last line has no line end and not all its "
          "levels"}},
        {"heads that make no sense",
         kHop +
             "2024-05-04, 21:15:01, 100\n2024-05-04, 21:15:01, 100, 130, 10, 1\n"
             "2024-05-04, 21:15:01, 100, 13O, 10, 1, -80.1\n"
             "2024-05-04, 21:15:01, 130, 100, 10, 1, -80.1\n" +
             kHop,
         {"2: warning sweep-line-skipped: skipped: the line ends before Hz high",
          "3: warning sweep-line-skipped: skipped: the line ends before the levels",
          "4: warning sweep-line-skipped: skipped: Hz high is \"13O\" instead of a number",
          "5: warning sweep-line-skipped: skipped: Hz low, Hz high and Hz step do not fit "
          "together: 130 to 100 Hz in steps of 10 Hz"}},
        {"nothing", "", {"error no-sweep: refused: holds no whole sweep"}},
        {"a text",
         "Hello\nThis is no recording\n",
         {"2: warning sweep-line-skipped: skipped: neither a line of a sweep (date, time, Hz low, "
          "Hz high, Hz step, samples, dB, ...) nor a trace of levels in dBm",
          "error no-sweep: refused: holds no whole sweep"}},
        {"a date in another order",
         "05/04/2024, 21:15:00, 100, 130, 10, 1, -80.1, -80.2, -80.3\n",
         {"1: warning sweep-line-skipped: skipped: \"05/04/2024\" is not a date (2024-05-04)",
          "error no-sweep: refused: holds no whole sweep"}},
        {"semicolons and decimal commas",
         "2024-05-04; 21:15:00;100;130;10,0;1;-80,1;-80,2;-80,3\n",
         {"1: warning sweep-line-skipped: skipped: semicolons separate the fields of the sweep, "
          "where commas have to, and numbers have decimal commas in place of points",
          "error no-sweep: refused: holds no whole sweep"}},
        {"semicolons alone",
         "2024-05-04;21:15:00;100;130;10;1;-80;-80;-80\n",
         {"1: warning sweep-line-skipped: skipped: semicolons separate the fields of the sweep, "
          "where commas have to",
          "error no-sweep: refused: holds no whole sweep"}},
        {"semicolons in what is no sweep",
         "2024-05-04;21:15:00;100;130;10;1;loud\n",
         {"1: warning sweep-line-skipped: skipped: neither a line of a sweep (date, time, Hz low, "
          "Hz high, Hz step, samples, dB, ...) nor a trace of levels in dBm",
          "error no-sweep: refused: holds no whole sweep"}},
        {"a line of 2 MB",
         kHop + std::string(2000000, '1') + '\n' + kHop,
         {"2: error reading-ends: reading ends: the line is longer than 1 MiB"}}};
    for (const auto& row : rows) {
        EXPECT_EQ(listed(checkRecording(write("a.csv", row.file))), row.findings) << row.name;
    }
}

TEST_F(RecordingCheckTest, SaysHowFarCompressedDataIsRead) {
    const struct {
        const char* name;
        std::string file;
        Expected findings;
    } rows[] = {
        {"a header line and no more",
         kFlushedGzip,
         {"warning data-cut: the compressed data ends early",
          "error no-sweep: refused: holds no whole sweep"}},
        {"damage",
         kFlushedGzip + "\xFF",  // a block of a kind that there is not
         {"error reading-ends: reading ends: the compressed data is damaged"}},
        {"a window of 256 MiB",
         "\x28\xB5\x2F\xFD\x00\x90\x01\x00\x00"s,
         {"error reading-ends: reading ends: takes more than 128 MiB of memory to unpack"}}};
    for (const auto& row : rows) {
        if (packingOf(row.file)->makeUnpacker != nullptr) {
            EXPECT_EQ(listed(checkRecording(write("a.csv.gz", row.file))), row.findings)
                << row.name;
        }
    }
}

TEST_F(RecordingCheckTest, RefusesWhatDoesNotOpen) {
    EXPECT_NE(refusal([&] { checkRecording(named("missing.csv")); }), "");
}

TEST_F(RecordingCheckTest, TellsHopsFromOtherTables) {
    EXPECT_TRUE(holdsHops(write("a.csv", "# a\ndate,time\n" + kHop)));
    EXPECT_FALSE(holdsHops(write("a.csv", "frequency,dB\n88,-3\n")));
    EXPECT_FALSE(holdsHops(write("a.csv", "-80.1,-80.2\n")));
    EXPECT_FALSE(holdsHops(write("a.csv", "")));
    EXPECT_FALSE(holdsHops(named("missing.csv")));
    EXPECT_TRUE(holdsHops(write("a.csv", "\xFF\xFE" + wide("# a\r\n\r\ndate,time\r\n" + kHop))));
    EXPECT_FALSE(holdsHops(write("a.csv", "\xFF\xFE" + wide("frequency,dB\r\n88,-3\r\n"))));
    EXPECT_FALSE(holdsHops(write("a.csv", "\xFF\xFE")));
}

}  // namespace
}  // namespace rfu::test

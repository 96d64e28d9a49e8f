#include "analysis/recordings/recordingLine.h"

#include <gtest/gtest.h>
#include <support/cText.h>
#include <support/samples.h>
#include <support/tempFiles.h>

#include <cmath>
#include <iterator>
#include <vector>

#include "analysis/support/csvLine.h"
#include "analysis/support/inputError.h"
#include "analysis/support/lineReader.h"

using namespace rfu;

namespace {

using Levels = std::vector<double>;

class RecordingLine : public testing::Test {
protected:
    HopLine hopOf(const std::string& line) { return readHopLine(line, where_); }

    Levels levelsOf(const std::string& fields) {
        Levels levels(countFields(fields));
        EXPECT_EQ(readLevels(fields, levels.data(), levels.size(), where_), levels.size());
        return levels;
    }

    template <typename Read>
    std::string problemOf(Read read) {
        try {
            read();
        } catch (const InputError& error) {
            EXPECT_EQ(error.file(), where_.file());
            return error.problem();
        }
        return "none";
    }

    TempFiles files_;
    LineReader where_{QString::fromStdString(files_.write("empty.csv", ""))};
};

TEST_F(RecordingLine, ReadsTheHeadOfAHop) {
    const std::string line =
        "2024-05-04, 14:02:11.308551, 2400000000, 2405000000, 1000000.00, 20, -64.72, -63.36";
    const HopLine hop = hopOf(line);
    EXPECT_EQ(hop.time, "2024-05-04 14:02:11.308551");
    EXPECT_EQ(hop.hop.low, 2400000000.0);
    EXPECT_EQ(hop.hop.high, 2405000000.0);
    EXPECT_EQ(hop.hop.step, 1000000.0);
    EXPECT_EQ(hop.hop.points(), 5U);
    EXPECT_EQ(levelsOf(std::string(hop.levels)), (Levels{-64.72, -63.36}));
    EXPECT_EQ(hopOf("2024-05-04,14:02:12.308551,1,2,1,1,-1").microseconds - hop.microseconds,
              1000000);
}

TEST_F(RecordingLine, CountsThePointsOfAHop) {
    EXPECT_EQ((Hop{88000000.0, 90500000.0, 39062.5}).points(), 64U);
    EXPECT_EQ((Hop{100000000.0, 100100000.0, 33333.33}).points(), 3U) << "3.0000003 steps";
    EXPECT_EQ((Hop{0.0, 10.0, 4.0}).points(), 3U) << "2.5 steps";
}

TEST_F(RecordingLine, TellsHopsFromTraces) {
    for (const char* line : {"2024-05-04, 10:00:00", "2024-13-04", " 2024-05-04 ,x"}) {
        EXPECT_TRUE(looksLikeHop(line)) << line;
    }
    for (const char* line : {"-50,-60", ",-50", "nan,1", "+1", "-inf", " 5 ,x", ""}) {
        EXPECT_TRUE(looksLikeTrace(line) && !looksLikeHop(line)) << line;
    }
    for (const char* line : {"hello", "-50dBm,-60", "24-05-04, 10:00", "+-1", "-5 0"}) {
        EXPECT_TRUE(!looksLikeTrace(line) && !looksLikeHop(line)) << line;
    }
}

TEST_F(RecordingLine, TellsHeadersAndComments) {
    for (const char* line : {"date,time,Hz low,Hz high,Hz step,samples,dB,dB,...",
                             "\"Date\", \"Time\"", "dBm", "hz_low, hz_high", "info"}) {
        EXPECT_TRUE(looksLikeHeader(line)) << line;
    }
    for (const char* line : {"2024-05-04, 10:00:00", "nan, nan", "inf", "power, -50", "power,,", "",
                             "{\"a\": 1}", "...", "-50dBm", "#power"}) {
        EXPECT_FALSE(looksLikeHeader(line)) << line;
    }
    for (const char* line : {"", " \t", "#", "  # -50", "#-50,-60"}) {
        EXPECT_TRUE(isBlankOrComment(line)) << line;
    }
    EXPECT_FALSE(isBlankOrComment("-50 #"));
}

TEST_F(RecordingLine, SaysWhatIsWrongWithAHead) {
    const struct {
        const char* line;
        const char* problem;
    } kRows[] = {
        {"10:00:00, 1, 2, 1, 5, -1", "\"10:00:00\" is not a date (2024-05-04)"},
        {"2024-04-31, 10:00:00, 1, 2, 1, 5, -1", "\"2024-04-31\" is not a date (2024-05-04)"},
        {"2024-01-01, 10h, 1, 2, 1, 5, -1", "\"10h\" is not a time (21:15:00)"},
        {"2024-01-01", "\"\" is not a time (21:15:00)"},
        {"2024-01-01, 10:00:00", "the line ends before Hz low"},
        {"2024-01-01, 10:00:00, 1", "the line ends before Hz high"},
        {"2024-01-01, 10:00:00, 1, 2", "the line ends before Hz step"},
        {"2024-01-01, 10:00:00, 1, 2, 1", "the line ends before the number of samples"},
        {"2024-01-01, 10:00:00, 1, 2, 1, 5", "the line ends before the levels"},
        {"2024-01-01, 10:00:00, 1e, 2, 1, 5, -1", "Hz low is \"1e\" instead of a number"},
        {"2024-01-01, 10:00:00, 1, 2, 1, x, -1",
         "the number of samples is \"x\" instead of a number"},
        {"2024-01-01, 10:00:00, 104, 100, 1, 5, -1",
         "Hz low, Hz high and Hz step do not fit together: 104 to 100 Hz in steps of 1 Hz"},
        {"2024-01-01, 10:00:00, -1, 100, 1, 5, -1",
         "Hz low, Hz high and Hz step do not fit together: -1 to 100 Hz in steps of 1 Hz"},
        {"2024-01-01, 10:00:00, 100, 104, 0, 5, -1",
         "Hz low, Hz high and Hz step do not fit together: 100 to 104 Hz in steps of 0 Hz"},
        {"2024-01-01, 10:00:00, 100, 104, 9.5, 5, -1",
         "Hz low, Hz high and Hz step do not fit together: 100 to 104 Hz in steps of 9.5 Hz"},
        {"2024-01-01, 10:00:00, 0, 1e300, 1, 5, -1",
         "Hz low, Hz high and Hz step do not fit together: 0 to 1e+300 Hz in steps of 1 Hz"},
        {"2024-01-01, 10:00:00, 0, 1000000, 1, 5, -1",
         "Hz low, Hz high and Hz step do not fit together: 0 to 1000000 Hz in steps of 1 Hz"},
        {"2024-01-01, 10:00:00, 100, 104, 8, 5, -1", "none"},
        {"2024-01-01, 10:00:00, 0, 999999, 1, 5, -1", "none"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(problemOf([&] { hopOf(row.line); }), row.problem) << row.line;
    }
}

TEST_F(RecordingLine, ReadsLevels) {
    const struct {
        const char* fields;
        Levels levels;
    } kRows[] = {
        {"-10, ,-30", {-10, -999, -30}},
        {",-1,", {-999, -1, -999}},
        {"", {-999}},
        {"+1.5,-2, +3", {1.5, -2, 3}},
        {"inf,-INF,-nan,NaN,-1e2", {-999, -999, -999, -999, -100}},
        {"-999,998.999,-998.999", {-999, 998.999, -998.999}},
        {"\t-52.25 ,-61.50\t", {-52.25, -61.5}},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(levelsOf(row.fields), row.levels) << row.fields;
    }
}

TEST_F(RecordingLine, StoresNoMoreLevelsThanWanted) {
    Levels levels = {7.0, 7.0, 7.0};
    EXPECT_EQ(readLevels("-1,-2,-3", levels.data(), 2, where_), 3U);
    EXPECT_EQ(levels, (Levels{-1, -2, 7}));
}

TEST_F(RecordingLine, RefusesOtherTextsAsLevels) {
    for (const char* level : {"-2x", "-2 -3", "999", "-999.5", "1e999", "+-2", "++2", "+", "-",
                              "0x10", "--1", "1.2.3", "-51.23.4", "x"}) {
        for (const std::string& fields :
             {std::string(level), "-1," + std::string(level) + ",-50.25,-50.25"}) {
            EXPECT_EQ(problemOf([&] { levelsOf(fields); }),
                      '"' + std::string(level) + "\" is not a level in dBm")
                << fields;
        }
    }
}

// Each level is the double that strtod() reads, however it is written and wherever it stands.
TEST_F(RecordingLine, ReadsLevelsToTheLastBit) {
    test::Samples samples(71);
    std::vector<std::string> texts = {"-0.00", "0.0",  "-.5",    "5.",      "-007.50", "1e1",
                                      "-1E-2", "+3.5", "-51.23", "-5.4e+1", "998.9999"};
    while (texts.size() < 4000) {
        const std::string digits = std::to_string(samples.below(1000000000));
        std::string text = samples.below(3) == 0 ? "" : "-";
        text += digits.substr(0, 1 + samples.below(3));
        if (samples.below(8) != 0) {
            text += '.' + digits.substr(0, 1 + samples.below(digits.size()));
        }
        if (std::abs(test::decimalOf(text)) < 999.0) {
            texts.push_back(text);
        }
    }
    const std::string separators[] = {",", ", ", " ,\t", ","};
    std::string line;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        line += (i == 0 ? "" : separators[i % std::size(separators)]) + texts[i];
    }
    const Levels levels = levelsOf(line);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_TRUE(test::same(levels[i], test::decimalOf(texts[i]))) << texts[i];
    }
}

}  // namespace

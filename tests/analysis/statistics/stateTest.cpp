// Statistics that are written as states and merged again.
#include <gtest/gtest.h>
#include <rfUtils/trace/traceRssiBuffer.h>
#include <support/samples.h>
#include <support/tempFiles.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "analysis/recordings/stateFile.h"
#include "analysis/statistics/levelHistory.h"
#include "analysis/statistics/peaks.h"
#include "analysis/support/inputError.h"
#include "analysis/support/stateStream.h"

using namespace rfu;
using rfu::test::Samples;

namespace {

constexpr double kNone = traceRssiBuffer::kNoMeasurement;
constexpr std::size_t kPoints = 7;

/// Points 1 MHz apart from 100 MHz on, in one hop.
FrequencyAxis axisOf(std::size_t points) {
    FrequencyAxis axis;
    for (std::size_t i = 0; i < points; ++i) {
        axis.points.push_back(100.0 + static_cast<double>(i));
    }
    const double high = 100.0 + static_cast<double>(points);
    axis.bands = {{0, 100.0, high}};
    AxisHop hop;
    hop.low = 100e6;
    hop.high = high * 1e6;
    hop.step = 1e6;
    hop.firstBin = 0;
    hop.bins = points;
    axis.hops = {hop};
    return axis;
}

/// A second apart.
std::string timeOf(std::size_t sweep) {
    const auto digits = [](std::size_t number) {
        return (number < 10 ? "0" : "") + std::to_string(number);
    };
    return "2024-01-01 10:" + digits(sweep / 60) + ':' + digits(sweep % 60);
}

/// Levels of hundredths between -120 and -60 dBm, some not measured, the third point never.
std::vector<Sweep> randomSweeps(std::size_t count) {
    Samples samples(11);
    std::vector<Sweep> sweeps;
    for (std::size_t i = 0; i < count; ++i) {
        Sweep sweep = {timeOf(i), std::vector<double>(kPoints, kNone)};
        for (std::size_t point = 0; point < kPoints; ++point) {
            if (point != 2 && samples.below(10) > 0) {
                sweep.levels[point] = std::round(samples.between(-12000, -6000)) / 100.0;
            }
        }
        sweeps.push_back(sweep);
    }
    return sweeps;
}

StateHead headOf(const std::vector<Sweep>& sweeps) {
    StateHead head;
    head.command = "peaks";
    head.axis = axisOf(kPoints);
    head.points = kPoints;
    head.sweeps = static_cast<long long>(sweeps.size());
    head.firstTime = sweeps.front().time;
    head.lastTime = sweeps.back().time;
    return head;
}

/// The bytes of a state.
template <typename Statistics>
std::string written(const Statistics& statistics, const StateHead& head) {
    std::string bytes;
    StateWriter writer([&bytes](std::string_view piece) { bytes += piece; });
    beginState(writer);
    statistics.write(writer);
    finishState(writer, head);
    return bytes;
}

LevelHistory historyOf(const std::vector<Sweep>& sweeps, std::size_t maxBytes) {
    LevelHistory history(maxBytes);
    for (const Sweep& sweep : sweeps) {
        history.add(sweep);
    }
    return history;
}

class States : public ::testing::Test {
protected:
    QString write(const std::vector<Sweep>& sweeps, std::size_t maxBytes) {
        const std::string name = std::to_string(files_.size());
        files_ += QString::fromStdString(
            folder_.write(name, written(historyOf(sweeps, maxBytes), headOf(sweeps))));
        return files_.last();
    }

    LevelHistory merged(const StateSet& states, std::size_t maxBytes) {
        LevelHistory history(maxBytes);
        states.forEach([&](StatePart& part) { history.merge(part, states.head().points); });
        return history;
    }

    TempFiles folder_;
    QStringList files_;
};

/// Everything that a history answers from its bins.
void expectSame(LevelHistory&& history, LevelHistory&& expected) {
    ASSERT_EQ(history.points(), expected.points());
    EXPECT_EQ(history.sweeps(), expected.sweeps());
    const auto medians = history.mediansAndBins().ofBins;
    const auto others = expected.mediansAndBins().ofBins;
    for (std::size_t point = 0; point < history.points(); ++point) {
        EXPECT_EQ(std::isnan(medians[point]), std::isnan(others[point])) << point;
        EXPECT_TRUE(std::isnan(medians[point]) || medians[point] == others[point]) << point;
        for (double bound = -124.0; bound < -56.0; bound += 0.8) {  // a multiple of every width
            const auto found = history.above(point, bound);
            const auto wanted = expected.above(point, bound);
            EXPECT_EQ(found.count, wanted.count) << point << ", " << bound;
            EXPECT_EQ(found.first, wanted.first) << point << ", " << bound;
            EXPECT_EQ(found.last, wanted.last) << point << ", " << bound;
        }
    }
}

constexpr std::size_t kAmple = 10000000;

}  // namespace

TEST_F(States, OfLevelsSplitAnywhereAreThoseOfOneRun) {
    const std::vector<Sweep> sweeps = randomSweeps(40);
    for (std::size_t split = 1; split < sweeps.size(); ++split) {
        const auto middle = sweeps.begin() + static_cast<std::ptrdiff_t>(split);
        files_.clear();
        write({middle, sweeps.end()}, kAmple);
        write({sweeps.begin(), middle}, kAmple);
        const StateSet states(files_);
        EXPECT_EQ(states.head().sweeps, 40);
        EXPECT_EQ(states.head().firstTime, timeOf(0));
        EXPECT_EQ(states.head().lastTime, timeOf(39));
        expectSame(merged(states, kAmple), historyOf(sweeps, kAmple));
    }
}

TEST_F(States, OfLevelsDoNotDependOnHowTheyWereHeld) {
    const std::vector<Sweep> sweeps = randomSweeps(1500);
    const std::string held = written(historyOf(sweeps, kAmple), headOf(sweeps));
    // Drained several times, with bins of 0.05 dB.
    const std::size_t kDrained = 40000;
    ASSERT_EQ(historyOf(sweeps, kDrained).resolution(), 0.05);
    EXPECT_EQ(written(historyOf(sweeps, kDrained), headOf(sweeps)), held);
    write(sweeps, kAmple);
    const StateSet states(files_);
    EXPECT_EQ(written(merged(states, kAmple), states.head()), held);
}

TEST_F(States, WithWiderBinsMakeTheOthersAsWide) {
    const std::vector<Sweep> sweeps = randomSweeps(300);
    const auto middle = sweeps.begin() + 100;
    const auto end = sweeps.begin() + 200;
    const std::size_t kLittle = 3000;
    const LevelHistory wide = historyOf({middle, end}, kLittle);
    ASSERT_GT(wide.resolution(), 0.05);
    write({sweeps.begin(), middle}, kAmple);
    write({middle, end}, kLittle);
    write({end, sweeps.end()}, kAmple);
    LevelHistory found = merged(StateSet(files_), kAmple);
    EXPECT_EQ(found.resolution(), wide.resolution());
    LevelHistory expected = historyOf(sweeps, kAmple);
    for (std::size_t point = 0; point < kPoints; ++point) {
        const double bound = -10.0 * wide.resolution() * std::round(9.0 / wide.resolution());
        EXPECT_EQ(found.above(point, bound).count, expected.above(point, bound).count) << bound;
        EXPECT_EQ(found.above(point, bound).first, expected.above(point, bound).first) << bound;
        EXPECT_EQ(found.above(point, bound).last, expected.above(point, bound).last) << bound;
    }
    // The bound of the memory holds for states too.
    EXPECT_GE(merged(StateSet(files_), kLittle).resolution(), wide.resolution());
}

TEST_F(States, RefuseStatisticsThatDisagree) {
    const std::vector<Sweep> sweeps = randomSweeps(3);
    // Points that were never measured, and their levels.
    std::string bytes;
    StateWriter writer([&bytes](std::string_view piece) { bytes += piece; });
    beginState(writer);
    for (std::size_t i = 0; i < kPoints; ++i) {
        writer.count(0);
    }
    historyOf(sweeps, kAmple).write(writer);
    finishState(writer, headOf(sweeps));
    const StateSet states({QString::fromStdString(folder_.write("disagreeing", bytes))});
    PeakFinder merged;
    EXPECT_THROW(states.forEach([&](StatePart& part) { merged.merge(part, kPoints); }), InputError);
}

TEST_F(States, HoldNumbersOfEveryKind) {
    const std::vector<std::uint64_t> counts = {
        0, 1, 127, 128, 16383, 16384, UINT32_MAX, UINT64_MAX - 1, UINT64_MAX};
    const std::vector<std::int64_t> integers = {0, -1, 1, -64, 64, INT64_MIN, INT64_MAX};
    const std::vector<double> numbers = {0.0, -0.0, -90.05, 5e-324,
                                         std::numeric_limits<double>::infinity()};
    std::string bytes;
    StateWriter writer([&bytes](std::string_view piece) { bytes += piece; });
    for (const auto count : counts) {
        writer.count(count);
    }
    for (const auto integer : integers) {
        writer.integer(integer);
    }
    for (const double number : numbers) {
        writer.number(number);
    }
    writer.text("caf\xC3\xA9");
    const std::uint64_t end = writer.size();
    writer.finish();
    // 300 = 2 * 128 + 44 and -3 as the count 5; 1 as a double.
    std::string few;
    StateWriter known([&few](std::string_view piece) { few += piece; });
    known.count(300);
    known.integer(-3);
    known.number(1.0);
    known.finish();
    EXPECT_EQ(few.substr(0, few.size() - kStateChecksum),
              std::string("\xAC\x02\x05\0\0\0\0\0\0\xF0\x3F", 11));

    const QString file = QString::fromStdString(folder_.write("numbers", bytes));
    EXPECT_TRUE(StateReader::hasChecksum(file));
    StateReader reader(file, 0, end);
    for (const auto count : counts) {
        EXPECT_EQ(reader.count(), count);
    }
    for (const auto integer : integers) {
        EXPECT_EQ(reader.integer(INT64_MIN, INT64_MAX), integer);
    }
    for (const double number : numbers) {
        const double found = reader.number();
        EXPECT_EQ(found, number);
        EXPECT_EQ(std::signbit(found), std::signbit(number));
    }
    EXPECT_EQ(reader.text(), "caf\xC3\xA9");
    EXPECT_TRUE(reader.isAtEnd());
    EXPECT_THROW(reader.count(), InputError);
}

TEST_F(States, RefuseCountsThatMakeNoSense) {
    const struct {
        const char* what;
        std::string bytes;
    } kRows[] = {
        {"nothing", ""},
        {"a count without its end", "\x80"},
        {"a leading zero", std::string("\x80\0", 2)},
        {"ten bytes with more than 64 bits", "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x02"},
        {"eleven bytes", "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x01"},
    };
    for (const auto& row : kRows) {
        const QString file = QString::fromStdString(folder_.write("count", row.bytes));
        StateReader reader(file, 0, row.bytes.size());
        EXPECT_THROW(reader.count(), InputError) << row.what;
    }
    const std::string text =
        "\x05"
        "four";
    StateReader reader(QString::fromStdString(folder_.write("text", text)), 0, text.size());
    EXPECT_THROW(reader.text(), InputError);
}

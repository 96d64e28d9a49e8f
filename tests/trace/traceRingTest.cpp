#include "markerData.h"

#include <QVector>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

using Values = std::vector<double>;

constexpr int kIntMax = std::numeric_limits<int>::max();
constexpr int kIntMin = std::numeric_limits<int>::min();

/// Letters append, digits insert at the oldest end: 'a' is the one-point trace {1}, 'b' {2}, ...;
/// '1' is {-1}, '2' {-2}, ...
void play(traceRssiBuffer& buffer, const std::string& pushes) {
    for (const char push : pushes) {
        const bool append = push >= 'a';
        Values trace{append ? push - 'a' + 1.0 : -(push - '0' + 0.0)};
        append ? buffer.push_back(trace) : buffer.push_front(trace);
    }
}

TEST(TraceRing, KeepsTracesFromOldestToNewest) {
    const struct {
        const char* name;
        int capacity;
        const char* pushes;
        Values expected;
    } kCases[] = {
        {"empty", 3, "", {}},
        {"appended in order", 3, "abc", {1, 2, 3}},
        {"full ring drops the oldest", 3, "abcd", {2, 3, 4}},
        {"wraps round more than once", 3, "abcdefgh", {6, 7, 8}},
        {"inserted at the oldest end", 3, "123", {-3, -2, -1}},
        {"full ring drops the newest", 3, "abc1", {-1, 1, 2}},
        {"insertion wraps round", 3, "abc1234", {-4, -3, -2}},
        {"append after a dropping insertion", 3, "abc1d", {1, 2, 4}},
        {"insertion after a dropping append", 3, "abcd1", {-1, 2, 3}},
        {"both ends of a ring with room", 4, "a1b2", {-2, -1, 1, 2}},
        {"capacity 1 appended", 1, "ab", {2}},
        {"capacity 1 inserted", 1, "a1", {-1}},
        {"capacity 0 appended", 0, "abc", {}},
        {"capacity 0 inserted", 0, "12", {}},
        {"negative capacity counts as 0", -1, "ab12", {}},
        {"lowest capacity counts as 0", kIntMin, "ab12", {}},
    };
    for (const auto& row : kCases) {
        traceRssiBuffer buffer(row.capacity, 100);
        play(buffer, row.pushes);
        EXPECT_EQ(pointData(buffer, 0), row.expected) << row.name;
    }
}

TEST(TraceRing, CopiesTheTraceWhateverItsLength) {
    traceRssiBuffer buffer(4, 4, 2);
    Values trace{-10.0, -20.0, -30.0};
    buffer.push_back(trace);
    EXPECT_EQ(trace, (Values{-10.0, -20.0, -30.0}));
    trace[2] = 0.0;
    EXPECT_EQ(pointData(buffer, 2), Values{-30.0});  // beyond the two declared points
    buffer.push_front(trace);
    trace.clear();
    EXPECT_EQ(pointData(buffer, 2), (Values{0.0, -30.0}));
}

TEST(TraceRing, ADroppedLongTraceLeavesNothingBehind) {
    traceRssiBuffer buffer(1, 4);
    Values longTrace{1.0, 2.0, 3.0};
    Values shortTrace{4.0};
    buffer.push_back(longTrace);
    buffer.push_back(shortTrace);
    EXPECT_EQ(pointData(buffer, 0), Values{4.0});
    EXPECT_EQ(pointData(buffer, 1), Values{});
}

TEST(CalcMarkerPower, TakesThePointFromEveryTraceThatHasIt) {
    traceRssiBuffer buffer(5, 5);
    for (Values trace : {Values{1, 2, 3}, Values{4}, Values{}, Values{5, 6}, Values{7, 8, 9}}) {
        buffer.push_back(trace);
    }
    const struct {
        int point;
        Values expected;
    } kCases[] = {
        {0, {1, 4, 5, 7}}, {1, {2, 6, 8}}, {2, {3, 9}},   {3, {}},
        {kIntMax, {}},     {-1, {}},       {kIntMin, {}},
    };
    for (const auto& row : kCases) {
        EXPECT_TRUE(buffer.calcMarkerPower(5, row.point)) << row.point;
        EXPECT_EQ(markerData(buffer, 5), row.expected) << row.point;
    }
}

TEST(CalcMarkerPower, ReplacesWhatTheMarkerHeld) {
    traceRssiBuffer buffer(2, 5);
    buffer.appendMarkerPower(3, 99.0);
    EXPECT_TRUE(buffer.calcMarkerPower(3, 0));  // no trace yet: the ring is cleared
    EXPECT_EQ(markerData(buffer, 3), Values{});

    Values trace{1.0};
    buffer.push_back(trace);
    buffer.appendMarkerPower(3, 99.0);
    EXPECT_TRUE(buffer.calcMarkerPower(3, 0));
    EXPECT_TRUE(buffer.calcMarkerPower(3, 0));
    EXPECT_EQ(markerData(buffer, 3), Values{1.0});
}

TEST(CalcMarkerPower, ASmallMarkerRingKeepsTheNewestTraces) {
    traceRssiBuffer buffer(4, 2);
    play(buffer, "abcd");
    EXPECT_EQ(pointData(buffer, 0), (Values{3.0, 4.0}));
}

TEST(CalcMarkerPower, KeepsNoMeasurementsAndNaN) {
    traceRssiBuffer buffer(2, 2);
    Values unmeasured{-999.0};
    Values nan{std::numeric_limits<double>::quiet_NaN()};
    buffer.push_back(unmeasured);
    buffer.push_back(nan);
    const Values data = pointData(buffer, 0);
    ASSERT_EQ(data.size(), 2U);
    EXPECT_EQ(data[0], -999.0);
    EXPECT_NE(data[1], data[1]);
}

TEST(AppendMarkerPower, AFullRingKeepsTheNewestValues) {
    traceRssiBuffer buffer(0, 3);
    for (const double value : {1.0, 2.0, 3.0, 4.0}) {
        EXPECT_TRUE(buffer.appendMarkerPower(0, value));
    }
    EXPECT_EQ(markerData(buffer, 0), (Values{2.0, 3.0, 4.0}));
}

TEST(AppendMarkerPower, CapacityZeroKeepsNothingAndIsNoError) {
    for (const int capacity : {0, -1, kIntMin}) {
        traceRssiBuffer buffer(3, capacity);
        Values trace{1.0};
        buffer.push_back(trace);
        EXPECT_TRUE(buffer.appendMarkerPower(0, 1.0));
        EXPECT_EQ(markerData(buffer, 0), Values{});
        EXPECT_TRUE(buffer.calcMarkerPower(0, 0));
        EXPECT_EQ(markerData(buffer, 0), Values{});
    }
}

TEST(Markers, HaveOneRingEach) {
    traceRssiBuffer buffer(0, 2);
    for (int marker = 0; marker < 6; ++marker) {
        EXPECT_TRUE(buffer.appendMarkerPower(marker, marker * 10.0));
    }
    for (int marker = 0; marker < 6; ++marker) {
        EXPECT_EQ(markerData(buffer, marker), Values{marker * 10.0});
    }
}

TEST(Markers, OutsideZeroToFiveAreRefusedByEveryOperation) {
    for (const int marker : {-1, 6, kIntMin, kIntMax, 256, -250}) {
        traceRssiBuffer buffer(2, 2);
        Values trace{7.0};
        buffer.push_back(trace);
        for (int valid = 0; valid < 6; ++valid) {
            buffer.appendMarkerPower(valid, valid + 0.5);
        }
        double power = 12.0;
        int count = 34;
        Values data{1.0, 2.0};
        QVector<double> qtData{1.0, 2.0};
        EXPECT_FALSE(buffer.calcMarkerPower(marker, 0)) << marker;
        EXPECT_FALSE(buffer.appendMarkerPower(marker, 1.0)) << marker;
        EXPECT_FALSE(buffer.getAverageMarkerPower(marker, &power)) << marker;
        EXPECT_FALSE(buffer.getMaxMarkerPower(marker, &power)) << marker;
        EXPECT_FALSE(buffer.getMinMarkerPower(marker, &power)) << marker;
        EXPECT_FALSE(buffer.getCountLimitMarkerPower(marker, -100.0, &count)) << marker;
        EXPECT_FALSE(buffer.getDataMarkerPower(data, marker)) << marker;
        EXPECT_FALSE(buffer.getDataMarkerPower(qtData, marker)) << marker;
        EXPECT_EQ(power, 12.0) << marker;
        EXPECT_EQ(count, 34) << marker;
        EXPECT_TRUE(data.empty()) << marker;  // emptied before the index is checked
        EXPECT_TRUE(qtData.isEmpty()) << marker;
        for (int valid = 0; valid < 6; ++valid) {
            EXPECT_EQ(markerData(buffer, valid), Values{valid + 0.5}) << marker;
        }
    }
}

TEST(Markers, AreEmptiedByBothOperationsWhileTracesStay) {
    for (const auto empty : {&traceRssiBuffer::resetMarkerBuffer, &traceRssiBuffer::clearMarkers}) {
        traceRssiBuffer buffer(2, 3, 77);
        Values trace{5.0};
        buffer.push_back(trace);
        for (int marker = 0; marker < 6; ++marker) {
            buffer.appendMarkerPower(marker, 1.0);
        }
        (buffer.*empty)();
        for (int marker = 0; marker < 6; ++marker) {
            EXPECT_EQ(markerData(buffer, marker), Values{}) << marker;
        }
        EXPECT_EQ(buffer.getPointNum(), 77);
        EXPECT_EQ(pointData(buffer, 0), Values{5.0});
        for (const double value : {1.0, 2.0, 3.0, 4.0}) {  // the capacity stays
            buffer.appendMarkerPower(1, value);
        }
        EXPECT_EQ(markerData(buffer, 1), (Values{2.0, 3.0, 4.0}));
    }
}

TEST(PointNum, IsKeptForTheCallerAndUsedForNothing) {
    EXPECT_EQ(traceRssiBuffer(1, 1).getPointNum(), 0);
    EXPECT_EQ(traceRssiBuffer(1, 2, 401).getPointNum(), 401);
    traceRssiBuffer buffer(2, 2, 401);
    for (const int points : {1, 0, -1, kIntMin, kIntMax}) {
        buffer.setPointNum(points);
        EXPECT_EQ(buffer.getPointNum(), points);
    }
    buffer.setPointNum(1);
    Values trace{1.0, 2.0};
    buffer.push_back(trace);
    EXPECT_EQ(pointData(buffer, 1), Values{2.0});
}

TEST(TraceRssiBuffer, IsAValue) {
    traceRssiBuffer original(2, 3, 9);
    play(original, "ab");
    original.appendMarkerPower(4, -4.0);

    traceRssiBuffer copy(original);
    play(copy, "c");
    copy.appendMarkerPower(4, -5.0);
    copy.setPointNum(10);
    EXPECT_EQ(pointData(original, 0), (Values{1.0, 2.0}));
    EXPECT_EQ(markerData(original, 4), Values{-4.0});
    EXPECT_EQ(original.getPointNum(), 9);
    EXPECT_EQ(pointData(copy, 0), (Values{2.0, 3.0}));  // capacity 2 was copied
    EXPECT_EQ(markerData(copy, 4), (Values{-4.0, -5.0}));

    traceRssiBuffer assigned(50, 50);
    assigned = original;
    play(assigned, "cd");
    for (const double value : {1.0, 2.0, 3.0, 4.0}) {
        assigned.appendMarkerPower(4, value);
    }
    EXPECT_EQ(pointData(assigned, 0), (Values{3.0, 4.0}));
    EXPECT_EQ(markerData(assigned, 4), (Values{2.0, 3.0, 4.0}));
    EXPECT_EQ(assigned.getPointNum(), 9);
}

TEST(ReservedOperations, DoNothingAndAnswerAConstant) {
    traceRssiBuffer buffer(2, 2, 3);
    play(buffer, "ab");
    buffer.appendMarkerPower(1, -30.0);
    for (const int argument : {0, 1, -1, 6, kIntMax, kIntMin}) {
        buffer.calculate(argument, argument);
        buffer.calculate(argument, argument, argument * 1.0);
        EXPECT_EQ(buffer.getAverageMarker(argument, 1), 999.0);
        EXPECT_EQ(buffer.getMaxMarker(argument, 1), 999.0);
        EXPECT_EQ(buffer.getMinMarker(argument, 1), 999.0);
        EXPECT_EQ(buffer.getAverageMarker(1, argument), 999.0);
        EXPECT_EQ(buffer.getMaxMarker(1, argument), 999.0);
        EXPECT_EQ(buffer.getMinMarker(1, argument), 999.0);
    }
    EXPECT_EQ(markerData(buffer, 1), Values{-30.0});
    EXPECT_EQ(markerData(buffer, 0), Values{});
    EXPECT_EQ(pointData(buffer, 0), (Values{1.0, 2.0}));
    EXPECT_EQ(buffer.getPointNum(), 3);
}

}  // namespace

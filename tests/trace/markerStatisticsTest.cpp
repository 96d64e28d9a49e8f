#include "markerData.h"

#include <support/limits.h>

#include <QVector>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

using rfu::test::kInf;
using rfu::test::kNan;

namespace {

using Values = std::vector<double>;

constexpr double kMax = std::numeric_limits<double>::max();
const double kJustAboveMark = std::nextafter(-999.0, 0.0);

traceRssiBuffer bufferWith(const Values& values, int capacity = 16) {
    traceRssiBuffer buffer(0, capacity);
    for (const double value : values) {
        buffer.appendMarkerPower(2, value);
    }
    return buffer;
}

/// Equal numbers with equal signs of zero; any two NaN are equal.
bool identical(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) || (a == b && std::signbit(a) == std::signbit(b));
}

TEST(MarkerStatistics, OfHandWorkedValues) {
    const struct {
        const char* name;
        Values values;
        double average;
        double maximum;
        double minimum;
    } kCases[] = {
        {"one value", {-42.0}, -42.0, -42.0, -42.0},
        {"three values", {-30.0, -40.0, -80.0}, -50.0, -30.0, -80.0},
        {"largest and smallest inside", {-50.0, -10.0, -90.0, -50.0}, -50.0, -10.0, -90.0},
        {"positive", {10.0, 40.0}, 25.0, 40.0, 10.0},
        {"the mark moves neither mean nor minimum", {-30.0, -999.0, -40.0}, -35.0, -30.0, -40.0},
        {"newest is the mark", {-40.0, -30.0, -999.0}, -35.0, -30.0, -40.0},
        {"oldest is the mark", {-999.0, -40.0, -30.0}, -35.0, -30.0, -40.0},
        {"oldest is the mark, all above 999", {-999.0, 1200.0, 1500.0}, 1350.0, 1500.0, 999.0},
        {"oldest is measured, all above 999", {1500.0, 1200.0}, 1350.0, 1500.0, 1200.0},
        {"marks only", {-999.0, -999.0}, kNan, -999.0, 999.0},
        {"below the mark", {-999.0, -2001.0}, -2001.0, -999.0, -2001.0},
        {"next to the mark is measured",
         {kJustAboveMark},
         kJustAboveMark,
         kJustAboveMark,
         kJustAboveMark},
        {"NaN is the oldest", {kNan, -5.0, -7.0}, kNan, -5.0, -7.0},
        {"NaN is the newest", {-5.0, -7.0, kNan}, kNan, -5.0, -7.0},
        {"NaN between", {-7.0, kNan, -5.0}, kNan, -5.0, -7.0},
        {"NaN only", {kNan, kNan}, kNan, kNan, kNan},
        {"NaN then mark", {kNan, -999.0}, kNan, -999.0, kNan},
        {"mark then NaN", {-999.0, kNan}, kNan, -999.0, 999.0},
        {"infinities", {-kInf, 3.0, kInf}, kNan, kInf, -kInf},
        {"minus infinity only", {-kInf}, -kInf, -kInf, -kInf},
        {"plus infinity only", {kInf}, kInf, kInf, kInf},
        {"the sum overflows", {kMax, kMax}, kInf, kMax, kMax},
        {"negative zero is summed to zero", {-0.0}, 0.0, -0.0, -0.0},
        {"zeros, negative first", {-0.0, 0.0}, 0.0, 0.0, -0.0},
        {"zeros, positive first", {0.0, -0.0}, 0.0, 0.0, -0.0},
        // 1e16 + 1 rounds to 1e16, (1 + 1) + 1e16 is exact.
        {"summed oldest first, ones lost", {1e16, 1.0, 1.0, -1e16}, 0.0, 1e16, -1e16},
        {"summed oldest first, ones kept", {1.0, 1.0, 1e16, -1e16}, 0.5, 1e16, -1e16},
    };
    for (const auto& row : kCases) {
        const traceRssiBuffer buffer = bufferWith(row.values);
        double average = 7777.0;
        double maximum = 7777.0;
        double minimum = 7777.0;
        EXPECT_TRUE(buffer.getAverageMarkerPower(2, &average)) << row.name;
        EXPECT_TRUE(buffer.getMaxMarkerPower(2, &maximum)) << row.name;
        EXPECT_TRUE(buffer.getMinMarkerPower(2, &minimum)) << row.name;
        EXPECT_TRUE(identical(average, row.average)) << row.name << ": " << average;
        EXPECT_TRUE(identical(maximum, row.maximum)) << row.name << ": " << maximum;
        EXPECT_TRUE(identical(minimum, row.minimum)) << row.name << ": " << minimum;
    }
}

// More values than lanes, with the extremes at every place in turn.
TEST(MarkerStatistics, OfManyValuesFindTheExtremesAnywhere) {
    constexpr int kCount = 21;
    for (int place = 0; place < kCount; ++place) {
        traceRssiBuffer buffer(1, kCount);
        for (int i = 0; i < kCount; ++i) {
            const double ordinary = i % 2 == 0 ? -50.0 : -60.0;
            buffer.appendMarkerPower(0, i == place                  ? -90.0
                                        : i == (place + 1) % kCount ? -10.0
                                                                    : ordinary);
        }
        double extreme = 0.0;
        EXPECT_TRUE(buffer.getMinMarkerPower(0, &extreme));
        EXPECT_EQ(extreme, -90.0) << place;
        EXPECT_TRUE(buffer.getMaxMarkerPower(0, &extreme));
        EXPECT_EQ(extreme, -10.0) << place;
    }
}

TEST(MarkerStatistics, ZeroIsAMaximumLikeOthers) {
    traceRssiBuffer buffer(1, 3);
    for (const double value : {-5.0, 0.0, -7.0}) {
        buffer.appendMarkerPower(0, value);
    }
    double maximum = 1.0;
    EXPECT_TRUE(buffer.getMaxMarkerPower(0, &maximum));
    EXPECT_EQ(maximum, 0.0);
}

TEST(MarkerStatistics, OldestIsTheOneLeftInAFullRing) {
    // The measured -50 is gone: the mark is now the oldest, and the search starts from 999.
    const traceRssiBuffer buffer = bufferWith({-50.0, -999.0, 1200.0}, 2);
    double minimum = 0.0;
    EXPECT_TRUE(buffer.getMinMarkerPower(2, &minimum));
    EXPECT_EQ(minimum, 999.0);
}

TEST(MarkerStatistics, AverageOfMarksOnlyIsANaNWithoutSign) {
    double average = 0.0;
    EXPECT_TRUE(bufferWith({-999.0}).getAverageMarkerPower(2, &average));
    EXPECT_TRUE(std::isnan(average));
    EXPECT_FALSE(std::signbit(average));
}

TEST(MarkerStatistics, OfAnEmptyRingAreRefusedExceptTheCount) {
    const traceRssiBuffer buffer = bufferWith({});
    double power = 12.0;
    int count = 34;
    Values data{1.0};
    QVector<double> qtData{1.0};
    EXPECT_FALSE(buffer.getAverageMarkerPower(2, &power));
    EXPECT_FALSE(buffer.getMaxMarkerPower(2, &power));
    EXPECT_FALSE(buffer.getMinMarkerPower(2, &power));
    EXPECT_EQ(power, 12.0);
    EXPECT_FALSE(buffer.getDataMarkerPower(data, 2));
    EXPECT_FALSE(buffer.getDataMarkerPower(qtData, 2));
    EXPECT_TRUE(data.empty());
    EXPECT_TRUE(qtData.isEmpty());
    EXPECT_TRUE(buffer.getCountLimitMarkerPower(2, -1000.0, &count));
    EXPECT_EQ(count, 0);
}

TEST(MarkerStatistics, NullResultsAreRefused) {
    const traceRssiBuffer buffer = bufferWith({1.0});
    EXPECT_FALSE(buffer.getAverageMarkerPower(2, nullptr));
    EXPECT_FALSE(buffer.getMaxMarkerPower(2, nullptr));
    EXPECT_FALSE(buffer.getMinMarkerPower(2, nullptr));
    EXPECT_FALSE(buffer.getCountLimitMarkerPower(2, 0.0, nullptr));
}

TEST(CountLimit, CountsWhatIsStrictlyAbove) {
    const struct {
        const char* name;
        Values values;
        double limit;
        int expected;
    } kCases[] = {
        {"equal does not count", {-40.0}, -40.0, 0},
        {"next above counts", {std::nextafter(-40.0, 0.0)}, -40.0, 1},
        {"next below does not", {std::nextafter(-40.0, -99.0)}, -40.0, 0},
        {"some of them", {-30.0, -40.0, -50.0, -20.0}, -40.0, 2},
        {"the mark counts as a number", {-999.0, -999.0, -1000.0}, -999.5, 2},
        {"the mark at its own limit", {-999.0}, -999.0, 0},
        {"NaN never counts", {kNan, 1.0}, -kInf, 1},
        {"nothing is above NaN", {1.0, kInf}, kNan, 0},
        {"infinity is above the largest", {kInf, kMax}, kMax, 1},
        {"nothing is above infinity", {kInf}, kInf, 0},
        {"positive zero is not above negative zero", {0.0}, -0.0, 0},
    };
    for (const auto& row : kCases) {
        int count = -1;
        EXPECT_TRUE(bufferWith(row.values).getCountLimitMarkerPower(2, row.limit, &count));
        EXPECT_EQ(count, row.expected) << row.name;
    }
}

TEST(MarkerDataCopy, ReplacesTheOutputOldestFirst) {
    const traceRssiBuffer buffer = bufferWith({1.0, -999.0, 3.0, 4.0}, 3);
    Values data{9.0, 9.0, 9.0, 9.0, 9.0};
    QVector<double> qtData{9.0, 9.0, 9.0, 9.0, 9.0};
    EXPECT_TRUE(buffer.getDataMarkerPower(data, 2));
    EXPECT_TRUE(buffer.getDataMarkerPower(qtData, 2));
    EXPECT_EQ(data, (Values{-999.0, 3.0, 4.0}));
    EXPECT_EQ(qtData, (QVector<double>{-999.0, 3.0, 4.0}));
}

TEST(MarkerDataCopy, QtVectorKeepsItsCapacity) {
    const traceRssiBuffer buffer = bufferWith({1.0, 2.0});
    QVector<double> data;
    data.reserve(1000);
    data.append(5.0);
    EXPECT_TRUE(buffer.getDataMarkerPower(data, 2));
    EXPECT_EQ(data, (QVector<double>{1.0, 2.0}));
    EXPECT_GE(data.capacity(), 1000);
    EXPECT_FALSE(buffer.getDataMarkerPower(data, 6));
    EXPECT_TRUE(data.isEmpty());
    EXPECT_GE(data.capacity(), 1000);
}

TEST(MarkerDataCopy, OtherCopiesOfAQtVectorStay) {
    const traceRssiBuffer buffer = bufferWith({1.0, 2.0});
    QVector<double> data{8.0, 9.0};
    const QVector<double> shared = data;
    EXPECT_TRUE(buffer.getDataMarkerPower(data, 2));
    EXPECT_EQ(data, (QVector<double>{1.0, 2.0}));
    EXPECT_EQ(shared, (QVector<double>{8.0, 9.0}));
}

}  // namespace

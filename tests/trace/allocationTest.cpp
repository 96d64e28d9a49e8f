#include <support/allocations.h>
#include "markerData.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

namespace {

using Values = std::vector<double>;

TEST(Allocations, AreNotMadeByTracesOfOneLengthInAFullRing) {
    const int capacity = 5;
    traceRssiBuffer buffer(capacity, capacity);
    for (int i = 0; i < capacity; ++i) {
        Values trace(1001, 0.0);
        buffer.push_back(trace);
    }
    Values later(1001, 1.0);
    Values earlier(1001, 2.0);
    std::size_t count = 0;
    {
        const Allocations allocations;
        buffer.push_back(later);
        buffer.push_back(later);
        buffer.push_front(earlier);
        buffer.calcMarkerPower(0, 1000);
        count = allocations.count();
    }
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(markerData(buffer, 0), (Values{2.0, 0.0, 0.0, 0.0, 1.0}));
}

TEST(Allocations, AreNotMadeByACopyOfAMarkerIntoAVectorWithRoom) {
    traceRssiBuffer buffer(1, 100);
    for (int i = 0; i < 150; ++i) {
        buffer.appendMarkerPower(1, i);
    }
    Values values(100);
    std::size_t count = 0;
    {
        const Allocations allocations;
        buffer.getDataMarkerPower(values, 1);
        count = allocations.count();
    }
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(values.front(), 50.0);
    EXPECT_EQ(values.back(), 149.0);
}

}  // namespace

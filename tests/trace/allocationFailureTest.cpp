#include "markerData.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

namespace {

bool refuseAllocations = false;

/// Runs an action during which nothing can be allocated; tells whether that stopped it.
template <typename Action>
bool failsWithoutMemory(Action action) {
    bool failed = false;
    refuseAllocations = true;
    try {
        action();
    } catch (const std::bad_alloc&) {
        failed = true;
    }
    refuseAllocations = false;
    return failed;
}

}  // namespace

void* operator new(std::size_t size) {
    void* const memory = refuseAllocations ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

using Values = std::vector<double>;

TEST(AllocationFailure, OfAPushReachesTheCallerAndLeavesTheRingAsItWas) {
    for (const int capacity : {2, 3}) {  // a full ring and one with room
        for (const auto push : {&traceRssiBuffer::push_back, &traceRssiBuffer::push_front}) {
            traceRssiBuffer buffer(capacity, 4);
            Values first{1.0};
            Values second{2.0};
            Values longer{3.0, 3.0, 3.0};
            buffer.push_back(first);
            buffer.push_back(second);
            EXPECT_TRUE(failsWithoutMemory([&] { (buffer.*push)(longer); }));
            EXPECT_EQ(pointData(buffer, 0), (Values{1.0, 2.0})) << capacity;
            (buffer.*push)(longer);  // and it goes on working
            EXPECT_EQ(pointData(buffer, 0).size(), static_cast<std::size_t>(capacity));
            EXPECT_EQ(pointData(buffer, 1), Values{3.0});
        }
    }
}

TEST(AllocationFailure, CannotHappenInAMarkerRing) {
    traceRssiBuffer buffer(2, 2);
    Values trace{1.0};
    buffer.push_back(trace);
    EXPECT_FALSE(failsWithoutMemory([&] {
        buffer.appendMarkerPower(0, 1.0);
        buffer.resetMarkerBuffer();
        buffer.calcMarkerPower(0, 0);
    }));
    EXPECT_EQ(markerData(buffer, 0), Values{1.0});
}

}  // namespace

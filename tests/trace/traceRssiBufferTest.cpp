#include <rfUtils/trace/traceRssiBuffer.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(TraceRssiBuffer, FullMarkerRingKeepsTheNewestValues) {
    traceRssiBuffer buffer(3, 3);
    for (const double value : {1.0, 2.0, 3.0, 4.0}) {
        EXPECT_TRUE(buffer.appendMarkerPower(0, value));
    }
    std::vector<double> data;
    EXPECT_TRUE(buffer.getDataMarkerPower(data, 0));
    EXPECT_EQ(data, (std::vector<double>{2.0, 3.0, 4.0}));
}

}  // namespace

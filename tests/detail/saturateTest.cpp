#include <rfUtils/detail/saturate.h>
#include <support/limits.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

using rfu::detail::toFloat;
using rfu::detail::toInt32;
using rfu::test::kInf;
using rfu::test::kNan;

namespace {

TEST(ToInt32, TruncatesTowardZeroAndSaturates) {
    const struct {
        double value;
        std::int32_t expected;
    } kCases[] = {
        {0.0, 0},
        {-0.0, 0},
        {0.999999, 0},
        {-0.999999, 0},
        {1.5, 1},
        {-1.5, -1},
        {2147483646.999, 2147483646},
        {2147483647.0, 2147483647},
        {2147483647.5, 2147483647},
        {2147483648.0, 2147483647},
        {-2147483647.5, -2147483647},
        {-2147483648.0, -2147483647 - 1},
        {-2147483648.9, -2147483647 - 1},
        {-2147483649.0, -2147483647 - 1},
        {1e300, 2147483647},
        {-1e300, -2147483647 - 1},
        {kInf, 2147483647},
        {-kInf, -2147483647 - 1},
        {kNan, 0},
        {-kNan, 0},
    };
    for (const auto& row : kCases) {
        EXPECT_EQ(toInt32(row.value), row.expected) << row.value;
    }
}

// In a constant expression an undefined conversion does not compile.
static_assert(toInt32(2147483648.0) == 2147483647);
static_assert(toInt32(-2147483649.0) == -2147483647 - 1);
static_assert(toInt32(kInf) == 2147483647);
static_assert(toInt32(-kInf) == -2147483647 - 1);
static_assert(toInt32(kNan) == 0);

TEST(ToFloat, RoundsToNearestAndOverflowsToInfinity) {
    EXPECT_EQ(toFloat(0.1), 0.1F);
    EXPECT_EQ(toFloat(16777217.0), 16777216.0F);  // 2^24 + 1, a tie that goes to even
    EXPECT_EQ(toFloat(1e39), std::numeric_limits<float>::infinity());
    EXPECT_EQ(toFloat(-1e39), -std::numeric_limits<float>::infinity());
    EXPECT_EQ(toFloat(1e-60), 0.0F);
    EXPECT_TRUE(std::isnan(toFloat(kNan)));
}

}  // namespace

#include "hmathProbe.h"

#include <gtest/gtest.h>

using rfu::test::text;
using rfu::test::utf8;

namespace {

TEST(WithoutGui, TextsHaveNoWidth) {
    HMath math;
    EXPECT_EQ(math.getStringWidth(12, text("dBm")), 0);
    EXPECT_EQ(math.getStringWidth(12, QString()), 0);
}

TEST(WithoutGui, TheConversionsWork) {
    HMath math;
    EXPECT_EQ(utf8(math.getdBmToUnit(text("dBuV"), 0.0, true)), "107.0 dBuV");
}

}  // namespace

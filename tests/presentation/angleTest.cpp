#include <rfUtils/presentation/rfUtils.h>
#include <support/limits.h>

#include <gtest/gtest.h>

#include <cmath>

using rfu::test::kInf;
using rfu::test::kIntMax;
using rfu::test::kNan;

namespace {

// The rows of many digits: exact rational arithmetic, rounded to a double after each step.
TEST(ConvertDdFromDms, AddsMinutesAndSeconds) {
    const struct {
        const char* name;
        short sign;
        double degrees, minutes, seconds;
        double expected;
    } kCases[] = {
        {"half a degree", 1, 12.0, 30.0, 0.0, 12.5},
        {"fraction of a second", -1, 33.0, 52.0, 7.68, -33.8688},
        {"whole second", -1, 33.0, 52.0, 7.0, -33.868611111111115},
        {"degrees only", 1, 180.0, 0.0, 0.0, 180.0},
        {"one minute", 1, 0.0, 1.0, 0.0, 0.016666666666666666},
        {"one second", 1, 0.0, 0.0, 1.0, 0.0002777777777777778},
        {"sign 0", 0, 12.0, 30.0, 0.0, 0.0},
        {"any sign multiplies", 2, 12.0, 30.0, 0.0, 25.0},
        {"smallest sign", -32768, 1.0, 30.0, 0.0, -49152.0},
        {"fractions everywhere", 1, 1.5, 30.0, 1800.0, 2.5},
        // with the product of the minutes rounded on its own: 1.2169444444444446
        {"minutes are added with one rounding", 1, 1.0, 13.0, 1.0, 1.2169444444444444},
        // with the product of the seconds rounded on its own: 0.03305555555555556
        {"seconds are added with one rounding", 1, 0.0, 1.0, 59.0, 0.03305555555555555},
        {"infinite", -1, kInf, 0.0, 0.0, -kInf},
    };
    for (const auto& row : kCases) {
        double dd = 777.0;
        EXPECT_TRUE(rfUtils::convertDdFromDms(row.sign, row.degrees, row.minutes, row.seconds, dd));
        EXPECT_EQ(dd, row.expected) << row.name;
    }
}

TEST(ConvertDdFromDms, MayWriteOverItsInput) {
    double angle = 12.0;
    rfUtils::convertDdFromDms(1, angle, angle, angle, angle);
    EXPECT_DOUBLE_EQ(angle, 12.0 + 0.2 + 12.0 / 3600.0);
}

TEST(ConvertDmsFromDd, CutsToWholeSeconds) {
    const struct {
        const char* name;
        double dd;
        short sign;
        double degrees, minutes, seconds;
    } kCases[] = {
        {"half a degree", 12.5, 1, 12.0, 30.0, 0.0},
        {"33.48 seconds", 151.2093, 1, 151.0, 12.0, 33.0},
        {"59.9964 seconds", 45.999999, 1, 45.0, 59.0, 59.0},
        {"7.68 seconds", -33.8688, -1, 33.0, 52.0, 7.0},
        {"zero", 0.0, 1, 0.0, 0.0, 0.0},
        {"negative zero", -0.0, 1, 0.0, 0.0, 0.0},
        {"smallest negative", -5e-324, -1, 0.0, 0.0, 0.0},
        {"less than a second", -0.0002, -1, 0.0, 0.0, 0.0},
        {"next below a degree", std::nextafter(46.0, 0.0), 1, 45.0, 59.0, 59.0},
        // 65 seconds on paper, the double is just below
        {"one second short", 0.018055555555555554, 1, 0.0, 1.0, 4.0},
        // with the product of the minutes rounded on its own: 1 second
        {"minutes are taken off with one rounding", 0.050555555555555555, 1, 0.0, 3.0, 2.0},
        // divided by 1/60 they would be the whole 6 and 12 minutes
        {"minutes are multiplied by 60, below 6", 0.099999999999999992, 1, 0.0, 5.0, 59.0},
        {"minutes are multiplied by 60, below 12", 0.19999999999999998, 1, 0.0, 11.0, 59.0},
        {"no range is enforced", -725.25, -1, 725.0, 15.0, 0.0},
        {"largest degrees", 2147483647.5, 1, kIntMax, 30.0, 0.0},
        {"degrees saturate, then the rest does", 1e300, 1, kIntMax, kIntMax, kIntMax},
        {"infinity", kInf, 1, kIntMax, kIntMax, kIntMax},
        {"minus infinity", -kInf, -1, kIntMax, kIntMax, kIntMax},
        {"NaN", kNan, -1, 0.0, 0.0, 0.0},
    };
    for (const auto& row : kCases) {
        short sign = 77;
        double degrees = 777.0;
        double minutes = 777.0;
        double seconds = 777.0;
        EXPECT_TRUE(rfUtils::convertDmsFromDd(row.dd, sign, degrees, minutes, seconds));
        EXPECT_EQ(sign, row.sign) << row.name;
        EXPECT_EQ(degrees, row.degrees) << row.name;
        EXPECT_EQ(minutes, row.minutes) << row.name;
        EXPECT_EQ(seconds, row.seconds) << row.name;
        EXPECT_FALSE(std::signbit(degrees) || std::signbit(minutes) || std::signbit(seconds))
            << row.name;
    }
}

TEST(ConvertDmsFromDd, MayWriteOverItsInput) {
    short sign = 0;
    double angle = -33.8688;
    double minutes = 0.0;
    double seconds = 0.0;
    rfUtils::convertDmsFromDd(angle, sign, angle, minutes, seconds);
    EXPECT_EQ(sign, -1);
    EXPECT_EQ(angle, 33.0);
    EXPECT_EQ(minutes, 52.0);
    EXPECT_EQ(seconds, 7.0);
    double seconds2 = -33.8688;
    double degrees = 0.0;
    rfUtils::convertDmsFromDd(seconds2, sign, degrees, minutes, seconds2);
    EXPECT_EQ(degrees, 33.0);
    EXPECT_EQ(minutes, 52.0);
    EXPECT_EQ(seconds2, 7.0);
}

TEST(Angles, LoseUpToASecondThereAndBack) {
    short sign = 0;
    double degrees = 0.0;
    double minutes = 0.0;
    double seconds = 0.0;
    double back = 0.0;
    rfUtils::convertDmsFromDd(-33.8688, sign, degrees, minutes, seconds);
    rfUtils::convertDdFromDms(sign, degrees, minutes, seconds, back);
    EXPECT_EQ(back, -33.868611111111115);
}

}  // namespace

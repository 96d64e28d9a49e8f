// The sixteen scales. At 1000 MHz and 0 dBi the antenna correction is 60 - 29.8 = 30.2 dB, which
// rounded to single precision is 30.200000762939453125.
#include <rfUtils/units/calculateUnit.h>
#include <rfUtils/units/unitTable.h>
#include <support/limits.h>

#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <limits>

using rfu::test::kInf;
using rfu::test::kNan;

namespace {

constexpr double kUntouched = 12345.678;
constexpr double kSingle = 30.200000762939453125;

double fromDbm(int scale, double dBm, double frequency, double gain) {
    calculateUnit calculator;
    double result = kUntouched;
    EXPECT_TRUE(calculator.actdBm2OtherScale(dBm, frequency, scale, gain, result)) << scale;
    return result;
}

double toDbm(int scale, double value, double frequency, double gain) {
    double result = kUntouched;
    EXPECT_TRUE(actOtherScale2dBm(value, frequency, scale, gain, result)) << scale;
    return result;
}

/// Whether two numbers agree but for the last digits of a logarithm or an exponential.
void expectClose(double actual, double expected, int scale) {
    EXPECT_NEAR(actual, expected, std::fabs(expected) * 2e-14) << "scale " << scale;
}

TEST(CalculateUnit, EveryScaleFromDbm) {
    // at -30 dBm: a = -43 + kSingle = -12.799999237060546875
    EXPECT_EQ(fromDbm(0, -30.0, 1000.0, 0.0), -30.0);
    EXPECT_EQ(fromDbm(1, -30.0, 1000.0, 0.0), -30.0 - 13.0103);
    EXPECT_EQ(fromDbm(2, -30.0, 1000.0, 0.0), -30.0 + 46.9897);
    EXPECT_EQ(fromDbm(3, -30.0, 1000.0, 0.0), -30.0 + 106.9897);
    expectClose(fromDbm(4, -46.9897, 1000.0, 0.0), 0.001, 4);
    expectClose(fromDbm(4, 13.0103, 1000.0, 0.0), 1.0, 4);
    expectClose(fromDbm(5, 0.0, 1000.0, 0.0), 0.001, 5);
    EXPECT_EQ(fromDbm(5, 30.0, 1000.0, 0.0), 1.0);
    EXPECT_EQ(fromDbm(6, -30.0, 1000.0, 0.0), 77.0 + kSingle);
    EXPECT_EQ(fromDbm(7, -30.0, 1000.0, 0.0), 17.0 + kSingle);
    EXPECT_EQ(fromDbm(8, -30.0, 1000.0, 0.0), -43.0 + kSingle);
    expectClose(fromDbm(9, -30.0, 1000.0, 0.0), std::pow(10.0, (-43.0 + kSingle) / 20.0), 9);
    expectClose(fromDbm(10, -30.0, 1000.0, 0.0),
                std::pow(10.0, (-43.0 + kSingle) / 10.0) / 376.99111843077515, 10);
    expectClose(fromDbm(11, -30.0, 1000.0, 0.0), -43.0 + kSingle - 25.763311187417585 + 30.0, 11);
    EXPECT_EQ(fromDbm(12, -30.0, 1000.0, 0.0), -30.0 - 38.75999999999999 + kSingle);
    expectClose(fromDbm(13, -30.0, 1000.0, 0.0), std::pow(10.0, (77.0 + kSingle) / 20.0) / 3.77e8,
                13);
    EXPECT_EQ(fromDbm(14, -30.0, 1000.0, 0.0), -30.0 - 64.53 + kSingle);
    expectClose(fromDbm(15, -30.0, 1000.0, 0.0),
                std::pow(10.0, (-43.0 + kSingle) / 10.0) / 3769911.1843077515, 15);
}

TEST(CalculateUnit, EveryScaleToDbm) {
    EXPECT_EQ(toDbm(0, 7.5, 1000.0, 0.0), 7.5);
    EXPECT_EQ(toDbm(1, 7.5, 1000.0, 0.0), 7.5 + 13.0103);
    EXPECT_EQ(toDbm(2, 7.5, 1000.0, 0.0), 7.5 - 46.9897);
    EXPECT_EQ(toDbm(3, 7.5, 1000.0, 0.0), 7.5 - 106.9897);
    EXPECT_EQ(toDbm(4, 1.0, 1000.0, 0.0), 60.0 - 46.9897);
    EXPECT_EQ(toDbm(4, 0.001, 1000.0, 0.0), -46.9897);
    EXPECT_EQ(toDbm(6, 7.5, 1000.0, 0.0), 7.5 - 107.0 - kSingle);
    EXPECT_EQ(toDbm(7, 7.5, 1000.0, 0.0), 7.5 - 47.0 - kSingle);
    EXPECT_EQ(toDbm(8, 7.5, 1000.0, 0.0), 7.5 + 13.0 - kSingle);
    expectClose(toDbm(10, 1.0, 1000.0, 0.0), 25.763311187417585 + 13.0 - kSingle, 10);
    EXPECT_EQ(toDbm(11, 7.5, 1000.0, 0.0), 7.5 + 8.763311187417589 - kSingle);
    EXPECT_EQ(toDbm(12, 7.5, 1000.0, 0.0), 7.5 + 38.75999999999999 - kSingle);
    // 20 lg(3.77e8)
    expectClose(toDbm(13, 1.0, 1000.0, 0.0), 171.526827004115858 - 107.0 - kSingle, 13);
    EXPECT_EQ(toDbm(14, 7.5, 1000.0, 0.0), 7.5 + 64.53 - kSingle);
    expectClose(toDbm(15, 1.0, 1000.0, 0.0), 65.763311187417585 + 13.0 - kSingle, 15);
}

TEST(CalculateUnit, WattsComeBackThroughTheVoltFormula) {
    expectClose(fromDbm(5, 0.0, 1000.0, 0.0), 0.001, 5);
    EXPECT_EQ(toDbm(5, 0.001, 1000.0, 0.0), -46.9897);
    EXPECT_EQ(toDbm(5, 1.0, 1000.0, 0.0), 60.0 - 46.9897);
}

TEST(CalculateUnit, VoltPerMetreHasNoWayBack) {
    for (const double value : {0.0, 1.0, -1.0, kNan}) {
        EXPECT_EQ(toDbm(9, value, 1000.0, 0.0), kUntouched);
    }
}

TEST(CalculateUnit, AnyOtherScaleGivesZero) {
    for (const int scale : {static_cast<int>(std::size(rfu::kScales)), -1, 100,
                            std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_EQ(fromDbm(scale, -30.0, 1000.0, 0.0), 0.0) << scale;
        EXPECT_EQ(toDbm(scale, -30.0, 1000.0, 0.0), 0.0) << scale;
        EXPECT_EQ(fromDbm(scale, kNan, -1.0, kNan), 0.0) << scale;
        EXPECT_EQ(toDbm(scale, kNan, -1.0, kNan), 0.0) << scale;
    }
}

TEST(CalculateUnit, ScalesWithoutAFieldIgnoreTheAntenna) {
    for (int scale = 0; scale <= 5; ++scale) {
        for (const double frequency : {0.0, -1.0, kNan, kInf, 5800.0}) {
            for (const double gain : {0.0, 12.5, kNan, -kInf}) {
                EXPECT_EQ(fromDbm(scale, 3.5, frequency, gain), fromDbm(scale, 3.5, 1000.0, 0.0));
                EXPECT_EQ(toDbm(scale, 3.5, frequency, gain), toDbm(scale, 3.5, 1000.0, 0.0));
            }
        }
    }
    EXPECT_TRUE(std::signbit(fromDbm(0, -0.0, 1.0, 0.0)));
    EXPECT_TRUE(std::signbit(toDbm(0, -0.0, 1.0, 0.0)));
}

TEST(CalculateUnit, FieldScalesOfNoFrequency) {
    EXPECT_EQ(fromDbm(6, -30.0, 0.0, 0.0), -kInf);
    EXPECT_EQ(fromDbm(9, -30.0, 0.0, 0.0), 0.0);
    EXPECT_EQ(fromDbm(11, -30.0, 0.0, 0.0), -kInf);
    EXPECT_TRUE(std::isnan(fromDbm(14, -30.0, -1.0, 0.0)));
    EXPECT_EQ(toDbm(6, -30.0, 0.0, 0.0), kInf);
    EXPECT_TRUE(std::isnan(toDbm(15, 1.0, -1.0, 0.0)));
}

TEST(CalculateUnit, LinearValuesWithoutALogarithm) {
    for (const int scale : {4, 5, 10, 13, 15}) {
        EXPECT_EQ(toDbm(scale, 0.0, 1000.0, 0.0), -kInf) << scale;
        EXPECT_TRUE(std::isnan(toDbm(scale, -1.0, 1000.0, 0.0))) << scale;
    }
}

TEST(CalculateUnit, GainLowersTheFieldInSinglePrecision) {
    // 60 - 29.8 - 2.15 = 28.05, as a single 28.049999237060546875
    EXPECT_EQ(fromDbm(6, 0.0, 1000.0, 2.15), 107.0 + 28.049999237060546875);
    EXPECT_EQ(toDbm(6, 107.0, 1000.0, 2.15), -28.049999237060546875);
}

TEST(CalculateUnit, TheTwoImpedancesDiffer) {
    // E / H is 377 ohm, E^2 / S is 120 pi ohm
    const double field = fromDbm(9, 0.0, 1000.0, 0.0);
    EXPECT_NEAR(field / fromDbm(13, 0.0, 1000.0, 0.0), 377.0, 1e-9);
    EXPECT_NEAR(field * field / fromDbm(10, 0.0, 1000.0, 0.0), 376.99111843077515, 1e-9);
    EXPECT_NEAR(field * field / fromDbm(15, 0.0, 1000.0, 0.0), 3769911.1843077512, 1e-5);
}

}  // namespace

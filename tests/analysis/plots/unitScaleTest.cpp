#include "analysis/plots/unitScale.h"

#include <gtest/gtest.h>

#include <cmath>

using rfu::Antenna;
using rfu::FrequencyAxis;
using rfu::UnitScale;

namespace {

const FrequencyAxis kAxis = {{0.0, 10.0, 50.0}, {{0, 0.0, 100.0}}, {}};

UnitScale scaleOf(const char16_t* unit, const Antenna& antenna, const FrequencyAxis& axis = kAxis) {
    return unitScaleOf(*rfu::findUnit(unit), antenna, axis);
}

}  // namespace

TEST(UnitScale, IsTheSameAtAllFrequenciesUnlessTheUnitIsAField) {
    const UnitScale dBuV = scaleOf(u"dBuV", {});
    EXPECT_TRUE(dBuV.offsets.empty());
    EXPECT_EQ(dBuV.scale.unit, "dBuV");
    EXPECT_DOUBLE_EQ(dBuV.scale.shown(-10.0), 96.9897);
    const UnitScale volts = scaleOf(u"V", {}, {});
    EXPECT_NEAR(volts.scale.shown(13.0103), 1.0, 1e-6);
    EXPECT_EQ(volts.scale.decibelsPerDecade, 20.0);
    EXPECT_EQ(scaleOf(u"W", {}).scale.decibelsPerDecade, 10.0);
}

TEST(UnitScale, HasOffsetsToTheFieldAtTheEndOfTheAxis) {
    // E[dBuV/m] = P + 107 + 20 lg(f / 1 MHz) - 29.8 - G; the antenna's part is rounded to single precision.
    for (const char16_t* unit : {u"dBuV/m", u"V/m"}) {
        const UnitScale field = scaleOf(unit, {std::nullopt, 3.0});
        EXPECT_EQ(field.antenna.center, 100.0);
        EXPECT_EQ(field.antenna.gain, 3.0);
        ASSERT_EQ(field.offsets.size(), 3U);
        EXPECT_TRUE(std::isinf(field.offsets[0])) << "at 0 MHz";
        EXPECT_NEAR(field.offsets[1], -20.0, 1e-5);
        EXPECT_NEAR(field.offsets[2], 20.0 * std::log10(0.5), 1e-5);
    }
    EXPECT_NEAR(scaleOf(u"dBuV/m", {std::nullopt, 3.0}).scale.shown(-30.0), 84.2, 1e-5);
}

TEST(UnitScale, HasNoOffsetsWithACentreFrequency) {
    const UnitScale field = scaleOf(u"dBuV/m", {10.0, 0.0});
    EXPECT_TRUE(field.offsets.empty());
    EXPECT_NEAR(field.scale.shown(-30.0), 67.2, 1e-5);
}

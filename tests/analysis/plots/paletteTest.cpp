#include "analysis/plots/palette.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using rfu::Palette;

namespace {

double linear(int component) {
    const double part = component / 255.0;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

/// L* of CIE 1976, 0 to 100.
double lightness(QRgb color) {
    const double y = 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) +
                     0.0722 * linear(qBlue(color));
    return y > 216.0 / 24389.0 ? 116.0 * std::cbrt(y) - 16.0 : y * 24389.0 / 27.0;
}

}  // namespace

TEST(Palette, HasThePublishedColours) {
    const struct {
        const char* name;
        int entry;
        QRgb color;
    } kRows[] = {
        {"viridis", 0, 0x440154},   {"viridis", 16, 0x48186a},  {"viridis", 32, 0x472d7b},
        {"viridis", 64, 0x3b528b},  {"viridis", 128, 0x21918c}, {"viridis", 191, 0x5cc863},
        {"viridis", 255, 0xfde725}, {"magma", 0, 0x000004},     {"magma", 255, 0xfcfdbf},
        {"cividis", 0, 0x00224e},   {"cividis", 255, 0xfee838}, {"grey", 0, 0x000000},
        {"grey", 255, 0xffffff},    {"turbo", 0, 0x30123b},     {"turbo", 255, 0x7a0403},
    };
    for (const auto& row : kRows) {
        const Palette* const palette = rfu::findPalette(row.name);
        ASSERT_NE(palette, nullptr) << row.name;
        EXPECT_EQ(palette->color(row.entry), 0xff000000U | row.color) << row.name << row.entry;
    }
    EXPECT_EQ(rfu::findPalette("jet"), nullptr);
    EXPECT_EQ(rfu::findPalette(""), nullptr);
}

TEST(Palette, GetsLighterInEvenStepsWhereItIsUniform) {
    for (const Palette& palette : rfu::kPalettes) {
        SCOPED_TRACE(palette.name);
        const double low = lightness(palette.color(0));
        const double high = lightness(palette.color(255));
        double farthest = 0.0;
        for (int entry = 0; entry < Palette::kEntries; ++entry) {
            const double even = low + (high - low) * entry / 255.0;
            farthest = std::max(farthest, std::abs(lightness(palette.color(entry)) - even));
        }
        // The colours are uniform together with their hue, in another measure than L*.
        EXPECT_EQ(farthest < 10.0, palette.isUniform) << farthest;
    }
}

TEST(Palette, GreyHasEvenSteps) {
    const Palette& grey = *rfu::findPalette("grey");
    for (int entry = 0; entry < Palette::kEntries; ++entry) {
        EXPECT_NEAR(lightness(grey.color(entry)), entry / 2.55, 0.25) << entry;
        EXPECT_TRUE(qIsGray(grey.color(entry)));
    }
}

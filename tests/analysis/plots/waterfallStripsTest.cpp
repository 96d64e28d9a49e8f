#include "analysis/plots/waterfallStrips.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

using rfu::kNotMeasured;
using rfu::PackedLevel;
using rfu::WaterfallStrips;

namespace {

using Levels = std::vector<PackedLevel>;

const rfu::Palette& paletteOf(const char* name) {
    return *rfu::findPalette(name);
}

// The ends of the published tables.
constexpr QRgb kViridisLow = 0xff440154;
constexpr QRgb kViridisHigh = 0xfffde725;
constexpr QRgb kMagmaLow = 0xff000004;
constexpr QRgb kGreyHigh = 0xffffffff;
constexpr QRgb kTransparent = 0;

/// Six points in four columns, the third of which no bin covers; from -100 dBm to 0 dBm.
class StripsOfSixPoints : public testing::Test {
protected:
    StripsOfSixPoints() {
        strips.setColumns({{0, 0, 3}, {1, 3, 5}, {3, 5, 6}}, 4);
        strips.setColors(paletteOf("viridis"), {-100.0, 0.0});
    }

    Levels levelsOf(std::uint64_t row) const {
        Levels levels;
        for (int column = 0; column < strips.width(); ++column) {
            levels.push_back(strips.level(row, column));
        }
        return levels;
    }
    QRgb pixel(std::uint64_t row, int column) {
        return strips.picture(WaterfallStrips::stripOf(row))
            .pixel(column, WaterfallStrips::lineOf(row));
    }

    WaterfallStrips strips;
    const Levels low = {-10000, -12000, -32767, -10000, -10000, -10000};
    const Levels high = {0, -10000, -5000, -100, 100, 0};
    const Levels holed = {kNotMeasured, kNotMeasured, kNotMeasured, kNotMeasured, -10000, 0};
};

}  // namespace

TEST_F(StripsOfSixPoints, ReduceToTheMaximumOfEachColumn) {
    strips.setRow(5, 0, low.data());
    strips.setRow(6, 0, high.data());
    strips.setRow(7, 0, holed.data());
    EXPECT_EQ(levelsOf(5), (Levels{-10000, -10000, kNotMeasured, -10000}));
    EXPECT_EQ(levelsOf(6), (Levels{0, 100, kNotMeasured, 0}));
    EXPECT_EQ(levelsOf(7), (Levels{kNotMeasured, -10000, kNotMeasured, 0}));
    EXPECT_EQ(levelsOf(8), Levels(4, kNotMeasured)) << "no such row";
    EXPECT_EQ(strips.level(6, -1), kNotMeasured);
    EXPECT_EQ(strips.level(6, 4), kNotMeasured);
}

TEST_F(StripsOfSixPoints, PutTheNewestRowOnTop) {
    strips.setRow(64, 0, low.data());
    strips.setRow(127, 0, high.data());
    const QImage picture = strips.picture(1);
    ASSERT_EQ(picture.size(), QSize(4, 64));
    EXPECT_EQ(picture.pixel(0, 63), kViridisLow);
    EXPECT_EQ(picture.pixel(0, 0), kViridisHigh);
    EXPECT_EQ(picture.pixel(0, 1), kTransparent) << "a row that is not held";
    EXPECT_EQ(picture.pixel(2, 0), kTransparent) << "a column that no bin covers";
}

TEST_F(StripsOfSixPoints, ColourLate) {
    strips.setRow(0, 0, low.data());
    strips.setRow(1, 0, high.data());
    strips.setRow(2, 0, holed.data());
    EXPECT_EQ(pixel(0, 0), kViridisLow);
    EXPECT_EQ(pixel(1, 0), kViridisHigh);
    strips.setColors(paletteOf("magma"), {-100.0, 0.0});
    EXPECT_EQ(pixel(0, 0), kMagmaLow);
    EXPECT_EQ(pixel(2, 0), kTransparent);
    strips.setColors(paletteOf("grey"), {-200.0, -101.0});
    EXPECT_EQ(pixel(0, 0), kGreyHigh);
    EXPECT_EQ(pixel(2, 1), kGreyHigh);
    EXPECT_EQ(pixel(2, 0), kTransparent);
}

TEST_F(StripsOfSixPoints, ChangeOnePictureForARow) {
    for (std::uint64_t row = 0; row < 192; ++row) {
        strips.setRow(row, 0, low.data());
    }
    EXPECT_EQ(strips.strips(), (std::vector<std::uint64_t>{0, 1, 2}));
    const std::uint64_t before[] = {strips.revision(0), strips.revision(1), strips.revision(2)};
    strips.setRow(70, 0, high.data());
    EXPECT_EQ(strips.revision(0), before[0]);
    EXPECT_NE(strips.revision(1), before[1]);
    EXPECT_EQ(strips.revision(2), before[2]);
    EXPECT_EQ(pixel(70, 0), kViridisHigh);
    EXPECT_EQ(pixel(69, 0), kViridisLow);
    strips.setColors(paletteOf("grey"), {-100.0, 0.0});
    EXPECT_NE(strips.revision(0), before[0]);
    EXPECT_EQ(strips.revision(3), 0U);
    EXPECT_TRUE(strips.picture(3).isNull());
}

TEST_F(StripsOfSixPoints, HoldTheRowsAskedForOnly) {
    for (const std::int64_t row : {0, 63, 64, 200, 320}) {
        strips.setRow(static_cast<std::uint64_t>(row), 1000 - row, low.data());
    }
    EXPECT_EQ(strips.time(63), 937);
    EXPECT_EQ(strips.time(320), 680);
    EXPECT_TRUE(strips.hasRow(63));
    EXPECT_FALSE(strips.hasRow(62));
    strips.keepOnly(64, 255);
    EXPECT_EQ(strips.strips(), (std::vector<std::uint64_t>{1, 3}));
    EXPECT_FALSE(strips.hasRow(63));
    EXPECT_TRUE(strips.hasRow(64));
    EXPECT_EQ(levelsOf(63), Levels(4, kNotMeasured));
    strips.setColumns({{0, 0, 6}}, 1);
    EXPECT_TRUE(strips.strips().empty());
    // The numbers of rows do not end.
    const std::uint64_t last = std::numeric_limits<std::uint64_t>::max();
    strips.setRow(last, 0, high.data());
    EXPECT_EQ(pixel(last, 0), kViridisHigh);
    strips.clear();
    EXPECT_FALSE(strips.hasRow(last));
}

TEST_F(StripsOfSixPoints, CountTheReducedLevels) {
    strips.setRow(0, 0, low.data());
    strips.setRow(64, 0, high.data());
    const rfu::LevelHistogram histogram = strips.histogram();
    EXPECT_EQ(histogram.measured(), 6);
    EXPECT_EQ(histogram.percentile(0.5), -10000);
    EXPECT_EQ(histogram.percentile(1.0), 100);
}

TEST(WaterfallStrips, AreOpaqueWhereAllOfThemWasMeasured) {
    WaterfallStrips strips;
    strips.setColumns({{0, 0, 1}, {1, 1, 2}}, 2);
    strips.setColors(paletteOf("viridis"), {-100.0, 0.0});
    const Levels both = {-10000, 0};
    const Levels one = {-10000, kNotMeasured};
    for (std::uint64_t row = 0; row < 64; ++row) {
        EXPECT_TRUE(strips.picture(0).isNull() || strips.picture(0).hasAlphaChannel()) << row;
        strips.setRow(row, 0, both.data());
    }
    EXPECT_EQ(strips.picture(0).format(), QImage::Format_RGB32);
    EXPECT_EQ(strips.picture(0).pixel(1, 5), kViridisHigh);
    strips.setRow(10, 0, one.data());
    EXPECT_EQ(strips.picture(0).pixel(1, WaterfallStrips::lineOf(10)), kTransparent);
    EXPECT_EQ(strips.picture(0).pixel(1, WaterfallStrips::lineOf(11)), kViridisHigh);
    strips.setRow(10, 0, both.data());
    strips.setColors(paletteOf("magma"), {-100.0, 0.0});
    EXPECT_FALSE(strips.picture(0).hasAlphaChannel());
    EXPECT_EQ(strips.picture(0).pixel(0, 0), kMagmaLow);
}

TEST(WaterfallStrips, BearAViewWithoutWidth) {
    WaterfallStrips strips;
    const PackedLevel level = 0;
    strips.setRow(3, 0, &level);
    EXPECT_TRUE(strips.hasRow(3));
    EXPECT_TRUE(strips.picture(0).isNull());
    strips.setColumns({{0, 0, 1}}, 1);
    strips.setColors(paletteOf("viridis"), {5.0, -5.0});
    strips.setRow(3, 0, &level);
    EXPECT_EQ(strips.picture(0).pixel(0, WaterfallStrips::lineOf(3)), kViridisLow)
        << "a range that is too narrow begins at its lower end";
}

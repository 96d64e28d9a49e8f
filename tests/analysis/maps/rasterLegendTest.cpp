#include "analysis/maps/rasterLegend.h"

#include "analysis/maps/rasterImage.h"
#include "mapFiles.h"

namespace rfu::test {
namespace {

constexpr QRgb kClear = qRgba(0, 0, 0, 0);
constexpr QRgb kPaper = qRgb(0xfa, 0xfb, 0xfc);
constexpr QRgb kInk = qRgb(0x2b, 0x33, 0x3d);

class RasterLegendTest : public MapFiles {
protected:
    /// A grid of 4 x 2 cells with the no-data value -7.
    QImage legendOf(const std::string& cells, const std::string& table) const {
        const QString name =
            write("map.asc", "ncols 4\nnrows 2\nNODATA_value -7\n" + cells + "\n1 2 3 4\n");
        if (!table.empty()) {
            write("map.clr", table);
        }
        const Raster raster = loadRaster(name);
        return addLegend(draw(raster), raster);
    }

    /// The corners of the swatch in a row: at its left and its right end.
    static std::pair<QRgb, QRgb> swatch(const QImage& picture, int row) {
        const int y = 12 + 22 * row + 11;
        return {picture.pixel(4 + 12, y), picture.pixel(4 + 12 + 47, y)};
    }

    /// Whether something is written beside a swatch.
    static bool hasText(const QImage& picture, int row) {
        for (int y = 12 + 22 * row; y < 12 + 22 * (row + 1); ++y) {
            for (int x = 4 + 12 + 48 + 8; x < picture.width(); ++x) {
                if (picture.pixel(x, y) == kInk) {
                    return true;
                }
            }
        }
        return false;
    }
};

TEST_F(RasterLegendTest, HasARowForEachEntryOfTheColourTable) {
    const QImage picture =
        legendOf("1 2 3 4", "0 10 20 30\n100 200 100 50\n100 255 0 0\n200 0 300 -20\n");
    ASSERT_EQ(picture.height(), 12 + 2 * 22 + 12);
    EXPECT_EQ(swatch(picture, 0), std::pair(qRgb(10, 20, 30), qRgb(200, 100, 50)));
    EXPECT_EQ(swatch(picture, 1), std::pair(qRgb(255, 0, 0), qRgb(0, 255, 0)));
    EXPECT_TRUE(hasText(picture, 0));
    EXPECT_TRUE(hasText(picture, 1));
    EXPECT_EQ(picture.pixel(picture.width() - 1, 0), kPaper);
}

TEST_F(RasterLegendTest, ShowsWhatIsNotMeasured) {
    const QImage picture = legendOf("1 -7 3 4", "0 10 20 30\n100 200 100 50\n");
    ASSERT_EQ(picture.height(), 12 + 2 * 22 + 12);
    EXPECT_EQ(swatch(picture, 1), std::pair(kClear, kClear));
    EXPECT_TRUE(hasText(picture, 1));
}

TEST_F(RasterLegendTest, ShowsTheGreyRampWithoutAColourTable) {
    const QImage picture = legendOf("1 2 3 4", "");
    ASSERT_EQ(picture.height(), 12 + 22 + 12);
    EXPECT_EQ(swatch(picture, 0), std::pair(qRgb(0, 0, 0), qRgb(255, 255, 255)));
}

TEST_F(RasterLegendTest, LeavesTheMapInItsPlace) {
    const QImage picture = legendOf("0 -7 100 50", "0 10 20 30\n100 200 100 50\n");
    EXPECT_EQ(picture.pixel(0, 0), qRgb(10, 20, 30));
    EXPECT_EQ(picture.pixel(1, 0), kClear);
    EXPECT_EQ(picture.pixel(2, 0), qRgb(200, 100, 50));
    EXPECT_EQ(picture.pixel(0, 2), kClear) << "below a map that is lower than the legend";
    EXPECT_EQ(picture.pixel(0, picture.height() - 1), kClear);
}

}  // namespace
}  // namespace rfu::test

#include "analysis/maps/rasterImage.h"

#include <algorithm>
#include <string>
#include <vector>

#include "mapFiles.h"

namespace rfu::test {
namespace {

constexpr QRgb kTransparent = qRgba(0, 0, 0, 0);

class RasterImageTest : public MapFiles {
protected:
    /// A grid of one row with the no-data value -7, in the colours of a table if there is one.
    std::vector<QRgb> colorsOf(const std::string& cells, const std::string& table) const {
        const auto columns = std::count(cells.begin(), cells.end(), ' ') + 1;
        const QString name = write("row.asc", "ncols " + std::to_string(columns) +
                                                  "\nnrows 1\nNODATA_value -7\n" + cells + "\n");
        if (!table.empty()) {
            write("row.clr", table);
        }
        const QImage image = draw(loadRaster(name));
        EXPECT_EQ(image.height(), 1);
        std::vector<QRgb> colors;
        for (int column = 0; column < image.width(); ++column) {
            colors.push_back(image.pixel(column, 0));
        }
        return colors;
    }
};

TEST_F(RasterImageTest, DrawsInTheColoursOfTheFirstRangeThatHoldsTheValue) {
    const std::string table = "0 0 0 0\n100 200 100 50\n100 255 0 0\n200 0 300 -20\n";
    const struct {
        const char* name;
        const char* cell;
        QRgb color;
    } kCells[] = {{"low end of the first entry", "0", qRgb(0, 0, 0)},
                  {"halfway", "50", qRgb(100, 50, 25)},
                  {"a quarter", "25", qRgb(50, 25, 13)},
                  {"in two ranges: the first", "100", qRgb(200, 100, 50)},
                  {"between clamped components, rounded", "150", qRgb(128, 128, 0)},
                  {"just inside the second entry", "100.5", qRgb(254, 1, 0)},  // 253.7, 1.3
                  {"high end of the last entry", "200", qRgb(0, 255, 0)},
                  {"above all ranges", "300", qRgb(0, 255, 0)},
                  {"below all ranges", "-50", qRgb(0, 0, 0)},
                  {"no data", "-7", kTransparent},
                  {"infinite", "inf", kTransparent},
                  {"not a number", "nan", kTransparent}};
    for (const auto& row : kCells) {
        EXPECT_EQ(colorsOf(row.cell + std::string(" 1 1"), table)[0], row.color) << row.name;
    }
}

TEST_F(RasterImageTest, DrawsGapsBetweenRangesInTheNearestColour) {
    // the second range is upside down, the third has one value
    EXPECT_EQ(
        colorsOf("14 16 20 5", "0 1 1 1\n10 2 2 2\n30 100 0 0\n20 0 0 100\n5 9 9 9\n5 8 8 8\n"),
        (std::vector<QRgb>{qRgb(2, 2, 2), qRgb(0, 0, 100), qRgb(0, 0, 100), qRgb(2, 2, 2)}))
        << "5 is 1.5, rounded, in the first range that holds it";
    // 16 lies in the range that is upside down, though an end of the other one is nearer
    EXPECT_EQ(colorsOf("16 1 1", "20 0 0 100\n10 100 0 0\n17 9 9 9\n17 8 8 8\n")[0],
              qRgb(40, 0, 60));
    EXPECT_EQ(colorsOf("5 1 1", "5 9 9 9\n5 8 8 8\n")[0], qRgb(9, 9, 9));
}

TEST_F(RasterImageTest, DrawsGreyWithoutAColourTable) {
    EXPECT_EQ(colorsOf("-10 -7 500 41 92 nan", ""),
              (std::vector<QRgb>{qRgb(0, 0, 0), kTransparent, qRgb(255, 255, 255),
                                 qRgb(26, 26, 26),  // 51 of 510 are 25.5
                                 qRgb(51, 51, 51), kTransparent}));
    EXPECT_EQ(colorsOf("5 5 5", ""), std::vector<QRgb>(3, qRgb(0, 0, 0))) << "one value";
    EXPECT_EQ(colorsOf("-7 -7 -7", ""), std::vector<QRgb>(3, kTransparent)) << "nothing measured";
}

TEST_F(RasterImageTest, TellsTablesFromTheDefaultOne) {
    EXPECT_EQ(colorsOf("0 1 1", "-9999 0 0 0\n9999 255 255 255\n")[0], qRgb(128, 128, 128));
    EXPECT_EQ(colorsOf("-10 0 500", "-10 0 9 0\n500 0 19 0\n")[2], qRgb(0, 19, 0));
}

TEST_F(RasterImageTest, DrawsRowsFromTheTop) {
    const QImage image =
        draw(loadRaster(write("map.asc", "ncols 3\nnrows 2\nNODATA_value -7\n0 1 2\n3 4 5\n")));
    ASSERT_EQ(image.size(), QSize(3, 2));
    EXPECT_EQ(image.pixel(2, 0), qRgb(102, 102, 102));
    EXPECT_EQ(image.pixel(0, 1), qRgb(153, 153, 153));
}

TEST_F(RasterImageTest, DrawsTheLargestGrid) {
    std::string grid = "ncols 2048\nnrows 2048\nNODATA_value 0\n";
    std::string row;
    for (int column = 0; column < 2048; ++column) {
        row += "7 ";
    }
    for (int line = 0; line < 2048; ++line) {
        grid += row + "\n";
    }
    write("map.clr", "0 0 0 0\n7 1 2 3\n");
    const QImage image = draw(loadRaster(write("map.asc", grid)));
    ASSERT_EQ(image.size(), QSize(2048, 2048));
    EXPECT_EQ(image.pixel(2047, 2047), qRgb(1, 2, 3));
}

}  // namespace
}  // namespace rfu::test

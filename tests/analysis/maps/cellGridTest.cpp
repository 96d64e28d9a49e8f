#include "analysis/maps/cellGrid.h"

#include "mapFiles.h"

namespace rfu::test {
namespace {

const std::string kCornerGrid =
    "ncols 4\nnrows 3\nxllcorner 500000\nyllcorner 4649776.5\ncellsize 30\nNODATA_value -1\n"
    "1 2 3 4\n5 6 7 8\n9 10 11 12\n";
const std::string kCentreHeader =
    "NCOLS 3\nNROWS 2\nULXMAP 9.1\nULYMAP 47.5\nXDIM 0.25\nPIXELTYPE FLOAT\n";

class CellGridTest : public MapFiles {
protected:
    Raster bil() const {
        write("map.bil", bytesOf({1, 2, 3, 4, 5, 6}));
        return loadRaster(write("map.hdr", kCentreHeader));
    }
};

TEST_F(CellGridTest, PlacesAnAsciiGridByItsLowerLeftCorner) {
    const Raster raster = loadRaster(write("map.asc", kCornerGrid));
    EXPECT_EQ(raster.origin, Origin::LowerLeftCorner);
    const CellGrid grid = *gridOf(raster);
    EXPECT_EQ(grid.columns, 4);
    EXPECT_EQ(grid.rows, 3);
    EXPECT_EQ(grid.cellSize, 30.0);
    EXPECT_EQ(grid.west, 500000.0);
    EXPECT_EQ(grid.south, 4649776.5);
    EXPECT_EQ(grid.east, 500120.0);
    EXPECT_EQ(grid.north, 4649866.5);
}

TEST_F(CellGridTest, PlacesABilGridByTheCentreOfItsUpperLeftCell) {
    const Raster raster = bil();
    EXPECT_EQ(raster.origin, Origin::UpperLeftCentre);
    const CellGrid grid = *gridOf(raster);
    EXPECT_DOUBLE_EQ(grid.west, 8.975);  // 9.1 - 0.25 / 2, of decimal numbers, not of singles
    EXPECT_DOUBLE_EQ(grid.north, 47.625);
    EXPECT_DOUBLE_EQ(grid.east, 9.725);
    EXPECT_DOUBLE_EQ(grid.south, 47.125);
}

TEST_F(CellGridTest, FindsTheCellThatHoldsAPoint) {
    const CellGrid grid = *gridOf(loadRaster(write("map.asc", kCornerGrid)));
    const struct {
        const char* name;
        QPointF point;
        std::optional<QPoint> cell;
    } kPoints[] = {{"centre of the lower left cell", {500015, 4649791.5}, QPoint(0, 2)},
                   {"centre of the upper right cell", {500105, 4649851.5}, QPoint(3, 0)},
                   {"lower left corner of the map", {500000, 4649776.5}, QPoint(0, 2)},
                   {"upper left corner", {500000, 4649866.5}, QPoint(0, 0)},
                   {"upper right corner", {500120, 4649866.5}, QPoint(3, 0)},
                   {"lower right corner", {500120, 4649776.5}, QPoint(3, 2)},
                   {"between two columns", {500030, 4649851.5}, QPoint(1, 0)},
                   {"just left of that", {500029.999, 4649851.5}, QPoint(0, 0)},
                   {"between two rows", {500015, 4649836.5}, QPoint(0, 1)},
                   {"just above that", {500015, 4649836.501}, QPoint(0, 0)},
                   {"west of the map", {499999.999, 4649851.5}, std::nullopt},
                   {"east of it", {500120.001, 4649851.5}, std::nullopt},
                   {"south of it", {500015, 4649776.499}, std::nullopt},
                   {"north of it", {500015, 4649866.501}, std::nullopt},
                   {"far away", {1e300, -1e300}, std::nullopt},
                   {"nowhere", {std::nan(""), 4649851.5}, std::nullopt}};
    for (const auto& row : kPoints) {
        EXPECT_EQ(grid.cellAt(row.point), row.cell) << row.name;
    }
    EXPECT_EQ(refusal([&] {
                  requireCell(grid, {499999.5, 4649851.5}, named("map.asc"));
              }),
              "map.asc: has no cell at 499999.5,4649851.5; x is 500000 to 500120, y is 4649776.5 "
              "to 4649866.5");
}

TEST_F(CellGridTest, NeedsACellSizeAndAnOrigin) {
    const std::string cells = "NODATA_value -1\n1 2 3\n";
    const std::string size = "ncols 3\nnrows 1\n";
    const struct {
        std::string header;
        const char* says;
    } kHeaders[] = {{"xllcorner 5\nyllcorner 6\n", "the cell size is 0, the origin 5,6"},
                    {"cellsize -30\n", "the cell size is -30, the origin 0,0"},
                    {"cellsize inf\n", "the cell size is inf, the origin 0,0"},
                    {"cellsize 1\nxllcorner nan\n", "the cell size is 1, the origin nan,0"},
                    {"cellsize 1\nyllcorner -inf\n", "the cell size is 1, the origin 0,-inf"}};
    for (const auto& row : kHeaders) {
        const QString file = write("map.asc", size + row.header + cells);
        EXPECT_EQ(refusal([&] { requireGrid(loadRaster(file), file); }),
                  std::string("map.asc: does not say where its cells lie: ") + row.says);
    }
}

}  // namespace
}  // namespace rfu::test

#include "analysis/maps/worldFile.h"

#include <gtest/gtest.h>

using rfu::CellGrid;

TEST(WorldFile, PlacesTheCentreOfTheUpperLeftPixel) {
    const CellGrid grid = {4, 3, 25.0, 436000.0, 5262000.0, 436100.0, 5262075.0};
    EXPECT_EQ(rfu::worldFileOf(grid),
              "25.000000000000\n0.000000000000\n0.000000000000\n-25.000000000000\n"
              "436012.500000000000\n5262062.500000000000\n");
}

TEST(WorldFile, KeepsSmallCells) {
    const CellGrid grid = {2, 2, 0.00008333, -69.5, -33.25, -69.49983334, -33.24983334};
    EXPECT_EQ(rfu::worldFileOf(grid),
              "0.000083330000\n0.000000000000\n0.000000000000\n-0.000083330000\n"
              "-69.499958335000\n-33.249875005000\n");
}

TEST(WorldFile, StandsBesideThePicture) {
    EXPECT_EQ(rfu::worldFileName(QStringLiteral("maps/alps.v2.png")),
              QStringLiteral("maps/alps.v2.pgw"));
    EXPECT_EQ(rfu::worldFileName(QStringLiteral("ALPS.PNG")), QStringLiteral("ALPS.pgw"));
}

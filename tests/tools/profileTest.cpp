#include <gtest/gtest.h>

#include <QImage>

#include "runCommand.h"

namespace {

/// A ridge of 50 m between flat ground, cells of 100 m: its crest lies on the middle row and column.
std::string ridgeMap() {
    std::string map =
        "ncols 21\nnrows 3\nxllcorner 500000\nyllcorner 5000000\ncellsize 100\n"
        "NODATA_value -9\n";
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 21; ++column) {
            map += column == 10 ? "50 " : row == 2 && column == 5 ? "-9 " : "0 ";
        }
        map += "\n";
    }
    return map;
}

const char* const kLink = " --heights 60,60 --center 299.792458MHz --k 1";

std::string along(const char* row) {
    return std::string("profile map.asc --start 500050,") + row + " --end 502050," + row + kLink;
}

}  // namespace

TEST(Profile, ShowsWhereALinkIsLeastClear) {
    const SampleFolder folder;
    folder.add("map.asc", ridgeMap());
    // 2 km over 50 m halfway, wavelength 1 m: bulge 1000 * 1000 / (2 * 6371000) = 0.07848 m,
    // clearance 60 - 50 - 0.07848 = 9.92152 m, F1 = sqrt(500) = 22.36068 m, ratio 0.443704,
    // parameter -0.443704 * sqrt(2) = -0.627492, loss 6.9 + 20 lg(sqrt(0.727492^2 + 1) - 0.727492)
    // = 1.0366 dB; free space 20 lg(4 pi 2000) = 88.0048 dB
    const auto shown = [](const char* notMeasured) {
        return std::string(
                   "distance       2000.0\n"
                   "startGround    0.0\n"
                   "endGround      0.0\n"
                   "samples        41\n"
                   "notMeasured    ") +
               notMeasured +
               "\n"
               "leastAt        1000.0\n"
               "terrain        50.0\n"
               "bulge          0.1\n"
               "lineOfSight    60.0\n"
               "clearance      9.9\n"
               "fresnelRadius  22.4\n"
               "ratio          0.44\n"
               "clear          no\n"
               "diffraction    -0.63\n"
               "knifeEdgeLoss  1.0\n"
               "freeSpaceLoss  88.0\n";
    };
    expectCommands(
        {shows("ridge", along("5000150").c_str(), shown("0")),
         // the centre of a cell and the two places halfway to the next ones
         shows("along a cell that is not measured", along("5000050").c_str(), shown("3"))
             .noting("3 of 41 samples lie where nothing is measured; they count nowhere"),
         // 100 m: clearance 15 m, F1 5 m, parameter -3 sqrt(2), 20 lg(4 pi 100) = 61.98 dB
         shows("clear",
               "profile map.asc --start 500050,5000150 --end 500150,5000150 --heights 10,20 "
               "--center 299.792458MHz",
               "distance       100.0\nstartGround    0.0\nendGround      0.0\nsamples        3\n"
               "notMeasured    0\nleastAt        50.0\nterrain        0.0\nbulge          0.0\n"
               "lineOfSight    15.0\nclearance      15.0\nfresnelRadius  5.0\nratio          3.00\n"
               "clear          yes\ndiffraction    -4.24\nknifeEdgeLoss  0.0\n"
               "freeSpaceLoss  62.0\n")},
        folder);
}

TEST(Profile, DrawsAPicture) {
    const SampleFolder folder;
    folder.add("map.asc", ridgeMap());
    const CommandResult result = runCommand(
        splitWords("rfutils " + along("5000150") + " --plot out.png").mid(1), "", folder);
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_EQ(QImage(folder.path() + QStringLiteral("/out.png")).size(), QSize(1280, 680));
}

TEST(Profile, RefusesWhatHasNoProfile) {
    const SampleFolder folder;
    folder.add("map.asc", ridgeMap());
    folder.add("degrees.asc",
               "ncols 3\nnrows 1\nxllcorner 9\nyllcorner 47\ncellsize 0.01\n"
               "NODATA_value -9\n1 2 3\n");
    const std::string ends = " --start 500050,5000150 --end 502050,5000150";
    expectCommands(
        {fails("degrees",
               ("profile degrees.asc --start 9,47 --end 9.02,47" + std::string(kLink)).c_str(),
               "degrees.asc: is a map in degrees, and a profile needs metres; gdalwarp -t_srs "
               "EPSG:326ZZ converts it to UTM zone ZZ"),
         fails("an end outside",
               ("profile map.asc --start 1,2 --end 502050,5000150" + std::string(kLink)).c_str(),
               "map.asc: has no cell at 1,2; x is 500000 to 502100, y is 5000000 to 5000300"),
         fails("its own input as picture", (along("5000150") + " --plot map.asc").c_str(),
               "map.asc: cannot be written: plots are PNG or SVG and end in .png or .svg"),
         misuses("no heights", ("profile map.asc --center 1" + ends).c_str(),
                 "--heights H1,H2 is missing"),
         misuses("negative height", ("profile map.asc --heights 1,-1 --center 1" + ends).c_str(),
                 "--heights takes heights above ground, which are not negative"),
         misuses("no frequency", ("profile map.asc --heights 1,1 --center 0" + ends).c_str(),
                 "--center takes a frequency above zero"),
         misuses("no radius", ("profile map.asc --heights 1,1 --center 1 --k 0" + ends).c_str(),
                 "--k takes a number above zero")},
        folder);
}

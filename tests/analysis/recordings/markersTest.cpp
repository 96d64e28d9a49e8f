#include "analysis/recordings/markers.h"

#include <gtest/gtest.h>
#include <support/tempFiles.h>

#include "analysis/recordings/recording.h"
#include "analysis/support/inputError.h"
#include "hopLines.h"

using rfu::MarkerRequest;
using rfu::Recording;

namespace {

/// The point of a marker, or the problem.
std::string placed(const std::string& bytes, const MarkerRequest& request) {
    const TempFiles files;
    Recording reader({{QString::fromStdString(files.write("sweeps.csv", bytes))}});
    rfu::Sweep sweep;
    EXPECT_TRUE(reader.next(sweep));
    try {
        const auto markers =
            placeMarkers({request}, reader.axis(), sweep.levels.size(), reader.files().first());
        EXPECT_EQ(markers.size(), 1U);
        EXPECT_EQ(markers[0].name, request.name);
        return std::to_string(markers[0].point);
    } catch (const rfu::InputError& error) {
        return error.problem();
    }
}

std::string placedAt(const std::string& bytes, double frequency) {
    return placed(bytes, {"F", frequency, std::nullopt});
}

std::string placedOn(const std::string& bytes, int point) {
    return placed(bytes, {std::to_string(point), std::nullopt, point});
}

}  // namespace

TEST(Markers, TakeTheNearestPoint) {
    const std::string band = rfu::test::hopLines("a0 b0 c0 d0");  // 100 to 104 MHz
    const struct {
        double frequency;
        const char* point;
    } kRows[] = {
        {100.0, "0"},
        {100.4, "0"},
        {100.6, "1"},
        {101.5, "1"},  // halfway: the lower
        {101.6, "2"},
        {103.0, "3"},
        {104.0, "3"},
        {99.9, "marker F: the recording reaches from 100 MHz to 104 MHz"},
        {104.1, "marker F: the recording reaches from 100 MHz to 104 MHz"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(placedAt(band, row.frequency), row.point) << row.frequency;
    }
}

TEST(Markers, StayInTheirBand) {
    // 100 to 104 MHz in one bin, 105 to 107 and 200 to 201 MHz.
    const std::string bands =
        "2024-01-01, 10:00:00, 100000000, 104000000, 4000000, 5, -1\n"
        "2024-01-01, 10:00:00, 105000000, 107000000, 1000000, 5, -2, -3\n"
        "2024-01-01, 10:00:00, 200000000, 201000000, 1000000, 5, -4\n";
    const std::string reach =
        "marker F: the recording reaches from 100 MHz to 104 MHz, from 105 MHz to 107 MHz and from "
        "200 MHz to 201 MHz";
    const struct {
        double frequency;
        std::string point;
    } kRows[] = {
        {104.0, "0"},   {105.0, "1"},   {106.9, "2"},  {107.0, "2"},   {201.0, "3"},
        {104.5, reach}, {150.0, reach}, {99.0, reach}, {201.5, reach},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(placedAt(bands, row.frequency), row.point) << row.frequency;
    }
}

TEST(Markers, NameTheFirstOfManyBands) {
    EXPECT_EQ(placedAt(rfu::test::hopLines("a0 c0 e0 g0 i0 k0 m0 o0 q0 s0"), 101.5),
              "marker F: the recording reaches from 100 MHz to 101 MHz, from 102 MHz to 103 MHz, "
              "from 104 MHz to 105 MHz, from 106 MHz to 107 MHz, from 108 MHz to 109 MHz, from 110 "
              "MHz to 111 MHz, from 112 MHz to 113 MHz, from 114 MHz to 115 MHz and 2 more bands");
}

TEST(Markers, TakeThePointThatIsNamed) {
    const std::string band = rfu::test::hopLines("a0 b0");
    EXPECT_EQ(placedOn(band, 1), "1");
    EXPECT_EQ(placedOn(band, 2),
              "marker 2: the points of the recording are 0 to 1; a frequency has a unit: 2MHz");
    EXPECT_EQ(placed(band, {"P", std::nullopt, 2}),
              "marker P: the points of the recording are 0 to 1");
    EXPECT_EQ(placedOn("-1,-2\n", 1), "1");
    EXPECT_EQ(placedOn("-1,-2\n", 433), "marker 433: the points of the recording are 0 to 1");
    EXPECT_EQ(placedAt("-1,-2\n", 100.0),
              "marker F: the recording holds no frequencies; name a point, 0 to 1");
}

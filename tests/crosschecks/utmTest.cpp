// UTM positions against PROJ, whose transverse Mercator is good to nanometres.
//
// With phi the latitude of a position and phi1 its footpoint latitude (that of the position with
// the same northing on the central meridian), the library differs from PROJ by
//   - the extra factor 1 / k0 of its latitude term: the latitude is phi1 - (phi1 - phi) / k0, too
//     low
//     by (1 / k0 - 1) (phi1 - phi);
//   - the rounding down to a millionth of a degree, and the rounding to single precision;
//   - the truncated terms of its series (`Remainders`), a few 1e-9 of a degree over a zone. PROJ
// gives both phi and phi1, so that the expected latitude needs none of the library's constants. The
// library gives it to the last bit, except so near a rounding step that the remainder may cross it.
#include <support/samples.h>

#include <rfUtils/geo/veltaGEO.h>

#include <gtest/gtest.h>

#include <proj.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <memory>
#include <string>

namespace {

using rfu::test::caseCount;
using rfu::test::Samples;

constexpr double kRadian = 57.295779513082320877;  // in degrees
constexpr double kStep = 1e-6;                     // of a latitude, in degrees
constexpr double kK0 = 0.9996;
constexpr double kA = 6378137.0;  // WGS 84, as e^2 below
constexpr double kE2 = 0.0066943799901413;
constexpr double kFalseNorthing = 10000000.0;
constexpr double kSouthOffset = 10001151.0;  // the library's false northing, for unscaled arcs

struct Degrees {
    double latitude;
    double longitude;
};

struct Metres {
    float easting;
    float northing;
};

/// A zone of PROJ. Longitudes continue beyond 180 degrees, as the library's do.
class Zone {
public:
    explicit Zone(const std::string& description)
        : projection_(proj_create(PJ_DEFAULT_CTX, description.c_str())) {}
    explicit Zone(int number)
        : Zone("+proj=utm +ellps=WGS84 +over +zone=" + std::to_string(number)) {}
    ~Zone() { proj_destroy(projection_); }
    Zone(const Zone&) = delete;
    Zone& operator=(const Zone&) = delete;

    bool isKnown() const { return projection_ != nullptr; }

    /// Northern hemisphere; south of the equator the northing is negative.
    Degrees at(double easting, double northing) const {
        const PJ_COORD place =
            proj_trans(projection_, PJ_INV, proj_coord(easting, northing, 0.0, 0.0));
        return {place.lp.phi * kRadian, place.lp.lam * kRadian};
    }

    Metres of(const Degrees& place, double falseNorthing) const {
        const PJ_COORD metres =
            proj_trans(projection_, PJ_FWD,
                       proj_coord(place.longitude / kRadian, place.latitude / kRadian, 0.0, 0.0));
        return {static_cast<float>(metres.xy.x), static_cast<float>(metres.xy.y + falseNorthing)};
    }

private:
    PJ* projection_;
};

int meridianOf(int zone) {
    return 6 * zone - 183;
}

/// Bounds of the truncated terms of the library's series, in degrees. D is the distance from the
/// central meridian in radians, t the tangent of the footpoint latitude phi1. A quarter is added
/// for smaller ones: the terms behind the first truncated one, and the e'^2 parts of the last ones
/// included (e'^2 is 0.0067, and D below 0.12).
struct Remainders {
    double latitude;
    double longitude;

    Remainders(double footpoint, double distance) {
        const double phi = footpoint / kRadian;
        const double t2 = std::tan(phi) * std::tan(phi);
        const double w = 1.0 - kE2 * std::sin(phi) * std::sin(phi);
        const double d = std::abs(distance) * std::sqrt(w) / kA;
        const double ratio = w / (1.0 - kE2);  // of the radii of curvature, N / R
        const double d8 = std::pow(d, 8) / 40320.0 * ratio * std::abs(std::tan(phi)) *
                          (1385.0 + 3633.0 * t2 + 4095.0 * t2 * t2 + 1575.0 * t2 * t2 * t2);
        const double d6 = std::pow(d, 6) / 720.0 * ratio * std::abs(std::tan(phi)) * 0.0068 *
                          (100.0 + 66.0 * t2 + 90.0 * t2 * t2);
        const double d7 = std::pow(d, 7) / 5040.0 / std::cos(phi) *
                          (61.0 + 662.0 * t2 + 1320.0 * t2 * t2 + 720.0 * t2 * t2 * t2);
        const double d5 =
            std::pow(d, 5) / 120.0 / std::cos(phi) * 0.0068 * 0.0068 * (4.0 + 28.0 * t2);
        // The meridian series ends at e^6; the next term is 175/16384 e^8, a relative 2.2e-11.
        const double meridian = 2.2e-11 * std::abs(phi);
        constexpr double kRounding = 1e-15;    // of the doubles, in radians and more than once
        constexpr double kFlattening = 1e-12;  // the library's e^2 is 8e-13 below that of WGS 84
        latitude = kRadian * (1.25 * (d8 + d6) + meridian + kFlattening + 8.0 * kRounding);
        // An error of the footpoint latitude moves the parallel on which the longitude is measured.
        longitude = kRadian * (1.25 * (d7 + d5) + 4.0 * kRounding / std::cos(phi) +
                               d * std::abs(std::tan(phi)) / std::cos(phi) * meridian);
    }
};

/// The library's expected results for a position, derived from PROJ's.
struct Expected {
    Degrees place;     ///< what PROJ gives
    double footpoint;  ///< latitude of the footpoint
    double latitude;   ///< with the extra 1 / k0, not rounded
    Remainders within;

    /// @param arc  length of the meridian to the footpoint, times k0
    Expected(const Zone& zone, double easting, double arc)
        : place(zone.at(easting, arc)),
          footpoint(zone.at(500000.0, arc).latitude),
          latitude(footpoint - (footpoint - place.latitude) / kK0),
          within(footpoint, (easting - 500000.0) / kK0) {}
};

float stepped(double latitude) {
    return static_cast<float>(std::floor(latitude / kStep) * kStep);
}

double halfUlp(double value) {
    const auto single = static_cast<float>(std::abs(value));
    return (std::nextafter(single, 400.0F) - single) / 2.0;
}

class CrossUtm : public testing::Test {
protected:
    Degrees ours(const Metres& metres, int zone, bool south) const {
        float latitude = 0.0F;
        float longitude = 0.0F;
        map->utmToLatLng(metres.easting, metres.northing, zone, south ? 1 : 0, &latitude,
                         &longitude);
        return {latitude, longitude};
    }

    /// Both numbers are the nearest floats, or one of the two beside a rounding step that the
    /// remainder may cross.
    void expectTheSame(const Degrees& got, const Expected& expected) {
        ++places;
        const double low = expected.latitude - expected.within.latitude;
        const double high = expected.latitude + expected.within.latitude;
        latitudesBetweenSteps += stepped(low) == stepped(high) ? 0 : 1;
        EXPECT_GE(got.latitude, stepped(low));
        EXPECT_LE(got.latitude, stepped(high));
        const auto west = static_cast<float>(expected.place.longitude - expected.within.longitude);
        const auto east = static_cast<float>(expected.place.longitude + expected.within.longitude);
        longitudesBetweenSingles += west == east ? 0 : 1;
        EXPECT_GE(got.longitude, west);
        EXPECT_LE(got.longitude, east);
    }

    /// Only few places may be so near a step. Ten of them are allowed for chance.
    void expectFewBetween() {
        EXPECT_LT((latitudesBetweenSteps - 10) * 1000, places);
        EXPECT_LT((longitudesBetweenSingles - 10) * 100, places);
        RecordProperty("places", places);
        RecordProperty("latitudesBetweenSteps", latitudesBetweenSteps);
        RecordProperty("longitudesBetweenSingles", longitudesBetweenSingles);
    }

    std::unique_ptr<veltaGEO> map = std::make_unique<veltaGEO>();
    int places = 0;
    int latitudesBetweenSteps = 0;
    int longitudesBetweenSingles = 0;
};

/// A place in a zone or up to half a degree beside it; up to 6.5 degrees from the central meridian
/// at the latitudes of Norway's and Svalbard's wide grid zones.
Degrees placeIn(Samples& samples, int zone, double northernmost) {
    const double latitude = samples.between(0.0, northernmost);
    const bool wide = (latitude > 56.0 && latitude < 64.0) || latitude > 72.0;
    const double reach = wide && samples.below(4) == 0 ? 6.5 : 3.5;
    // A tenth of the places is on the central meridian, where only the footpoint matters.
    const double offset = samples.below(10) == 0 ? 0.0 : samples.between(-reach, reach);
    return {latitude, meridianOf(zone) + offset};
}

TEST_F(CrossUtm, NorthIsThatOfProjButForTheFactorTooManyToTheLastBit) {
    Samples samples(20241120);
    for (int zone = 1; zone <= 60; ++zone) {
        const Zone theirs(zone);
        ASSERT_TRUE(theirs.isKnown());
        for (int i = caseCount() / 60; i > 0 && !HasFailure(); --i) {
            const Metres metres = theirs.of(placeIn(samples, zone, 84.0), 0.0);
            SCOPED_TRACE(testing::Message() << std::hexfloat << metres.easting << ' '
                                            << metres.northing << " zone " << zone);
            expectTheSame(ours(metres, zone, false),
                          Expected(theirs, metres.easting, metres.northing));
        }
    }
    expectFewBetween();
}

TEST_F(CrossUtm, NorthIsWithinTheErrorOfTheFactorTooMany) {
    Samples samples(20241121);
    double farthest = 0.0;
    double nearestToBound = 0.0;
    for (int zone = 1; zone <= 60; ++zone) {
        const Zone theirs(zone);
        for (int latitude = 0; latitude <= 84; ++latitude) {
            for (double offset = -3.5; offset <= 3.5; offset += 0.25) {
                const Degrees place{latitude + samples.between(0.0, 0.01),
                                    meridianOf(zone) + offset};
                const Metres metres = theirs.of(place, 0.0);
                const Expected expected(theirs, metres.easting, metres.northing);
                const double bound =
                    (1.0 / kK0 - 1.0) * (expected.footpoint - expected.place.latitude) + kStep +
                    halfUlp(expected.place.latitude) + expected.within.latitude;
                const double difference =
                    expected.place.latitude - ours(metres, zone, false).latitude;
                EXPECT_LE(std::abs(difference), bound) << place.latitude << ' ' << place.longitude;
                farthest = std::max(farthest, std::abs(difference));
                nearestToBound = std::max(nearestToBound, std::abs(difference) / bound);
            }
        }
    }
    // Half a zone and half a degree from the meridian, at 45 degrees: (1 / k0 - 1) lambda^2 / 4.
    EXPECT_NEAR(farthest, 2.14e-5, kStep + halfUlp(45.0));
    EXPECT_GT(nearestToBound, 0.99);
    RecordProperty("farthest", std::to_string(farthest * 1e6) + " millionths of a degree");
    RecordProperty("nearestToBound", std::to_string(nearestToBound));
}

// South of the equator the library's meridian arc is N - 10001151, PROJ's (N - 10000000) / k0: 1151
// m too far south at the equator, right at 25.9 degrees, 2.4 km too far north at 80 degrees.
TEST_F(CrossUtm, SouthIsThatOfProjForTheArcThatIsNotScaled) {
    Samples samples(20241122);
    for (int zone = 1; zone <= 60; ++zone) {
        const Zone theirs(zone);
        for (int i = caseCount() / 60; i > 0 && !HasFailure(); --i) {
            Degrees place = placeIn(samples, zone, 80.0);
            place.latitude = -place.latitude;
            const Metres metres = theirs.of(place, kFalseNorthing);
            SCOPED_TRACE(testing::Message() << std::hexfloat << metres.easting << ' '
                                            << metres.northing << " zone " << zone);
            expectTheSame(ours(metres, zone, true),
                          Expected(theirs, metres.easting, (metres.northing - kSouthOffset) * kK0));
        }
    }
    expectFewBetween();
}

TEST_F(CrossUtm, SouthIsUpToKilometresFromProj) {
    const Zone theirs(31);
    const struct {
        double latitude;
        double metresTooFarNorth;  // on the meridian: (N - 10001151) - (N - 10000000) / k0
    } kCases[] = {{0.0, -1151.0}, {-25.998, 0.0}, {-45.0, 842.9}, {-80.0, 2403.6}};
    for (const auto& row : kCases) {
        const Metres metres = theirs.of({row.latitude, 3.0}, kFalseNorthing);
        const double metresOfADegree = 111132.95 - 559.8 * std::cos(2.0 * row.latitude / kRadian);
        EXPECT_NEAR((ours(metres, 31, true).latitude - row.latitude) * metresOfADegree,
                    row.metresTooFarNorth, 1.0);
    }
}

/// The zone that PROJ chooses for a longitude.
long zoneOfProj(float longitude) {
    char text[32] = {};
    std::to_chars(text, text + sizeof text - 1, longitude, std::chars_format::fixed);
    const Zone zone("+proj=utm +ellps=WGS84 +lon_0=" + std::string(text));
    return zone.isKnown() ? std::lround((zone.at(500000.0, 0.0).longitude + 183.0) / 6.0) : 0;
}

TEST_F(CrossUtm, ZonesAreThoseOfProj) {
    Samples samples(20241123);
    for (int i = caseCount() / 20; i > 0; --i) {
        const auto longitude = static_cast<float>(samples.between(-180.0, 180.0));
        ASSERT_EQ(map->LatLngToUTMZone(static_cast<float>(samples.between(-80.0, 84.0)), longitude),
                  zoneOfProj(longitude))
            << std::hexfloat << longitude;
    }
    for (int zone = 1; zone <= 60; ++zone) {
        const auto west = static_cast<float>(meridianOf(zone) - 3);
        const float inside = west + 2e-5F;  // about a single further
        const float outside = west - 2e-5F;
        EXPECT_EQ(map->LatLngToUTMZone(0.0F, west), zone);
        EXPECT_EQ(map->LatLngToUTMZone(0.0F, inside), zoneOfProj(inside));
        EXPECT_EQ(map->LatLngToUTMZone(0.0F, outside), zone == 1 ? 0 : zoneOfProj(outside));
    }
    // PROJ wraps at the date line, the library goes on counting.
    EXPECT_EQ(zoneOfProj(180.0F), 60);
    EXPECT_EQ(map->LatLngToUTMZone(0.0F, 180.0F), 61);
}

// The library uses the longitude alone, without the exceptions for Norway and Svalbard.
TEST_F(CrossUtm, ZonesHaveNoExceptions) {
    const struct {
        const char* place;
        float latitude;
        float longitude;
        int gridZone;
        int zone;
    } kCases[] = {{"Bergen", 60.39F, 5.32F, 32, 31},        {"Stavanger", 58.97F, 5.73F, 32, 31},
                  {"Longyearbyen", 78.22F, 15.65F, 33, 33}, {"Ny-Alesund", 78.92F, 11.93F, 33, 32},
                  {"Barentsburg", 78.06F, 14.22F, 33, 33},  {"Kvitoya", 80.15F, 32.5F, 35, 36},
                  {"Nordaustlandet", 79.8F, 22.4F, 35, 34}, {"Svalbard, west", 78.0F, 8.9F, 31, 32},
                  {"Oslo", 59.91F, 10.75F, 32, 32}};
    for (const auto& row : kCases) {
        EXPECT_EQ(map->LatLngToUTMZone(row.latitude, row.longitude), row.zone) << row.place;
        EXPECT_EQ(zoneOfProj(row.longitude), row.zone) << row.place;
    }
    // Positions in such a zone are converted nevertheless.
    const Zone norway(32);
    const Metres bergen = norway.of({60.39, 5.32}, 0.0);
    const Degrees got = ours(bergen, 32, false);
    EXPECT_NEAR(got.latitude, 60.39, 4e-5);
    EXPECT_NEAR(got.longitude, 5.32, 1e-6);
}

}  // namespace

#include <support/samples.h>

#include <rfUtils/geo/veltaGEO.h>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace {

using namespace rfu::test;

struct Degrees {
    float latitude;
    float longitude;
};

Degrees degreesOf(float easting, float northing, int zone, int south) {
    const double e = 0.08181919083755347;
    const double lambda0 = (static_cast<double>(zone) - 1) * 6.0 - 177.0;
    const double m = south == 0 ? northing * 1.0004001600640255 : northing - 10001151.0;
    const double mu = m * 1.570487611407373e-07;
    const double phi1 =
        mu + 0.0025188265840776275 * std::sin(2 * mu) + 3.7009490347005646e-06 * std::sin(4 * mu) +
        4.7350339166475714e-09 *
            (1.5729166666666665 * std::sin(6 * mu) + 0.0035978608664726 * std::sin(8 * mu));
    const double c1 = 0.0067394967414358955 * std::cos(phi1) * std::cos(phi1);
    const double t1 = std::tan(phi1) * std::tan(phi1);
    const double w = 1 - (e * std::sin(phi1)) * (e * std::sin(phi1));
    const double d =
        (easting - 500000.0) * 1.0004001600640255 * std::sqrt(w) * 1.567855942887398e-07;
    const double d2 = d * d;
    const double d4 = d2 * d2;
    const double q = 1.0004001600640255 * 1.0067394967414358 * w * std::tan(phi1);
    const double p =
        d2 / 2 + d4 / 24 * (-4.939344529327077 - 3 * t1 - 10 * c1 + 4 * c1 * c1) +
        d4 * d2 / 720 * (59.30164682115815 + 90 * t1 + 298 * c1 + 45 * t1 * t1 - 3 * c1 * c1);
    const double phi = phi1 - q * p;
    const double latitude = std::floor(phi * 57295779.513082325) * 1e-06;
    const double longitude =
        lambda0 +
        57.29577951308232 * d *
            (1 - (1 + 2 * t1 + c1) * d2 / 6 +
             (5.053915973931487 + 28 * t1 + 24 * t1 * t1 - 2 * c1 - 3 * c1 * c1) * d4 / 120) /
            std::cos(phi1);
    return {static_cast<float>(latitude), static_cast<float>(longitude)};
}

/// A float of any bit pattern or near the range.
float single(Samples& samples, const Range& range) {
    return samples.below(8) == 0 ? samples.anySinglePattern()
                                 : static_cast<float>(samples.number(range));
}

TEST(DifferentialUtm, utmToLatLng) {
    const Range eastings{100000.0, 900000.0, {500000.0, 166021.0, 833978.0, 0.0}};
    const Range northings{0.0, 10000000.0, {0.0, 10000000.0, 10001151.0, 9328093.0}};
    const auto map = std::make_unique<veltaGEO>();
    Samples samples(20240911);
    for (int i = caseCount(); i > 0; --i) {
        const float easting = single(samples, eastings);
        const float northing = single(samples, northings);
        const int zone =
            samples.below(10) == 0 ? samples.anyInteger() : static_cast<int>(samples.below(63));
        const int south =
            samples.coin() ? static_cast<int>(samples.below(2)) : samples.anyInteger();
        const Degrees expected = degreesOf(easting, northing, zone, south);
        float latitude = 7.0F;
        float longitude = 7.0F;
        map->utmToLatLng(easting, northing, zone, south, &latitude, &longitude);
        ASSERT_TRUE(same(latitude, expected.latitude) && same(longitude, expected.longitude))
            << std::hexfloat << easting << ' ' << northing << ' ' << zone << ' ' << south << ": "
            << latitude << ' ' << longitude << " instead of " << expected.latitude << ' '
            << expected.longitude;
    }
}

int zoneOf(float longitude) {
    const double zone = std::floor((longitude + 180.0) * 0.16666666666666666) + 1;
    if (std::isnan(zone)) {
        return 0;
    }
    if (zone > 2147483647.0) {
        return 2147483647;
    }
    return zone < -2147483648.0 ? -2147483647 - 1 : static_cast<int>(zone);
}

TEST(DifferentialUtm, LatLngToUTMZone) {
    Range longitudes{-190.0, 190.0, {}};
    for (int meridian = -186; meridian <= 186; meridian += 6) {
        longitudes.thresholds.push_back(meridian);
    }
    const auto map = std::make_unique<veltaGEO>();
    Samples samples(20240912);
    for (int i = caseCount(); i > 0; --i) {
        float longitude = single(samples, longitudes);
        if (samples.below(4) == 0) {
            longitude = std::nextafter(longitude, samples.coin() ? 200.0F : -200.0F);
        }
        ASSERT_EQ(map->LatLngToUTMZone(samples.anySinglePattern(), longitude), zoneOf(longitude))
            << std::hexfloat << longitude;
    }
}

}  // namespace

#include "analysis/maps/radioLink.h"

#include <cmath>

namespace rfu {

namespace {

constexpr double kEarthRadius = 6371000.0;  // metres
constexpr double kPi = 3.14159265358979323846;
// Below it the loss is 0 dB; at it the formula gives 0 dB too, apart from rounding.
constexpr double kLeastParameter = -0.78;

}  // namespace

double earthBulge(double d1, double d2, double k) {
    return d1 * d2 / (2.0 * k * kEarthRadius);
}

double fresnelRadius(double d1, double d2, double wavelength) {
    return std::sqrt(wavelength * d1 * d2 / (d1 + d2));
}

double diffractionParameter(double clearance, double d1, double d2, double wavelength) {
    return -clearance * std::sqrt(2.0 / wavelength * (1.0 / d1 + 1.0 / d2));
}

double knifeEdgeLoss(double parameter) {
    if (!(parameter > kLeastParameter)) {
        return 0.0;
    }
    const double above = parameter - 0.1;
    return 6.9 + 20.0 * std::log10(std::sqrt(above * above + 1.0) + above);
}

double freeSpaceLoss(double distance, double wavelength) {
    return 20.0 * std::log10(4.0 * kPi * distance / wavelength);
}

std::vector<ClearancePoint> clearancesOf(const TerrainProfile& profile, const RadioLink& link) {
    const double from = profile.heights.front() + link.startHeight;
    const double to = profile.heights.back() + link.endHeight;
    std::vector<ClearancePoint> points;
    points.reserve(profile.distances.size());
    for (std::size_t i = 0; i < profile.distances.size(); ++i) {
        const double d1 = profile.distances[i];
        const double d2 = profile.length - d1;
        ClearancePoint point = {};
        point.distance = d1;
        point.terrain = profile.heights[i];
        point.bulge = earthBulge(d1, d2, link.k);
        point.lineOfSight = from + (to - from) * d1 / profile.length;
        point.clearance = point.lineOfSight - point.terrain - point.bulge;
        point.fresnelRadius = fresnelRadius(d1, d2, link.wavelength());
        points.push_back(point);
    }
    return points;
}

std::optional<ClearancePoint> leastClear(const std::vector<ClearancePoint>& points) {
    std::optional<ClearancePoint> least;
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        const double ratio = points[i].ratio();
        if (std::isfinite(ratio) && (!least || ratio < least->ratio())) {
            least = points[i];
        }
    }
    return least;
}

}  // namespace rfu

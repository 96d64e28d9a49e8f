#pragma once

#include <optional>
#include <vector>

#include "analysis/maps/terrainProfile.h"

namespace rfu {

// A radio link over a terrain profile in metres (docs/propagation.md has formulas and sources).

/// By how much the curvature of the Earth raises the terrain relative to a straight line, in metres.
/// @param d1, d2 distances to the two ends, metres
/// @param k the effective Earth's radius over the true one
double earthBulge(double d1, double d2, double k);

/// The radius of the first Fresnel zone, in metres.
double fresnelRadius(double d1, double d2, double wavelength);

/// The diffraction parameter ν of a knife edge; negative where the line of sight is clear.
double diffractionParameter(double clearance, double d1, double d2, double wavelength);

/// In dB.
double knifeEdgeLoss(double parameter);

/// In dB.
double freeSpaceLoss(double distance, double wavelength);

struct RadioLink {
    double startHeight;  // metres, of the antennas above ground
    double endHeight;
    double frequency;  // MHz
    double k;

    double wavelength() const { return 299.792458 / frequency; }
};

/// The line of sight above a sample of the terrain, in metres.
struct ClearancePoint {
    double distance;  // from the start of the link
    double terrain;
    double bulge;
    double lineOfSight;
    double clearance;  // of the line of sight above terrain and bulge
    double fresnelRadius;

    double ratio() const { return clearance / fresnelRadius; }
};

/// The share of the first Fresnel zone's radius that a clear path needs.
inline constexpr double kClearRatio = 0.6;

/// One for each sample of the profile; values that depend on terrain that was not measured are NaN.
std::vector<ClearancePoint> clearancesOf(const TerrainProfile& profile, const RadioLink& link);

/// The point with the smallest ratio of clearance and radius, without the two ends; nothing if no terrain
/// is measured between them.
std::optional<ClearancePoint> leastClear(const std::vector<ClearancePoint>& points);

}  // namespace rfu

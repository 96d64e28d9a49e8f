#pragma once

#include <optional>
#include <vector>

#include "analysis/maps/terrainProfile.h"

namespace rfu {

// A radio link over a terrain profile in metres (docs/propagation.md has formulas and sources).

/// How far the terrain reaches up towards the line of sight because the Earth is round.
/// @param d1, d2 to the two ends
/// @param k the effective Earth's radius over the true one
double earthBulge(double d1, double d2, double k);

/// The radius of the first Fresnel zone.
double fresnelRadius(double d1, double d2, double wavelength);

/// The diffraction parameter of a knife edge; negative where the line of sight is clear.
double diffractionParameter(double clearance, double d1, double d2, double wavelength);

/// In dB.
double knifeEdgeLoss(double parameter);

/// In dB.
double freeSpaceLoss(double distance, double wavelength);

struct RadioLink {
    double startHeight;  // of the antennas above ground, metres
    double endHeight;
    double frequency;  // MHz
    double k;

    double wavelength() const { return 299.792458 / frequency; }
};

/// The line of sight above a sample of the terrain, in metres.
struct ClearancePoint {
    double distance;  // from the start
    double terrain;
    double bulge;
    double lineOfSight;
    double clearance;  // of the line of sight above terrain and bulge
    double fresnelRadius;

    double ratio() const { return clearance / fresnelRadius; }
};

/// The share of the first Fresnel zone's radius that a clear path needs.
inline constexpr double kClearRatio = 0.6;

/// One for each sample; what depends on terrain that was not measured is NaN.
std::vector<ClearancePoint> clearancesOf(const TerrainProfile& profile, const RadioLink& link);

/// The point with the smallest ratio, the ends left out; nothing where no terrain is measured
/// between them.
std::optional<ClearancePoint> leastClear(const std::vector<ClearancePoint>& points);

}  // namespace rfu

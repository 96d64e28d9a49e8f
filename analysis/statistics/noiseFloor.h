#pragma once

#include <cstddef>
#include <vector>

namespace rfu {

class LevelHistory;

struct NoiseFloor {
    std::vector<double> levels;  // dBm, of each point
    std::vector<double> finer;   // the same from the finer medians
    std::vector<bool> isQuiet;   // of each point: whether its median is that of noise
    double uncertainty = 0.0;    // standard deviation of a level, dB
};

/// The level of noise at each point: a straight line through the quiet points of a window around it. A
/// steady signal that is wider than half of the window counts as noise.
/// @param medians  of the levels of each point in dBm, NaN where there is none; they decide which
///                 points are quiet
/// @param finer    the same medians, known more exactly
/// @param bands    first point of each band, ascending; a window stays within its band
/// @param window   points, at least kMinWindow
NoiseFloor noiseFloor(const std::vector<double>& medians, const std::vector<double>& finer,
                      const std::vector<std::size_t>& bands, std::size_t window);

/// The same where there are no finer ones.
inline NoiseFloor noiseFloor(const std::vector<double>& medians,
                             const std::vector<std::size_t>& bands, std::size_t window) {
    return noiseFloor(medians, medians, bands, window);
}

inline constexpr std::size_t kMinWindow = 5;

/// The shape of the noise of a recording, estimated from the spread of the levels of its quiet points;
/// the smallest shape that is compatible with them.
double noiseShape(LevelHistory& history, const NoiseFloor& floor);

}  // namespace rfu

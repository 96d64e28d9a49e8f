#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

namespace rfu {

/// A level in hundredths of a dB, as fine as receivers write levels.
using PackedLevel = std::int16_t;

inline constexpr PackedLevel kNotMeasured = std::numeric_limits<PackedLevel>::min();
inline constexpr double kPackedPerDecibel = 100.0;

/// Rounds levels to the nearest hundredth; those beyond 327.67 dBm or -327.67 dBm are moved there.
/// @param levels in dBm; traceRssiBuffer::kNoMeasurement and NaN become kNotMeasured
/// @param offsets in dB, added to the levels; null for none
void packLevels(const double* levels, const double* offsets, std::size_t count,
                PackedLevel* packed);

/// In dBm, of a measured level.
inline double unpacked(PackedLevel level) {
    return level / kPackedPerDecibel;
}

}  // namespace rfu

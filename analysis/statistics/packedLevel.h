#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

namespace rfu {

/// A level in hundredths of a dB, as fine as receivers write levels.
using PackedLevel = std::int16_t;

inline constexpr PackedLevel kNotMeasured = std::numeric_limits<PackedLevel>::min();
inline constexpr double kPackedPerDecibel = 100.0;

/// Rounds levels to the nearest hundredth; they saturate at 327.67 and -327.67 dBm.
/// @param levels in dBm; traceRssiBuffer::kNoMeasurement and NaN become kNotMeasured
/// @param offsets in dB, added to the levels; null for none
void packLevels(const double* levels, const double* offsets, std::size_t count,
                PackedLevel* packed);

/// A measured level in dBm.
inline double unpacked(PackedLevel level) {
    return level / kPackedPerDecibel;
}

}  // namespace rfu

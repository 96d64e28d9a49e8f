// Private to the library: not installed, may change in any release.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

namespace rfu::detail {

/// Truncates toward zero to 32 bits; saturates at the bounds, NaN gives 0.
constexpr std::int32_t toInt32(double value) noexcept {
    constexpr double kMin = -2147483648.0;
    constexpr double kMax = 2147483647.0;
    if (value != value) {
        return 0;
    }
    return static_cast<std::int32_t>(std::clamp(value, kMin, kMax));
}

/// Rounds to the nearest float; beyond its range to signed infinity, NaN stays NaN.
inline float toFloat(double value) noexcept {
    // Without IEEE arithmetic the conversion of an out-of-range value would be undefined.
    static_assert(std::numeric_limits<float>::is_iec559 && std::numeric_limits<double>::is_iec559,
                  "IEEE floating point is required");
    return static_cast<float>(value);
}

}  // namespace rfu::detail

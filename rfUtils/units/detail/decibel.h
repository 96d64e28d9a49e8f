// Private to the library: not installed, may change in any release.
#pragma once

#include <rfUtils/units/unitTable.h>

#include <cmath>

namespace rfu::detail {

inline constexpr double kLn10 = 2.302585092994046;
inline constexpr double kLn10Over10 = 0.2302585092994046;
inline constexpr double kLn10Over20 = 0.1151292546497023;

/// 10^x.
inline double powerOfTen(double x) noexcept {
    return std::exp(x * kLn10);
}

/// 10^(dB/10): the ratio of two powers.
inline double powerRatio(double dB) noexcept {
    return std::exp(dB * kLn10Over10);
}

/// 10^(dB/20): the ratio of two amplitudes.
inline double amplitudeRatio(double dB) noexcept {
    return std::exp(dB * kLn10Over20);
}

inline double decibelOfPower(double ratio) noexcept {
    return 10.0 * std::log10(ratio);
}

inline double decibelOfAmplitude(double ratio) noexcept {
    return 20.0 * std::log10(ratio);
}

/// The antenna correction K in dB, for a centre frequency in MHz and an antenna gain in dBi.
inline double antennaCorrection(double fCenter, double fGain) noexcept {
    return decibelOfAmplitude(fCenter) + (-kAntennaConstant - fGain);
}

}  // namespace rfu::detail

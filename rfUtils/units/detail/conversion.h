// Private to the library: not installed, may change in any release.
#pragma once

#include <rfUtils/units/unitTable.h>

#include <cmath>

namespace rfu::detail {

// Powers of ten are exponentials of a product with these constants; the last digits of the results
// depend on it.
inline constexpr double kLn10 = 2.302585092994046;
inline constexpr double kLn10Over10 = 0.2302585092994046;
inline constexpr double kLn10Over20 = 0.1151292546497023;

inline double powerOfTen(double x) noexcept {
    return std::exp(x * kLn10);
}

inline double powerRatio(double dB) noexcept {
    return std::exp(dB * kLn10Over10);
}

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

/// A level in dBm as the number in a unit, by the formula of its row.
inline double fromDbm(const Unit& unit, double dBm, double correction) noexcept {
    const Unit::Forward& forward = unit.fromDbm;
    const double level =
        unit.needsAntenna() ? dBm + forward.offset + correction : dBm + forward.offset;
    switch (forward.formula) {
        case FromDbm::Unchanged:
            return dBm;
        case FromDbm::Sum:
            return level;
        case FromDbm::Amplitude:
            return amplitudeRatio(level) * forward.factor;
        case FromDbm::Power:
            return powerRatio(level) * forward.factor;
        case FromDbm::PowerLevel:
            return decibelOfPower(powerRatio(level) * forward.factor) + kDbmOfOneWatt;
        // GCOVR_EXCL_START: callers ask for units that can be shown only
        case FromDbm::None:
            break;
    }
    return 0.0;
    // GCOVR_EXCL_STOP
}

/// A value as a level, before the offset of the formula is added.
inline double levelBeforeOffset(const Unit::Backward& backward, double value) noexcept {
    switch (backward.formula) {
        case ToDbm::Amplitude:
            return decibelOfAmplitude(value * backward.factor);
        case ToDbm::Power:
            return decibelOfPower(value * backward.factor);
        case ToDbm::PowerDensity:
            return decibelOfPower(kImpedance * (value * backward.factor));
        case ToDbm::None:
        case ToDbm::Unchanged:
        case ToDbm::Sum:
            break;
    }
    return value;
}

}  // namespace rfu::detail

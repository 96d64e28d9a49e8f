#pragma once

namespace rfu {

// The power of noise that a receiver averages over k independent samples is gamma distributed with
// the shape k: 1 for a single periodogram, whose power is exponentially distributed. The larger the
// shape, the less the level in dB spreads.

/// The two percentiles that noiseSpread() compares, as shares. They are low, where signals have little
/// influence.
inline constexpr double kLowShare = 0.1;
inline constexpr double kHighShare = 0.4;

inline constexpr double kMinNoiseShape = 1.0;     // no noise spreads more than that of one sample
inline constexpr double kMaxNoiseShape = 1000.0;  // levels within a few tenths of a dB

/// The distance of the two percentiles of noise of this shape, in dB.
double noiseSpread(double shape);

/// The shape of noise from its spread, between kMinNoiseShape and kMaxNoiseShape.
double noiseShape(double spread);

/// The level that a share of the levels of noise exceeds, in dB above their median, which itself is known
/// only with an uncertainty.
/// @param share        above 0 and at most 0.5
/// @param uncertainty  standard deviation of the median, dB
double noiseExcess(double shape, double share, double uncertainty);

}  // namespace rfu

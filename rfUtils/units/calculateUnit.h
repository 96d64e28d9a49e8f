#pragma once

#include <rfUtils/rfUtilsExport.h>

/// Converts power levels in dBm to numeric scales; actOtherScale2dBm converts back. The scales are
/// voltages across 50 ohm, and fields at the measuring antenna. HMath converts by name and to text.
///
/// A scale is an index of rfu::kScales in unitTable.h, where its unit, the formulas and their
/// constants are; `rfutils scale --help` lists them. With f the centre frequency in MHz and G the
/// antenna gain in dBi, @f$K = 20 \lg f + (-29.8 - G)@f$ is the antenna correction in dB. It is
/// rounded to single precision, so field scales are off by up to 4e-6 dB and differ in their last
/// digits from HMath, which does not round it: at 1000 MHz and 0 dBi K is 30.200000762939453, not
/// 30.2.
///
/// Callers rely on these surprises:
/// - Scale 5 (W) does not come back: watts return by the formula of the volts. 0 dBm gives 0.001 W,
///   and 0.001 W gives -46.9897 dBm.
/// - Scale 9 (V/m) has no way back: the result keeps its value.
/// - The magnetic field (13) uses 377 ohm for the impedance of free space, the power densities (10,
///   15) use @f$120 \pi@f$ = 376.99111843077515 ohm.
/// - The field scales use the round offsets 107, 47 and 13, the voltages those of 50 ohm.
/// - dBW/m^2 (12) and dBm/m^2 (11) are not exactly 30 dB apart: 38.76 is rounded to 0.01 dB.
class RFUTILS_EXPORT calculateUnit {
public:
    calculateUnit();

    /// Converts a level to a scale.
    ///
    ///     actdBm2OtherScale(-30.0, 0.0, 3, 0.0, result)     -> 76.9897
    ///     actdBm2OtherScale(-30.0, 1000.0, 6, 0.0, result)  -> 107.20000076293945
    ///     actdBm2OtherScale(-30.0, 1000.0, -1, 0.0, result) -> 0
    ///
    /// @param dBm        level in dBm
    /// @param frequency  centre frequency in MHz, used by the field scales only; 0 or less makes K
    ///                   infinite or NaN
    /// @param scale      an index of rfu::kScales; any other gives the result 0
    /// @param gain       antenna gain in dBi, used by the field scales only
    /// @param result     the value in the scale, not rounded
    /// @return true, always
    bool actdBm2OtherScale(double dBm, double frequency, int scale, double gain, double& result);
};

/// Converts a value in a scale of calculateUnit back to a level.
///
///     actOtherScale2dBm(0.001, 0.0, 5, 0.0, result)  -> -46.9897, not 0
///     actOtherScale2dBm(1.0, 1000.0, 9, 0.0, result) -> as before
///
/// @param value      the value in the scale; 0 or less has no logarithm and gives -infinity or NaN
///                   in the linear scales
/// @param frequency  centre frequency in MHz, used by the field scales only
/// @param scale      an index of rfu::kScales; any other gives the result 0
/// @param gain       antenna gain in dBi, used by the field scales only
/// @param result     the level in dBm, not rounded; untouched for scale 9
/// @return true, always
RFUTILS_EXPORT bool actOtherScale2dBm(double value, double frequency, int scale, double gain,
                                      double& result);

#pragma once

#include <rfUtils/rfUtilsExport.h>

/// Converts a power level in dBm to one of sixteen scales, and back (actOtherScale2dBm): voltages
/// across 50 ohm, and field quantities at the measuring antenna. Pure arithmetic on numbers: no
/// state, no text, no rounding of results. HMath does the like with texts and units by name.
///
/// P is the level in dBm, v the value in the scale, lg the decimal logarithm, and
/// K = 20 lg(frequency / 1 MHz) + (-29.8 - gain / 1 dBi) the antenna correction in dB. K is rounded
/// to single precision before it enters a sum, so results of the field scales carry an error of up
/// to 4e-6 dB and differ in their last digits from those of HMath, which does not round it:
///
///     frequency 1000 MHz, gain 0 dBi: K = 30.200000762939453, not 30.2
///
/// | scale | quantity     | dBm -> scale                        | scale -> dBm                   |
/// |-------|--------------|-------------------------------------|--------------------------------|
/// | 0     | dBm          | P                                   | v                              |
/// | 1     | dBV, 50 ohm  | P - 13.0103                         | v + 13.0103                    |
/// | 2     | dBmV, 50 ohm | P + 46.9897                         | v - 46.9897                    |
/// | 3     | dBuV, 50 ohm | P + 106.9897                        | v - 106.9897                   |
/// | 4     | V, 50 ohm    | 10^((P + 46.9897)/20) 0.001         | 20 lg(1000 v) - 46.9897        |
/// | 5     | W            | 10^((P - 30)/10)                    | 20 lg(1000 v) - 46.9897 (!)    |
/// | 6     | dBuV/m       | P + 107 + K                         | v - 107 - K                    |
/// | 7     | dBmV/m       | P + 47 + K                          | v - 47 - K                     |
/// | 8     | dBV/m        | P - 13 + K                          | v + 13 - K                     |
/// | 9     | V/m          | 10^((P - 13 + K)/20)                | none: the result is left alone |
/// | 10    | W/m^2        | 10^((P - 13 + K)/10) / (120 pi)     | 10 lg(120 pi v) + 13 - K       |
/// | 11    | dBm/m^2      | 10 lg(the value of scale 10) + 30   | v + 8.763311187417589 - K      |
/// | 12    | dBW/m^2      | P - 38.75999999999999 + K           | v + 38.75999999999999 - K      |
/// | 13    | A/m          | 10^((P + 107 + K)/20) / 3.77e8      | 20 lg(3.77e8 v) - 107 - K      |
/// | 14    | dBA/m        | P - 64.53 + K                       | v + 64.53 - K                  |
/// | 15    | W/cm^2       | 10^((P - 13 + K)/10) / (120 pi 1e4) | 10 lg(120 pi 1e4 v) + 13 - K   |
/// | other | -            | 0                                   | 0                              |
///
/// Surprises, all of them relied upon:
/// - Scale 5 does not come back: watts return through the volt formula of scale 4. 0 dBm gives
///   0.001 W, and 0.001 W gives -46.9897 dBm.
/// - Scale 9 has no way back: the result keeps whatever the caller had put there.
/// - The magnetic field (13) uses 377 ohm for the impedance of free space, the power densities (10,
///   15) use 120 pi = 376.99111843077515 ohm.
/// - The field scales use the round offsets 107, 47 and 13, the voltages those of 50 ohm.
/// - dBW/m^2 (12) and dBm/m^2 (11) are not exactly 30 dB apart: 38.76 is rounded to 0.01 dB.
///
/// Where the numbers come from: unitTable.h.
class RFUTILS_EXPORT calculateUnit {
public:
    calculateUnit();

    /// Converts a level to a scale of the table above.
    /// @param dBm        level in dBm
    /// @param frequency  centre frequency in MHz; only the field scales (6 to 15) depend on it. 0 or
    ///                   less makes K infinite or NaN there, and leaves the others as they are
    /// @param scale      0 to 15; any other gives the result 0
    /// @param gain       antenna gain in dBi, for the field scales
    /// @param result     the value in the scale
    /// @return true, always
    ///
    ///     actdBm2OtherScale(-30.0, 0.0, 3, 0.0, r)      r = 76.9897
    ///     actdBm2OtherScale(-30.0, 1000.0, 6, 0.0, r)   r = 107.20000076293945
    ///     actdBm2OtherScale(-30.0, 1000.0, 16, 0.0, r)  r = 0
    bool actdBm2OtherScale(double dBm, double frequency, int scale, double gain, double& result);
};

/// Converts a value of a scale back to a level in dBm; parameters and table as for
/// calculateUnit::actdBm2OtherScale.
/// @param value   the value in the scale; 0 or less has no logarithm and gives -infinity or NaN in
///                the linear scales (4, 5, 10, 13, 15)
/// @param result  the level in dBm; untouched for scale 9, 0 for a scale that does not exist
/// @return true, always
///
///     actOtherScale2dBm(0.001, 0.0, 5, 0.0, r)   r = -46.9897 (not 0)
///     actOtherScale2dBm(1.0, 1000.0, 9, 0.0, r)  r as before
RFUTILS_EXPORT bool actOtherScale2dBm(double value, double frequency, int scale, double gain,
                                      double& result);

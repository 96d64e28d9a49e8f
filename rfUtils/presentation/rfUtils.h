#pragma once

#include <rfUtils/platform/ElfItem.h>
#include <rfUtils/rfUtilsExport.h>
#include <rfUtils/units/HMath.h>

#include <QString>

#include <array>
#include <memory>
#include <string>
#include <vector>

/// Texts and settings for entry views: frequency and width texts, the range of a parameter in its
/// unit, the formatters of published items, toast messages, and angles in degrees, minutes and
/// seconds.
///
/// An application constructs one object and keeps it. It cannot be copied, as its HMath is a
/// QObject, which belongs to the thread that constructed it; use the whole object on that thread.
/// The static operations, makeFrequencyUnit(), convertFreqWidthUnit(), getOddtoStr() and the
/// integer makeBoundaryMsg() read no member and may be called from any thread.
///
/// Frequencies are in MHz, levels in dBm, antenna gains in dBi, angles in degrees. Standard strings
/// are UTF-8. Numbers in texts have a decimal point in every locale. When memory runs out,
/// std::bad_alloc reaches the caller; no toast is counted then, and hMath may keep its earlier
/// unit.
class RFUTILS_EXPORT rfUtils {
public:
    /// Number of toast messages stored since the last clear, 0 in a new object.
    int toastCount = 0;
    /// The toast messages: the first toastCount are those stored since the last clear. All empty in
    /// a new object, all "None" after clearToastMessage().
    std::array<std::string, 10> toastMessages;
    /// For the application; the library neither reads nor writes it. Empty in a new object.
    std::vector<std::string> stringList;
    /// Converts the limits of makeBoundaryMsg(); constructed without a parent. Its unit is that of
    /// the limit converted last.
    HMath hMath;
    /// Centre frequency in MHz for the fields of makeBoundaryMsg(). No operation sets it: assign it
    /// before asking for such a message. Without a frequency the limits are no numbers:
    ///
    /// | fCenter  | types 16, 17, 18, 21 | types 19, 20                               |
    /// |----------|----------------------|--------------------------------------------|
    /// | 0.0      | "-inf" with the unit | empty, hMath keeps its unit                |
    /// | negative | "nan" with the unit  | one blank, the unit of hMath becomes empty |
    ///
    /// Type 19 then gives " {Min: , Max: } " and " {Min:  , Max:  } ".
    double fCenter = 0.0;
    /// Antenna gain in dBi for the fields of makeBoundaryMsg(), assigned like fCenter.
    double fGain = 0.0;

    rfUtils();

    /// @name Frequency texts
    /// @{

    /// Shows a frequency with a blank and its unit. With @f$a = |f|@f$ and f the frequency in MHz,
    /// the first line that fits:
    ///
    /// | magnitude in MHz  | text                                                        |
    /// |-------------------|-------------------------------------------------------------|
    /// | @f$a > 1000@f$    | @f$f \cdot 0.001@f$ with nine decimals, GHz                 |
    /// | @f$a > 1@f$       | @f$f@f$ with six decimals, MHz                              |
    /// | @f$a > 0.001@f$   | @f$f \cdot 1000@f$ with three decimals, kHz                 |
    /// | otherwise         | @f$f \cdot 1000000@f$ cut (not rounded) to whole hertz, Hz  |
    ///
    /// The bounds are exclusive, so exactly 1000 MHz, 1 MHz and 1 kHz are shown in the smaller
    /// unit. Decimals round as printf does: exact ties to even. The sign is kept.
    ///
    ///     makeFrequencyUnit(2400.0)    -> "2.400000000 GHz"
    ///     makeFrequencyUnit(1000.0)    -> "1000.000000 MHz"
    ///     makeFrequencyUnit(-2.5)      -> "-2.500000 MHz"
    ///     makeFrequencyUnit(1.0)       -> "1000.000 kHz"
    ///     makeFrequencyUnit(0.5)       -> "500.000 kHz"
    ///     makeFrequencyUnit(0.001)     -> "1000 Hz"
    ///     makeFrequencyUnit(0.0)       -> "0 Hz"
    ///     makeFrequencyUnit(0.0000019) -> "1 Hz"
    ///     makeFrequencyUnit(NAN)       -> "0 Hz"
    ///     makeFrequencyUnit(INFINITY)  -> "inf GHz"
    ///
    /// 0.000249 (249 Hz) gives "248 Hz", because 0.000249 * 1000000.0 is 248.99999999999997.
    ///
    /// @param freqMHz  frequency in MHz
    /// @return the text
    std::string makeFrequencyUnit(double freqMHz) const;

    /// Shows a frequency width (span or bandwidth) with its unit and no blank between. The number
    /// has at most six significant digits, no trailing zeros, and an exponent where that is shorter
    /// (QString::number(..., 'g', 6)). The first line that fits, with w the width in MHz:
    ///
    /// | width in MHz       | text                         |
    /// |--------------------|------------------------------|
    /// | @f$w > 1000@f$     | @f$w \cdot 0.001@f$, GHz     |
    /// | @f$w > 1@f$        | @f$w@f$, MHz                 |
    /// | @f$w > 0.0001@f$   | @f$w \cdot 1000@f$, kHz      |
    /// | otherwise          | @f$w \cdot 1000000@f$, Hz    |
    ///
    /// Unlike makeFrequencyUnit(), kHz begins above 100 Hz rather than 1 kHz, and the sign counts:
    /// zero, every negative width and NaN are shown in Hz.
    ///
    ///     convertFreqWidthUnit(1500.0) -> "1.5GHz"     convertFreqWidthUnit(20.0)    -> "20MHz"
    ///     convertFreqWidthUnit(0.03)   -> "30kHz"      convertFreqWidthUnit(0.00005) -> "50Hz"
    ///     convertFreqWidthUnit(1000.0) -> "1000MHz"    convertFreqWidthUnit(0.0005)  -> "0.5kHz"
    ///     convertFreqWidthUnit(-1.0)   -> "-1e+06Hz"
    ///
    /// @param widthMHz  width in MHz
    /// @return the text
    QString convertFreqWidthUnit(double widthMHz) const;

    /// Reads the number in the two characters before the last one, which is always ignored.
    /// std::stoi reads it: leading blanks and a sign are allowed, reading stops at the first other
    /// character. The only operation of the library that throws on bad input.
    ///
    ///     getOddtoStr("ch12x") -> 12    getOddtoStr("x05y") -> 5    getOddtoStr("A-3z") -> -3
    ///     getOddtoStr("12a")   -> 12    getOddtoStr("a1bc") -> 1
    ///
    /// @param text  at least three characters
    /// @return the number
    /// @throws std::out_of_range when the text has fewer than three characters ("12")
    /// @throws std::invalid_argument with the text "stoi", when no number is there ("ab7c": "b7")
    int getOddtoStr(std::string text) const;

    /// @}
    /// @name Range texts
    /// The range of a parameter, lower limit first, such as " {Min: -10.00 dBm, Max: 20.00 dBm} ",
    /// blanks at both ends included. **The upper limit is the first argument.** Nothing checks that
    /// min is below max. The type code says how the limits are shown: rangeTypes.h has the codes,
    /// which differ between the two overloads on purpose.
    ///
    /// A limit with a suffix or no unit is printed as given, followed by a blank and the suffix, so
    /// without a unit a blank stays before the comma and the brace. Both limits must have the same
    /// type: a call with one int and one double does not compile.
    /// @{

    /// Shows the range of an integer parameter.
    ///
    ///     makeBoundaryMsg(10, -5, 1) -> " {Min: -5 dB, Max: 10 dB} "
    ///     makeBoundaryMsg(10, -5, 0) -> " {Min: -5 , Max: 10 } "
    ///
    /// Not const, though it changes nothing: a call with integers on an object that is not const
    /// would be ambiguous beside the other overload.
    ///
    /// @param max,min  limits
    /// @param type     a code of rfu::kIntegerRangeTypes; any other shows no unit
    /// @return the text
    std::string makeBoundaryMsg(int max, int min, int type);

    /// Shows the range of a floating-point parameter. Limits with a suffix or no unit have two
    /// decimals, rounded as printf does (0.125 gives 0.12).
    ///
    /// Converted limits are in dBm and read as HMath shows them, with its numbers of decimals:
    /// fields with fCenter and fGain as they are at the call. The lower limit is converted first.
    /// Each conversion stores its unit in hMath and emits hMath's unitChanged(), so hMath.unit() is
    /// then the unit of the upper limit, with its prefix if it has one.
    ///
    ///     makeBoundaryMsg(20.0, -10.0, 2)   -> " {Min: -10.00 dBm, Max: 20.00 dBm} "
    ///     makeBoundaryMsg(20.0, -10.0, 5)   -> " {Min: -10.00 , Max: 20.00 } "
    ///     makeBoundaryMsg(6000.0, 0.009, 0) -> " {Min: 9.000 kHz, Max: 6.000000000 GHz} "
    ///     makeBoundaryMsg(0.0, -30.0, 13)   -> " {Min: 77.0 dBuV, Max: 107.0 dBuV} "
    ///
    /// With an fCenter of 100 MHz and an fGain of 0 dBi:
    ///
    ///     makeBoundaryMsg(-10.0, -30.0, 16) -> " {Min: 87.20 dBuV/m, Max: 107.20 dBuV/m} "
    ///
    /// @param max,min  limits
    /// @param type     a code of rfu::kDoubleRangeTypes; any other shows no unit
    /// @return the text
    std::string makeBoundaryMsg(double max, double min, int type);

    /// @}
    /// @name Formatters of published items
    /// Each operation makes at most three calls on the ServerItem of an item, in this order: the
    /// property "inputType", the formatter, the property "precision" (decimals), both properties as
    /// an int. The item service knows their meaning; the differences between the operations are
    /// intended.
    ///
    /// A precision is passed on unchanged, negative ones too. A null item, or one whose ServerItem
    /// is null, is left alone. Call them on the thread that owns the item.
    /// @{

    /// Input type 12, formatter as given, precision as given.
    /// @param item,formatter,precision  see above
    static void setPropertyFreq(std::shared_ptr<DoubleElfItem> item, const QString& formatter,
                                int precision);
    /// Input type 12, FreqFormatter, no precision.
    /// @param item  see above
    static void setPropertyFreq(std::shared_ptr<DoubleElfItem> item);
    /// Input type 12, MhzFormatter, precision as given.
    /// @param item,precision  see above
    static void setPropertyMHz(std::shared_ptr<DoubleElfItem> item, int precision);
    /// Input type 11, DbFormatter, precision 2.
    /// @param item  see above
    static void setPropertyDB(std::shared_ptr<DoubleElfItem> item);
    /// Input type 9, DbFormatter_0_0, no precision.
    /// @param item  see above
    static void setPropertyDB(std::shared_ptr<IntElfItem> item);
    /// Input type 11, DbmFormatter, precision 2.
    /// @param item  see above
    static void setPropertyDBM(std::shared_ptr<DoubleElfItem> item);
    /// Input type 11, PpmFormatter, precision 2.
    /// @param item  see above
    static void setPropertyPPM(std::shared_ptr<DoubleElfItem> item);
    /// Input type 11, DbcFormatter, precision 2.
    /// @param item  see above
    static void setPropertyDBC(std::shared_ptr<DoubleElfItem> item);
    /// Input type 11, DbiFormatter, precision 2.
    /// @param item  see above
    static void setPropertyDBI(std::shared_ptr<DoubleElfItem> item);
    /// Input type 9, MicrosecondsFormatter, no precision.
    /// @param item  see above
    static void setPropertyUS(std::shared_ptr<IntElfItem> item);
    /// Input type 9, MillisecondsFormatter, precision 0.
    /// @param item  see above
    static void setPropertyMS(std::shared_ptr<IntElfItem> item);
    /// Input type 9, NanosecondsFormatter, precision 0.
    /// @param item  see above
    static void setPropertyNS(std::shared_ptr<IntElfItem> item);
    /// Input type 9, SecondsFormatter, no precision.
    /// @param item  see above
    static void setPropertySEC(std::shared_ptr<IntElfItem> item);
    /// Input type 12, MicrosecondsFormatter, precision as given.
    /// @param item,precision  see above
    static void setPropertyUS(std::shared_ptr<DoubleElfItem> item, int precision);
    /// Input type 12, MillisecondsFormatter, precision as given.
    /// @param item,precision  see above
    static void setPropertyMS(std::shared_ptr<DoubleElfItem> item, int precision);
    /// Input type 12, NanosecondsFormatter, precision as given.
    /// @param item,precision  see above
    static void setPropertyNS(std::shared_ptr<DoubleElfItem> item, int precision);
    /// Input type 12, SecondsFormatter, precision as given.
    /// @param item,precision  see above
    static void setPropertySEC(std::shared_ptr<DoubleElfItem> item, int precision);
    /// Input type 12, PercentFormatter, precision as given.
    /// @param item,precision  see above
    static void setPropertyPer(std::shared_ptr<DoubleElfItem> item, int precision);

    /// @}
    /// @name Toast messages
    /// Up to ten short texts that the application collects and then shows as transient notices,
    /// from slots 0 to toastCount - 1 of toastMessages.
    /// @{

    /// Stores a text in slot toastCount and counts it. When ten are stored, or the application has
    /// set toastCount to a value that is no slot, the text is dropped and the count stays.
    /// @param message  any text
    /// @return true, also when the text was dropped
    bool setToastMessage(std::string message);

    /// Sets all ten slots to "None" (not to the empty text of a new object) and the count to 0.
    void clearToastMessage();

    /// @return toastCount
    int getNoOfToast() const;

    /// @}
    /// @name Angles
    /// @{

    /// Gives decimal degrees, with the sign s, the degrees d, the minutes m and the seconds t
    /// @f$s (d + m \cdot \frac{1}{60} + t \cdot \frac{1}{3600})@f$, each product and sum rounded
    /// once.
    ///
    ///     convertDdFromDms(-1, 33, 52, 7.68, decimalDegrees) -> -33.8688
    ///
    /// @param sign  a factor, usually +1 or -1: 2 doubles the angle, 0 gives 0
    /// @param degrees,minutes,seconds  not negative; fractions are accepted in all three
    /// @param decimalDegrees  the angle
    /// @return true
    static bool convertDdFromDms(const short& sign, const double& degrees, const double& minutes,
                                 const double& seconds, double& decimalDegrees);

    /// Gives degrees, minutes and seconds. Fractions of a second are cut, never rounded: an angle
    /// converted here and back may be nearer to zero by up to one second of arc, and an angle that
    /// is a whole number of seconds on paper may come out one second less (0.018055555555555554,
    /// which is 65 seconds, gives 1 minute 4 seconds).
    ///
    ///     convertDmsFromDd(12.5, sign, degrees, minutes, seconds)      -> +1, 12, 30, 0
    ///     convertDmsFromDd(-33.8688, sign, degrees, minutes, seconds)  -> -1, 33, 52, 7
    ///     convertDmsFromDd(45.999999, sign, degrees, minutes, seconds) -> +1, 45, 59, 59
    ///
    /// @param decimalDegrees  the angle; NaN gives -1, 0, 0, 0
    /// @param sign  +1, also for -0.0, or -1
    /// @param degrees,minutes,seconds  whole numbers, not negative; beyond the 32-bit integers they
    ///                                 saturate
    /// @return true
    static bool convertDmsFromDd(const double& decimalDegrees, short& sign, double& degrees,
                                 double& minutes, double& seconds);

    /// @}
};

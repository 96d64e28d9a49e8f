#pragma once

#include <rfUtils/rfUtilsExport.h>

#include <QObject>
#include <QString>
#include <QVariant>

/// Converts power levels in dBm to texts in display units, and values in display units back to dBm.
///
/// The property `unit` holds the unit shown last, prefix included. It is not the unit that an
/// operator chose: never pass it back as the unit to show in. A QML binding that does so loops, and
/// "V" becomes "mV", then "dBm". Keep the chosen unit outside the object.
///
/// An HMath that an invokable returns to a script belongs to the script engine, which deletes it,
/// unless it has a parent. Scripts reach these members through the
/// meta-object, by their names and in this order: unitChanged, unit, setUnit, getUnitTodBm,
/// getFieldTodBm, getdBmToUnit, getdBmToField, getDBmToW, convertValUnit, getStringWidth. The other
/// operations are plain C++ members.
///
/// unitTable.h holds the unit names, the formulas and their constants. Names are matched whole and
/// case-sensitively; "uV" and "µV" differ.
///
/// Levels are in dBm, frequencies in MHz, antenna gains in dBi, voltages across 50 ohm. In the
/// formulas P is a level, v a value in the unit, o and c the offset and the factor of the unit's
/// row, f the centre frequency in MHz and G the antenna gain. Nothing
/// throws or refuses: each operation states its answer for an unknown unit, and infinite or
/// undefined numbers go through the arithmetic and read "inf" and "nan". A NaN whose sign bit is
/// set reads "-nan" in volt and watt texts and in those of getDBmToW, "nan" in level and field
/// level texts; prefixed field texts have no number for a NaN. Texts have a decimal point in every
/// locale. When memory runs out, std::bad_alloc reaches the caller; the unit may have been set by
/// then.
///
/// Exact ties round in two ways. Level and field level texts round them away from zero, as
/// QString::setNum does (0.25 with one decimal is "0.3"); volt, watt and prefixed field texts round
/// them to even, as printf does (0.125 with two decimals is "0.12").
///
/// Not thread-safe: an object belongs to its thread, and emits unitChanged within the calls.
class RFUTILS_EXPORT HMath : public QObject {
    Q_OBJECT
    /// The unit shown or set last.
    Q_PROPERTY(QString unit READ unit WRITE setUnit NOTIFY unitChanged)

public:
    /// The unit is empty until the first text or setUnit.
    /// @param parent  owner, as of any QObject
    explicit HMath(QObject* parent = nullptr);
    ~HMath() override;

    /// Gives the level of a value in a unit that does not need the antenna. Leaves `unit` alone.
    ///
    /// | unit                       | result                                                     |
    /// |----------------------------|------------------------------------------------------------|
    /// | "dBm"                      | fVal as it is                                              |
    /// | other levels               | @f$v + o@f$, cut toward zero after three decimals          |
    /// | volts, watts               | getVoltTodBm, getWattTodBm                                 |
    /// | any other, field units too | -9999999.9                                                 |
    ///
    /// 87 dBV, 147 dBmV and 207 dBuV are the rounded images of 100 dBm; exactly these come back as
    /// exactly 100 instead of 100.01.
    ///
    ///     getUnitTodBm("dBV", 87.0) -> 100.0     getUnitTodBm("dBuV", 0.0) -> -106.989
    ///     getUnitTodBm("dBV", 86.0) -> 99.010    getUnitTodBm("uV", 1.0)   -> -9999999.9
    ///     getUnitTodBm("V", 1.0)    -> 13.010    getUnitTodBm("fW", 1.0)   -> -9999999.9
    ///
    /// @param sUnit  unit of the value
    /// @param fVal   the value
    /// @return level in dBm
    Q_INVOKABLE double getUnitTodBm(QString sUnit, double fVal);

    /// Gives the level that the antenna delivers in a field. Leaves `unit` alone. With
    /// @f$D = 20 \lg f@f$:
    ///
    /// | unit                          | result                                                  |
    /// |-------------------------------|---------------------------------------------------------|
    /// | field levels ("dBuV/m")       | @f$v + o + G - D@f$                                     |
    /// | field strengths ("mV/m")      | @f$20 \lg(v c) + (G + o - D)@f$                         |
    /// | power densities ("mW/m^2")    | @f$10 \lg(120 \pi (v c)) + (G + o - D)@f$               |
    /// | "w/cm^2"                      | @f$10 \lg(v c) + (G + o - D)@f$                         |
    /// | any other                     | -9999999.9                                              |
    ///
    /// "W/cm^2", which getdBmToField takes, is unknown here: only "w/cm^2" is read. So are prefixes
    /// that getFieldChangeUnit produces but unitTable.h has no row for ("mA/m", "kV/m", "fV/m").
    ///
    ///     getFieldTodBm("dBuV/m", 87.2, 100.0, 0.0) -> -30
    ///     getFieldTodBm("W/cm^2", 1.0, 100.0, 0.0)  -> -9999999.9
    ///
    /// @param sUnit    unit of the value
    /// @param fVal     the field; a linear one of 0 or less gives -infinity or NaN
    /// @param fCenter  centre frequency in MHz; 0 or less gives infinity or NaN
    /// @param fGain    antenna gain in dBi
    /// @return level in dBm, not cut or rounded
    Q_INVOKABLE double getFieldTodBm(QString sUnit, double fVal, double fCenter, double fGain);

    /// Shows a level in a unit that does not need the antenna. First makes the unit shown the
    /// object's `unit` and emits unitChanged once, also if it is the unit already.
    ///
    /// | unit      | text                           | `unit` afterwards          |
    /// |-----------|--------------------------------|----------------------------|
    /// | levels    | @f$P + o@f$, one decimal       | sUnit                      |
    /// | "V", "W"  | getdBmToVolt, getdBmToWatt     | the prefixed unit it chose |
    /// | any other | fVal, one decimal              | "dBm"                      |
    ///
    /// "Any other" includes "mV" and "mW", which only getUnitTodBm takes, field units and "".
    ///
    ///     getdBmToUnit("dBuV", 0.0, true) -> "107.0 dBuV"
    ///     getdBmToUnit("mV", 10.0, true)  -> "10.0 dBm", not millivolts
    ///
    /// @param sUnit       unit to show the level in
    /// @param fVal        level in dBm
    /// @param isUnitText  whether a blank and the unit shown are appended
    /// @return the text
    Q_INVOKABLE QString getdBmToUnit(QString sUnit, double fVal, bool isUnitText);

    /// Shows the field at the antenna that delivers a level. With @f$L = P + o + K@f$ and the
    /// antenna correction @f$K = 20 \lg f + (-29.8 - G)@f$ in dB:
    ///
    /// | unit                        | text                                                      |
    /// |-----------------------------|-----------------------------------------------------------|
    /// | field levels ("dBuV/m")     | @f$L@f$, two decimals                                     |
    /// | "dBm/m^2"                   | @f$10 \lg(10^{L/10} c) + 30@f$, two decimals              |
    /// | field strengths ("V/m")     | getFieldChangeUnit of @f$10^{L/20} c@f$                   |
    /// | power densities ("W/cm^2")  | getFieldChangeUnit of @f$10^{L/10} c@f$                   |
    /// | any other                   | 0.00; sUnit becomes `unit` and is shown all the same      |
    ///
    /// Levels make sUnit the object's `unit`; linear units make it the prefixed unit that
    /// getFieldChangeUnit chose, from the value rounded to single precision. Both emit unitChanged
    /// once, except where that single is 0 (V/m below about -900 dBm, W/m^2 below about -430 dBm):
    /// then the text is empty, without a unit text too, and nothing is emitted.
    ///
    /// A frequency of 0 or less has no logarithm. For a finite level:
    ///
    /// | fCenter  | field levels             | linear units                                      |
    /// |----------|--------------------------|---------------------------------------------------|
    /// | 0        | "-inf", `unit` is sUnit  | empty text, `unit` stays: a field of 0            |
    /// | negative | "nan", `unit` is sUnit   | "" or, with isUnitText, " "; `unit` becomes empty |
    ///
    ///     getdBmToField("dBuV/m", -30.0, 100.0, 0.0, true) -> "87.20 dBuV/m"
    ///     getdBmToField("V/m", -30.0, 100.0, 0.0, true)    -> "0.02 V/m"
    ///     getdBmToField("V/m", -50.0, 100.0, 0.0, true)    -> "2.29 mV/m", `unit` "mV/m"
    ///     getdBmToField("w/cm^2", -30.0, 100.0, 0.0, true) -> "0.00 w/cm^2": unknown here
    ///
    /// @param sUnit       unit to show the field in
    /// @param fVal        level in dBm
    /// @param fCenter     centre frequency in MHz
    /// @param fGain       antenna gain in dBi
    /// @param isUnitText  whether a blank and the unit shown are appended
    /// @return the text
    Q_INVOKABLE QString getdBmToField(QString sUnit, double fVal, double fCenter, double fGain,
                                      bool isUnitText);

    /// Shows a level as a power without unit: the number, a blank and the letter of the prefix,
    /// behind which the caller puts "W". Leaves `unit` alone.
    ///
    /// Two decimals. Below 0.01 W the first of m, u (ASCII), n, p, f, a, z, y whose number reaches
    /// 0.01; from 1e3 W k, from 1e6 W M. From 0.01 yW down it is "0.00 ".
    ///
    ///     getDBmToW(30.0)  -> "1.00 "     getDBmToW(90.0)  -> "1.00 M"
    ///     getDBmToW(-40.0) -> "0.10 u", not "100.00 n"
    ///     getDBmToW(10.0)  -> "10.00 m", not "0.01 ", as getdBmToWatt explains
    ///
    /// @param fTemp  level in dBm
    /// @return the text, which ends in the blank if there is no prefix
    Q_INVOKABLE QString getDBmToW(double fTemp);

    /// Shows a number with any unit behind it. Leaves `unit` alone.
    ///
    ///     convertValUnit(3.14159)             -> "3.14 dBm"
    ///     convertValUnit("abc", 1, "V")       -> "0.0 V"
    ///     convertValUnit(1.0, 0, QString())   -> "1 "
    ///
    /// @param base  read with QVariant::toDouble; a value that is no number counts as 0
    /// @param dec   decimals; more than a million count as a million (all digits of a double behind
    ///              the 1074th are 0). A negative number gives what QString::setNum gives: six
    ///              decimals, or for QLocale::FloatingPointShortest as many as the number needs
    /// @param unit  any text; an empty one leaves the blank before it at the end
    /// @return the text
    Q_INVOKABLE QString convertValUnit(QVariant base, int dec = 2,
                                       QString unit = QStringLiteral("dBm"));

    /// Measures a text in the font "Noto Sans UI", or the one that the system puts in its place.
    /// @param pixelSize  of the font. 0 or less leaves the font at its default point size, with a
    ///                   warning from Qt; beyond 65535 Qt measures a stand-in of a fixed size
    /// @param str        the whole text; empty gives 0 without a font being made
    /// @return its advance in pixels; 0 without a QGuiApplication
    Q_INVOKABLE int getStringWidth(const int& pixelSize, const QString& str);

    /// Shows a level as the voltage across 50 ohm,
    /// @f$U / 1\,\mathrm{mV} = 10^{(P + 46.9897) / 20}@f$, with two decimals, in the first of V,
    /// mV, µV, nV, pV, fV in which it is at least 0.01. Makes that the object's `unit`; emits
    /// unitChanged once.
    ///
    /// Above 100 V the number is in kilovolts while the unit stays "V". Below 0.01 fV the text is
    /// "0.00" in "V".
    ///
    ///     getdBmToVolt(30.0, true)  -> "7.07 V"     getdBmToVolt(63.0, true)   -> "0.32 V"
    ///     getdBmToVolt(-50.0, true) -> "0.71 mV"    getdBmToVolt(-400.0, true) -> "0.00 V"
    ///
    /// @param dBm         level in dBm
    /// @param isUnitText  whether a blank and the unit shown are appended
    /// @return the text
    QString getdBmToVolt(double dBm, bool isUnitText);

    /// Shows a level as a power, @f$10^{(P - 30) / 10}\,\mathrm{W}@f$, with two decimals, in the
    /// first of W, mW, µW, nW, pW, fW, aW, zW, yW in which it comes out as 0.01 or more. Makes that
    /// the object's `unit`; emits unitChanged once.
    ///
    /// Exactly a hundredth of a unit falls to the next smaller one: @f$10^x@f$ is formed as
    /// @f$e^{2.302585092994046\,x}@f$, and that constant, the double nearest to @f$\ln 10@f$, is a
    /// little more than it. @f$10^{-2}@f$ comes out as 0.009999999999999995, which does not reach
    /// 0.01. So 10 dBm is "10.00 mW", not "0.01 W", -20 dBm is "10.00 µW", and -230 dBm, exactly
    /// 0.01 yW, "0.00 W". Volts compare 10 of the next smaller unit instead, and @f$10^1@f$ comes
    /// out as 10.000000000000002: -26.9897 dBm is "0.01 V".
    ///
    /// From 1000 W the number is in kilowatts, from 1e6 W in megawatts, while the unit stays "W".
    /// From 0.01 yW down the text is "0.00" in "W".
    ///
    ///     getdBmToWatt(60.0, true)   -> "1.00 W", a kilowatt
    ///     getdBmToWatt(10.0, true)   -> "10.00 mW"
    ///     getdBmToWatt(-60.0, true)  -> "1.00 nW"
    ///     getdBmToWatt(-40.0, true)  -> "0.10 µW", not "100.00 nW"
    ///
    /// @param dBm         level in dBm
    /// @param isUnitText  whether a blank and the unit shown are appended
    /// @return the text
    QString getdBmToWatt(double dBm, bool isUnitText);

    /// Gives the level of a voltage across 50 ohm, @f$20 \lg(U / 1\,\mathrm{mV}) - 46.9897@f$.
    ///
    ///     getVoltTodBm("V", 1.0) -> 13.010    getVoltTodBm("uV", 1.0) -> 0
    ///
    /// @param unit   "V", "mV", "µV", "nV" or "pV"; any other, "fV" too, gives 0
    /// @param value  0 gives -2147483.648, a negative one 0: the cut of the logarithm
    /// @return level in dBm, cut toward zero after three decimals
    double getVoltTodBm(const QString& unit, const double& value);

    /// Gives the level of a power p, @f$10 \lg(p / 1\,\mathrm{W}) + 30@f$.
    ///
    ///     getWattTodBm("W", 1.0) -> 30.0    getWattTodBm("nW", 1.0) -> -60.0
    ///
    /// @param unit   "W", "mW", "µW", "nW" or "pW"; any other, "fW" too, gives 0
    /// @param value  0 gives -2147483.648, a negative one 0: the cut of the logarithm
    /// @return level in dBm, cut toward zero after three decimals
    double getWattTodBm(const QString& unit, const double& value);

    /// Brings a field strength to V/m; despite the name, the result is not a level.
    ///
    ///     getVoltmtodBm("mV/m", 2.5) -> 0.0025
    ///
    /// @param unit   "V/m", "mV/m", "uV/m", "nV/m" or "pV/m"; any other gives 0
    /// @param value  any
    /// @return field strength in V/m, not cut
    double getVoltmtodBm(const QString& unit, const double& value);

    /// Brings a power density to W/m^2; despite the name, the result is not a level.
    /// @param unit   "W/m^2", "mW/m^2", "uW/m^2", "nW/m^2" or "pW/m^2"; any other, "w/cm^2" too,
    ///               gives 0
    /// @param value  any
    /// @return power density in W/m^2, not cut
    double getWattmmTodBm(const QString& unit, const double& value);

    /// Shows a linear field value with the prefix that suits it. Makes the prefixed unit the
    /// object's `unit`, and emits unitChanged once.
    ///
    /// kPrefixes of unitTable.h has the thresholds and decimals: G from 1e9 and M from 1e6 with one
    /// decimal, k from 1000, none from 0.01, and m, u (ASCII), n, p, f, a, z, y for the values
    /// below, all with two. Below 1e-26 and for NaN there is no number, and the unit becomes the
    /// empty text. The value 0 gives an empty text at once, without unit or signal.
    ///
    /// Thresholds are compared in double precision, so the single nearest to 0.01, which lies just
    /// below it, reads "10.00 m". Numbers are rounded to single precision before they are printed.
    ///
    ///     getFieldChangeUnit("V/m", 0.00229F, true)  -> "2.29 mV/m"
    ///     getFieldChangeUnit("V/m", -0.5F, false)    -> "-0.50", `unit` "V/m"
    ///     getFieldChangeUnit("V/m", 2.5e9F, true)    -> "2.5 GV/m"
    ///     getFieldChangeUnit("V/m", 1e-30F, true)    -> " ", `unit` ""
    ///     getFieldChangeUnit("V/m", 0.0F, true)      -> "", `unit` as before
    ///
    /// @param unit        any text; the prefix goes in front of it
    /// @param value       in that unit
    /// @param isUnitText  whether a blank and the prefixed unit are appended
    /// @return the text
    QString getFieldChangeUnit(QString unit, float value, bool isUnitText);

    /// Cuts a value toward zero after some decimals: multiplies by 10 `digits` times, truncates to
    /// 32 bits, and multiplies by 0.1 as many times. The last products may leave a last digit of
    /// their own: 1.234 comes out as 1234 * 0.1 * 0.1 * 0.1.
    ///
    ///     mathRoundOff(1.23456, 3)  -> 1.234    mathRoundOff(-1.9, 0) -> -1.0
    ///     mathRoundOff(-1.23456, 3) -> -1.234   mathRoundOff(1e9, 3)  -> 2147483.647
    ///
    /// @param value   saturates where the truncation does, with three digits beyond 2147483.647;
    ///                NaN gives 0
    /// @param digits  0 or less cuts to an integer
    /// @return the value cut
    double mathRoundOff(double value, int digits);

public Q_SLOTS:
    /// @return the unit shown or set last
    QString unit();

    /// Stores a unit and emits unitChanged, also if it is the unit already. The property and all
    /// texts change the unit through this operation.
    /// @param val  any text
    void setUnit(const QString& val);

Q_SIGNALS:
    /// The unit was set, possibly to the same text as before.
    void unitChanged();

private:
    QString unit_;
};

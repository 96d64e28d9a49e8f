#pragma once

#include <rfUtils/rfUtilsExport.h>

#include <QObject>
#include <QString>
#include <QVariant>

/// Unit service of a user interface: converts power levels in dBm to texts in display units, and
/// values in display units back to dBm. It remembers the unit that it last showed as the property
/// `unit`.
///
/// Everything that a script needs is reachable through the meta-object, by these names and in this
/// order: unitChanged, unit, setUnit, getUnitTodBm, getFieldTodBm, getdBmToUnit, getdBmToField,
/// getDBmToW, convertValUnit, getStringWidth. The other operations are plain C++ members.
///
/// Unit names are those of unitTable.h, matched whole and case-sensitively; nothing is trimmed. The
/// micro sign of "µV" and "µW" is U+00B5 ("uV" is unknown), field units have the ASCII letter u
/// ("uV/m").
///
/// Levels are in dBm, frequencies in MHz, antenna gains in dBi, voltages across 50 ohm. Nothing
/// throws or refuses: an unknown unit gets the answer that each operation states, and infinite or
/// undefined numbers go through the arithmetic and are printed as "inf" and "nan". A NaN whose sign
/// bit is set reads "-nan" in volt and watt texts and in those of getDBmToW, and "nan" in level and
/// field level texts; prefixed field texts have no number for a NaN. Texts have a decimal point in
/// every locale. Only where memory runs out does std::bad_alloc pass on; an operation that sets the
/// unit may have done so by then.
///
/// Two ways of rounding meet here. Level and field level texts round exact ties away from zero, as
/// QString::setNum does (0.25 with one decimal is "0.3"); volt, watt and prefixed field texts round
/// them to even, as printf does (0.125 with two decimals is "0.12").
///
/// Not thread-safe: an object belongs to its thread. `unitChanged` is emitted from within the
/// calls.
class RFUTILS_EXPORT HMath : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString unit READ unit WRITE setUnit NOTIFY unitChanged)

public:
    /// The unit is empty until the first text or setUnit.
    explicit HMath(QObject* parent = nullptr);
    ~HMath() override;

    /// A value in dBm, a 50 ohm level, volts or watts as a level in dBm. Leaves `unit` alone.
    ///
    /// | unit                          | result                                                  |
    /// |-------------------------------|---------------------------------------------------------|
    /// | "dBm"                         | the value as it is                                      |
    /// | "dBV"                         | fVal + 13.0103, cut to three decimals; 100 if fVal = 87 |
    /// | "dBmV"                        | fVal - 46.9897, cut likewise; 100 if fVal = 147         |
    /// | "dBuV"                        | fVal - 106.9897, cut likewise; 100 if fVal = 207        |
    /// | "V", "mV", "µV", "nV", "pV"   | getVoltTodBm                                            |
    /// | "W", "mW", "µW", "nW", "pW"   | getWattTodBm                                            |
    /// | any other, field units too    | -9999999.9                                              |
    ///
    /// 87, 147 and 207 are the rounded images of 100 dBm; exactly these come back as exactly 100
    /// instead of 100.01. Levels are cut toward zero (mathRoundOff), not rounded to nearest.
    ///
    ///     getUnitTodBm("dBV", 87.0) -> 100.0     getUnitTodBm("dBuV", 0.0) -> -106.989
    ///     getUnitTodBm("dBV", 86.0) -> 99.010    getUnitTodBm("uV", 1.0)   -> -9999999.9
    ///     getUnitTodBm("V", 1.0)    -> 13.010    getUnitTodBm("fW", 1.0)   -> -9999999.9
    Q_INVOKABLE double getUnitTodBm(QString sUnit, double fVal);

    /// A field value as the level in dBm that the antenna delivers. Not cut or rounded. Leaves
    /// `unit` alone. With G = fGain and D = 20 lg(fCenter / 1 MHz):
    ///
    /// | unit                                           | result                                 |
    /// |------------------------------------------------|----------------------------------------|
    /// | "dBuV/m"                                       | fVal - 77.2 + G - D                    |
    /// | "dBmV/m"                                       | fVal - 17.2 + G - D                    |
    /// | "dBV/m"                                        | fVal + 42.8 + G - D                    |
    /// | "V/m", "mV/m", "uV/m", "nV/m", "pV/m"          | 20 lg(E / 1 V/m) + (G + 42.8 - D)      |
    /// | "W/m^2", "mW/m^2", "uW/m^2", "nW/m^2","pW/m^2" | 10 lg(120 pi S) + (G + 42.8 - D)       |
    /// | "dBm/m^2"                                      | fVal + 38.56331118741759 + G - D       |
    /// | "dBW/m^2"                                      | fVal + 68.55999999999999 + G - D       |
    /// | "A/m"                                          | 20 lg(3.77e8 fVal) + (G - 77.2 - D)    |
    /// | "dBA/m"                                        | fVal + 94.33000000000001 + G - D       |
    /// | "w/cm^2" with a lower-case w                   | 10 lg(120 pi 1e4 fVal) + (G + 42.8 - D)|
    /// | any other                                      | -9999999.9                             |
    ///
    /// "W/cm^2", which getdBmToField takes, is unknown here; so are the prefixed magnetic fields
    /// and cm^2 densities ("mA/m", "uW/cm^2") and prefixes below pico or above 1, although
    /// getFieldChangeUnit produces them.
    ///
    /// @param fCenter  centre frequency in MHz; 0 or less has no logarithm: the result is infinite
    ///                 or NaN, as it is for linear values of 0 or less
    ///
    ///     getFieldTodBm("dBuV/m", 87.2, 100.0, 0.0) -> -30
    ///     getFieldTodBm("W/cm^2", 1.0, 100.0, 0.0)  -> -9999999.9
    Q_INVOKABLE double getFieldTodBm(QString sUnit, double fVal, double fCenter, double fGain);

    /// Text of the level fVal, in dBm, in a level unit, in volts or in watts. Makes the unit shown
    /// the object's `unit` first, and emits unitChanged once, also if it is the unit already.
    ///
    /// | unit      | text                                  | `unit` afterwards           |
    /// |-----------|---------------------------------------|-----------------------------|
    /// | "dBm"     | fVal, one decimal                     | "dBm"                       |
    /// | "dBV"     | fVal - 13.0103, one decimal           | "dBV"                       |
    /// | "dBmV"    | fVal + 46.9897, one decimal           | "dBmV"                      |
    /// | "dBuV"    | fVal + 106.9897, one decimal          | "dBuV"                      |
    /// | "V"       | getdBmToVolt                          | the prefixed unit it chose  |
    /// | "W"       | getdBmToWatt                          | the prefixed unit it chose  |
    /// | any other | fVal, one decimal: the unit is dropped | "dBm"                      |
    ///
    /// "Any other" includes "mV" and "mW", which only getUnitTodBm takes, field units and "".
    ///
    /// @param isUnitText  whether a blank and the unit shown are appended
    ///
    ///     getdBmToUnit("dBuV", 0.0, true) -> "107.0 dBuV"
    ///     getdBmToUnit("mV", 10.0, true)  -> "10.0 dBm", not millivolts
    Q_INVOKABLE QString getdBmToUnit(QString sUnit, double fVal, bool isUnitText);

    /// Text of the field at the antenna that delivers the level fVal, in dBm. With P = fVal and the
    /// antenna correction K = 20 lg(fCenter / 1 MHz) + (-29.8 - fGain), in dB:
    ///
    /// | unit      | text                                                          |
    /// |-----------|---------------------------------------------------------------|
    /// | "dBuV/m"  | P + 107 + K                                                   |
    /// | "dBmV/m"  | P + 47 + K                                                    |
    /// | "dBV/m"   | P - 13 + K                                                    |
    /// | "V/m"     | getFieldChangeUnit of E = 10^((P - 13 + K)/20)                |
    /// | "W/m^2"   | getFieldChangeUnit of S = 10^((P - 13 + K)/10) / (120 pi)     |
    /// | "dBm/m^2" | 10 lg(S) + 30                                                 |
    /// | "dBW/m^2" | P - 38.75999999999999 + K                                     |
    /// | "A/m"     | getFieldChangeUnit of 10^((P + 107 + K)/20) / 3.77e8          |
    /// | "dBA/m"   | P - 64.53 + K                                                 |
    /// | "W/cm^2"  | getFieldChangeUnit of 10^((P - 13 + K)/10) / (120 pi 1e4)     |
    /// | any other | 0.00; the unit, as given, is stored and shown all the same    |
    ///
    /// Levels have two decimals, where getdBmToUnit has one. They make the unit as given the
    /// object's `unit`; the linear units make it the prefixed unit that getFieldChangeUnit chose,
    /// from the value rounded to single precision. Either emits unitChanged once, except where that
    /// single is 0 (V/m below about -900 dBm, W/m^2 below about -430 dBm): then the text is empty,
    /// without a unit text too, and nothing is emitted.
    ///
    /// A frequency of 0 or less has no logarithm. Of a finite level:
    ///
    /// | fCenter  | units in dB             | V/m, W/m^2, A/m, W/cm^2                           |
    /// |----------|-------------------------|---------------------------------------------------|
    /// | 0        | "-inf", `unit` as given | empty text, `unit` stays: a field of 0            |
    /// | negative | "nan", `unit` as given  | "" or, with isUnitText, " "; `unit` becomes empty |
    ///
    /// @param fCenter     centre frequency in MHz
    /// @param fGain       antenna gain in dBi
    /// @param isUnitText  whether a blank and the unit shown are appended
    ///
    ///     getdBmToField("dBuV/m", -30.0, 100.0, 0.0, true) -> "87.20 dBuV/m"
    ///     getdBmToField("V/m", -30.0, 100.0, 0.0, true)    -> "0.02 V/m"
    ///     getdBmToField("V/m", -50.0, 100.0, 0.0, true)    -> "2.29 mV/m", `unit` "mV/m"
    ///     getdBmToField("w/cm^2", -30.0, 100.0, 0.0, true) -> "0.00 w/cm^2": unknown here
    Q_INVOKABLE QString getdBmToField(QString sUnit, double fVal, double fCenter, double fGain,
                                      bool isUnitText);

    /// Text of the level fTemp, in dBm, as a power with the letter of a prefix but without the
    /// unit: the caller appends "W". Without a prefix the text ends in the blank that stands before
    /// the unit. Leaves `unit` alone.
    ///
    /// Two decimals. Below 0.01 W the first of m, u (ASCII), n, p, f, a, z, y whose number reaches
    /// 0.01; from 1e3 W k, from 1e6 W M. From 0.01 yW down it is "0.00 ".
    ///
    ///     getDBmToW(30.0)  -> "1.00 "     getDBmToW(90.0)  -> "1.00 M"
    ///     getDBmToW(-40.0) -> "0.10 u", not "100.00 n"
    ///     getDBmToW(10.0)  -> "10.00 m", not "0.01 ", as getdBmToWatt explains
    Q_INVOKABLE QString getDBmToW(double fTemp);

    /// Text of a number followed by a blank and a unit, whatever the unit is: an empty one leaves
    /// the text with the blank at its end. Leaves `unit` alone.
    /// @param base  read with QVariant::toDouble; what is no number counts as 0
    /// @param dec   decimals; more than a million count as a million (no double has a digit other
    ///              than 0 behind the 1074th). A negative number means what it means to
    ///              QString::setNum: six decimals, or for QLocale::FloatingPointShortest as many
    ///              as the number needs
    ///
    ///     convertValUnit(3.14159)             -> "3.14 dBm"
    ///     convertValUnit("abc", 1, "V")       -> "0.0 V"
    ///     convertValUnit(1.0, 0, QString())   -> "1 "
    Q_INVOKABLE QString convertValUnit(QVariant base, int dec = 2,
                                       QString unit = QStringLiteral("dBm"));

    /// Width of a text in pixels: its advance in the font "Noto Sans UI", or what the system puts
    /// in its place. Needs a QGuiApplication; without one the answer is 0.
    /// @param pixelSize  of the font. 0 or less leaves the font at its default point size, with a
    ///                   warning from Qt; beyond 65535 Qt measures a stand-in of a fixed size
    /// @param str        the whole text; empty gives 0 without a font being made
    Q_INVOKABLE int getStringWidth(const int& pixelSize, const QString& str);

    /// Voltage text of a level across 50 ohm, U[mV] = 10^((dBm + 46.9897) / 20), with two decimals,
    /// in the first of V, mV, µV, nV, pV, fV in which it is at least 0.01. Makes that the object's
    /// `unit`; emits unitChanged once.
    ///
    /// Above 100 V the number is in kilovolts while the unit stays "V". Below 0.01 fV the text is
    /// "0.00" in "V".
    ///
    ///     getdBmToVolt(30.0, true)  -> "7.07 V"     getdBmToVolt(63.0, true)   -> "0.32 V"
    ///     getdBmToVolt(-50.0, true) -> "0.71 mV"    getdBmToVolt(-400.0, true) -> "0.00 V"
    QString getdBmToVolt(double dBm, bool isUnitText);

    /// Power text of a level, P[W] = 10^((dBm - 30) / 10), with two decimals, in the first of W,
    /// mW, µW, nW, pW, fW, aW, zW, yW in which it comes out as 0.01 or more. Makes that the object's
    /// `unit`; emits unitChanged once.
    ///
    /// Exactly a hundredth of a unit falls to the next smaller one: 10^x is formed as
    /// exp(2.302585092994046 x), and that constant, the double nearest to ln 10, is a little more
    /// than it. 10^-2 comes out as 0.009999999999999995, which does not reach 0.01. So 10 dBm is
    /// "10.00 mW", not "0.01 W", -20 dBm is "10.00 µW", and -230 dBm, exactly 0.01 yW, "0.00 W".
    /// Volts compare 10 of the next smaller unit instead, and 10^1 comes out as 10.000000000000002:
    /// -26.9897 dBm is "0.01 V".
    ///
    /// From 1000 W the number is in kilowatts, from 1e6 W in megawatts, while the unit stays "W".
    /// From 0.01 yW down the text is "0.00" in "W".
    ///
    ///     getdBmToWatt(60.0, true)   -> "1.00 W", a kilowatt
    ///     getdBmToWatt(10.0, true)   -> "10.00 mW"
    ///     getdBmToWatt(-60.0, true)  -> "1.00 nW"
    ///     getdBmToWatt(-40.0, true)  -> "0.10 µW", not "100.00 nW"
    QString getdBmToWatt(double dBm, bool isUnitText);

    /// A voltage across 50 ohm as a level: 20 lg(U / 1 mV) - 46.9897 dBm, cut to three decimals.
    /// @param unit   "V", "mV", "µV", "nV" or "pV"; any other, "fV" too, gives 0
    /// @param value  0 gives -2147483.648, a negative one 0: the cut of what the logarithm gives
    ///
    ///     getVoltTodBm("V", 1.0) -> 13.010    getVoltTodBm("uV", 1.0) -> 0
    double getVoltTodBm(const QString& unit, const double& value);

    /// A power as a level: 10 lg(P / 1 W) + 30 dBm, cut to three decimals.
    /// @param unit   "W", "mW", "µW", "nW" or "pW"; any other, "fW" too, gives 0
    /// @param value  0 gives -2147483.648, a negative one 0: the cut of what the logarithm gives
    ///
    ///     getWattTodBm("W", 1.0) -> 30.0    getWattTodBm("nW", 1.0) -> -60.0
    double getWattTodBm(const QString& unit, const double& value);

    /// A field strength in V/m; despite the name, not a level. Nothing is cut.
    /// @param unit  "V/m", "mV/m", "uV/m", "nV/m" or "pV/m"; any other gives 0
    ///
    ///     getVoltmtodBm("mV/m", 2.5) -> 0.0025
    double getVoltmtodBm(const QString& unit, const double& value);

    /// A power density in W/m^2; despite the name, not a level. Nothing is cut.
    /// @param unit  "W/m^2", "mW/m^2", "uW/m^2", "nW/m^2" or "pW/m^2"; any other, "W/cm^2" too,
    ///              gives 0
    double getWattmmTodBm(const QString& unit, const double& value);

    /// Text of a linear field value with the prefix that suits it, put in front of any unit. Makes
    /// the prefixed unit the object's `unit`, and emits unitChanged once.
    ///
    /// | magnitude   | prefix | decimals | products formed in                          |
    /// |-------------|--------|----------|---------------------------------------------|
    /// | from 1e9    | G      | 1        | single precision                            |
    /// | from 1e6    | M      | 1        | single precision                            |
    /// | from 1000   | k      | 2        | single precision                            |
    /// | from 0.01   | none   | 2        |                                             |
    /// | from 1e-5   | m      | 2        | double precision, then rounded to single    |
    /// | from 1e-8   | u      | 2        | likewise                                    |
    /// | from 1e-11  | n      | 2        | likewise                                    |
    /// | from 1e-14  | p      | 2        | likewise                                    |
    /// | from 1e-17  | f      | 2        | likewise                                    |
    /// | from 1e-20  | a      | 2        | likewise                                    |
    /// | from 1e-23  | z      | 2        | likewise                                    |
    /// | from 1e-26  | y      | 2        | likewise                                    |
    /// | below, NaN  |        |          | no number; the unit becomes the empty text  |
    ///
    /// The letters are ASCII. Thresholds are compared in double precision: the single nearest to
    /// 0.01 lies just below it and reads "10.00 m". The value 0 gives an empty text at once,
    /// without unit or signal.
    ///
    ///     getFieldChangeUnit("V/m", 0.00229F, true)  -> "2.29 mV/m"
    ///     getFieldChangeUnit("V/m", -0.5F, false)    -> "-0.50", `unit` "V/m"
    ///     getFieldChangeUnit("V/m", 2.5e9F, true)    -> "2.5 GV/m"
    ///     getFieldChangeUnit("V/m", 1e-30F, true)    -> " ", `unit` ""
    ///     getFieldChangeUnit("V/m", 0.0F, true)      -> "", `unit` as before
    QString getFieldChangeUnit(QString unit, float value, bool isUnitText);

    /// A value cut toward zero after some decimals: multiplied by 10 `digits` times, truncated to
    /// 32 bits, and multiplied by 0.1 as many times. The three last steps may leave a last digit of
    /// their own: 1.234 comes out as 1234 * 0.1 * 0.1 * 0.1.
    ///
    /// Beyond 2147483647 the scaled value saturates, so with three digits everything beyond
    /// 2147483.647 does; NaN gives 0.
    /// @param digits  0 or less cuts to an integer
    ///
    ///     mathRoundOff(1.23456, 3)  -> 1.234    mathRoundOff(-1.9, 0) -> -1.0
    ///     mathRoundOff(-1.23456, 3) -> -1.234   mathRoundOff(1e9, 3)  -> 2147483.647
    double mathRoundOff(double value, int digits);

public Q_SLOTS:
    /// The unit last shown or set.
    QString unit();

    /// Stores a unit, any text, and emits unitChanged, also if it is the unit already. The one way
    /// by which the unit changes: the property and all texts above go through it.
    void setUnit(const QString& val);

Q_SIGNALS:
    void unitChanged();

private:
    QString unit_;
};

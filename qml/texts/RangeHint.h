#pragma once

#include <QObject>
#include <QString>

#include <limits>

namespace rfu::qml {

/// The range of a parameter as a text, such as "{Min: -10.00 dBm, Max: 20.00 dBm}".
///
///     RangeHint { id: range; type: RangeHint.Dbuv; min: -30; max: 0 }
///     Text { text: range.text }    // {Min: 77.0 dBuV, Max: 107.0 dBuV}
class RangeHint : public QObject {
    Q_OBJECT
    /// How the limits are shown; Plain at first.
    Q_PROPERTY(Type type READ type WRITE setType NOTIFY typeChanged)
    /// The lower limit: MHz for Frequency, dBm for the units from Dbv to DbmPerSquareMeter, else a
    /// number in the unit shown. NaN, as at first, for none.
    Q_PROPERTY(double min READ min WRITE setMin NOTIFY minChanged)
    /// The upper limit, as the lower one.
    Q_PROPERTY(double max READ max WRITE setMax NOTIFY maxChanged)
    /// Whether the parameter is a whole number. Its limits are cut to whole numbers of 32 bits and
    /// shown without decimals; of the types, Db, Microseconds, Seconds, Nanoseconds and Percent then
    /// have a unit, Empty an empty text.
    Q_PROPERTY(bool integer READ isInteger WRITE setInteger NOTIFY integerChanged)
    /// The antenna's centre frequency in MHz for the fields, from DbuvPerMeter to DbmPerSquareMeter.
    /// NaN at first.
    Q_PROPERTY(double frequency READ frequency WRITE setFrequency NOTIFY frequencyChanged)
    /// The antenna's gain in dBi for the fields. 0 at first.
    Q_PROPERTY(double gain READ gain WRITE setGain NOTIFY gainChanged)
    /// The text; empty while a limit is missing, or for a field the frequency.
    Q_PROPERTY(QString text READ text NOTIFY textChanged)

public:
    /// How limits are shown. The numbers are the codes of the instrument.
    enum Type {
        Frequency = 0,            ///< MHz, as RfUnits::frequencyText shows them
        Db = 1,                   ///< dB
        Dbm = 2,                  ///< dBm
        Plain = 3,                ///< without a unit
        Microseconds = 4,         ///< µs
        Seconds = 6,              ///< Sec; without a unit unless `integer` is true
        Nanoseconds = 7,          ///< ns
        Percent = 8,              ///< %
        Dbi = 9,                  ///< dBi
        Dbv = 11,                 ///< dBm shown in dBV
        Dbmv = 12,                ///< dBm shown in dBmV
        Dbuv = 13,                ///< dBm shown in dBuV
        Volt = 14,                ///< dBm shown in V, with a prefix
        Watt = 15,                ///< dBm shown in W, with a prefix
        DbuvPerMeter = 16,        ///< dBm shown in dBuV/m
        DbmvPerMeter = 17,        ///< dBm shown in dBmV/m
        DbvPerMeter = 18,         ///< dBm shown in dBV/m
        VoltPerMeter = 19,        ///< dBm shown in V/m, with a prefix
        WattPerSquareMeter = 20,  ///< dBm shown in W/m^2, with a prefix
        DbmPerSquareMeter = 21,   ///< dBm shown in dBm/m^2
        Ppm = 22,                 ///< ppm
        Empty = 23                ///< an empty text
    };
    Q_ENUM(Type)

    /// @cond notify signals
Q_SIGNALS:
    void typeChanged();
    void minChanged();
    void maxChanged();
    void integerChanged();
    void frequencyChanged();
    void gainChanged();
    void textChanged();
    /// @endcond

private:
    Type type() const { return type_; }
    void setType(Type type);
    double min() const { return min_; }
    void setMin(double min);
    double max() const { return max_; }
    void setMax(double max);
    bool isInteger() const { return isInteger_; }
    void setInteger(bool isInteger);
    double frequency() const { return frequency_; }
    void setFrequency(double frequency);
    double gain() const { return gain_; }
    void setGain(double gain);
    QString text() const { return text_; }

    QString textNow() const;
    /// Reports a property that has changed, and the text if it has changed with it.
    void report(void (RangeHint::*changed)());

    Type type_ = Plain;
    double min_ = std::numeric_limits<double>::quiet_NaN();
    double max_ = std::numeric_limits<double>::quiet_NaN();
    double frequency_ = std::numeric_limits<double>::quiet_NaN();
    double gain_ = 0.0;
    bool isInteger_ = false;
    QString text_;
};

}  // namespace rfu::qml

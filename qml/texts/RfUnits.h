#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

namespace rfu::qml {

/// The units, and texts of numbers that have no unit to choose. A singleton:
///
///     ComboBox { model: [].concat(RfUnits.levelUnits, RfUnits.fieldUnits) }
class RfUnits : public QObject {
    Q_OBJECT
    /// The units that levels are shown in without an antenna, from "dBm" to "W".
    Q_PROPERTY(QStringList levelUnits READ levelUnits CONSTANT)
    /// The units that levels are shown in as fields at an antenna of known frequency and gain, from
    /// "dBuV/m" to "W/cm^2".
    Q_PROPERTY(QStringList fieldUnits READ fieldUnits CONSTANT)
    /// The units that LevelEntry reads, prefixed ones such as "mV" among them.
    Q_PROPERTY(QStringList entryUnits READ entryUnits CONSTANT)

public:
    /// Tells what a unit measures.
    /// @param unit  name of a unit, also of one that comes about by a prefix, such as "kV/m"
    /// @return "level", "voltage", "power", "field strength level", "field strength", "power density
    ///         level", "power density", "magnetic field level" or "magnetic field"; empty for
    ///         another text
    Q_INVOKABLE QString quantity(const QString& unit) const;

    /// Tells whether a unit refers to an antenna: LevelText, LevelEntry and RangeHint then need its
    /// `frequency` and `gain`.
    /// @param unit  name of a unit, as for quantity()
    /// @return false for another text too
    Q_INVOKABLE bool isField(const QString& unit) const;

    /// Shows a frequency: nine decimals above 1 GHz, six of MHz, three of kHz, whole Hz.
    ///
    ///     frequencyText(2400) -> "2.400000000 GHz"    frequencyText(0.5) -> "500.000 kHz"
    ///
    /// @param frequency  in MHz
    /// @return the text; "--" for a number that is not finite
    Q_INVOKABLE QString frequencyText(double frequency) const;

    /// Shows a frequency width in at most six digits.
    ///
    ///     widthText(1500) -> "1.5GHz"    widthText(0.03) -> "30kHz"
    ///
    /// @param width  in MHz
    /// @return the text; "--" for a number that is not finite
    Q_INVOKABLE QString widthText(double width) const;

    /// Shows an angle in degrees, minutes and seconds. Fractions of a second are cut, not rounded.
    ///
    ///     angleText(12.5) -> "12° 30′ 0″"    angleText(-33.8688) -> "-33° 52′ 7″"
    ///
    /// @param angle  in degrees
    /// @return the text; "--" for a number that is not finite
    Q_INVOKABLE QString angleText(double angle) const;

private:
    QStringList levelUnits() const;
    QStringList fieldUnits() const;
    QStringList entryUnits() const;
};

}  // namespace rfu::qml

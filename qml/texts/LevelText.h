#pragma once

#include <QObject>
#include <QString>

#include <limits>

namespace rfu::qml {

/// A level as a text in the unit that the operator chose.
///
///     LevelText { id: power; level: -50; unit: "V" }
///     Text { text: power.text }    // 0.71 mV
///
/// The prefix of a linear unit follows from the level and is in `shownUnit`; `unit` stays as it was
/// chosen.
class LevelText : public QObject {
    Q_OBJECT
    /// The level in dBm. NaN, as at first, for none.
    Q_PROPERTY(double level READ level WRITE setLevel NOTIFY levelChanged)
    /// The unit chosen, one of RfUnits::levelUnits and RfUnits::fieldUnits; "dBm" at first. Only
    /// the page writes it.
    Q_PROPERTY(QString unit READ unit WRITE setUnit NOTIFY unitChanged)
    /// The antenna's centre frequency in MHz, for field units. NaN at first.
    Q_PROPERTY(double frequency READ frequency WRITE setFrequency NOTIFY frequencyChanged)
    /// The antenna's gain in dBi, for field units. 0 at first.
    Q_PROPERTY(double gain READ gain WRITE setGain NOTIFY gainChanged)
    /// Whether `text` ends in the unit. True at first.
    Q_PROPERTY(bool showUnit READ showsUnit WRITE setShowUnit NOTIFY showUnitChanged)
    /// The number with its unit, such as "0.71 mV", or without it; "--" unless `valid` is true.
    Q_PROPERTY(QString text READ text NOTIFY textChanged)
    /// The number alone, for a label of its own; "--" unless `valid` is true.
    Q_PROPERTY(QString number READ number NOTIFY numberChanged)
    /// The unit of the number with its prefix, such as "mV"; empty unless `valid` is true.
    Q_PROPERTY(QString shownUnit READ shownUnit NOTIFY shownUnitChanged)
    /// Whether there is a text: the level is finite, the unit known, for a field unit the frequency
    /// above 0, and a linear field not too small for any prefix.
    Q_PROPERTY(bool valid READ isValid NOTIFY validChanged)
    /// Whether the text leaves a large prefix out, `prefixLeftOut`. The instrument shows kilovolts
    /// above 100 V, kilowatts from 1 kW and megawatts from 1 MW under the labels V and W.
    Q_PROPERTY(bool kilo READ isKilo NOTIFY kiloChanged)
    /// The prefix left out, "k" or "M"; empty where there is none.
    Q_PROPERTY(QString prefixLeftOut READ prefixLeftOut NOTIFY prefixLeftOutChanged)

    /// @cond notify signals
Q_SIGNALS:
    void levelChanged();
    void unitChanged();
    void frequencyChanged();
    void gainChanged();
    void showUnitChanged();
    void textChanged();
    void numberChanged();
    void shownUnitChanged();
    void validChanged();
    void kiloChanged();
    void prefixLeftOutChanged();
    /// @endcond

public:
    /// A text without level.
    LevelText();

private:
    double level() const { return level_; }
    void setLevel(double level);
    QString unit() const { return unit_; }
    void setUnit(const QString& unit);
    double frequency() const { return frequency_; }
    void setFrequency(double frequency);
    double gain() const { return gain_; }
    void setGain(double gain);
    bool showsUnit() const { return showsUnit_; }
    void setShowUnit(bool showsUnit);
    QString text() const { return shown_.text; }
    QString number() const { return shown_.number; }
    QString shownUnit() const { return shown_.unit; }
    bool isValid() const { return shown_.isValid; }
    bool isKilo() const { return !shown_.prefixLeftOut.isEmpty(); }
    QString prefixLeftOut() const { return shown_.prefixLeftOut; }

    struct Shown {
        QString text;
        QString number;
        QString unit;
        QString prefixLeftOut;
        bool isValid = false;
    };
    Shown shownNow() const;
    /// Reports a property that has changed, and what has changed with it.
    void report(void (LevelText::*changed)());

    double level_ = std::numeric_limits<double>::quiet_NaN();
    QString unit_ = QStringLiteral("dBm");
    double frequency_ = std::numeric_limits<double>::quiet_NaN();
    double gain_ = 0.0;
    bool showsUnit_ = true;
    Shown shown_;
};

}  // namespace rfu::qml

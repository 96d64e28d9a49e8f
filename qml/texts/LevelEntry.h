#pragma once

#include <QString>
#include <QValidator>

#include <limits>

namespace rfu::qml {

/// Reads the level that an operator enters, as the validator of a text field and the converter of
/// its text.
///
///     TextField { id: field; validator: LevelEntry { id: entry; text: field.text; unit: "dBuV" } }
///     Text { text: entry.hint }
///
/// A number without a unit is in `unit`, one with a unit in that: "500 mV", "-30dBm", "7 uV".
/// RfUnits::entryUnits are read; micro may be written u, U+00B5 or U+03BC. Numbers have a decimal
/// point in every locale.
class LevelEntry : public QValidator {
    Q_OBJECT
    /// The text entered.
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    /// The unit of a number without one, and of the limits in `hint`; "dBm" at first.
    Q_PROPERTY(QString unit READ unit WRITE setUnit NOTIFY unitChanged)
    /// The antenna's centre frequency in MHz, for field units. NaN at first.
    Q_PROPERTY(double frequency READ frequency WRITE setFrequency NOTIFY frequencyChanged)
    /// The antenna's gain in dBi, for field units. 0 at first.
    Q_PROPERTY(double gain READ gain WRITE setGain NOTIFY gainChanged)
    /// The lowest level accepted, in dBm. NaN, as at first, for any.
    Q_PROPERTY(double min READ min WRITE setMin NOTIFY minChanged)
    /// The highest level accepted, in dBm. NaN, as at first, for any.
    Q_PROPERTY(double max READ max WRITE setMax NOTIFY maxChanged)
    /// The level entered in dBm, NaN where the text gives none. It is cut to three decimals, as the
    /// instrument cuts entries, but in dBm and in field units. A number that is beyond a limit only
    /// because the limit is shown rounded counts as the limit: 0 dBm is shown as 107.0 dBuV, and 107
    /// is 0.01 dBm.
    Q_PROPERTY(double level READ level NOTIFY levelChanged)
    /// Whether the text gives a level within the limits.
    Q_PROPERTY(bool acceptable READ isAcceptable NOTIFY acceptableChanged)
    /// Why the text is not acceptable, in a line; empty where it is, and for an empty text.
    Q_PROPERTY(QString hint READ hint NOTIFY hintChanged)

    /// @cond notify signals
Q_SIGNALS:
    void textChanged();
    void unitChanged();
    void frequencyChanged();
    void gainChanged();
    void minChanged();
    void maxChanged();
    void levelChanged();
    void acceptableChanged();
    void hintChanged();
    /// @endcond

private:
    QString text() const { return text_; }
    void setText(const QString& text);
    QString unit() const { return unit_; }
    void setUnit(const QString& unit);
    double frequency() const { return frequency_; }
    void setFrequency(double frequency);
    double gain() const { return gain_; }
    void setGain(double gain);
    double min() const { return min_; }
    void setMin(double min);
    double max() const { return max_; }
    void setMax(double max);
    double level() const { return result_.level; }
    bool isAcceptable() const { return result_.isAcceptable; }
    QString hint() const { return result_.hint; }

    /// Whatever is not acceptable may become so by further typing.
    State validate(QString& input, int& position) const override;

    struct Result {
        double level = std::numeric_limits<double>::quiet_NaN();
        bool isAcceptable = false;
        QString hint;
    };
    Result read(const QString& text) const;
    Result withinLimits(double level) const;
    /// A limit as a text, and the level that this text reads as.
    struct ShownLimit {
        QString text;
        double level;
    };
    ShownLimit shown(double limit) const;
    /// Reports a property that has changed, and what has changed with it.
    void report(void (LevelEntry::*reported)());

    QString text_;
    QString unit_ = QStringLiteral("dBm");
    double frequency_ = std::numeric_limits<double>::quiet_NaN();
    double gain_ = 0.0;
    double min_ = std::numeric_limits<double>::quiet_NaN();
    double max_ = std::numeric_limits<double>::quiet_NaN();
    Result result_;
};

}  // namespace rfu::qml

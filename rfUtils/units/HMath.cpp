#include <rfUtils/units/HMath.h>

#include <rfUtils/detail/exactDecimal.h>
#include <rfUtils/detail/fixedText.h>
#include <rfUtils/detail/saturate.h>
#include <rfUtils/units/detail/decibel.h>
#include <rfUtils/units/unitTable.h>

#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QStringBuilder>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <iterator>
#include <string_view>
#include <utility>

// The field texts show products that were rounded to single precision.
static_assert(FLT_EVAL_METHOD == 0, "float products have to be rounded to float");

using rfu::findUnit;
using rfu::FromDbm;
using rfu::kDbmOfOneWatt;
using rfu::LargePrefix;
using rfu::SmallPrefix;
using rfu::ToDbm;
using rfu::Unit;
using rfu::detail::amplitudeRatio;
using rfu::detail::antennaCorrection;
using rfu::detail::decibelOfAmplitude;
using rfu::detail::decibelOfPower;
using rfu::detail::FixedText;
using rfu::detail::kLongestExactDecimal;
using rfu::detail::powerOfTen;
using rfu::detail::powerRatio;
using rfu::detail::Ties;
using rfu::detail::toFloat;
using rfu::detail::toInt32;
using rfu::detail::writeExactDecimal;

namespace {

constexpr double kSmallestShown = 0.01;       // what two decimals can show
constexpr double kLargestInVolts = 100000.0;  // in mV; larger voltages are shown in kilovolts
constexpr int kDecimals = 3;                  // of a level that was converted back
constexpr int kMostDecimals = 1000000;        // Qt ends the process where too many are asked for

QString printed(double value, int decimals) {
    const FixedText text(value, decimals);
    return QString::fromLatin1(text.view().data(), static_cast<int>(text.view().size()));
}

QString withUnit(QString text, const QString& unit) {
    text += QLatin1Char(' ');
    text += unit;
    return text;
}

/// Makes `unit` the object's unit, then ends the text.
QString shown(HMath& math, std::string_view number, const QString& unit, bool isUnitText) {
    math.setUnit(unit);
    const QLatin1String text(number.data(), static_cast<int>(number.size()));
    // A text that is built of its parts is allocated once.
    return isUnitText ? QString(text % QLatin1Char(' ') % unit) : QString(text);
}

/// The same of a level, whose number is that of QString::setNum.
QString shownLevel(HMath& math, double level, int decimals, const QString& unit, bool isUnitText) {
    char buffer[kLongestExactDecimal];
    char* const end = std::end(buffer);
    if (const char* const text = writeExactDecimal(end, level, decimals, Ties::AwayFromZero)) {
        return shown(math, {text, static_cast<std::size_t>(end - text)}, unit, isUnitText);
    }
    const QByteArray text = QString::number(level, 'f', decimals).toLatin1();
    return shown(math, {text.constData(), static_cast<std::size_t>(text.size())}, unit, isUnitText);
}

FromDbm fromDbmRule(const Unit* unit) noexcept {
    return unit == nullptr ? FromDbm::Unknown : unit->fromDbm.rule;
}

ToDbm toDbmRule(const Unit* unit) noexcept {
    return unit == nullptr ? ToDbm::Unknown : unit->toDbm.rule;
}

/// The row of a ladder's base unit.
constexpr const Unit* baseOf(FromDbm ladder) noexcept {
    const Unit* unit = rfu::kUnits;
    while (unit->fromDbm.rule != ladder) {
        ++unit;
    }
    return unit;
}

constexpr const Unit* kVolt = baseOf(FromDbm::VoltLadder);
constexpr const Unit* kWatt = baseOf(FromDbm::WattLadder);

/// What a number has to reach in a step of a ladder.
struct Threshold {
    double number;
    double logarithm;  ///< decimal
};

/// Whether 10^x may reach a threshold. A millionth below its logarithm the power of ten is two
/// millionths of it too small, which is far beyond the error of any exponential.
bool mayReach(Threshold threshold, double x) noexcept {
    return !(x < threshold.logarithm - 1e-6);
}

/// A unit of a ladder, and the number in it.
struct Step {
    const Unit* unit;
    double number;
};

/// The first unit of a ladder whose number reaches the threshold; the base unit if none does.
/// @param level plus the offset of a unit it is the decimal logarithm of the number in it
Step firstStep(const Unit* base, double level, Threshold threshold) noexcept {
    for (const Unit* unit = base; unit != std::end(rfu::kUnits) && unit->quantity == base->quantity;
         ++unit) {
        const double x = level + unit->fromDbm.offset;
        if (!mayReach(threshold, x)) {
            continue;
        }
        const double number = powerOfTen(x);
        if (number >= threshold.number) {
            return {unit, number};
        }
    }
    return {base, powerOfTen(level)};
}

/// Decimal logarithm of a power in watts.
double wattLevel(double dBm) noexcept {
    return (dBm - kDbmOfOneWatt) * 0.1;
}

/// Watts brought to megawatts or kilowatts where they are that many, and the prefix with its blank.
struct ReducedWatts {
    double number;
    const char* ending;
};

ReducedWatts reducedWatts(double watts) noexcept {
    if (watts >= 1e6) {
        return {watts * 1e-6, " M"};
    }
    if (watts >= 1000.0) {
        return {watts * 0.001, " k"};
    }
    return {watts, " "};
}

/// `value` times `factor`, `times` times. Stops where the value no longer changes.
double repeatedProduct(double value, double factor, int times) noexcept {
    for (int i = 0; i < times; ++i) {
        const double next = value * factor;
        if (next == value || std::isnan(next)) {
            return next;
        }
        value = next;
    }
    return value;
}

/// A value of a prefixed unit in its base unit; 0 if the unit does not belong to the rule.
double inBaseUnit(ToDbm rule, const QString& unit, double value) noexcept {
    const Unit* const known = findUnit(unit);
    return toDbmRule(known) == rule ? value * known->toDbm.factor : 0.0;
}

/// A linear field value as it is shown: none where it is too small for the smallest prefix or is not
/// a number.
struct FieldNumber {
    bool isShown;
    double number;
    int decimals;
    char prefix;  ///< 0 for none
};

FieldNumber prefixedField(float value) noexcept {
    const double magnitude = std::fabs(value);
    if (magnitude >= kSmallestShown) {
        for (const LargePrefix& prefix : rfu::kLargePrefixes) {
            if (magnitude >= prefix.threshold) {
                return {true, value * prefix.factor, prefix.decimals, prefix.letter};
            }
        }
        return {true, value, 2, 0};
    }
    for (const SmallPrefix& prefix : rfu::kSmallPrefixes) {
        if (magnitude >= prefix.threshold) {
            return {true, toFloat(value * prefix.factor), 2, prefix.letter};
        }
    }
    return {false, 0.0, 0, 0};
}

}  // namespace

HMath::HMath(QObject* parent) : QObject(parent) {}

HMath::~HMath() = default;

QString HMath::unit() {
    return unit_;
}

void HMath::setUnit(const QString& val) {
    unit_ = val;
    Q_EMIT unitChanged();
}

QString HMath::getdBmToUnit(QString sUnit, double fVal, bool isUnitText) {
    const Unit* const unit = findUnit(sUnit);
    switch (fromDbmRule(unit)) {
        case FromDbm::Level:
            return shownLevel(*this, fVal + unit->fromDbm.offset, 1, sUnit, isUnitText);
        case FromDbm::VoltLadder:
            return getdBmToVolt(fVal, isUnitText);
        case FromDbm::WattLadder:
            return getdBmToWatt(fVal, isUnitText);
        default:  // dBm, and everything that this operation does not take
            return shownLevel(*this, fVal, 1, QStringLiteral("dBm"), isUnitText);
    }
}

QString HMath::getdBmToVolt(double dBm, bool isUnitText) {
    const double level = (dBm + rfu::kDbmvOfZeroDbm) * 0.05;
    // Two decimals show a hundredth, which is 10 of the next smaller unit.
    const Step step = firstStep(kVolt, level, {10.0, 1.0});
    double volts = step.number * 0.001;
    if (step.unit == kVolt && step.number > kLargestInVolts) {
        volts *= 0.001;  // kilovolts from here on, under the label V
    }
    return shown(*this, FixedText(volts, 2).view(), step.unit->name.toString(), isUnitText);
}

QString HMath::getdBmToWatt(double dBm, bool isUnitText) {
    const Step step = firstStep(kWatt, wattLevel(dBm), {kSmallestShown, -2.0});
    // kilowatts and megawatts are shown under the label W
    const double watts = step.unit == kWatt ? reducedWatts(step.number).number : step.number;
    return shown(*this, FixedText(watts, 2).view(), step.unit->name.toString(), isUnitText);
}

QString HMath::getDBmToW(double fTemp) {
    const double level = wattLevel(fTemp);
    const double watts = powerOfTen(level);
    if (watts < kSmallestShown) {
        for (const SmallPrefix& prefix : rfu::kSmallPrefixes) {
            const double number = powerOfTen(level + prefix.decades);
            if (number >= kSmallestShown) {
                return printed(number, 2) + QLatin1Char(' ') + QLatin1Char(prefix.letter);
            }
        }
    }
    const ReducedWatts reduced = reducedWatts(watts);
    return printed(reduced.number, 2) + QLatin1String(reduced.ending);
}

double HMath::mathRoundOff(double value, int digits) {
    value = repeatedProduct(value, 10.0, digits);
    return repeatedProduct(toInt32(value), 0.1, digits);
}

double HMath::getUnitTodBm(QString sUnit, double fVal) {
    const Unit* const unit = findUnit(sUnit);
    switch (toDbmRule(unit)) {
        case ToDbm::Unchanged:
            return fVal;
        case ToDbm::Level:
            return fVal == unit->toDbm.pinned ? rfu::kPinnedLevel
                                              : mathRoundOff(fVal + unit->toDbm.offset, kDecimals);
        case ToDbm::Volt:
            return getVoltTodBm(sUnit, fVal);
        case ToDbm::Watt:
            return getWattTodBm(sUnit, fVal);
        default:
            return rfu::kUnknownUnit;
    }
}

double HMath::getVoltTodBm(const QString& unit, const double& value) {
    const Unit* const known = findUnit(unit);
    if (toDbmRule(known) != ToDbm::Volt) {
        return 0.0;
    }
    const double millivolts = value * known->toDbm.factor;
    return mathRoundOff(decibelOfAmplitude(millivolts) - rfu::kDbmvOfZeroDbm, kDecimals);
}

double HMath::getWattTodBm(const QString& unit, const double& value) {
    const Unit* const known = findUnit(unit);
    if (toDbmRule(known) != ToDbm::Watt) {
        return 0.0;
    }
    const double watts = value * known->toDbm.factor;
    return mathRoundOff(decibelOfPower(watts) + kDbmOfOneWatt, kDecimals);
}

double HMath::getVoltmtodBm(const QString& unit, const double& value) {
    return inBaseUnit(ToDbm::VoltPerMetre, unit, value);
}

double HMath::getWattmmTodBm(const QString& unit, const double& value) {
    return inBaseUnit(ToDbm::WattPerSquareMetre, unit, value);
}

QString HMath::getdBmToField(QString sUnit, double fVal, double fCenter, double fGain,
                             bool isUnitText) {
    const Unit* const unit = findUnit(sUnit);
    const FromDbm rule = fromDbmRule(unit);
    const Unit::Forward forward = unit == nullptr ? Unit::Forward{rule} : unit->fromDbm;
    const double level = fVal + forward.offset + antennaCorrection(fCenter, fGain);
    double number = 0.0;
    switch (rule) {
        case FromDbm::FieldLevel:
            number = level;
            break;
        case FromDbm::FieldLevelOfPower:
            number = decibelOfPower(powerRatio(level) * forward.factor) + kDbmOfOneWatt;
            break;
        case FromDbm::FieldAmplitude:
            return getFieldChangeUnit(sUnit, toFloat(amplitudeRatio(level) * forward.factor),
                                      isUnitText);
        case FromDbm::FieldPower:
            return getFieldChangeUnit(sUnit, toFloat(powerRatio(level) * forward.factor),
                                      isUnitText);
        default:  // the number stays 0, the unit is stored as it was given
            break;
    }
    return shownLevel(*this, number, 2, sUnit, isUnitText);
}

double HMath::getFieldTodBm(QString sUnit, double fVal, double fCenter, double fGain) {
    const Unit* const unit = findUnit(sUnit);
    if (unit == nullptr) {
        return rfu::kUnknownUnit;
    }
    const Unit::Backward& back = unit->toDbm;
    const double frequencyTerm = decibelOfAmplitude(fCenter);
    const double antennaTerm = fGain + back.offset - frequencyTerm;
    switch (back.rule) {
        case ToDbm::FieldLevel:
            return fVal + back.offset + fGain - frequencyTerm;
        case ToDbm::VoltPerMetre:
        case ToDbm::AmperePerMetre:
            return decibelOfAmplitude(fVal * back.factor) + antennaTerm;
        case ToDbm::WattPerSquareMetre:
            return decibelOfPower(rfu::kImpedance * (fVal * back.factor)) + antennaTerm;
        case ToDbm::WattPerSquareCentimetre:
            return decibelOfPower(fVal * back.factor) + antennaTerm;
        default:
            return rfu::kUnknownUnit;
    }
}

QString HMath::getFieldChangeUnit(QString unit, float value, bool isUnitText) {
    if (value == 0.0F) {
        return {};
    }
    const FieldNumber field = prefixedField(value);
    if (!field.isShown) {
        return shown(*this, {}, QString(), isUnitText);
    }
    return shown(*this, FixedText(field.number, field.decimals).view(),
                 field.prefix == 0 ? unit : QString(QLatin1Char(field.prefix) % unit), isUnitText);
}

QString HMath::convertValUnit(QVariant base, int dec, QString unit) {
    return withUnit(QString::number(base.toDouble(), 'f', std::min(dec, kMostDecimals)), unit);
}

int HMath::getStringWidth(const int& pixelSize, const QString& str) {
    if (str.isEmpty() || qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) {
        return 0;
    }
    QFont font(QStringLiteral("Noto Sans UI"));
    font.setPixelSize(pixelSize);
    return QFontMetrics(font).horizontalAdvance(str);
}

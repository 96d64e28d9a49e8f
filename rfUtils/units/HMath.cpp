#include <rfUtils/units/HMath.h>

#include <rfUtils/detail/exactDecimal.h>
#include <rfUtils/detail/fixedText.h>
#include <rfUtils/detail/saturate.h>
#include <rfUtils/units/detail/conversion.h>
#include <rfUtils/units/unitTable.h>

#include <QByteArray>
#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QStringBuilder>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <string_view>

// The field texts show products that were rounded to single precision.
static_assert(FLT_EVAL_METHOD == 0, "float products have to be rounded to float");

using rfu::findUnit;
using rfu::kDbmOfOneWatt;
using rfu::kPrefixes;
using rfu::Prefix;
using rfu::Quantity;
using rfu::ToDbm;
using rfu::Unit;
using rfu::detail::antennaCorrection;
using rfu::detail::decibelOfAmplitude;
using rfu::detail::FixedText;
using rfu::detail::fromDbm;
using rfu::detail::kMaxExactLength;
using rfu::detail::levelBeforeOffset;
using rfu::detail::powerOfTen;
using rfu::detail::Ties;
using rfu::detail::toFloat;
using rfu::detail::toInt32;
using rfu::detail::writeExactDecimal;

namespace {

constexpr double kMinShown = 0.01;           // two decimals show nothing smaller
constexpr double kMaxMillivolts = 100000.0;  // larger voltages are shown in kilovolts
constexpr int kLevelDecimals = 3;            // of a level that was read
constexpr int kMaxDecimals = 1000000;        // Qt ends the process if asked for many more

QString printed(double value, int decimals) {
    const FixedText text(value, decimals);
    return QString::fromLatin1(text.view().data(), static_cast<int>(text.view().size()));
}

/// Makes `unit` the object's unit, then completes the text.
QString shown(HMath& math, std::string_view number, const QString& unit, bool isUnitText) {
    math.setUnit(unit);
    const QLatin1String text(number.data(), static_cast<int>(number.size()));
    // A text that is built of its parts is allocated once.
    return isUnitText ? QString(text % QLatin1Char(' ') % unit) : QString(text);
}

/// The same for a level, whose number is that of QString::setNum.
QString shownLevel(HMath& math, double level, int decimals, const QString& unit, bool isUnitText) {
    char buffer[kMaxExactLength];
    char* const end = std::end(buffer);
    if (const char* const text = writeExactDecimal(end, level, decimals, Ties::AwayFromZero)) {
        return shown(math, {text, static_cast<std::size_t>(end - text)}, unit, isUnitText);
    }
    const QByteArray text = QString::number(level, 'f', decimals).toLatin1();
    return shown(math, {text.constData(), static_cast<std::size_t>(text.size())}, unit, isUnitText);
}

/// The first row of a quantity: the base unit of a ladder.
constexpr const Unit* firstOf(Quantity quantity) noexcept {
    const Unit* unit = rfu::kUnits;
    while (unit->quantity != quantity) {
        ++unit;
    }
    return unit;
}

constexpr const Unit* kVolt = firstOf(Quantity::Voltage);
constexpr const Unit* kWatt = firstOf(Quantity::Power);

/// The smallest number that a step of a ladder shows.
struct Threshold {
    double number;
    double logarithm;  ///< decimal
};

/// Whether 10^x may reach a threshold: saves the exponential where it cannot. At a millionth below
/// the logarithm, 10^x is two millionths too small, far more than any exponential is wrong by.
bool mayReach(Threshold threshold, double x) noexcept {
    return !(x < threshold.logarithm - 1e-6);
}

/// A unit of a ladder and the number in it.
struct Step {
    const Unit* unit;
    double number;
};

/// The first unit of a ladder whose number reaches the threshold; the base unit if none does.
/// @param level  plus the decades of a unit: the decimal logarithm of the number in it
Step firstStep(const Unit* base, double level, Threshold threshold) noexcept {
    for (const Unit* unit = base; unit != std::end(rfu::kUnits) && unit->quantity == base->quantity;
         ++unit) {
        const double x = level + unit->decades;
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

/// Watts as megawatts or kilowatts where they are that many, and a blank with the prefix.
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

double cut(double value, int digits) noexcept {
    value = repeatedProduct(value, 10.0, digits);
    return repeatedProduct(toInt32(value), 0.1, digits);
}

/// The level of a value in a unit that does not depend on the antenna.
double connectorLevel(const Unit& unit, double value) noexcept {
    if (unit.toDbm.formula == ToDbm::Unchanged) {
        return value;
    }
    return value == unit.pinned
               ? rfu::kPinnedLevel
               : cut(levelBeforeOffset(unit.toDbm, value) + unit.toDbm.offset, kLevelDecimals);
}

/// The level of a value in a unit of one quantity; 0 for any other unit.
double connectorLevelOf(Quantity quantity, const QString& name, double value) noexcept {
    const Unit* const unit = findUnit(name);
    const bool isTaken = unit != nullptr && unit->quantity == quantity && unit->canBeRead();
    return isTaken ? connectorLevel(*unit, value) : 0.0;
}

/// The text of a linear field value: its prefix, null for a value that is too small for the smallest
/// prefix or is not a number, and the number behind it.
struct PrefixedField {
    const Prefix* prefix;
    double number;
};

PrefixedField prefixedField(float value) noexcept {
    const double magnitude = std::fabs(value);
    for (const Prefix& prefix : kPrefixes) {
        if (magnitude >= prefix.threshold) {
            return {&prefix, toFloat(value * prefix.factor)};
        }
    }
    return {nullptr, 0.0};
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
    const Unit* unit = findUnit(sUnit);
    if (unit == nullptr || !unit->canBeShown() || unit->needsAntenna()) {
        sUnit = QStringLiteral("dBm");
        unit = findUnit(sUnit);
    }
    switch (unit->quantity) {
        case Quantity::Voltage:
            return getdBmToVolt(fVal, isUnitText);
        case Quantity::Power:
            return getdBmToWatt(fVal, isUnitText);
        default:
            return shownLevel(*this, fromDbm(*unit, fVal, 0.0), 1, sUnit, isUnitText);
    }
}

QString HMath::getdBmToVolt(double dBm, bool isUnitText) {
    const double level = (dBm + rfu::kDbmvOfZeroDbm) * 0.05;
    // Two decimals show a hundredth of a unit, which is 10 of the next smaller one.
    const Step step = firstStep(kVolt, level, {10.0, 1.0});
    double volts = step.number * 0.001;
    if (step.unit == kVolt && step.number > kMaxMillivolts) {
        volts *= 0.001;  // kilovolts from here on, under the label V
    }
    return shown(*this, FixedText(volts, 2).view(), step.unit->name.toString(), isUnitText);
}

QString HMath::getdBmToWatt(double dBm, bool isUnitText) {
    const Step step = firstStep(kWatt, wattLevel(dBm), {kMinShown, -2.0});
    // kilowatts and megawatts are shown under the label W
    const double watts = step.unit == kWatt ? reducedWatts(step.number).number : step.number;
    return shown(*this, FixedText(watts, 2).view(), step.unit->name.toString(), isUnitText);
}

QString HMath::getDBmToW(double fTemp) {
    const double level = wattLevel(fTemp);
    const double watts = powerOfTen(level);
    if (watts < kMinShown) {
        for (const Prefix& prefix : kPrefixes) {
            if (prefix.decades <= 0) {
                continue;
            }
            const double number = powerOfTen(level + prefix.decades);
            if (number >= kMinShown) {
                return printed(number, 2) + QLatin1Char(' ') + QLatin1Char(prefix.letter);
            }
        }
    }
    const ReducedWatts reduced = reducedWatts(watts);
    return printed(reduced.number, 2) + QLatin1String(reduced.ending);
}

double HMath::mathRoundOff(double value, int digits) {
    return cut(value, digits);
}

double HMath::getUnitTodBm(QString sUnit, double fVal) {
    const Unit* const unit = findUnit(sUnit);
    const bool isTaken = unit != nullptr && unit->canBeRead() && !unit->needsAntenna();
    return isTaken ? connectorLevel(*unit, fVal) : rfu::kUnknownUnit;
}

double HMath::getVoltTodBm(const QString& unit, const double& value) {
    return connectorLevelOf(Quantity::Voltage, unit, value);
}

double HMath::getWattTodBm(const QString& unit, const double& value) {
    return connectorLevelOf(Quantity::Power, unit, value);
}

double HMath::getVoltmtodBm(const QString& unit, const double& value) {
    const Unit* const known = findUnit(unit);
    const bool isTaken = known != nullptr && known->quantity == Quantity::FieldStrength;
    return isTaken ? value * known->toDbm.factor : 0.0;
}

double HMath::getWattmmTodBm(const QString& unit, const double& value) {
    const Unit* const known = findUnit(unit);
    const bool isTaken = known != nullptr && known->toDbm.formula == ToDbm::PowerDensity;
    return isTaken ? value * known->toDbm.factor : 0.0;
}

QString HMath::getdBmToField(QString sUnit, double fVal, double fCenter, double fGain,
                             bool isUnitText) {
    const Unit* const unit = findUnit(sUnit);
    if (unit == nullptr || !unit->canBeShown() || !unit->needsAntenna()) {
        return shownLevel(*this, 0.0, 2, sUnit, isUnitText);
    }
    const double number = fromDbm(*unit, fVal, antennaCorrection(fCenter, fGain));
    return unit->isLinear() ? getFieldChangeUnit(sUnit, toFloat(number), isUnitText)
                            : shownLevel(*this, number, 2, sUnit, isUnitText);
}

double HMath::getFieldTodBm(QString sUnit, double fVal, double fCenter, double fGain) {
    const Unit* const unit = findUnit(sUnit);
    if (unit == nullptr || !unit->canBeRead() || !unit->needsAntenna()) {
        return rfu::kUnknownUnit;
    }
    const double offset = unit->toDbm.offset;
    const double frequencyTerm = decibelOfAmplitude(fCenter);
    const double level = levelBeforeOffset(unit->toDbm, fVal);
    // The order of the sums is part of the results.
    return unit->isLinear() ? level + (fGain + offset - frequencyTerm)
                            : level + offset + fGain - frequencyTerm;
}

QString HMath::getFieldChangeUnit(QString unit, float value, bool isUnitText) {
    if (value == 0.0F) {
        return {};
    }
    const PrefixedField field = prefixedField(value);
    if (field.prefix == nullptr) {
        return shown(*this, {}, QString(), isUnitText);
    }
    const Prefix& prefix = *field.prefix;
    return shown(*this, FixedText(field.number, prefix.decimals).view(),
                 prefix.letter == 0 ? unit : QString(QLatin1Char(prefix.letter) % unit),
                 isUnitText);
}

QString HMath::convertValUnit(QVariant base, int dec, QString unit) {
    const QString number = QString::number(base.toDouble(), 'f', std::min(dec, kMaxDecimals));
    return QString(number % QLatin1Char(' ') % unit);
}

int HMath::getStringWidth(const int& pixelSize, const QString& str) {
    if (str.isEmpty() || qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) {
        return 0;
    }
    QFont font(QStringLiteral("Noto Sans UI"));
    font.setPixelSize(pixelSize);
    return QFontMetrics(font).horizontalAdvance(str);
}

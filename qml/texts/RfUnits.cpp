#include "qml/texts/RfUnits.h"

#include <rfUtils/presentation/rfUtils.h>
#include <rfUtils/units/unitTable.h>

#include <cmath>

#include "analysis/units/unitNames.h"
#include "qml/support/properties.h"

namespace rfu::qml {

namespace {

template <typename Predicate>
QStringList unitsThat(Predicate matches) {
    QStringList names;
    for (const Unit& unit : kUnits) {
        if (matches(unit)) {
            names.append(unit.name.toString());
        }
    }
    return names;
}

}  // namespace

QStringList RfUnits::levelUnits() const {
    return unitsThat([](const Unit& unit) { return unit.canBeShown() && !unit.needsAntenna(); });
}

QStringList RfUnits::fieldUnits() const {
    return unitsThat([](const Unit& unit) { return unit.canBeShown() && unit.needsAntenna(); });
}

QStringList RfUnits::entryUnits() const {
    return unitsThat([](const Unit& unit) { return unit.canBeRead(); });
}

QString RfUnits::quantity(const QString& unit) const {
    const Unit* const known = unitLike(unit);
    return known == nullptr ? QString() : known->traits().name.toString();
}

bool RfUnits::isField(const QString& unit) const {
    const Unit* const known = unitLike(unit);
    return known != nullptr && known->needsAntenna();
}

QString RfUnits::frequencyText(double frequency) const {
    return std::isfinite(frequency) ? QString::fromStdString(rfUtils().makeFrequencyUnit(frequency))
                                    : missingText();
}

QString RfUnits::widthText(double width) const {
    return std::isfinite(width) ? rfUtils().convertFreqWidthUnit(width) : missingText();
}

QString RfUnits::angleText(double angle) const {
    if (!std::isfinite(angle)) {
        return missingText();
    }
    short sign = 0;
    double degrees = 0.0;
    double minutes = 0.0;
    double seconds = 0.0;
    rfUtils::convertDmsFromDd(angle, sign, degrees, minutes, seconds);
    const auto whole = [](double part) { return QString::number(part, 'f', 0); };
    return (sign < 0 ? QStringLiteral("-") : QString()) + whole(degrees) +
           QStringLiteral(u"\u00B0 ") + whole(minutes) + QStringLiteral(u"\u2032 ") +
           whole(seconds) + QStringLiteral(u"\u2033");
}

}  // namespace rfu::qml

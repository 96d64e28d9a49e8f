#include "analysis/units/levels.h"

#include <rfUtils/units/calculateUnit.h>

#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "analysis/units/unitNames.h"

namespace rfu {

namespace {

constexpr double kBetweenOneAndKilo = 30.0;
constexpr double kBetweenKiloAndMega = 30000.0;

}  // namespace

Entry splitEntry(std::string_view text) {
    const auto split = splitValue(text);
    if (!split) {
        return {0.0, {}, rfu::quoted(text) + " is not a number with or without a unit"};
    }
    const std::string_view rest = split->unit;
    if (!rest.empty() && rest[0] == ',') {
        return {0.0,
                {},
                rfu::quoted(text) + " is not understood: numbers have a decimal point, no comma"};
    }
    if (!rest.empty() && split->value == 0.0 && (rest[0] == 'x' || rest[0] == 'X')) {
        return {
            0.0, {}, rfu::quoted(text) + " is not understood: hexadecimal numbers are not read"};
    }
    return {split->value, rest, {}};
}

std::string whyNoLevel(const Unit& unit, double value) {
    return unit.isLinear() && value <= 0.0
               ? std::string(ShortestText(value).view()) + " " + nameOf(unit) +
                     " has no level, it is not above zero"
               : std::string();
}

double decibelsPerDecadeOf(const Unit& unit) {
    constexpr double kAmplitude = 20.0;
    constexpr double kPower = 10.0;
    return !unit.isLinear()                             ? 0.0
           : unit.fromDbm.formula == FromDbm::Amplitude ? kAmplitude
                                                        : kPower;
}

double entryLevel(HMath& math, const Unit& unit, double value, const Antenna& antenna) {
    const QString name = unit.name.toString();
    return unit.needsAntenna()
               ? math.getFieldTodBm(name, value, antenna.center.value_or(kUnusedCenter),
                                    antenna.gain)
               : math.getUnitTodBm(name, value);
}

LevelPresenter::LevelPresenter(const Unit& unit, const Antenna& antenna)
    : isField_(unit.needsAntenna()),
      scale_(scaleOf(unit)),
      antenna_(antenna),
      unit_(unit.name.toString()),
      unitName_(nameOf(unit)) {}

std::string LevelPresenter::text(double dBm) {
    const QString shown =
        isField_ ? math_.getdBmToField(unit_, dBm, antenna_.center.value_or(kUnusedCenter),
                                       antenna_.gain, true)
                 : math_.getdBmToUnit(unit_, dBm, true);
    return shown.trimmed().toStdString();
}

double LevelPresenter::value(double dBm) const {
    double result = 0.0;
    calculateUnit().actdBm2OtherScale(dBm, antenna_.center.value_or(kUnusedCenter), scale_,
                                      antenna_.gain, result);
    return result;
}

const char* LevelPresenter::prefixLeftOut(double dBm, std::string_view text) const {
    const auto shown = splitValue(text);
    if (isField_ || !shown || shown->unit != unitName_ || shown->value <= 0.0) {
        return "";
    }
    // Rounding to two decimals changes the ratio by less than the factors between the prefixes.
    const double ratio = value(dBm) / shown->value;
    return ratio > kBetweenKiloAndMega ? "M" : ratio > kBetweenOneAndKilo ? "k" : "";
}

}  // namespace rfu

#include "support/units.h"

#include <string>

#include "support/errors.h"

namespace rfu::command {

namespace {

const Unit& required(const NamedUnit& named) {
    if (named.unit == nullptr) {
        throw BadValue(named.refusal);
    }
    return *named.unit;
}

void requireCenter(const Unit& unit, const Antenna& antenna) {
    if (unit.needsAntenna() && !antenna.center) {
        throw UsageError(nameOf(unit) + " needs the centre frequency of the antenna: --center");
    }
}

}  // namespace

Antenna antennaOf(const CommandLine& line) {
    const Antenna antenna{line.find<double>("center"), line.value<double>("gain")};
    if (antenna.center && *antenna.center <= 0.0) {
        throw UsageError("--center has to be above zero");
    }
    return antenna;
}

void requireAntennaUnit(const CommandLine& line, const Unit& unit) {
    for (const char* antenna : {"center", "gain"}) {
        if (line.isSet(antenna) && !unit.needsAntenna()) {
            throw UsageError(std::string("--") + antenna +
                             " needs a --unit that depends on the antenna, such as dBuV/m");
        }
    }
}

const Unit& unitToRead(std::string_view name) {
    return required(rfu::unitToRead(name));
}

const Unit& unitToShow(std::string_view name) {
    return required(rfu::unitToShow(name));
}

void requireLevel(const Unit& unit, double value) {
    const std::string problem = whyNoLevel(unit, value);
    if (!problem.empty()) {
        throw BadValue(problem);
    }
}

double levelOf(HMath& math, const Unit& unit, double value, const Antenna& antenna) {
    requireLevel(unit, value);
    requireCenter(unit, antenna);
    return entryLevel(math, unit, value, antenna);
}

LevelPresenter::LevelPresenter(const Unit& unit, const Antenna& antenna)
    : rfu::LevelPresenter(unit, antenna) {
    requireCenter(unit, antenna);
}

}  // namespace rfu::command

#include "analysis/plots/unitScale.h"

#include "analysis/units/unitNames.h"

namespace rfu {

namespace {

Antenna sharedAntenna(const Antenna& antenna, const FrequencyAxis& axis) {
    Antenna shared = antenna;
    if (!shared.center && !axis.bands.empty()) {
        // Only the end of the axis is certain to be above 0 MHz.
        shared.center = axis.bands.back().high;
    }
    return shared;
}

}  // namespace

UnitScale unitScaleOf(const Unit& unit, const Antenna& antenna, const FrequencyAxis& axis) {
    UnitScale shown;
    shown.antenna = sharedAntenna(antenna, axis);
    const LevelPresenter presenter(unit, shown.antenna);
    shown.scale.unit = presenter.unitName();
    shown.scale.atZero = presenter.value(0.0);
    shown.scale.decibelsPerDecade = decibelsPerDecadeOf(unit);
    if (unit.needsAntenna() && !antenna.center) {
        shown.offsets.reserve(axis.points.size());
        for (const double frequency : axis.points) {
            const LevelPresenter ofPoint(unit, {frequency, antenna.gain});
            shown.offsets.push_back(shown.scale.dBm(ofPoint.value(0.0)));
        }
    }
    return shown;
}

}  // namespace rfu

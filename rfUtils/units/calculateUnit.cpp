#include <rfUtils/units/calculateUnit.h>

#include <rfUtils/detail/saturate.h>
#include <rfUtils/units/detail/conversion.h>
#include <rfUtils/units/unitTable.h>

using rfu::findScale;
using rfu::Scale;
using rfu::ToDbm;
using rfu::detail::fromDbm;
using rfu::detail::levelBeforeOffset;

namespace {

constexpr bool shownUnitsHaveScales() noexcept {
    for (const rfu::Unit& unit : rfu::kUnits) {
        if (unit.canBeShown() != (scaleOf(unit) >= 0)) {
            return false;
        }
    }
    return true;
}
static_assert(shownUnitsHaveScales(), "the units that levels are shown in are those of kScales");

double singleCorrection(double frequency, double gain) noexcept {
    return rfu::detail::toFloat(rfu::detail::antennaCorrection(frequency, gain));
}

double toDbm(const Scale& scale, double value, double frequency, double gain) noexcept {
    if (scale.toDbm.formula == ToDbm::Unchanged) {
        return value;
    }
    const double level = levelBeforeOffset(scale.toDbm, value) + scale.toDbm.offset;
    return scale.unit->needsAntenna() ? level - singleCorrection(frequency, gain) : level;
}

}  // namespace

calculateUnit::calculateUnit() = default;

bool calculateUnit::actdBm2OtherScale(double dBm, double frequency, int scale, double gain,
                                      double& result) {
    const Scale* const row = findScale(scale);
    result = row == nullptr ? 0.0 : fromDbm(*row->unit, dBm, singleCorrection(frequency, gain));
    return true;
}

bool actOtherScale2dBm(double value, double frequency, int scale, double gain, double& result) {
    const Scale* const row = findScale(scale);
    if (row == nullptr) {
        result = 0.0;
    } else if (row->toDbm.formula != ToDbm::None) {
        result = toDbm(*row, value, frequency, gain);
    }
    return true;
}

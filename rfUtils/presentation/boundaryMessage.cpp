#include <rfUtils/presentation/rfUtils.h>

#include <rfUtils/detail/fixedText.h>
#include <rfUtils/presentation/rangeTypes.h>
#include <rfUtils/units/HMath.h>
#include <rfUtils/units/unitTable.h>

#include <QString>

#include <string>

using rfu::LimitText;
using rfu::RangeType;
using rfu::rangeType;

namespace {

std::string asGiven(std::string number, const RangeType& type) {
    return (number += ' ') += type.unit.toUtf8().constData();
}

std::string limitText(rfUtils& utils, const RangeType& type, double limit) {
    if (type.text == LimitText::Frequency) {
        return utils.makeFrequencyUnit(limit);
    }
    if (const rfu::Unit* const unit = type.convertedUnit()) {
        HMath& math = utils.hMath;
        const QString name = unit->name.toString();
        return (unit->needsAntenna()
                    ? math.getdBmToField(name, limit, utils.fCenter, utils.fGain, true)
                    : math.getdBmToUnit(name, limit, true))
            .toStdString();
    }
    return asGiven(std::string(rfu::detail::FixedText(limit, 2).view()), type);
}

std::string message(const std::string& minText, const std::string& maxText) {
    return " {Min: " + minText + ", Max: " + maxText + "} ";
}

}  // namespace

std::string rfUtils::makeBoundaryMsg(int max, int min, int type) {
    const RangeType row = rangeType(rfu::kIntegerRangeTypes, type);
    return row.text == LimitText::None
               ? std::string()
               : message(asGiven(std::to_string(min), row), asGiven(std::to_string(max), row));
}

std::string rfUtils::makeBoundaryMsg(double max, double min, int type) {
    const RangeType row = rangeType(rfu::kDoubleRangeTypes, type);
    if (row.text == LimitText::None) {
        return {};
    }
    // In this order: hMath keeps the unit of the limit that is converted last.
    const std::string minText = limitText(*this, row, min);
    const std::string maxText = limitText(*this, row, max);
    return message(minText, maxText);
}

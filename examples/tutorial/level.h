#pragma once

#include <rfUtils/presentation/rangeTypes.h>
#include <rfUtils/presentation/rfUtils.h>

#include <string>

/// Where the station listens, which levels of fields depend on.
struct Antenna {
    double centreMHz = 98.3;
    double gainDbi = 2.0;
};

/// A level in dBm as a text in the unit of a type code.
inline std::string levelText(double dBm, int typeCode, const Antenna& antenna) {
    HMath math;
    const QString unit = rfu::rangeType(rfu::kDoubleRangeTypes, typeCode).unit.toString();
    const rfu::Unit* const row = rfu::findUnit(unit);
    const bool isField = row != nullptr && row->needsAntenna();
    const QString text =
        isField ? math.getdBmToField(unit, dBm, antenna.centreMHz, antenna.gainDbi, true)
                : math.getdBmToUnit(unit, dBm, true);
    return text.toStdString();
}

/// The range of a level in dBm, in the unit of the same type code.
inline std::string rangeHint(double minDbm, double maxDbm, int typeCode, const Antenna& antenna) {
    rfUtils view;
    view.fCenter = antenna.centreMHz;
    view.fGain = antenna.gainDbi;
    return view.makeBoundaryMsg(maxDbm, minDbm, typeCode);  // the upper limit comes first
}

#pragma once

#include <rfUtils/units/unitTable.h>

#include <QString>
#include <vector>

#include "analysis/recordings/sweepReader.h"
#include "analysis/statistics/limitMask.h"

namespace rfu {

/// For masks. @throw InputError where a recording holds no frequencies
void requireFrequencies(const FrequencyAxis& axis, const QString& file);

/// The mask of a file, with its limits in a unit.
class MaskFile {
public:
    /// @throw InputError as readLimitMask() does
    MaskFile(const QString& file, const Unit& unit);

    const LimitMask& mask() const { return mask_; }

    /// Judges a recording, as rfu::judge() does.
    /// @param levels in the unit
    /// @throw InputError where no measured point has a limit
    MaskResult judge(const FrequencyAxis& axis, const std::vector<double>& levels) const;

private:
    QString file_;
    double decibelsPerDecade_;
    LimitMask mask_;
};

}  // namespace rfu

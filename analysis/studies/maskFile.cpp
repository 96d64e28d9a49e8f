#include "analysis/studies/maskFile.h"

#include "analysis/recordings/bins.h"
#include "analysis/support/inputError.h"
#include "analysis/units/levels.h"

namespace rfu {

void requireFrequencies(const FrequencyAxis& axis, const QString& file) {
    if (axis.points.empty()) {
        throw InputError(file, "holds no frequencies, so that no mask applies");
    }
}

MaskFile::MaskFile(const QString& file, const Unit& unit)
    : file_(file),
      decibelsPerDecade_(decibelsPerDecadeOf(unit)),
      mask_(readLimitMask(file, unit.isLinear())) {}

MaskResult MaskFile::judge(const FrequencyAxis& axis, const std::vector<double>& levels) const {
    MaskResult result = rfu::judge(mask_, axis, levels, decibelsPerDecade_);
    if (result.judged == 0) {
        throw InputError(file_,
                         "has no limit at a measured point of the recording, which reaches " +
                             describe(axis.bands));
    }
    return result;
}

}  // namespace rfu

#include "analysis/studies/recordedTrace.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "analysis/recordings/bins.h"
#include "analysis/support/files.h"
#include "analysis/support/inputError.h"

namespace rfu {

std::vector<double> levelsAtPointsOf(const RecordedTrace& other, const RecordedTrace& recorded,
                                     bool mayResample, const char* resample) {
    const auto apart = whyApart(recorded.trace, other.trace);
    if (!apart) {
        return recorded.trace.levels;
    }
    const FrequencyAxis& axis = other.trace.axis;
    const bool canResample = !axis.points.empty() && !recorded.trace.axis.points.empty();
    if (!mayResample || !canResample) {
        const std::string remedy =
            canResample ? "; " + std::string(resample) + " takes levels between its points" : "";
        throw InputError(recorded.file, *apart + " as in " + shortNameOf(other.file) + remedy);
    }
    std::vector<double> levels = resampled(recorded.trace, axis);
    if (std::all_of(levels.begin(), levels.end(), [](double level) { return std::isnan(level); })) {
        throw InputError(recorded.file, "has no level at a point of " + shortNameOf(other.file) +
                                            ", which reaches " + describe(axis.bands));
    }
    return levels;
}

}  // namespace rfu

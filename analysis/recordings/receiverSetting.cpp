#include "analysis/recordings/receiverSetting.h"

#include <algorithm>

#include "analysis/recordings/timeStamp.h"
#include "analysis/support/inputError.h"

namespace rfu {

namespace {

bool isSame(const AxisHop& a, const AxisHop& b) {
    return a == b && a.firstBin == b.firstBin && a.bins == b.bins;
}

/// The first hop of an axis that another one lacks.
const AxisHop& hopBeyond(const FrequencyAxis& axis, const FrequencyAxis& other) {
    return *std::find_if(axis.hops.begin(), axis.hops.end(), [&other](const AxisHop& hop) {
        return std::none_of(other.hops.begin(), other.hops.end(),
                            [&hop](const AxisHop& candidate) { return isSame(hop, candidate); });
    });
}

/// With its bins where they are not all of them.
std::string describe(const AxisHop& hop) {
    const Hop& whole = hop;
    return describe(whole) + (hop.bins == hop.points()
                                  ? ""
                                  : " with " + std::to_string(hop.bins) + " bins from bin " +
                                        std::to_string(hop.firstBin) + " on");
}

}  // namespace

std::optional<std::vector<std::size_t>> placesOf(const FrequencyAxis& part,
                                                 const FrequencyAxis& axis) {
    std::vector<std::size_t> places;
    places.reserve(part.points.size());
    std::size_t first = 0;
    auto hop = axis.hops.begin();
    for (const AxisHop& wanted : part.hops) {
        for (; hop != axis.hops.end() && !isSame(*hop, wanted); ++hop) {
            first += hop->bins;
        }
        if (hop == axis.hops.end()) {
            return std::nullopt;
        }
        for (std::size_t i = 0; i < wanted.bins; ++i) {
            places.push_back(first + i);
        }
    }
    return places;
}

void requireOneSetting(const RecordingPart& part, const RecordingPart& most) {
    const std::string other = most.file.toStdString();
    if (part.time.empty() != most.time.empty()) {
        throw InputError(part.file,
                         "holds traces without frequencies, while " + other + " holds sweeps");
    }
    if (part.time.empty() && part.levels != most.levels) {
        throw InputError(part.file, "has traces of " + std::to_string(part.levels) +
                                        " levels, while " + other + " has traces of " +
                                        std::to_string(most.levels));
    }
    if (!placesOf(part.axis, most.axis)) {
        throw InputError(part.file, "is of another receiver setting than " + other +
                                        ", which lacks the hop " +
                                        describe(hopBeyond(part.axis, most.axis)));
    }
}

void requireOrder(const RecordingPart& part, const QString& former, const std::string& formerEnd) {
    if (!formerEnd.empty() && microsecondsOf(part.time) < microsecondsOf(formerEnd)) {
        throw InputError(part.file, "begins at " + part.time + ", before " + former.toStdString() +
                                        " ends at " + formerEnd);
    }
}

}  // namespace rfu

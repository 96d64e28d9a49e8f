#pragma once

#include <QString>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "analysis/recordings/sweepReader.h"

namespace rfu {

// What parts of one recording have to have in common.

/// A file of a recording, or what became of one.
struct RecordingPart {
    QString file;
    std::string time;    // of its first sweep; empty without frequencies
    std::size_t levels;  // of a sweep
    FrequencyAxis axis;
};

/// Of each point of some hops its place among those of an axis.
/// @return nothing where a hop is not one of the axis
std::optional<std::vector<std::size_t>> placesOf(const FrequencyAxis& part,
                                                 const FrequencyAxis& axis);

/// @param most the part that has most hops
/// @throw InputError for a part with a hop that it lacks, or with traces of another length
void requireOneSetting(const RecordingPart& part, const RecordingPart& most);

/// @param formerEnd time of the last sweep of the file ahead; empty without frequencies
/// @throw InputError for a part that begins before that
void requireOrder(const RecordingPart& part, const QString& former, const std::string& formerEnd);

}  // namespace rfu

#pragma once

#include <QString>
#include <vector>

#include "analysis/statistics/comparison.h"

namespace rfu {

struct NamedStatistic {
    const char* name;
    PointStatistic statistic;
};

/// What recordings are compared by, the usual one first.
inline constexpr NamedStatistic kComparedStatistics[] = {{"average", PointStatistic::Average},
                                                         {"maximum", PointStatistic::Maximum},
                                                         {"minimum", PointStatistic::Minimum},
                                                         {"median", PointStatistic::Median}};

/// A statistic of each point of a recording, and where it comes from.
struct RecordedTrace {
    const QString& file;  // for messages
    const LevelTrace& trace;
};

/// The levels of a recording at the points of another one: as they are where the points of both lie together, else
/// resampled.
/// @param resample how the user asks for resampling, such as "--resample"
/// @throw InputError where the points lie apart and resampling was not asked for or is not possible, or leaves no level
std::vector<double> levelsAtPointsOf(const RecordedTrace& other, const RecordedTrace& recorded,
                                     bool mayResample, const char* resample);

}  // namespace rfu

#pragma once

#include <QStringList>
#include <string>
#include <vector>

#include "analysis/recordings/recording.h"
#include "analysis/support/numbers.h"

namespace rfu::command {

// What the commands on recordings share.

/// "88:108 400:500", in MHz
std::string bandsText(const FrequencyAxis& axis);

/// "fm_band.csv, 240 sweeps" or "fm_1.csv and 2 more, 240 sweeps", for a picture.
std::string titleOf(const QStringList& files, long long sweeps);

/// "98.2 to 98.4 MHz"
std::string rangeText(const FrequencyRange& range);

/// Notes something on channels of a recording, of which it names a few; nothing without any.
void noteChannels(const QString& file, const std::vector<FrequencyRange>& channels,
                  const std::string& what);

/// Notes that medians are not exact; nothing if they are.
/// @param resolution see LevelHistory
/// @param areMerged whether they come from states
void noteMedians(double resolution, bool areMerged = false);

/// To be called at the end of a recording. @throw Failure where reading ended before there was a sweep
void requireSweeps(const Recording& recording, long long sweeps);

}  // namespace rfu::command

#pragma once

#include <QStringList>
#include <string>

#include "analysis/recordings/recording.h"

namespace rfu::command {

// What the commands on recordings share.

/// "88:108 400:500", in MHz
std::string bandsText(const FrequencyAxis& axis);

/// "fm_band.csv, 240 sweeps" or "fm_1.csv and 2 more, 240 sweeps", for a picture.
std::string titleOf(const QStringList& files, long long sweeps);

/// To be called at the end of a recording. @throw Failure where reading ended before there was a sweep
void requireSweeps(const Recording& recording, long long sweeps);

/// For masks. @throw InputError where the recording holds no frequencies
void requireFrequencies(const Recording& recording);

}  // namespace rfu::command

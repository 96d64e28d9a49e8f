#pragma once

#include <QString>
#include <cstddef>
#include <string>

#include "analysis/recordings/sweepReader.h"

namespace rfu::command {

// What the commands on recordings share.

/// How many sweeps the hops of a recording are learned from: a hop that the first sweep lost must not
/// make it unreadable.
inline constexpr std::size_t kLearnedSweeps = 4;

/// "88:108 400:500", in MHz
std::string bandsText(const FrequencyAxis& axis);

/// "fm_band.csv, 240 sweeps", for a picture.
std::string titleOf(const QString& file, long long sweeps);

/// Prints a note if the last line was left out. @param recording that was read to its end
void noteCutLine(const SweepReader& recording);

/// The same. @throw InputError where there was no sweep
void finishReading(const SweepReader& recording, long long sweeps);

}  // namespace rfu::command

#pragma once

#include <QStringList>
#include <initializer_list>

#include "analysis/recordings/recording.h"
#include "support/commandLine.h"
#include "support/subcommand.h"

namespace rfu::command {

// What every command on recordings takes: the files, and how they are read.

inline constexpr Argument kRecordingArgument = {"FILE", Kind::SweepFile, 1, kAnyCount};

/// See Subcommand::shared.
extern const std::initializer_list<Option> kRecordingOptions;

/// The recording that the command line names. Notes on it are printed after the output so far.
RecordingSource recordingOf(const CommandLine& line);
/// The same of files that are arguments of other names.
RecordingSource recordingOf(const CommandLine& line, const QStringList& files);

}  // namespace rfu::command

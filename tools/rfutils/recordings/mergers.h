#pragma once

#include <initializer_list>
#include <vector>

#include "analysis/recordings/stateFile.h"
#include "recordings/stateOutput.h"
#include "support/commandLine.h"
#include "support/subcommand.h"

namespace rfu::command {

// What the commands that write states do with states.

struct Merger {
    const Subcommand& command;
    /// Of the command, those that a state fixes.
    std::initializer_list<const char*> settings;
    /// Of the command, those that show what is in a state.
    std::initializer_list<const char*> options;
    /// Prints what the command prints of one recording.
    /// @param line   of the command, with the settings of the states and no files
    /// @param output for the merged state; null for none
    void (*run)(const CommandLine& line, const StateSet& states, StateOutput* output);
};

extern const Merger kTraceMerger;
extern const Merger kPeaksMerger;
extern const Merger kPowerMerger;
extern const Merger kOccupancyMerger;

}  // namespace rfu::command

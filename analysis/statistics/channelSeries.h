#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "analysis/recordings/stateFile.h"
#include "analysis/statistics/channelPower.h"

namespace rfu {

// The figures of channels sweep by sweep, as states hold them.

/// Of each channel; nothing where the sweep does not count for it.
using SweepFigures = std::vector<std::optional<ChannelFigures>>;

/// What else is known of a channel.
struct ChannelNotes {
    bool isCovered = false;   // by the recording
    bool isMeasured = false;  // in a sweep
    bool hasHopBorder = false;
};

void writeSweep(StateWriter& writer, const std::string& time, const SweepFigures& figures);
/// Behind the last sweep.
void writeNotes(StateWriter& writer, const std::vector<ChannelNotes>& notes);

/// Calls use() with each sweep.
/// @param notes of each channel, to which those of the state are added
void readSeries(StatePart& part, std::vector<ChannelNotes>& notes,
                const std::function<void(const std::string& time, const SweepFigures&)>& use);

}  // namespace rfu

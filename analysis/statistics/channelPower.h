#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "analysis/recordings/sweepReader.h"
#include "analysis/statistics/milliwatts.h"
#include "analysis/support/numbers.h"

namespace rfu {

/// The power in a channel, and its occupied band: the part of the channel with most of that power.
struct ChannelFigures {
    double power;  // dBm
    FrequencyRange occupied;
};

struct ChannelOptions {
    double share =
        0.99;           // of the power is in the occupied band; half of the rest lies on each side
    double enbw = 1.0;  // noise bandwidth of the receiver's window, in bins
};

/// The power in channels of a recording. A bin at the edge of a channel counts in proportion to the part
/// of its width that lies in the channel. Powers are summed in milliwatts, as plain sums in the order of
/// the bins and of the sweeps. A sweep that lacks a level within a channel is ignored for that channel.
class ChannelPowers {
public:
    /// @param axis of the recording, with frequencies
    ChannelPowers(const FrequencyAxis& axis, const std::vector<FrequencyRange>& channels,
                  const ChannelOptions& options);

    /// Whether one band of the recording covers the whole channel.
    bool isCovered(std::size_t channel) const { return !channels_[channel].parts.empty(); }
    /// Whether a border between two hops lies within the channel.
    bool hasHopBorder(std::size_t channel) const { return channels_[channel].hasHopBorder; }

    void add(const Sweep& sweep);

    /// The power in the sweep added last; nothing if it does not count for the channel.
    std::optional<ChannelFigures> ofLastSweep(std::size_t channel) const;
    /// The mean power over the sweeps that count; nothing if there is none.
    std::optional<ChannelFigures> mean(std::size_t channel) const;

private:
    struct Channel {
        std::size_t firstPoint = 0;
        std::vector<double>
            parts;  // of each bin, from 0 to 1; none where the channel is not covered
        std::vector<double> edges;  // MHz: the beginning of each bin, and the end of the last one
        bool hasHopBorder = false;
        std::vector<double> powers;  // mW, of the last sweep
        std::vector<double> sums;    // mW, over the sweeps that count
        bool isMeasured = false;     // in the last sweep
        long long sweeps = 0;        // that count
    };

    static Channel placed(const FrequencyRange& range, const FrequencyAxis& axis,
                          const std::vector<double>& ends);
    ChannelFigures figures(const Channel& channel, const std::vector<double>& powers,
                           long long sweeps) const;

    ChannelOptions options_;
    MilliwattTable milliwatts_;
    std::vector<Channel> channels_;
};

}  // namespace rfu

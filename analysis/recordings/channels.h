#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/recordings/bins.h"
#include "analysis/recordings/sweepReader.h"
#include "analysis/support/numbers.h"

namespace rfu {

/// Channels at even distances.
struct ChannelRaster {
    double low;   // MHz, where the first one begins
    double step;  // MHz, from one to the next
    int count;

    /// @param width of a channel in MHz
    std::vector<FrequencyRange> ranges(double width) const;
};

/// "446M:12.5k:16": two frequencies as parseFrequency() reads them, the second above 0, and how many
/// channels, at least one.
std::optional<ChannelRaster> parseChannelRaster(std::string_view text);

/// A channel on the axis of a recording, and the points that belong to it.
struct Channel {
    FrequencyRange range;
    std::size_t firstPoint = 0;
    std::size_t endPoint = 0;  // behind the last; firstPoint where a part of it was not recorded
    bool isTooNarrow = false;  // for a bin, where the recording reaches over it

    bool isRecorded() const { return firstPoint < endPoint; }
};

/// Finds channels on an axis. A bin belongs to a channel if its middle lies in it, from low to below
/// high; one that the next hop covers belongs to none. Not recorded is a channel that no bin belongs
/// to, or where a bin would belong to it that the band around it lacks.
class ChannelPlacer {
public:
    /// @param axis with frequencies
    explicit ChannelPlacer(const FrequencyAxis& axis);

    Channel place(const FrequencyRange& range) const;
    /// Of each bin a channel of its own.
    std::vector<Channel> ofPoints() const;

    /// The first point that belongs to a range, and the one behind the last.
    std::pair<std::size_t, std::size_t> pointsIn(const FrequencyRange& range) const;
    /// Of each point, whether its bin may belong to a channel.
    std::vector<bool> usable() const;

private:
    using BinRange = std::pair<std::vector<Bin>::const_iterator, std::vector<Bin>::const_iterator>;

    BinRange binsIn(const FrequencyRange& range) const;
    bool isWithinBand(const FrequencyRange& range) const;

    const FrequencyAxis& axis_;
    std::vector<Bin> bins_;
};

}  // namespace rfu

#include "analysis/statistics/channelPower.h"

#include <rfUtils/trace/traceRssiBuffer.h>
#include <algorithm>
#include <numeric>

#include "analysis/recordings/bins.h"

namespace rfu {

namespace {

/// The place at which the power, summed from one end of the bins, reaches a sum: the index of the bin,
/// and the part of it.
struct BinEdge {
    std::size_t bin;
    double part;
};

template <typename Iterator>
BinEdge reachOf(Iterator begin, Iterator end, double sum) {
    BinEdge reach = {0, 0.0};
    double before = 0.0;
    for (Iterator power = begin; power != end; ++power) {
        reach.bin = static_cast<std::size_t>(power - begin);
        if (before + *power >= sum) {
            reach.part = (sum - before) / *power;
            return reach;
        }
        before += *power;
    }
    reach.part = 1.0;  // by rounding, the sum is above that of all bins
    return reach;
}

double between(double from, double to, double part) {
    return from + part * (to - from);
}

bool hasBorder(const FrequencyAxis& axis, double low, double high) {
    return std::any_of(axis.hops.begin(), axis.hops.end(), [&](const Hop& hop) {
        const double border = hop.low / kHertzPerMegahertz;
        return border > low + kSameFrequency && border < high - kSameFrequency;
    });
}

}  // namespace

ChannelPowers::ChannelPowers(const FrequencyAxis& axis, const std::vector<FrequencyRange>& channels,
                             const ChannelOptions& options)
    : options_(options) {
    const std::vector<double> ends = binEnds(axis);
    channels_.reserve(channels.size());
    for (const FrequencyRange& range : channels) {
        channels_.push_back(placed(range, axis, ends));
    }
}

ChannelPowers::Channel ChannelPowers::placed(const FrequencyRange& range, const FrequencyAxis& axis,
                                             const std::vector<double>& ends) {
    Channel channel;
    const auto band = std::find_if(axis.bands.begin(), axis.bands.end(),
                                   [&range](const FrequencyAxis::Band& candidate) {
                                       return candidate.low <= range.low + kSameFrequency &&
                                              candidate.high >= range.high - kSameFrequency;
                                   });
    if (band == axis.bands.end()) {
        return channel;
    }
    const std::size_t lastPoint =
        (band + 1 == axis.bands.end() ? axis.points.size() : (band + 1)->firstPoint) - 1;
    const auto first = std::upper_bound(
        ends.begin() + static_cast<std::ptrdiff_t>(band->firstPoint),
        ends.begin() + static_cast<std::ptrdiff_t>(lastPoint), range.low + kSameFrequency);
    channel.firstPoint = static_cast<std::size_t>(first - ends.begin());
    channel.edges.push_back(range.low);
    for (std::size_t i = channel.firstPoint; i <= lastPoint; ++i) {
        const double low = std::max(axis.points[i], range.low);
        const double high = std::min(ends[i], range.high);
        const double width = ends[i] - axis.points[i];
        channel.parts.push_back(high > low ? (high - low) / width : 0.0);
        channel.edges.push_back(std::max(channel.edges.back(), high));
        if (ends[i] >= range.high - kSameFrequency) {
            break;
        }
    }
    channel.hasHopBorder = hasBorder(axis, range.low, range.high);
    channel.powers.resize(channel.parts.size());
    channel.sums.resize(channel.parts.size());
    return channel;
}

void ChannelPowers::add(const Sweep& sweep) {
    for (Channel& channel : channels_) {
        const double* const levels = sweep.levels.data() + channel.firstPoint;
        channel.isMeasured = !channel.parts.empty();
        for (std::size_t i = 0; i < channel.parts.size(); ++i) {
            if (levels[i] == traceRssiBuffer::kNoMeasurement && channel.parts[i] > 0.0) {
                channel.isMeasured = false;
                break;
            }
            channel.powers[i] = channel.parts[i] * milliwatts_.of(levels[i]);
        }
        if (!channel.isMeasured) {
            continue;
        }
        for (std::size_t i = 0; i < channel.powers.size(); ++i) {
            channel.sums[i] += channel.powers[i];
        }
        ++channel.sweeps;
    }
}

ChannelFigures ChannelPowers::figures(const Channel& channel, const std::vector<double>& powers,
                                      long long sweeps) const {
    const double sum = std::accumulate(powers.begin(), powers.end(), 0.0);
    const double rest = sum * (1.0 - options_.share) / 2.0;
    const BinEdge low = reachOf(powers.begin(), powers.end(), rest);
    const BinEdge high = reachOf(powers.rbegin(), powers.rend(), rest);
    const std::size_t last = powers.size() - 1 - high.bin;
    return {dBmOf(sum / static_cast<double>(sweeps) / options_.enbw),
            {between(channel.edges[low.bin], channel.edges[low.bin + 1], low.part),
             between(channel.edges[last + 1], channel.edges[last], high.part)}};
}

std::optional<ChannelFigures> ChannelPowers::ofLastSweep(std::size_t channel) const {
    const Channel& asked = channels_[channel];
    return asked.isMeasured ? std::optional(figures(asked, asked.powers, 1)) : std::nullopt;
}

std::optional<ChannelFigures> ChannelPowers::mean(std::size_t channel) const {
    const Channel& asked = channels_[channel];
    return asked.sweeps > 0 ? std::optional(figures(asked, asked.sums, asked.sweeps))
                            : std::nullopt;
}

}  // namespace rfu

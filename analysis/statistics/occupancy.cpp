#include "analysis/statistics/occupancy.h"

#include <rfUtils/trace/traceRssiBuffer.h>
#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>

#include "analysis/recordings/bins.h"
#include "analysis/recordings/timeStamp.h"
#include "analysis/statistics/noiseFloor.h"
#include "analysis/support/inputError.h"
#include "analysis/support/stateStream.h"

namespace rfu {

namespace {

// A part with less of the memory tells its floor worse than the one before it.
constexpr std::size_t kLeastPart = 8;
constexpr int kHoursOfDay = 24;

// In a sum of points, those above the threshold count in the upper half of the bits.
constexpr std::uint64_t kOneAbove = std::uint64_t{1} << 32U;

/// The largest code that does not lie above a level.
PackedLevel packedThreshold(double level) {
    constexpr double kRounding = 1e-6;  // of a code: a sum like -89.9 + 0.1 counts as -89.8
    constexpr double kMost = std::numeric_limits<PackedLevel>::max();
    if (std::isnan(level)) {
        return std::numeric_limits<PackedLevel>::max();
    }
    const double code = std::floor(level * kPackedPerDecibel + kRounding);
    return static_cast<PackedLevel>(std::min(std::max(code, -kMost), kMost));
}

}  // namespace

ShareInterval wilsonInterval(const OccupancyCount& count) {
    constexpr double kZ = 1.96;
    const auto samples = static_cast<double>(count.samples);
    const auto occupied = static_cast<double>(count.occupied);
    const double all = samples + kZ * kZ;
    const double middle = occupied + kZ * kZ / 2.0;
    const double half = kZ * std::sqrt(occupied * (samples - occupied) / samples + kZ * kZ / 4.0);
    return {count.occupied == 0 ? 0.0 : (middle - half) / all,
            count.occupied == count.samples ? 1.0 : (middle + half) / all};
}

void OccupancyCounts::merge(const OccupancyCounts& other) {
    channels.resize(std::max(channels.size(), other.channels.size()));
    for (std::size_t i = 0; i < other.channels.size(); ++i) {
        channels[i].merge(other.channels[i]);
    }
    cells.merge(other.cells);
    sweeps += other.sweeps;
    thresholds += other.thresholds;
}

namespace {

void write(StateWriter& writer, const OccupancyCount& count) {
    writer.count(static_cast<std::uint64_t>(count.samples));
    if (count.samples > 0) {
        writer.count(static_cast<std::uint64_t>(count.occupied));
    }
}

OccupancyCount readCount(StateReader& reader, std::uint64_t most) {
    OccupancyCount count;
    count.samples = static_cast<long long>(reader.count(most));
    if (count.samples > 0) {
        count.occupied =
            static_cast<long long>(reader.count(static_cast<std::uint64_t>(count.samples)));
    }
    return count;
}

}  // namespace

void OccupancyCounts::write(StateWriter& writer) const {
    writer.count(static_cast<std::uint64_t>(sweeps));
    for (const OccupancyCount& channel : channels) {
        rfu::write(writer, channel);
    }
    rfu::write(writer, cells);
    writer.number(thresholds);
}

OccupancyCounts OccupancyCounts::read(StatePart& part, std::size_t channels) {
    StateReader& reader = part.statistics;
    OccupancyCounts counts;
    const std::uint64_t sweeps = reader.count(static_cast<std::uint64_t>(part.head.sweeps));
    reader.require(sweeps > 0);
    counts.sweeps = static_cast<long long>(sweeps);
    for (std::size_t i = 0; i < channels; ++i) {
        counts.channels.push_back(readCount(reader, sweeps));
    }
    counts.cells = readCount(reader, sweeps * part.head.points);
    counts.thresholds = reader.number();
    return counts;
}

double OccupancyCounts::resourceShare() const {
    double sum = 0.0;
    for (const OccupancyCount& channel : channels) {
        sum += channel.samples > 0 ? channel.share() : 0.0;
    }
    return sum / static_cast<double>(measuredChannels());
}

std::size_t OccupancyCounts::measuredChannels() const {
    return static_cast<std::size_t>(
        std::count_if(channels.begin(), channels.end(),
                      [](const OccupancyCount& channel) { return channel.samples > 0; }));
}

Occupancy::Occupancy(const FrequencyAxis& axis, std::vector<Channel> channels,
                     OccupancyOptions options, std::size_t maxBytes)
    : axis_(axis),
      channels_(std::move(channels)),
      options_(std::move(options)),
      maxBytes_(maxBytes),
      band_(std::find_if(channels_.begin(), channels_.end(), std::mem_fn(&Channel::isRecorded))
                ->range),
      sums_(axis.points.size() + 1, 0) {
    const ChannelPlacer placer(axis);
    for (const bool isUsable : placer.usable()) {
        isUsable_.push_back(isUsable ? 1 : 0);
    }
    for (const Channel& channel : channels_) {
        const std::size_t place = bins_.size();
        areOfPoints_ = areOfPoints_ && channel.firstPoint == place && channel.endPoint == place + 1;
        if (channel.isRecorded()) {
            band_.low = std::min(band_.low, channel.range.low);
            band_.high = std::max(band_.high, channel.range.high);
        }
        bins_.push_back(static_cast<std::uint32_t>(
            std::count(isUsable_.begin() + static_cast<std::ptrdiff_t>(channel.firstPoint),
                       isUsable_.begin() + static_cast<std::ptrdiff_t>(channel.endPoint), 1)));
    }
    bandPoints_ = placer.pointsIn(band_);
    // A level that was not measured lies above nothing.
    for (double& limit : options_.limits) {
        limit = std::max(limit, traceRssiBuffer::kNoMeasurement);
    }
    threshold_ = options_.limits.empty() ? 0.0 : meanThreshold(options_.limits);
}

double Occupancy::meanThreshold(const std::vector<double>& thresholds) const {
    double sum = 0.0;
    long long count = 0;
    for (std::size_t i = bandPoints_.first; i < bandPoints_.second; ++i) {
        if (!std::isnan(thresholds[i])) {
            sum += thresholds[i];
            ++count;
        }
    }
    return count == 0 ? 0.0 : sum / static_cast<double>(count);
}

OccupancyCounts& Occupancy::countsOf(int hour) {
    OccupancyCounts& counts = counts_[hour];
    counts.channels.resize(channels_.size());
    return counts;
}

template <typename Level>
void Occupancy::count(const Level* levels, Level notMeasured, const std::vector<Level>& thresholds,
                      OccupancyCounts& counts) {
    ++counts.sweeps;
    counts.thresholds += threshold_;
    if (areOfPoints_) {
        int measured = 0;
        int above = 0;
        for (std::size_t i = 0; i < channels_.size(); ++i) {
            const int isMeasured = levels[i] != notMeasured ? 1 : 0;
            const int isAbove = levels[i] > thresholds[i] ? 1 : 0;
            counts.channels[i].samples += isMeasured;
            counts.channels[i].occupied += isAbove;
            measured += isMeasured;
            above += isAbove;
        }
        counts.cells.merge({measured, above});
        return;
    }
    std::uint64_t sum = 0;
    for (std::size_t i = 0; i < isUsable_.size(); ++i) {
        const auto isMeasured = static_cast<std::uint64_t>(levels[i] != notMeasured);
        const auto isAbove = static_cast<std::uint64_t>(levels[i] > thresholds[i]);
        sum += (isMeasured + isAbove * kOneAbove) * isUsable_[i];
        sums_[i + 1] = sum;
    }
    const auto sumOf = [this](std::size_t first, std::size_t end) {
        return sums_[end] - sums_[first];
    };
    for (std::size_t i = 0; i < channels_.size(); ++i) {
        const std::uint64_t found = sumOf(channels_[i].firstPoint, channels_[i].endPoint);
        const bool isWhole = bins_[i] > 0 && found % kOneAbove == bins_[i];
        counts.channels[i].samples += isWhole ? 1 : 0;
        counts.channels[i].occupied += isWhole && found >= kOneAbove ? 1 : 0;
    }
    const std::uint64_t found = sumOf(bandPoints_.first, bandPoints_.second);
    counts.cells.merge(
        {static_cast<long long>(found % kOneAbove), static_cast<long long>(found / kOneAbove)});
}

void Occupancy::add(const Sweep& sweep) {
    const int hour = options_.isByHour ? hourOf(sweep.time) : kAllHours;
    if (!options_.limits.empty()) {
        count(sweep.levels.data(), traceRssiBuffer::kNoMeasurement, options_.limits,
              countsOf(hour));
        return;
    }
    history_.add(sweep);
    hours_.push_back(hour);
    if (history_.bytesHeld() >= maxBytes_) {
        judgePart();
    }
}

/// Counts the sweeps that are held.
void Occupancy::judgePart() {
    if (packedThresholds_.empty() || history_.bytesHeld() >= maxBytes_ / kLeastPart) {
        std::vector<double> thresholds =
            noiseFloor(history_.medians(), firstPointsOf(axis_), options_.window).levels;
        packedThresholds_.clear();
        for (double& threshold : thresholds) {
            threshold += options_.above;
            packedThresholds_.push_back(packedThreshold(threshold));
        }
        threshold_ = meanThreshold(thresholds);
        ++parts_;
    }
    std::size_t sweep = 0;
    history_.forEachSweep([&](const std::vector<PackedLevel>& levels) {
        count(levels.data(), kNotMeasured, packedThresholds_, countsOf(hours_[sweep++]));
    });
    history_ = LevelHistory();
    hours_.clear();
}

const HourlyOccupancy& Occupancy::finish() {
    if (!hours_.empty()) {
        judgePart();
    }
    return counts_;
}

void Occupancy::write(StateWriter& writer) const {
    writer.count(counts_.size());
    for (const auto& [hour, counts] : counts_) {
        writer.integer(hour);
        counts.write(writer);
    }
}

/// Of the points of a state that are channels, their places among these channels.
std::vector<std::size_t> Occupancy::placesOf(const StatePart& part) const {
    std::vector<std::size_t> places;
    for (const Channel& channel : ChannelPlacer(part.head.axis).ofPoints()) {
        const std::size_t point = part.places[channel.firstPoint];
        const auto own = std::find_if(
            channels_.begin() + static_cast<std::ptrdiff_t>(places.empty() ? 0 : places.back()),
            channels_.end(),
            [point](const Channel& candidate) { return candidate.firstPoint == point; });
        if (own == channels_.end()) {
            throw InputError(part.file, "lacks a hop whose bins cover others");
        }
        places.push_back(static_cast<std::size_t>(own - channels_.begin()));
    }
    return places;
}

void Occupancy::merge(StatePart& part, bool areChannelsPoints) {
    StateReader& reader = part.statistics;
    std::vector<std::size_t> places(channels_.size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    if (areChannelsPoints) {
        places = placesOf(part);
    }
    const std::size_t hours = reader.countOf(places.size());
    int least = options_.isByHour ? 0 : kAllHours;
    const int most = options_.isByHour ? kHoursOfDay - 1 : kAllHours;
    for (std::size_t i = 0; i < hours; ++i) {
        const auto hour = static_cast<int>(reader.integer(least, most));
        least = hour + 1;
        const OccupancyCounts read = OccupancyCounts::read(part, places.size());
        OccupancyCounts other = read;
        other.channels.assign(channels_.size(), {});
        for (std::size_t channel = 0; channel < places.size(); ++channel) {
            other.channels[places[channel]] = read.channels[channel];
        }
        countsOf(hour).merge(other);
    }
}

}  // namespace rfu

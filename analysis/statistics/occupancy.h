#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "analysis/recordings/channels.h"
#include "analysis/recordings/stateFile.h"
#include "analysis/recordings/sweepReader.h"
#include "analysis/statistics/levelHistory.h"
#include "analysis/statistics/packedLevel.h"
#include "analysis/support/numbers.h"

namespace rfu {

/// How many samples there were, and how many of them were occupied.
struct OccupancyCount {
    long long samples = 0;
    long long occupied = 0;

    void merge(const OccupancyCount& other) {
        samples += other.samples;
        occupied += other.occupied;
    }
    /// From 0 to 1. @pre there is a sample
    double share() const { return static_cast<double>(occupied) / static_cast<double>(samples); }
};

struct ShareInterval {
    double low;
    double high;
};

/// The Wilson score interval for z = 1.96: where the true share lies with a probability of 95 %, if
/// the samples are independent. @pre there is a sample
ShareInterval wilsonInterval(const OccupancyCount& count);

/// The occupancy of channels and of the band that they span. The counts of two recordings of the same
/// channels merge to those of both.
struct OccupancyCounts {
    std::vector<OccupancyCount>
        channels;          // samples are sweeps in which the whole channel was measured
    OccupancyCount cells;  // of the band: levels of its points
    long long sweeps = 0;
    double thresholds = 0.0;  // dBm, sum over the sweeps of the mean threshold of the band's points

    void merge(const OccupancyCounts& other);
    void write(StateWriter& writer) const;
    /// @param channels of the state
    static OccupancyCounts read(StatePart& part, std::size_t channels);
    /// dBm. @pre there is a sweep
    double meanThreshold() const { return thresholds / static_cast<double>(sweeps); }
    /// Mean of the shares of the channels that have samples. @pre there is one
    double resourceShare() const;
    /// How many channels have samples.
    std::size_t measuredChannels() const;
};

/// By hour of day, or one for all of them under kAllHours.
using HourlyOccupancy = std::map<int, OccupancyCounts>;
inline constexpr int kAllHours = -1;

struct OccupancyOptions {
    std::vector<double> limits;  // dBm, of each point; none: from the floor
    double above = 0.0;          // dB from the floor to the threshold of a point
    std::size_t window = 101;    // points, for the floor
    bool isByHour = false;
};

/// Counts in how many sweeps channels are occupied, that is whether the level of any of their points
/// lies above its threshold; see docs/occupancy.md.
class Occupancy {
public:
    /// Of the levels that a floor is found from.
    static constexpr std::size_t kMaxBytes = 140000000;
    /// By hour; more would not fit the memory.
    static constexpr std::size_t kMaxChannelsByHour = 200000;

    /// @param axis     of the recording, with frequencies
    /// @param channels to count, at least one of them recorded
    /// @param maxBytes see kMaxBytes
    Occupancy(const FrequencyAxis& axis, std::vector<Channel> channels, OccupancyOptions options,
              std::size_t maxBytes = kMaxBytes);

    void add(const Sweep& sweep);

    /// To be called once, behind the last sweep.
    const HourlyOccupancy& finish();

    /// The counts. @pre limits are given: a floor is that of a whole recording
    void write(StateWriter& writer) const;
    /// Adds the sweeps of a state of the same channels.
    /// @param areChannelsPoints whether each point is a channel
    void merge(StatePart& part, bool areChannelsPoints);

    const std::vector<Channel>& channels() const { return channels_; }
    /// From the beginning of the lowest recorded channel to the end of the highest.
    const FrequencyRange& band() const { return band_; }
    /// In how many parts of the recording the floor was found; 0 where limits are given.
    int parts() const { return parts_; }

private:
    OccupancyCounts& countsOf(int hour);
    std::vector<std::size_t> placesOf(const StatePart& part) const;
    template <typename Level>
    void count(const Level* levels, Level notMeasured, const std::vector<Level>& thresholds,
               OccupancyCounts& counts);
    void judgePart();
    double meanThreshold(const std::vector<double>& thresholds) const;

    FrequencyAxis axis_;
    std::vector<Channel> channels_;
    OccupancyOptions options_;
    std::size_t maxBytes_;
    FrequencyRange band_;
    std::pair<std::size_t, std::size_t> bandPoints_;  // the first, and behind the last
    std::vector<std::uint8_t> isUsable_;              // of each point, 0 or 1
    std::vector<std::uint32_t> bins_;                 // of each channel, how many points count
    bool areOfPoints_ = true;                         // each of the point of its number
    double threshold_ = 0.0;                          // mean of the band

    // Of the newest sweep: how many points before each one were measured and lay above.
    std::vector<std::uint64_t> sums_;

    // Sweeps whose thresholds are not known yet.
    LevelHistory history_;
    std::vector<int> hours_;
    std::vector<PackedLevel> packedThresholds_;  // of the part before
    int parts_ = 0;

    HourlyOccupancy counts_;
};

}  // namespace rfu

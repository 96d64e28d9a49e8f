#include "analysis/statistics/occupancy.h"

#include <gtest/gtest.h>
#include <rfUtils/trace/traceRssiBuffer.h>

#include <cmath>

#include "analysis/statistics/noise.h"

using namespace rfu;
using rfu::test::Noise;

namespace {

constexpr double kNone = traceRssiBuffer::kNoMeasurement;

/// Bins of 1 MHz from 100 MHz on.
FrequencyAxis axisOf(std::size_t points) {
    FrequencyAxis axis;
    for (std::size_t i = 0; i < points; ++i) {
        axis.points.push_back(100.0 + static_cast<double>(i));
    }
    axis.bands.push_back({0, 100.0, 100.0 + static_cast<double>(points)});
    return axis;
}

/// The first channel begins at 100 MHz.
std::vector<Channel> channelsOf(const FrequencyAxis& axis, int width, int step, int count) {
    std::vector<Channel> channels;
    for (const FrequencyRange& range : ChannelRaster{100.0, double(step), count}.ranges(width)) {
        channels.push_back(ChannelPlacer(axis).place(range));
    }
    return channels;
}

OccupancyOptions limitedTo(double limit, std::size_t points, bool isByHour = false) {
    OccupancyOptions options;
    options.limits.assign(points, limit);
    options.isByHour = isByHour;
    return options;
}

OccupancyOptions above(double decibels) {
    OccupancyOptions options;
    options.above = decibels;
    return options;
}

std::string at(int hour) {
    return "2024-05-04 " + std::string(hour < 10 ? "0" : "") + std::to_string(hour) + ":59:59";
}

std::vector<std::pair<long long, long long>> pairsOf(const OccupancyCounts& counts) {
    std::vector<std::pair<long long, long long>> pairs;
    for (const OccupancyCount& count : counts.channels) {
        pairs.emplace_back(count.samples, count.occupied);
    }
    return pairs;
}

using Pairs = std::vector<std::pair<long long, long long>>;

/// A sweep of 40 points at -90 dBm but for one.
Sweep sweepWith(std::size_t point, double level, double floor = -90.0) {
    Sweep sweep = {at(0), std::vector<double>(40, floor)};
    sweep.levels[point] = level;
    return sweep;
}

}  // namespace

TEST(Occupancy, HasTheWilsonInterval) {
    const struct {
        OccupancyCount count;
        ShareInterval interval;
    } kRows[] = {
        // z^2 / (n + z^2), z = 1.96
        {{10, 0}, {0.0, 3.8416 / 13.8416}},
        {{10, 10}, {10.0 / 13.8416, 1.0}},
        {{1, 0}, {0.0, 3.8416 / 4.8416}},
        // (5 + 1.9208 -+ 1.96 sqrt(2.5 + 0.9604)) / 13.8416
        {{10, 5}, {0.2365896, 0.7634104}},
        // (1 + 1.9208 -+ 1.96 sqrt(0.9 + 0.9604)) / 13.8416
        {{10, 1}, {0.0178753, 0.4041564}},
        {{1000000, 250000}, {0.2491524, 0.2508496}},
    };
    for (const auto& row : kRows) {
        const ShareInterval found = wilsonInterval(row.count);
        EXPECT_NEAR(found.low, row.interval.low, 1e-6) << row.count.occupied;
        EXPECT_NEAR(found.high, row.interval.high, 1e-6) << row.count.occupied;
        EXPECT_LE(found.low, row.count.share());
        EXPECT_GE(found.high, row.count.share());
    }
}

// The example of docs/occupancy.md.
TEST(Occupancy, CountsSweepsInWhichAnyBinOfAChannelLiesAbove) {
    const FrequencyAxis axis = axisOf(6);
    Occupancy occupancy(axis, channelsOf(axis, 2, 2, 3), limitedTo(-80.0, 6));
    occupancy.add({at(10), {-90, -79, -90, -90, -80, -90}});
    occupancy.add({at(10), {-70, -70, -90, -90, -90, -90}});
    occupancy.add({at(11), {-90, -90, -90, kNone, -90, -90}});
    occupancy.add({at(11), {-90, -90, -70, kNone, -90, -90}});
    const OccupancyCounts& counts = occupancy.finish().at(kAllHours);
    EXPECT_EQ(pairsOf(counts), (Pairs{{4, 2}, {2, 0}, {4, 0}}));
    EXPECT_EQ(counts.cells.samples, 22);
    EXPECT_EQ(counts.cells.occupied, 4);
    EXPECT_DOUBLE_EQ(counts.resourceShare(), 0.5 / 3.0);
    EXPECT_EQ(counts.measuredChannels(), 3U);
    EXPECT_DOUBLE_EQ(counts.meanThreshold(), -80.0);
    EXPECT_EQ(occupancy.parts(), 0);
}

TEST(Occupancy, CountsHoursApart) {
    const FrequencyAxis axis = axisOf(2);
    Occupancy occupancy(axis, ChannelPlacer(axis).ofPoints(), limitedTo(-80.0, 2, true));
    occupancy.add({at(9), {-70, -90}});
    occupancy.add({at(23), {-70, -70}});
    occupancy.add({at(9), {-90, kNone}});
    const HourlyOccupancy& hours = occupancy.finish();
    ASSERT_EQ(hours.size(), 2U);
    EXPECT_EQ(pairsOf(hours.at(9)), (Pairs{{2, 1}, {1, 0}}));
    EXPECT_EQ(pairsOf(hours.at(23)), (Pairs{{1, 1}, {1, 1}}));
    EXPECT_EQ(hours.at(9).cells.samples, 3);
}

TEST(Occupancy, TakesOverlappingChannelsAndLeavesOutThoseNotRecorded) {
    const FrequencyAxis axis = axisOf(4);
    Occupancy occupancy(axis, channelsOf(axis, 2, 1, 5), limitedTo(-80.0, 4));
    occupancy.add({at(0), {-90, -90, -70, -90}});
    const OccupancyCounts& counts = occupancy.finish().at(kAllHours);
    EXPECT_EQ(pairsOf(counts), (Pairs{{1, 0}, {1, 1}, {1, 1}, {0, 0}, {0, 0}}));
    EXPECT_DOUBLE_EQ(counts.resourceShare(), 2.0 / 3.0);
    EXPECT_EQ(occupancy.band().low, 100.0);
    EXPECT_EQ(occupancy.band().high, 104.0);
    EXPECT_EQ(counts.cells.samples, 4);
}

TEST(Occupancy, LeavesOutBinsThatTheNextHopCovers) {
    const FrequencyAxis axis = {{100, 101, 101, 102}, {{0, 100, 103}}, {}};
    Occupancy occupancy(axis, channelsOf(axis, 3, 3, 1), limitedTo(-80.0, 4));
    occupancy.add({at(0), {-90, -10, -90, -90}});
    occupancy.add({at(0), {-90, kNone, -70, -90}});
    const OccupancyCounts& counts = occupancy.finish().at(kAllHours);
    EXPECT_EQ(pairsOf(counts), (Pairs{{2, 1}}));
    EXPECT_EQ(counts.cells.samples, 6);
}

TEST(Occupancy, NeverTakesAMissingLevelForALevel) {
    const FrequencyAxis axis = axisOf(1);
    Occupancy occupancy(axis, ChannelPlacer(axis).ofPoints(), limitedTo(-2000.0, 1));
    occupancy.add({at(0), {kNone}});
    occupancy.add({at(0), {-200}});
    const OccupancyCounts& counts = occupancy.finish().at(kAllHours);
    EXPECT_EQ(pairsOf(counts), (Pairs{{1, 1}}));
    EXPECT_EQ(counts.cells.occupied, 1);
}

TEST(Occupancy, LiesStrictlyAboveTheFloor) {
    const FrequencyAxis axis = axisOf(40);
    Occupancy occupancy(axis, channelsOf(axis, 20, 20, 2), above(10.0));
    occupancy.add(sweepWith(5, -80.0));
    occupancy.add(sweepWith(5, -79.99));
    occupancy.add(sweepWith(25, -79.99));
    occupancy.add(sweepWith(5, kNone));
    const OccupancyCounts& counts = occupancy.finish().at(kAllHours);
    EXPECT_EQ(pairsOf(counts), (Pairs{{3, 1}, {4, 1}}));
    EXPECT_EQ(counts.cells.samples, 159);
    EXPECT_EQ(counts.cells.occupied, 2);
    EXPECT_NEAR(counts.meanThreshold(), -80.0, 1e-9);
    EXPECT_EQ(occupancy.parts(), 1);
}

// A steady carrier is its own median, but not that of its neighbours.
TEST(Occupancy, TakesNoSteadyCarrierForTheFloor) {
    const FrequencyAxis axis = axisOf(40);
    Occupancy occupancy(axis, ChannelPlacer(axis).ofPoints(), above(10.0));
    for (int i = 0; i < 5; ++i) {
        occupancy.add(sweepWith(5, -60.0));
    }
    EXPECT_EQ(pairsOf(occupancy.finish().at(kAllHours))[5], std::pair(5LL, 5LL));
}

TEST(Occupancy, FollowsTheFloorFromPartToPart) {
    const FrequencyAxis axis = axisOf(40);
    // A sweep takes 80 bytes and 64 for its time: two make a part.
    Occupancy occupancy(axis, channelsOf(axis, 40, 40, 1), above(10.0), 288);
    const auto add = [&](double floor, double level) { occupancy.add(sweepWith(5, level, floor)); };
    add(-90.0, -79.0);
    add(-90.0, -81.0);
    add(-60.0, -51.0);
    add(-60.0, -49.0);
    EXPECT_EQ(occupancy.parts(), 2);
    const OccupancyCounts& counts = occupancy.finish().at(kAllHours);
    EXPECT_EQ(pairsOf(counts), (Pairs{{4, 2}}));
    EXPECT_NEAR(counts.meanThreshold(), -65.0, 1e-9);
}

TEST(Occupancy, TakesTheFloorOfThePartBeforeForALastOneThatIsShort) {
    const FrequencyAxis axis = axisOf(40);
    // Sixteen sweeps make a part; a single one is less than an eighth of it.
    for (const std::size_t sweeps : {17U, 18U}) {
        Occupancy occupancy(axis, channelsOf(axis, 40, 40, 1), above(10.0), 16 * 144);
        for (std::size_t i = 0; i < 16; ++i) {
            occupancy.add(sweepWith(5, -90.0));
        }
        for (std::size_t i = 16; i < sweeps; ++i) {
            occupancy.add(sweepWith(5, -60.0, -60.0));
        }
        const bool isShort = sweeps == 17;
        EXPECT_EQ(pairsOf(occupancy.finish().at(kAllHours))[0],
                  std::pair(static_cast<long long>(sweeps), isShort ? 1LL : 0LL));
        EXPECT_EQ(occupancy.parts(), isShort ? 1 : 2);
    }
}

TEST(Occupancy, MergesToThatOfBothRecordings) {
    const FrequencyAxis axis = axisOf(4);
    Noise noise(1, 7);
    Occupancy whole(axis, channelsOf(axis, 2, 2, 2), limitedTo(-92.0, 4));
    OccupancyCounts merged;
    for (int part = 0; part < 3; ++part) {
        Occupancy own(axis, channelsOf(axis, 2, 2, 2), limitedTo(-92.0, 4));
        for (int i = 0; i < 50 * part + 1; ++i) {
            Sweep sweep = {at(part), {}};
            for (int point = 0; point < 4; ++point) {
                sweep.levels.push_back(i % 7 == 0 ? kNone : noise.level(-95.0));
            }
            own.add(sweep);
            whole.add(sweep);
        }
        merged.merge(own.finish().at(kAllHours));
    }
    const OccupancyCounts& all = whole.finish().at(kAllHours);
    EXPECT_EQ(pairsOf(merged), pairsOf(all));
    EXPECT_EQ(merged.cells.samples, all.cells.samples);
    EXPECT_EQ(merged.cells.occupied, all.cells.occupied);
    EXPECT_EQ(merged.sweeps, all.sweeps);
    EXPECT_DOUBLE_EQ(merged.meanThreshold(), -92.0);
}

// Transmitters of known duty cycles, one in each channel, in noise of single periodograms. An
// interval of 95 % misses one of twenty; fewer than 33 of 40 come in one of 30 000 tries.
TEST(Occupancy, LiesWithinItsInterval) {
    constexpr int kChannels = 40;
    constexpr int kWidth = 10;
    const FrequencyAxis axis = axisOf(kChannels * kWidth);
    std::mt19937_64 random(11);
    Noise noise(1, 12);
    std::vector<long long> onAir(kChannels, 0);
    const auto duty = [](int channel) { return (channel + 0.5) / kChannels; };
    Occupancy limited(axis, channelsOf(axis, kWidth, kWidth, kChannels),
                      limitedTo(-75.0, axis.points.size()));
    Occupancy floored(axis, channelsOf(axis, kWidth, kWidth, kChannels), above(20.0));
    for (int i = 0; i < 600; ++i) {
        Sweep sweep = {at(0), {}};
        for (int channel = 0; channel < kChannels; ++channel) {
            const bool isOnAir = static_cast<double>(random() >> 11) * 0x1p-53 < duty(channel);
            onAir[static_cast<std::size_t>(channel)] += int{isOnAir};
            for (int point = 0; point < kWidth; ++point) {
                sweep.levels.push_back(isOnAir && point == 4 ? -60.0 : noise.level(-95.0));
            }
        }
        limited.add(sweep);
        floored.add(sweep);
    }
    for (Occupancy* occupancy : {&limited, &floored}) {
        const OccupancyCounts& counts = occupancy->finish().at(kAllHours);
        int within = 0;
        for (int channel = 0; channel < kChannels; ++channel) {
            const OccupancyCount& count = counts.channels[static_cast<std::size_t>(channel)];
            EXPECT_EQ(count.occupied, onAir[static_cast<std::size_t>(channel)]) << channel;
            const ShareInterval interval = wilsonInterval(count);
            within += int{interval.low <= duty(channel) && duty(channel) <= interval.high};
        }
        EXPECT_GE(within, 33);
        EXPECT_NEAR(counts.meanThreshold(), -75.0, 0.5);
    }
}

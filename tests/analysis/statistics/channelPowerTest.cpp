#include "analysis/statistics/channelPower.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using rfu::ChannelFigures;
using rfu::ChannelOptions;
using rfu::ChannelPowers;
using rfu::FrequencyAxis;
using rfu::FrequencyRange;

namespace {

constexpr double kNone = -999.0;
constexpr double kWithin = 1e-9;

/// Bins of 1 MHz from 100 to 104 MHz and from 110 to 112 MHz; two hops meet at 102 MHz.
FrequencyAxis twoBands() {
    return {
        {100, 101, 102, 103, 110, 111},
        {{0, 100, 104}, {4, 110, 112}},
        {{{100e6, 102e6, 1e6}, 0, 2}, {{102e6, 104e6, 1e6}, 0, 2}, {{110e6, 112e6, 1e6}, 0, 2}}};
}

/// A sweep from powers in mW; 0 for none.
rfu::Sweep sweepOf(const std::vector<double>& powers) {
    rfu::Sweep sweep;
    for (const double power : powers) {
        sweep.levels.push_back(power == 0.0 ? kNone : 10.0 * std::log10(power));
    }
    return sweep;
}

double milliwatts(const std::optional<ChannelFigures>& figures) {
    return figures ? std::pow(10.0, figures->power / 10.0) : std::nan("");
}

}  // namespace

TEST(ChannelPower, SumsBinsAndCutsThoseAtTheEdges) {
    const struct {
        const char* name;
        FrequencyRange channel;
        double enbw;
        double power;  // mW
    } kRows[] = {
        {"whole bins", {100, 104}, 1.0, 1111.0},
        {"one bin", {101, 102}, 1.0, 10.0},
        {"to half of the first and a quarter of the last", {100.5, 102.25}, 1.0, 0.5 + 10.0 + 25.0},
        {"within a bin", {102.25, 102.5}, 1.0, 25.0},
        {"the last quarter of a band", {103.75, 104}, 1.0, 250.0},
        {"another band", {110, 111.5}, 1.0, 2.0 + 2.0},
        {"a window of one and a half bins", {100, 104}, 1.5, 1111.0 / 1.5},
    };
    for (const auto& row : kRows) {
        ChannelPowers powers(twoBands(), {row.channel}, {0.99, row.enbw});
        ASSERT_TRUE(powers.isCovered(0)) << row.name;
        powers.add(sweepOf({1, 10, 100, 1000, 2, 4}));
        EXPECT_NEAR(milliwatts(powers.mean(0)) / row.power, 1.0, kWithin) << row.name;
        EXPECT_NEAR(milliwatts(powers.ofLastSweep(0)) / row.power, 1.0, kWithin) << row.name;
    }
}

TEST(ChannelPower, RefusesWhatTheRecordingDoesNotReach) {
    const struct {
        FrequencyRange channel;
        bool isCovered;
    } kRows[] = {
        {{100, 104}, true},
        {{99.9, 101}, false},
        {{103, 104.1}, false},
        {{103, 111}, false},
        {{105, 106}, false},
        {{98, 99}, false},
        {{112, 113}, false},
        {{90, 120}, false},
        {{110, 112}, true},
        {{109, 111}, false},
        {{100 - 1e-12, 104 + 1e-12}, true},  // rounding of frequencies
    };
    for (const auto& row : kRows) {
        ChannelPowers powers(twoBands(), {row.channel}, {});
        EXPECT_EQ(powers.isCovered(0), row.isCovered)
            << row.channel.low << " to " << row.channel.high;
        powers.add(sweepOf({1, 1, 1, 1, 1, 1}));
        EXPECT_EQ(powers.mean(0).has_value(), row.isCovered);
        EXPECT_EQ(powers.ofLastSweep(0).has_value(), row.isCovered);
    }
}

TEST(ChannelPower, TellsHopsThatMeetWithin) {
    const struct {
        FrequencyRange channel;
        bool hasHopBorder;
    } kRows[] = {
        {{101, 103}, true},   {{100, 102}, false}, {{102, 104}, false},
        {{101, 102.1}, true}, {{110, 112}, false},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(ChannelPowers(twoBands(), {row.channel}, {}).hasHopBorder(0), row.hasHopBorder)
            << row.channel.low << " to " << row.channel.high;
    }
}

TEST(ChannelPower, IsTheMeanOfTheSweepsInMilliwatts) {
    ChannelPowers powers(twoBands(), {{100, 102}}, {});
    EXPECT_FALSE(powers.mean(0));
    EXPECT_FALSE(powers.ofLastSweep(0));
    powers.add(sweepOf({1, 1, 7, 7, 7, 7}));
    powers.add(sweepOf({100, 98, 7, 7, 7, 7}));
    EXPECT_NEAR(milliwatts(powers.mean(0)), 100.0, 1e-7);  // (2 + 198) / 2
    EXPECT_NEAR(milliwatts(powers.ofLastSweep(0)), 198.0, 1e-7);
}

TEST(ChannelPower, CountsNoSweepThatLacksALevelOfTheChannel) {
    // The third channel takes a tenth of the bin that is missing, the fourth ends before it.
    ChannelPowers powers(twoBands(), {{100, 101}, {100, 104}, {101.9, 103}, {101, 102}}, {});
    powers.add(sweepOf({1, 1, 1, 1, 1, 1}));
    powers.add(sweepOf({5, 0, 5, 5, 0, 0}));
    EXPECT_NEAR(milliwatts(powers.mean(0)), 3.0, kWithin);
    EXPECT_NEAR(milliwatts(powers.mean(1)), 4.0, kWithin);
    EXPECT_NEAR(milliwatts(powers.mean(2)), 1.1, kWithin);
    EXPECT_NEAR(milliwatts(powers.mean(3)), 1.0, kWithin);
    EXPECT_NEAR(milliwatts(powers.ofLastSweep(0)), 5.0, kWithin);
    EXPECT_FALSE(powers.ofLastSweep(1));
    powers.add(sweepOf({1, 1, 1, 1, 1, 1}));
    EXPECT_TRUE(powers.ofLastSweep(1));
}

TEST(ChannelPower, LeavesOutBinsThatTheNextHopCovers) {
    // The second bin of the first hop begins with the second hop.
    const FrequencyAxis axis = {{100, 101, 101, 102},
                                {{0, 100, 103}},
                                {{{100e6, 101.6e6, 1e6}, 0, 2}, {{101e6, 103e6, 1e6}, 0, 2}}};
    ChannelPowers powers(axis, {{100, 103}}, {});
    powers.add(sweepOf({1, 50, 2, 3}));
    powers.add(sweepOf({1, 0, 2, 3}));
    EXPECT_NEAR(milliwatts(powers.mean(0)), 6.0, kWithin);
}

TEST(ChannelPower, FindsTheOccupiedBandWithinBins) {
    const struct {
        const char* name;
        std::vector<double> powers;
        FrequencyRange channel;
        double share;
        FrequencyRange occupied;
    } kRows[] = {
        // Half a percent of 4 mW at each side.
        {"even power", {1, 1, 1, 1}, {100, 104}, 0.99, {100.02, 103.98}},
        // 0.5 mW lie in half of the first and of the last bin.
        {"most in the middle", {1, 48, 50, 1}, {100, 104}, 0.99, {100.5, 103.5}},
        {"the outer bins are the rest", {1, 48, 50, 1}, {100, 104}, 0.98, {101, 103}},
        // 25 mW from below: 24 of 48 mW of the second bin; from above: 24 of 50 mW of the third.
        {"half of the power", {1, 48, 50, 1}, {100, 104}, 0.5, {101.5, 102.52}},
        {"a carrier in one bin", {1e-9, 1, 1e-9, 1e-9}, {100, 104}, 0.98, {101.01, 101.99}},
        // Bins of 5, 10 and 5 mW; 0.1 mW are 2 % of the 0.5 MHz at each end.
        {"cut bins", {10, 10, 10, 10}, {100.5, 102.5}, 0.99, {100.51, 102.49}},
        {"within one bin", {1, 1, 1, 1}, {102.2, 102.4}, 0.9, {102.21, 102.39}},
    };
    for (const auto& row : kRows) {
        ChannelPowers powers(twoBands(), {row.channel}, {row.share, 1.0});
        std::vector<double> levels = row.powers;
        levels.resize(6);
        powers.add(sweepOf(levels));
        powers.add(sweepOf(levels));
        for (const auto& figures : {powers.mean(0), powers.ofLastSweep(0)}) {
            ASSERT_TRUE(figures) << row.name;
            EXPECT_NEAR(figures->occupied.low, row.occupied.low, 1e-7) << row.name;
            EXPECT_NEAR(figures->occupied.high, row.occupied.high, 1e-7) << row.name;
        }
    }
}

TEST(ChannelPower, TakesTheOccupiedBandOfTheMeanPowers) {
    ChannelPowers powers(twoBands(), {{100, 102}}, {0.9, 1.0});
    powers.add(sweepOf({19, 1, 1, 1, 1, 1}));
    powers.add(sweepOf({1, 19, 1, 1, 1, 1}));
    // 10 mW in each bin: a tenth of each at the ends.
    EXPECT_NEAR(powers.mean(0)->occupied.low, 100.1, 1e-7);
    EXPECT_NEAR(powers.mean(0)->occupied.high, 101.9, 1e-7);
}

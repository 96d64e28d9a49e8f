#include "analysis/recordings/channels.h"

#include <gtest/gtest.h>

using rfu::Channel;
using rfu::ChannelPlacer;
using rfu::FrequencyAxis;
using rfu::FrequencyRange;
using rfu::parseChannelRaster;

namespace {

/// Bins of 1 MHz from 100 to 104 MHz and from 110 to 112 MHz.
const FrequencyAxis kTwoBands = {
    {100, 101, 102, 103, 110, 111}, {{0, 100, 104}, {4, 110, 112}}, {}};

}  // namespace

TEST(Channels, AreReadAsARaster) {
    const struct {
        const char* text;
        bool isRaster;
        double low = 0.0;
        double step = 0.0;
        int count = 0;
    } kRows[] = {
        {"446M:12.5k:16", true, 446.0, 0.0125, 16},
        {" 88 MHz : 200kHz : 1 ", true, 88.0, 0.2, 1},
        {"0:1:2", true, 0.0, 1.0, 2},
        {"446M:12.5k", false},
        {"446M:12.5k:", false},
        {"446M::16", false},
        {"446M:12.5k:16:2", false},
        {"446M:12.5k:0", false},
        {"446M:12.5k:1.5", false},
        {"446M:0:16", false},
        {"446M:-1:16", false},
        {"-1:1:16", false},
        {"446m:12.5k:16", false},
        {"", false},
    };
    for (const auto& row : kRows) {
        const auto raster = parseChannelRaster(row.text);
        ASSERT_EQ(raster.has_value(), row.isRaster) << row.text;
        if (raster) {
            EXPECT_DOUBLE_EQ(raster->low, row.low) << row.text;
            EXPECT_DOUBLE_EQ(raster->step, row.step) << row.text;
            EXPECT_EQ(raster->count, row.count) << row.text;
        }
    }
}

TEST(Channels, BeginAtMultiplesOfTheStepWithoutSumsOfRounding) {
    const auto ranges = parseChannelRaster("0.1:0.1:3")->ranges(0.2);
    ASSERT_EQ(ranges.size(), 3U);
    EXPECT_EQ(ranges[2].low, 0.3);  // 0.1 + 2 * 0.1 is not 0.3
    EXPECT_EQ(ranges[2].high, 0.5);
}

TEST(Channels, HoldTheBinsWhoseMiddlesTheyHold) {
    const ChannelPlacer placer(kTwoBands);
    const struct {
        const char* name;
        FrequencyRange range;
        std::size_t first;
        std::size_t end;  // first where it is not recorded
        bool isTooNarrow = false;
    } kRows[] = {
        {"whole bins", {100, 102}, 0, 2},
        {"a middle at its beginning, none at its end", {100.5, 101.5}, 0, 1},
        {"the same but for rounding", {100.5 + 1e-12, 101.5 + 1e-12}, 0, 1},
        {"the second bin", {100.6, 101.6}, 1, 2},
        {"begins less than half a bin before the band", {99.6, 101}, 0, 1},
        {"a bin before the band would belong to it", {99.5, 101}, 0, 0},
        {"ends half a bin behind the band", {103, 104.5}, 3, 4},
        {"a bin behind the band would belong to it", {103, 104.6}, 0, 0},
        {"over a gap", {103, 111}, 0, 0},
        {"the second band", {110, 112}, 4, 6},
        {"no middle", {101.1, 101.4}, 0, 0, true},
        {"in a gap", {105, 106}, 0, 0},
        {"below", {90, 91}, 0, 0},
        {"above", {112, 113}, 0, 0},
    };
    for (const auto& row : kRows) {
        const Channel channel = placer.place(row.range);
        EXPECT_EQ(channel.firstPoint, row.first) << row.name;
        EXPECT_EQ(channel.endPoint, row.end) << row.name;
        EXPECT_EQ(channel.isRecorded(), row.first < row.end) << row.name;
        EXPECT_EQ(channel.isTooNarrow, row.isTooNarrow) << row.name;
        EXPECT_EQ(channel.range.low, row.range.low) << row.name;
    }
    EXPECT_EQ(placer.pointsIn({101, 111}), std::pair(std::size_t{1}, std::size_t{5}));
    EXPECT_EQ(placer.pointsIn({105, 106}), std::pair(std::size_t{0}, std::size_t{0}));
}

TEST(Channels, LeaveOutBinsThatTheNextHopCovers) {
    const FrequencyAxis axis = {{100, 101, 101, 102}, {{0, 100, 103}}, {}};
    const ChannelPlacer placer(axis);
    EXPECT_EQ(placer.place({101, 102}).firstPoint, 2U);
    EXPECT_EQ(placer.place({100, 102}).endPoint, 3U);
    EXPECT_EQ(placer.usable(), (std::vector<bool>{true, false, true, true}));
    const std::vector<Channel> channels = placer.ofPoints();
    ASSERT_EQ(channels.size(), 3U);
    EXPECT_EQ(channels[1].firstPoint, 2U);
    EXPECT_EQ(channels[1].range.low, 101.0);
    EXPECT_EQ(channels[1].range.high, 102.0);
}

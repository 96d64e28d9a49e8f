// The occupancy of channels of a recording, and its levels at points of its own. The first line is --channels, the second
// --limit in dBm, the rest is the recording. Holds for any bytes:
// - channels that are read are as many as asked for, ascend and are not empty;
// - the counts are those of a plain restatement that looks at each bin of each channel in each sweep;
// - above a floor, as many sweeps and levels are measured as below a limit;
// - the levels of a recording at its own points are its levels.
#include "support/input.h"
#include "support/require.h"
#include "support/scratchFile.h"

#include "analysis/recordings/bins.h"
#include "analysis/recordings/channels.h"
#include "analysis/recordings/recording.h"
#include "analysis/statistics/comparison.h"
#include "analysis/statistics/occupancy.h"
#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"

#include <rfUtils/trace/traceRssiBuffer.h>
#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

using namespace rfu;
using namespace rfu::fuzz;

namespace {

constexpr int kMostChannels = 1000;

std::string_view nextLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

std::vector<FrequencyRange> rangesOf(std::string_view text) {
    auto raster = parseChannelRaster(text);
    if (!raster) {
        return {};
    }
    REQUIRE(raster->low >= 0.0 && raster->step > 0.0 && raster->count > 0);
    raster->count = std::min(raster->count, kMostChannels);
    auto ranges = raster->ranges(raster->step);
    REQUIRE(ranges.size() == static_cast<std::size_t>(raster->count));
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        REQUIRE(!std::isnan(ranges[i].low) && ranges[i].low <= ranges[i].high);
        REQUIRE(i == 0 || ranges[i].low >= ranges[i - 1].low);
    }
    return ranges;
}

std::vector<Sweep> read(Recording& recording) {
    std::vector<Sweep> sweeps;
    try {
        for (Sweep sweep; recording.next(sweep);) {
            sweeps.push_back(sweep);
        }
    } catch (const InputError&) {
        // What was read before counts.
    }
    return sweeps;
}

OccupancyCount countOf(const Channel& channel, const std::vector<Bin>& bins,
                       const std::vector<Sweep>& sweeps, double limit) {
    OccupancyCount count;
    for (const Sweep& sweep : sweeps) {
        bool isWhole = channel.isRecorded();
        bool isAbove = false;
        for (const Bin& bin : bins) {
            if (bin.point >= channel.firstPoint && bin.point < channel.endPoint) {
                const double level = sweep.levels[bin.point];
                isWhole = isWhole && level != traceRssiBuffer::kNoMeasurement;
                isAbove = isAbove || (level != traceRssiBuffer::kNoMeasurement && level > limit);
            }
        }
        count.merge({isWhole ? 1 : 0, isWhole && isAbove ? 1 : 0});
    }
    return count;
}

/// The counts of a channel hold for any threshold but for what is occupied.
void requireSameSamples(const OccupancyCounts& a, const OccupancyCounts& b) {
    REQUIRE(a.sweeps == b.sweeps && a.cells.samples == b.cells.samples);
    for (std::size_t i = 0; i < a.channels.size(); ++i) {
        REQUIRE(a.channels[i].samples == b.channels[i].samples);
        REQUIRE(b.channels[i].occupied <= b.channels[i].samples);
    }
}

void requireOwnLevels(const std::vector<Sweep>& sweeps, const FrequencyAxis& axis,
                      const std::vector<Bin>& bins) {
    PointLevels maxima(PointStatistic::Maximum);
    for (const Sweep& sweep : sweeps) {
        maxima.add(sweep);
    }
    const LevelTrace own = {axis, maxima.levels()};
    REQUIRE(!whyApart(own, own));
    const std::vector<double> again = resampled(own, axis);
    for (const Bin& bin : bins) {
        REQUIRE(same(again[bin.point], own.levels[bin.point]));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ScratchFile file("sweeps.csv");
    std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::vector<FrequencyRange> ranges = rangesOf(nextLine(text));
    const double limit = parseNumber(nextLine(text)).value_or(-50.0);
    file.write(text.data(), text.size());
    RecordingSource source;
    source.files = QStringList(file.path());
    std::optional<Recording> recording;
    try {
        recording.emplace(source);
    } catch (const InputError&) {
        return 0;
    }
    const std::vector<Sweep> sweeps = read(*recording);
    if (sweeps.empty() || !recording->hasFrequencies()) {
        return 0;
    }
    const FrequencyAxis& axis = recording->axis();
    const std::vector<Bin> bins = filledBins(axis);
    requireOwnLevels(sweeps, axis, bins);

    const ChannelPlacer placer(axis);
    std::vector<Channel> channels = ranges.empty() ? placer.ofPoints() : std::vector<Channel>();
    for (const FrequencyRange& range : ranges) {
        channels.push_back(placer.place(range));
    }
    if (std::none_of(channels.begin(), channels.end(),
                     [](const Channel& channel) { return channel.isRecorded(); })) {
        return 0;
    }
    OccupancyOptions limited;
    limited.limits.assign(axis.points.size(), limit);
    OccupancyOptions floored;
    floored.above = 10.0;
    Occupancy occupancy(axis, channels, limited);
    Occupancy aboveFloor(axis, channels, floored, 4000);  // in parts
    for (const Sweep& sweep : sweeps) {
        occupancy.add(sweep);
        aboveFloor.add(sweep);
    }
    const OccupancyCounts& counts = occupancy.finish().at(kAllHours);
    REQUIRE(counts.sweeps == static_cast<long long>(sweeps.size()));
    for (std::size_t i = 0; i < channels.size(); ++i) {
        const OccupancyCount expected = countOf(channels[i], bins, sweeps, limit);
        REQUIRE(counts.channels[i].samples == expected.samples);
        REQUIRE(counts.channels[i].occupied == expected.occupied);
        if (expected.samples > 0) {
            const ShareInterval interval = wilsonInterval(expected);
            REQUIRE(0.0 <= interval.low && interval.low <= expected.share() &&
                    expected.share() <= interval.high && interval.high <= 1.0);
        }
    }
    requireSameSamples(counts, aboveFloor.finish().at(kAllHours));
    return 0;
}

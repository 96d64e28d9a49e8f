#include "analysis/statistics/channelSeries.h"

#include "analysis/recordings/timeStamp.h"
#include "analysis/support/stateStream.h"

namespace rfu {

namespace {

// What follows.
constexpr std::uint64_t kNothing = 0;
constexpr std::uint64_t kSomething = 1;

void addFlag(StateReader& reader, bool& flag) {
    flag = reader.count(kSomething) == kSomething || flag;
}

std::optional<ChannelFigures> readFigures(StateReader& reader) {
    if (reader.count(kSomething) == kNothing) {
        return std::nullopt;
    }
    ChannelFigures figures = {};
    figures.power = reader.number();
    figures.occupied.low = reader.number();
    figures.occupied.high = reader.number();
    return figures;
}

}  // namespace

void writeSweep(StateWriter& writer, const std::string& time, const SweepFigures& figures) {
    writer.count(kSomething);
    writer.text(time);
    for (const auto& channel : figures) {
        writer.count(channel ? kSomething : kNothing);
        if (channel) {
            writer.number(channel->power);
            writer.number(channel->occupied.low);
            writer.number(channel->occupied.high);
        }
    }
}

void writeNotes(StateWriter& writer, const std::vector<ChannelNotes>& notes) {
    writer.count(kNothing);
    for (const ChannelNotes& channel : notes) {
        for (const bool flag : {channel.isCovered, channel.isMeasured, channel.hasHopBorder}) {
            writer.count(flag ? kSomething : kNothing);
        }
    }
}

void readSeries(StatePart& part, std::vector<ChannelNotes>& notes,
                const std::function<void(const std::string& time, const SweepFigures&)>& use) {
    StateReader& reader = part.statistics;
    SweepFigures figures(notes.size());
    long long sweeps = 0;
    for (; reader.count(kSomething) == kSomething; ++sweeps) {
        const std::string time = reader.text();
        reader.require(isStamp(time));
        for (auto& channel : figures) {
            channel = readFigures(reader);
        }
        use(time, figures);
    }
    reader.require(sweeps == part.head.sweeps);
    for (ChannelNotes& channel : notes) {
        addFlag(reader, channel.isCovered);
        addFlag(reader, channel.isMeasured);
        addFlag(reader, channel.hasHopBorder);
    }
}

}  // namespace rfu

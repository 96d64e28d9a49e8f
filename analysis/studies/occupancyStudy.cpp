#include "analysis/studies/occupancyStudy.h"

#include <algorithm>
#include <utility>

#include "analysis/recordings/bins.h"
#include "analysis/studies/stateSettings.h"
#include "analysis/support/inputError.h"
#include "analysis/units/unitNames.h"

namespace rfu {

std::vector<FrequencyRange> OccupancyQuestion::ranges() const {
    return channels ? channels->ranges(channelWidth.value_or(channels->step))
                    : std::vector<FrequencyRange>();
}

std::vector<StateSetting> OccupancyQuestion::settings() const {
    std::vector<StateSetting> settings;
    settings.push_back({"limit", shortest(limit->value) + nameOf(*limit->unit)});
    if (channels) {
        settings.push_back({"channels", shortest(channels->low) + ':' + shortest(channels->step) +
                                            ':' + std::to_string(channels->count)});
    }
    const auto add = [&settings](const char* name, const std::optional<double>& number) {
        if (number) {
            settings.push_back({name, shortest(*number)});
        }
    };
    add("channel-width", channelWidth);
    if (limit->unit->needsAntenna()) {  // Fields have the antenna with them.
        add("center", limit->center);
        add("gain", limit->gain);
    }
    if (counting.isByHour) {
        settings.push_back({"by", "hour"});
    }
    return settings;
}

OccupancyQuestion OccupancyQuestion::of(const StateHead& head, const QString& file) {
    const SettingReader settings(head, file);
    OccupancyQuestion question;
    const Entry limit = splitEntry(settings.text("limit"));
    const Unit* const unit = unitToRead(limit.unit.empty() ? "dBm" : limit.unit).unit;
    settings.require(limit.refusal.empty() && unit != nullptr &&
                     whyNoLevel(*unit, limit.value).empty());
    question.limit = {limit.value, unit, settings.number("center"), settings.number("gain")};
    if (settings.has("channels")) {
        question.channels = parseChannelRaster(settings.text("channels"));
        settings.require(question.channels.has_value());
    }
    question.channelWidth = settings.number("channel-width");
    settings.require(question.channelWidth.value_or(1.0) > 0.0);
    question.counting.isByHour = settings.has("by");
    return question;
}

/// In dBm, of each point.
std::vector<double> OccupancyStudy::limits(const FrequencyAxis& axis) const {
    const OccupancyLimit& limit = *question_.limit;
    HMath math;
    std::vector<double> limits;
    for (const double frequency : axis.points) {
        const Antenna antenna = {limit.center.value_or(frequency), limit.gain.value_or(0.0)};
        const bool isFirst = limits.empty();
        limits.push_back(isFirst || limit.unit->needsAntenna()
                             ? entryLevel(math, *limit.unit, limit.value, antenna)
                             : limits.front());
    }
    return limits;
}

void OccupancyStudy::begin(const FrequencyAxis& axis) {
    if (axis.points.empty()) {
        throw InputError(file_, "holds no frequencies, so that it has no channels");
    }
    const ChannelPlacer placer(axis);
    std::vector<Channel> channels;
    if (!question_.channels) {
        channels = placer.ofPoints();
    }
    bool isAnyRecorded = !question_.channels;
    for (const FrequencyRange& range : question_.ranges()) {
        channels.push_back(placer.place(range));
        isAnyRecorded = isAnyRecorded || channels.back().isRecorded();
    }
    if (!isAnyRecorded) {
        throw InputError(file_, channels.front().isTooNarrow
                                    ? "its bins are wider than the channels"
                                    : "none of the channels was recorded; the recording reaches " +
                                          describe(axis.bands));
    }
    if (question_.counting.isByHour && channels.size() > Occupancy::kMaxChannelsByHour) {
        throw InputError(file_, "--by hour takes " + std::to_string(Occupancy::kMaxChannelsByHour) +
                                    " channels at most, not " + std::to_string(channels.size()) +
                                    "; --channels names fewer than there are points");
    }
    OccupancyOptions options = question_.counting;
    if (question_.limit) {
        options.limits = limits(axis);
    }
    occupancy_.emplace(axis, std::move(channels), std::move(options));
}

void OccupancyStudy::read(Recording& recording) {
    file_ = recording.files().first();
    for (Sweep sweep; recording.next(sweep);) {
        if (head_.sweeps == 0) {
            begin(recording.axis());
        }
        occupancy_->add(sweep);
        count(sweep, head_);
    }
    setAxis(recording, head_);
    head_.command = kCommand;
    if (question_.limit) {
        head_.settings = question_.settings();
    }
    if (occupancy_) {
        counts_ = &occupancy_->finish();
    }
}

void OccupancyStudy::merge(const StateSet& states) {
    file_ = states.files().first();
    head_ = states.head();
    begin(head_.axis);
    states.forEach([this](StatePart& part) { occupancy_->merge(part, !question_.channels); });
    counts_ = &occupancy_->finish();
}

bool OccupancyStudy::isMeasured(std::size_t channel) const {
    return std::any_of(counts_->begin(), counts_->end(), [channel](const auto& hour) {
        return hour.second.channels[channel].samples > 0;
    });
}

std::vector<ChannelRemark> OccupancyStudy::remarks() const {
    ChannelRemark outside = {{}, "the recording reaches " + describe(head_.axis.bands)};
    ChannelRemark tooNarrow = {{}, "no bin has its middle there"};
    ChannelRemark notMeasured = {{}, "no sweep measured all points there"};
    for (std::size_t i = 0; i < channels().size(); ++i) {
        const Channel& channel = channels()[i];
        if (channel.isTooNarrow) {
            tooNarrow.channels.push_back(channel.range);
        } else if (!channel.isRecorded()) {
            outside.channels.push_back(channel.range);
        } else if (!isMeasured(i)) {
            notMeasured.channels.push_back(channel.range);
        }
    }
    return {outside, tooNarrow, notMeasured};
}

}  // namespace rfu

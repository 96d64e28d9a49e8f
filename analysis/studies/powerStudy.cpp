#include "analysis/studies/powerStudy.h"

#include <cmath>
#include <utility>

#include "analysis/recordings/bins.h"
#include "analysis/studies/stateSettings.h"
#include "analysis/support/inputError.h"

namespace rfu {

namespace {

constexpr int kNeighbours = 2;  // to each side
constexpr double kWholePercent = 100.0;

/// The sum of two frequencies in MHz, without the last digits that the addition makes.
double shifted(double frequency, double shift) {
    constexpr double kMillihertz = 1e9;  // a MHz
    return std::round((frequency + shift) * kMillihertz) / kMillihertz;
}

}  // namespace

std::string rangeText(const FrequencyRange& range) {
    return shortest(range.low) + " to " + megahertzText(range.high);
}

std::vector<StudiedChannel> PowerQuestion::channels() const {
    std::vector<StudiedChannel> channels;
    const int neighbours = spacing ? kNeighbours : 0;
    for (const FrequencyRange& range : asked) {
        const std::size_t place = channels.size() + static_cast<std::size_t>(neighbours);
        for (int i = -neighbours; i <= neighbours; ++i) {
            const double shift = i == 0 ? 0.0 : i * *spacing;
            channels.push_back(
                {i == 0 ? range
                        : FrequencyRange{shifted(range.low, shift), shifted(range.high, shift)},
                 place});
        }
    }
    return channels;
}

std::vector<StateSetting> PowerQuestion::settings() const {
    std::vector<StateSetting> settings = {{"series", ""}};
    for (const FrequencyRange& channel : asked) {
        settings.push_back({"channel", shortest(channel.low) + ':' + shortest(channel.high)});
    }
    if (spacing) {
        settings.push_back({"spacing", shortest(*spacing)});
    }
    settings.push_back({"share", shortest(percent)});
    settings.push_back({"enbw", shortest(enbw)});
    return settings;
}

PowerQuestion PowerQuestion::of(const StateHead& head, const QString& file) {
    const SettingReader settings(head, file);
    PowerQuestion question;
    for (const std::string& text : settings.texts("channel")) {
        const auto range = parseFrequencyRange(text);
        settings.require(range.has_value());
        question.asked.push_back(*range);
    }
    question.spacing = settings.number("spacing");
    settings.require(!question.asked.empty() && question.spacing.value_or(1.0) > 0.0);
    question.percent = settings.number("share").value_or(question.percent);
    question.enbw = settings.number("enbw").value_or(question.enbw);
    return question;
}

PowerStudy::PowerStudy(PowerQuestion question)
    : question_(std::move(question)), channels_(question_.channels()) {}

void PowerStudy::begin(const Recording& recording) {
    if (!recording.hasFrequencies()) {
        throw recording.error("holds no frequencies, so that it has no channels");
    }
    std::vector<FrequencyRange> ranges;
    for (const StudiedChannel& channel : channels_) {
        ranges.push_back(channel.range);
    }
    powers_.emplace(recording.axis(), ranges,
                    ChannelOptions{question_.percent / kWholePercent, question_.enbw});
    for (std::size_t i = 0; i < channels_.size(); ++i) {
        if (channels_[i].asked == i && !powers_->isCovered(i)) {
            throw recording.error("channel " + rangeText(channels_[i].range) +
                                  ": the recording reaches " + describe(recording.axis().bands));
        }
    }
    head_.command = kCommand;
    head_.settings = question_.settings();
}

void PowerStudy::read(Recording& recording, const std::function<void()>& onBegin,
                      const OnSweep& onSweep) {
    SweepFigures figures(channels_.size());
    for (Sweep sweep; recording.next(sweep);) {
        if (head_.sweeps == 0) {
            begin(recording);
            onBegin();
        }
        count(sweep, head_);
        powers_->add(sweep);
        if (onSweep) {
            for (std::size_t i = 0; i < figures.size(); ++i) {
                figures[i] = powers_->ofLastSweep(i);
            }
            onSweep(head_.sweeps, sweep.time, figures);
        }
    }
    setAxis(recording, head_);
}

void PowerStudy::merge(const StateSet& states, const OnSweep& onSweep) {
    head_ = states.head();
    merged_.resize(channels_.size());
    long long sweeps = 0;
    states.forEach([&](StatePart& part) {
        readSeries(part, merged_, [&](const std::string& time, const SweepFigures& figures) {
            onSweep(++sweeps, time, figures);
        });
    });
}

SweepFigures PowerStudy::means() const {
    SweepFigures figures;
    for (std::size_t i = 0; i < channels_.size(); ++i) {
        figures.push_back(powers_->mean(i));
    }
    return figures;
}

std::vector<ChannelNotes> PowerStudy::notes() const {
    if (!powers_) {
        return merged_;
    }
    std::vector<ChannelNotes> notes;
    for (std::size_t i = 0; i < channels_.size(); ++i) {
        notes.push_back(
            {powers_->isCovered(i), powers_->mean(i).has_value(), powers_->hasHopBorder(i)});
    }
    return notes;
}

}  // namespace rfu

#include <QString>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "analysis/recordings/bins.h"
#include "analysis/statistics/channelPower.h"
#include "analysis/statistics/channelSeries.h"
#include "analysis/studies/powerStudy.h"
#include "analysis/support/numbers.h"
#include "recordings/checkedValues.h"
#include "recordings/levelView.h"
#include "recordings/mergers.h"
#include "recordings/recordingOptions.h"
#include "recordings/recordingTexts.h"
#include "recordings/stateOutput.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/format.h"
#include "support/interruption.h"
#include "support/output.h"
#include "support/prefixNote.h"
#include "support/table.h"
#include "support/units.h"

namespace rfu::command {

namespace {

constexpr int kMegahertzDecimals = 4;  // six would make the table wider than 80 columns
constexpr int kRelativeDecimals = 2;   // of dB
constexpr double kLeastPercent = 50.0;
constexpr double kWholePercent = 100.0;
// Text is written in pieces, so that a long series takes little memory.
constexpr long long kSweepsAtOnce = 1000;

double percentOf(const CommandLine& line) {
    const double percent = line.value<double>("share");
    if (!(percent >= kLeastPercent && percent < kWholePercent)) {
        throw UsageError("--share takes 50 to less than 100 percent");
    }
    return percent;
}

std::optional<double> spacingOf(const CommandLine& line) {
    return line.isSet("spacing") ? std::optional(positiveOf(line, "spacing")) : std::nullopt;
}

struct PowerOptions {
    explicit PowerOptions(const CommandLine& line)
        : source(recordingOf(line)),
          question{line.values<FrequencyRange>("channel"), spacingOf(line), percentOf(line),
                   positiveOf(line, "enbw")},
          isSeries(line.isSet("series")),
          state(stateFileOf(line, source.inputs())),
          view(levelViewOf(line)),
          format(line.format()) {
        if (!state.isEmpty() && !isSeries) {
            throw UsageError("--state needs --series");
        }
        requireAntennaUnit(line, view.unit);
    }

    RecordingSource source;
    PowerQuestion question;
    bool isSeries;
    QString state;  // to write; empty for none
    LevelView view;
    Format format;
};

/// A channel of the table.
struct ShownChannel {
    ShownChannel(const StudiedChannel& channel, const LevelView& view)
        : range(channel.range),
          asked(channel.asked),
          presenter(view.unit, view.antennaAt((range.low + range.high) / 2.0)) {}

    FrequencyRange range;
    std::size_t asked;
    LevelPresenter presenter;
};

struct PowerRow {
    long long sweep;
    const std::string& time;
    ShownChannel& channel;
    std::optional<ChannelFigures> figures;
    std::optional<double> relative;  // dB
};

/// The ranges of the channels that are meant.
template <typename IsMeant>
std::vector<FrequencyRange> rangesOf(const std::deque<ShownChannel>& channels, IsMeant isMeant) {
    std::vector<FrequencyRange> ranges;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        if (isMeant(i)) {
            ranges.push_back(channels[i].range);
        }
    }
    return ranges;
}

/// The figures of channels as they are shown: of a recording, or of states.
class PowerReport {
public:
    explicit PowerReport(const PowerOptions& options)
        : options_(options), note_(options.view.unit, true) {
        for (const StudiedChannel& channel : options_.question.channels()) {
            channels_.emplace_back(channel, options_.view);
        }
    }

    /// To be called first.
    void begin() { table_.emplace(options_.format, columns()); }

    /// Shows the figures of a sweep, or of all.
    /// @param figures of each channel
    void addRows(long long sweep, const std::string& time, const SweepFigures& figures) {
        for (std::size_t i = 0; i < channels_.size(); ++i) {
            const auto& own = figures[i];
            const auto& asked = figures[channels_[i].asked];
            table_->add({sweep, time, channels_[i], own,
                         own && asked ? std::optional(own->power - asked->power) : std::nullopt});
        }
        if (sweep % kSweepsAtOnce == 0) {
            table_->writeRows();
        }
    }

    /// @param notes of each channel
    /// @param file  for messages
    void finish(const std::vector<ChannelNotes>& notes, const FrequencyAxis& axis,
                const QString& file) {
        table_->finish();
        note_.print();
        printNotes(notes, axis, file);
    }

private:
    /// In text, what would make the table wider than 80 columns is left out.
    std::vector<Column<PowerRow>> columns() {
        const bool isText = options_.format == Format::Text;
        const bool hasBounds = !isText || !(options_.isSeries || options_.question.spacing);
        const bool hasWidth = !isText || !options_.isSeries;
        const auto megahertz = [](auto frequencyOf) {
            return [frequencyOf](const PowerRow& row) {
                return row.figures ? withDecimals(frequencyOf(*row.figures), kMegahertzDecimals)
                                   : Cell();
            };
        };
        return {
            {"sweep", [](const PowerRow& row) { return row.sweep; }, options_.isSeries},
            {"time", [](const PowerRow& row) { return textOrNone(row.time); }, options_.isSeries},
            {"fromMHz",
             [](const PowerRow& row) {
                 return withDecimals(row.channel.range.low, kMegahertzDecimals);
             }},
            {"toMHz",
             [](const PowerRow& row) {
                 return withDecimals(row.channel.range.high, kMegahertzDecimals);
             }},
            {"power",
             [this](const PowerRow& row) {
                 const auto power = row.figures ? std::optional(row.figures->power) : std::nullopt;
                 return levelCell(power, options_.format, row.channel.presenter, note_);
             }},
            {"unit", [](const PowerRow& row) { return row.channel.presenter.unitName(); }, !isText},
            {"occupiedFromMHz",
             megahertz([](const ChannelFigures& figures) { return figures.occupied.low; }),
             hasBounds},
            {"occupiedToMHz",
             megahertz([](const ChannelFigures& figures) { return figures.occupied.high; }),
             hasBounds},
            {"occupiedMHz", megahertz([](const ChannelFigures& figures) {
                 return figures.occupied.high - figures.occupied.low;
             }),
             hasWidth},
            {"relativeDb",
             [](const PowerRow& row) { return withDecimals(row.relative, kRelativeDecimals); },
             options_.question.spacing.has_value()},
        };
    }

    void printNotes(const std::vector<ChannelNotes>& notes, const FrequencyAxis& axis,
                    const QString& file) const {
        standardOutput().flush();  // the notes follow the table
        const auto note = [&](auto isMeant, const std::string& what) {
            noteChannels(
                file, rangesOf(channels_, [&](std::size_t i) { return isMeant(notes[i]); }), what);
        };
        note([](const ChannelNotes& channel) { return !channel.isCovered; },
             "the recording reaches " + describe(axis.bands));
        note([](const ChannelNotes& channel) { return channel.isCovered && !channel.isMeasured; },
             "no sweep measured all points there");
        note([](const ChannelNotes& channel) { return channel.hasHopBorder; },
             "the receiver's hops meet within, and its roll-off there is not corrected");
        if (options_.format == Format::Text && (options_.isSeries || options_.question.spacing)) {
            printNote(std::string("the occupied band") + (options_.isSeries ? "" : "'s bounds") +
                      " would make the table too wide; --format csv has " +
                      (options_.isSeries ? "it" : "them"));
        }
    }

    const PowerOptions& options_;
    PrefixNote note_;
    std::deque<ShownChannel> channels_;
    std::optional<Table<PowerRow>> table_;
};

void runPower(const CommandLine& line) {
    const PowerOptions options(line);
    Recording recording(options.source);
    PowerReport report(options);
    std::optional<StateOutput> output;
    if (!options.state.isEmpty()) {
        output.emplace(options.state, options.source.inputs());
    }
    PowerStudy study(options.question);
    const auto onSweep = [&](long long sweep, const std::string& time,
                             const SweepFigures& figures) {
        report.addRows(sweep, time, figures);
        if (output) {
            writeSweep(output->writer(), time, figures);
        }
    };
    {
        const Interruption interruption;
        study.read(
            recording, [&report] { report.begin(); },
            options.isSeries ? onSweep : PowerStudy::OnSweep());
    }
    requireSweeps(recording, study.head().sweeps);
    if (!options.isSeries) {
        report.addRows(0, {}, study.means());
    }
    report.finish(study.notes(), recording.axis(), recording.files().first());
    if (output) {
        writeNotes(output->writer(), study.notes());
        output->finish(study.head());
    }
    throwIfInterrupted();
}

void mergePowers(const CommandLine& line, const StateSet& states, StateOutput* output) {
    const PowerOptions options(line);
    PowerReport report(options);
    report.begin();
    PowerStudy study(options.question);
    study.merge(states, [&](long long sweep, const std::string& time, const SweepFigures& figures) {
        report.addRows(sweep, time, figures);
        if (output != nullptr) {
            writeSweep(output->writer(), time, figures);
        }
    });
    report.finish(study.notes(), states.head().axis, states.files().first());
    if (output != nullptr) {
        writeNotes(output->writer(), study.notes());
    }
}

}  // namespace

// clang-format off
constexpr Subcommand kPower = {
    PowerStudy::kCommand, "Channel power and occupied bandwidth of a recording",
    "Power in channels of a recording, and the bandwidth that it occupies.\n"
    "FILE holds sweeps with frequencies as rfutils trace reads them, several files as one recording; - reads standard input.\n"
    "\n"
    "The power of a channel is the sum of the powers of its bins in milliwatts, of which the mean "
    "over all sweeps is taken; of a bin at an edge that part counts which the channel takes of its "
    "width. A sweep in which a point of the channel was not measured counts nowhere for it. Where "
    "the window of the receiver is wider than a bin, neighbouring bins share power: give its noise "
    "bandwidth as --enbw, such as 1.5 for a Hann window.\n"
    "\n"
    "The occupied bandwidth holds 99 % of the channel's power, noise included; half of the rest "
    "lies below it and half above. Within a bin the power counts as evenly spread.",
    {kRecordingArgument},
    {{"channel", "LOW:HIGH", Kind::FrequencyRange,
      "The channel, such as 98.2M:98.4M; may be given several times.", nullptr, 1, kAnyCount},
     {"spacing", "FREQ", Kind::Frequency,
      "Add the two channels of the same width to each side, at this distance and twice as far, and "
      "their power relative to the channel."},
     {"share", "PERCENT", Kind::Percent, "Share of the power in the occupied bandwidth.", "99"},
     {"enbw", "BINS", Kind::Number,
      "Noise bandwidth of the receiver's window in bins; the sum is divided by it.", "1"},
     {"series", "", Kind::Flag, "One row for each sweep instead of the mean."},
     {"unit", "UNIT", Kind::Unit,
      "Show powers in this unit (rfutils units lists them); a field unit takes the middle of the "
      "channel unless --center is given.",
      "dBm"},
     kCenterOption,
     kGainOption,
     kStateOption},
    {"rfutils power fm_band.csv --channel 98.2M:98.4M",
     "rfutils power fm_band.csv --channel 98.2M:98.4M --channel 92.7M:92.9M",
     "rfutils power fm_band.csv --channel 98.2M:98.4M --spacing 400k --format csv",
     "rfutils power fm_band.csv --channel 98.2M:98.4M --series --format csv"},
    runPower,
    nullptr,
    &kRecordingOptions};

const Merger kPowerMerger = {kPower,
                             {"series", "channel", "spacing", "share", "enbw"},
                             {"unit", "center", "gain"},
                             mergePowers};
// clang-format on

}  // namespace rfu::command

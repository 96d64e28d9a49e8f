#include <rfUtils/units/HMath.h>

#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "analysis/plots/occupancyPlot.h"
#include "analysis/recordings/bins.h"
#include "analysis/recordings/channels.h"
#include "analysis/statistics/occupancy.h"
#include "analysis/support/inputError.h"
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
#include "support/picture.h"
#include "support/plotOptions.h"
#include "support/prefixNote.h"
#include "support/sections.h"
#include "support/table.h"
#include "support/units.h"

namespace rfu::command {

namespace {

constexpr int kMaxChannels = 1000000;
constexpr int kShareDecimals = 4;
// Text is written in pieces, so that a table of many rows takes little memory.
constexpr long long kRowsAtOnce = 10000;

constexpr char kByHour[] = "hour";

/// The channels asked for; none for the points.
std::vector<FrequencyRange> rangesOf(const CommandLine& line) {
    const auto raster = line.find<ChannelRaster>("channels");
    if (!raster) {
        return {};
    }
    if (raster->count > kMaxChannels) {
        throw UsageError("--channels takes " + std::to_string(kMaxChannels) + " channels at most");
    }
    return raster->ranges(line.isSet("channel-width") ? positiveOf(line, "channel-width")
                                                      : raster->step);
}

struct OccupancyRequest {
    explicit OccupancyRequest(const CommandLine& line)
        : source(recordingOf(line)),
          limit(line.find<Quantity>("limit")),
          ranges(rangesOf(line)),
          plot(plotOptionsOf(line, source.inputs())),
          state(stateFileOf(line, source.inputs())),
          view(levelViewOf(line)),
          format(line.format()) {
        if (!state.isEmpty() && line.isSet("above")) {
            throw UsageError("--state needs --limit: a floor is that of a whole recording");
        }
        if (limit.has_value() == line.isSet("above")) {
            throw UsageError(limit ? "--limit and --above exclude each other"
                                   : "a threshold is missing: --limit LEVEL or --above DB");
        }
        if (line.isSet("window") && limit) {
            throw UsageError("--window needs --above");
        }
        if (line.isSet("channel-width") && ranges.empty()) {
            throw UsageError("--channel-width needs --channels");
        }
        counting.isByHour = line.isSet("by");
        counting.above = limit ? 0.0 : positiveOf(line, "above");
        counting.window = floorWindowOf(line);
        requireAntennaUnit(line, antennaUnitOf(line, view.unit));
    }

    RecordingSource source;
    std::optional<Quantity> limit;
    std::vector<FrequencyRange> ranges;
    OccupancyOptions counting;  // without limits
    PlotOptions plot;
    QString state;  // to write; empty for none
    LevelView view;
    Format format;
};

/// What a state fixes. Fields have the antenna with them.
std::vector<StateSetting> occupancySettings(const CommandLine& line) {
    std::vector<StateSetting> settings;
    const auto limit = line.value<Quantity>("limit");
    settings.push_back({"limit", shortest(limit.value) + nameOf(*limit.unit)});
    if (const auto raster = line.find<ChannelRaster>("channels")) {
        settings.push_back({"channels", shortest(raster->low) + ':' + shortest(raster->step) + ':' +
                                            std::to_string(raster->count)});
    }
    const auto addNumber = [&line, &settings](const char* name) {
        if (line.isSet(name)) {
            settings.push_back({name, shortest(line.value<double>(name))});
        }
    };
    addNumber("channel-width");
    if (limit.unit->needsAntenna()) {
        addNumber("center");
        addNumber("gain");
    }
    if (line.isSet("by")) {
        settings.push_back({"by", kByHour});
    }
    return settings;
}

/// In dBm, of each point.
std::vector<double> limitsOf(const Quantity& limit, const LevelView& view,
                             const FrequencyAxis& axis) {
    HMath math;
    std::vector<double> limits;
    for (const double frequency : axis.points) {
        const bool isFirst = limits.empty();
        limits.push_back(isFirst || limit.unit->needsAntenna()
                             ? levelOf(math, *limit.unit, limit.value, view.antennaAt(frequency))
                             : limits.front());
    }
    return limits;
}

struct ChannelRow {
    int hour;
    const FrequencyRange& range;
    const OccupancyCount& count;
    std::optional<ShareInterval> interval;
};

struct BandRow {
    int hour;
    const OccupancyCounts& counts;
};

/// The occupancy of channels: of a recording, or of states.
class OccupancyReport {
public:
    /// @param files that it is of, in their order
    OccupancyReport(const OccupancyRequest& request, const QStringList& files)
        : request_(request), files_(files), note_(request.view.unit, true) {}

    /// To be called once the axis is known.
    void begin(const FrequencyAxis& axis) {
        if (axis.points.empty()) {
            throw error("holds no frequencies, so that it has no channels");
        }
        axis_ = axis;
        const ChannelPlacer placer(axis);
        std::vector<Channel> channels;
        if (request_.ranges.empty()) {
            channels = placer.ofPoints();
        }
        bool isAnyRecorded = request_.ranges.empty();
        for (const FrequencyRange& range : request_.ranges) {
            channels.push_back(placer.place(range));
            isAnyRecorded = isAnyRecorded || channels.back().isRecorded();
        }
        if (!isAnyRecorded) {
            throw error(channels.front().isTooNarrow
                            ? "its bins are wider than the channels"
                            : "none of the channels was recorded; the recording reaches " +
                                  describe(axis.bands));
        }
        if (request_.counting.isByHour && channels.size() > Occupancy::kMaxChannelsByHour) {
            throw error("--by hour takes " + std::to_string(Occupancy::kMaxChannelsByHour) +
                        " channels at most, not " + std::to_string(channels.size()) +
                        "; --channels names fewer than there are points");
        }
        OccupancyOptions options = request_.counting;
        if (request_.limit) {
            options.limits = limitsOf(*request_.limit, request_.view, axis);
        }
        occupancy_.emplace(axis, std::move(channels), std::move(options));
    }

    Occupancy& occupancy() { return *occupancy_; }

    /// Behind the last sweep.
    void finish(long long sweeps) {
        sweeps_ = sweeps;
        counts_ = &occupancy_->finish();
    }

    void print() {
        Sections sections(request_.format);
        sections.begin("channels");
        printChannels();
        sections.begin("band");
        printBand();
        sections.finish();
        note_.print();
        printNotes();
    }

    OccupancyPlot plot() const {
        OccupancyPlot plot(occupancy_->channels(), occupancy_->band(), *counts_);
        plot.size = request_.plot.shape.size;
        plot.title = titleOf(files_, sweeps_);
        return plot;
    }

private:
    InputError error(const std::string& problem) const { return {files_.first(), problem}; }

    void printChannels() {
        const auto share = [](auto shareOf) {
            return [shareOf](const ChannelRow& row) {
                return row.interval ? withDecimals(shareOf(row), kShareDecimals) : Cell();
            };
        };
        Table<ChannelRow> table(
            request_.format,
            {{"hour", [](const ChannelRow& row) { return row.hour; }, request_.counting.isByHour},
             {"fromMHz",
              [](const ChannelRow& row) { return withDecimals(row.range.low, kHertzDecimals); }},
             {"toMHz",
              [](const ChannelRow& row) { return withDecimals(row.range.high, kHertzDecimals); }},
             {"samples", [](const ChannelRow& row) { return row.count.samples; }},
             {"occupied", [](const ChannelRow& row) { return row.count.occupied; }},
             {"occupancy", share([](const ChannelRow& row) { return row.count.share(); })},
             {"low", share([](const ChannelRow& row) { return row.interval->low; })},
             {"high", share([](const ChannelRow& row) { return row.interval->high; })}});
        long long rows = 0;
        for (const auto& [hour, counts] : *counts_) {
            for (std::size_t i = 0; i < counts.channels.size(); ++i) {
                const OccupancyCount& count = counts.channels[i];
                table.add(
                    {hour, occupancy_->channels()[i].range, count,
                     count.samples > 0 ? std::optional(wilsonInterval(count)) : std::nullopt});
                if (++rows % kRowsAtOnce == 0) {
                    table.writeRows();
                }
            }
        }
        table.finish();
    }

    void printBand() {
        const FrequencyRange& band = occupancy_->band();
        LevelPresenter presenter(request_.view.unit,
                                 request_.view.antennaAt((band.low + band.high) / 2.0));
        Table<BandRow> table(
            request_.format,
            {{"hour", [](const BandRow& row) { return row.hour; }, request_.counting.isByHour},
             {"fromMHz", [&](const BandRow&) { return withDecimals(band.low, kHertzDecimals); }},
             {"toMHz", [&](const BandRow&) { return withDecimals(band.high, kHertzDecimals); }},
             {"channels", [](const BandRow& row) { return row.counts.measuredChannels(); }, true,
              1},
             {"samples", [](const BandRow& row) { return row.counts.cells.samples; }},
             {"fbo",
              [](const BandRow& row) {
                  const OccupancyCount& cells = row.counts.cells;
                  return cells.samples > 0 ? withDecimals(cells.share(), kShareDecimals) : Cell();
              }},
             {"sro",
              [](const BandRow& row) {
                  return row.counts.measuredChannels() > 0
                             ? withDecimals(row.counts.resourceShare(), kShareDecimals)
                             : Cell();
              }},
             {"threshold",
              [&](const BandRow& row) {
                  return levelCell(row.counts.meanThreshold(), request_.format, presenter, note_);
              }},
             {"unit", [&](const BandRow&) { return presenter.unitName(); },
              request_.format != Format::Text}});
        for (const auto& [hour, counts] : *counts_) {
            table.add({hour, counts});
        }
        table.finish();
    }

    void printNotes() const {
        standardOutput().flush();  // the notes follow the tables
        std::vector<FrequencyRange> outside;
        std::vector<FrequencyRange> tooNarrow;
        std::vector<FrequencyRange> notMeasured;
        for (std::size_t i = 0; i < occupancy_->channels().size(); ++i) {
            const Channel& channel = occupancy_->channels()[i];
            if (channel.isTooNarrow) {
                tooNarrow.push_back(channel.range);
            } else if (!channel.isRecorded()) {
                outside.push_back(channel.range);
            } else if (!isMeasured(i)) {
                notMeasured.push_back(channel.range);
            }
        }
        noteChannels(files_.first(), outside, "the recording reaches " + describe(axis_.bands));
        noteChannels(files_.first(), tooNarrow, "no bin has its middle there");
        noteChannels(files_.first(), notMeasured, "no sweep measured all points there");
        if (occupancy_->parts() > 1) {
            printNote("the levels do not fit " + std::to_string(Occupancy::kMaxBytes / 1000000) +
                      " MB; the floor is that of each of " + std::to_string(occupancy_->parts()) +
                      " parts of the recording");
        }
    }

    bool isMeasured(std::size_t channel) const {
        for (const auto& [hour, counts] : *counts_) {
            if (counts.channels[channel].samples > 0) {
                return true;
            }
        }
        return false;
    }

    const OccupancyRequest& request_;
    QStringList files_;
    FrequencyAxis axis_;
    PrefixNote note_;
    std::optional<Occupancy> occupancy_;
    const HourlyOccupancy* counts_ = nullptr;
    long long sweeps_ = 0;
};

void show(OccupancyReport& report, const OccupancyRequest& request, const QStringList& files) {
    report.print();
    if (!request.plot.file.isEmpty()) {
        savePlot(drawingOf(report.plot()), request.plot.file, files);
    }
}

/// Gives the report all sweeps, and a head their number and times.
void read(Recording& recording, OccupancyReport& report, StateHead& head) {
    const Interruption interruption;
    for (Sweep sweep; recording.next(sweep); ++head.sweeps) {
        if (head.sweeps == 0) {
            report.begin(recording.axis());
            head.firstTime = sweep.time;
        }
        report.occupancy().add(sweep);
        head.lastTime = sweep.time;
    }
    requireSweeps(recording, head.sweeps);
    head.axis = recording.axis();
    head.points = head.axis.points.size();
}

void runOccupancy(const CommandLine& line) {
    const OccupancyRequest request(line);
    Recording recording(request.source);
    OccupancyReport report(request, recording.files());
    StateHead head;
    read(recording, report, head);
    report.finish(head.sweeps);
    show(report, request, request.source.inputs());
    if (!request.state.isEmpty()) {
        StateOutput output(request.state, request.source.inputs());
        report.occupancy().write(output.writer());
        head.command = kOccupancy.name;
        head.settings = occupancySettings(line);
        output.finish(head);
    }
    throwIfInterrupted();
}

void mergeOccupancies(const CommandLine& line, const StateSet& states, StateOutput* output) {
    const OccupancyRequest request(line);
    OccupancyReport report(request, states.files());
    report.begin(states.head().axis);
    states.forEach(
        [&](StatePart& part) { report.occupancy().merge(part, request.ranges.empty()); });
    report.finish(states.head().sweeps);
    show(report, request, states.files());
    if (output != nullptr) {
        report.occupancy().write(output->writer());
    }
}

}  // namespace

// clang-format off
constexpr Subcommand kOccupancy = {
    "occupancy", "How busy the channels of a recording are",
    "The share of the sweeps in which channels of a recording were occupied.\n"
    "FILE holds sweeps with frequencies as rfutils trace reads them, several files as one recording; - reads standard input. "
    "Every sweep counts.\n"
    "\n"
    "A channel is occupied in a sweep when any of its bins lies strictly above the threshold; a bin "
    "belongs to the channel in which its middle lies. A sweep in which a channel was not wholly "
    "measured counts nowhere for it. low and high are the Wilson score interval of 95 %, which takes "
    "the sweeps as independent.\n"
    "\n"
    "The second table is on the band from the lowest channel to the highest: fbo, the share of its "
    "levels that lie above the threshold; sro, the mean occupancy of the channels; and the mean "
    "threshold of its points. docs/occupancy.md has the definitions.",
    {kRecordingArgument},
    {{"limit", "LEVEL", Kind::Quantity,
      "The threshold, such as -95, -95dBm or 30dBuV/m; a field takes the frequency of each point "
      "unless --center is given."},
     {"above", "DB", Kind::Decibels, "The threshold of each point lies this far above the noise floor there."},
     {"window", "POINTS", Kind::Integer, "How many points the floor follows from.", "101"},
     {"channels", "LOW:STEP:COUNT", Kind::Channels,
      "Where the first channel begins, the distance from one to the next, and how many; without, "
      "every point is a channel."},
     {"channel-width", "FREQ", Kind::Frequency, "The width of a channel; STEP unless given."},
     {"by", kByHour, Kind::Word, "Count each hour of the day apart.", nullptr, 0, 1, 0,
      [] { return std::vector<std::string>{kByHour}; }},
     {"unit", "UNIT", Kind::Unit,
      "Show the threshold in this unit (rfutils units lists them); a field unit takes the middle "
      "of the band unless --center is given.",
      "dBm"},
     kCenterOption,
     kGainOption,
     kStateOption,
     {"plot", "OUT", Kind::Plot,
      "Draw the occupancy over frequency, with --by hour as colours, to OUT.png or OUT.svg."},
     kPlotWidthOption,
     kPlotHeightOption},
    {"rfutils occupancy fm_band.csv --limit -70 --channels 88M:200k:100",
     "rfutils occupancy wifi_band.csv --above 10 --channels 2402M:5M:13 --channel-width 20M",
     "rfutils occupancy wifi_band.csv --above 10 --by hour --format csv",
     "rfutils occupancy fm_band.csv --limit 37dBuV --channels 88M:200k:100 --plot occupancy.png"},
    runOccupancy,
    nullptr,
    &kRecordingOptions};

const Merger kOccupancyMerger = {
    kOccupancy,
    {"limit", "channels", "channel-width", "center", "gain", "by"},
    {"unit", "center", "gain", "plot", "width", "height"},
    mergeOccupancies};
// clang-format on

}  // namespace rfu::command

#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "analysis/plots/occupancyPlot.h"
#include "analysis/recordings/channels.h"
#include "analysis/statistics/occupancy.h"
#include "analysis/studies/occupancyStudy.h"
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

/// Nothing for the points.
std::optional<ChannelRaster> rasterOf(const CommandLine& line) {
    const auto raster = line.find<ChannelRaster>("channels");
    if (raster && raster->count > kMaxChannels) {
        throw UsageError("--channels takes " + std::to_string(kMaxChannels) + " channels at most");
    }
    return raster;
}

std::optional<OccupancyLimit> thresholdOf(const CommandLine& line) {
    const auto limit = line.find<Quantity>("limit");
    const auto numberOf = [&line](const char* name) {
        return line.isSet(name) ? line.find<double>(name) : std::nullopt;
    };
    return limit ? std::optional(OccupancyLimit{limit->value, limit->unit, numberOf("center"),
                                                numberOf("gain")})
                 : std::nullopt;
}

struct OccupancyRequest {
    explicit OccupancyRequest(const CommandLine& line)
        : source(recordingOf(line)),
          plot(plotOptionsOf(line, source.inputs())),
          state(stateFileOf(line, source.inputs())),
          view(levelViewOf(line)),
          format(line.format()) {
        question.limit = thresholdOf(line);
        question.channels = rasterOf(line);
        const bool hasLimit = question.limit.has_value();
        if (!state.isEmpty() && line.isSet("above")) {
            throw UsageError("--state needs --limit: a floor is that of a whole recording");
        }
        if (hasLimit == line.isSet("above")) {
            throw UsageError(hasLimit ? "--limit and --above exclude each other"
                                      : "a threshold is missing: --limit LEVEL or --above DB");
        }
        if (line.isSet("window") && hasLimit) {
            throw UsageError("--window needs --above");
        }
        if (line.isSet("channel-width") && !question.channels) {
            throw UsageError("--channel-width needs --channels");
        }
        if (line.isSet("channel-width")) {
            question.channelWidth = positiveOf(line, "channel-width");
        }
        question.counting.isByHour = line.isSet("by");
        question.counting.above = hasLimit ? 0.0 : positiveOf(line, "above");
        question.counting.window = floorWindowOf(line);
        requireAntennaUnit(line, antennaUnitOf(line, view.unit));
    }

    RecordingSource source;
    OccupancyQuestion question;
    PlotOptions plot;
    QString state;  // to write; empty for none
    LevelView view;
    Format format;
};

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

/// Shows what a study found.
class OccupancyReport {
public:
    /// @param files that it is of, in their order
    OccupancyReport(const OccupancyRequest& request, const OccupancyStudy& study,
                    const QStringList& files)
        : request_(request), study_(study), files_(files), note_(request.view.unit, true) {}

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
        OccupancyPlot plot(study_.channels(), study_.band(), study_.counts());
        plot.size = request_.plot.shape.size;
        plot.title = titleOf(files_, study_.head().sweeps);
        return plot;
    }

private:
    void printChannels() {
        const auto share = [](auto shareOf) {
            return [shareOf](const ChannelRow& row) {
                return row.interval ? withDecimals(shareOf(row), kShareDecimals) : Cell();
            };
        };
        Table<ChannelRow> table(
            request_.format,
            {{"hour", [](const ChannelRow& row) { return row.hour; },
              request_.question.counting.isByHour},
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
        for (const auto& [hour, counts] : study_.counts()) {
            for (std::size_t i = 0; i < counts.channels.size(); ++i) {
                const OccupancyCount& count = counts.channels[i];
                table.add(
                    {hour, study_.channels()[i].range, count,
                     count.samples > 0 ? std::optional(wilsonInterval(count)) : std::nullopt});
                if (++rows % kRowsAtOnce == 0) {
                    table.writeRows();
                }
            }
        }
        table.finish();
    }

    void printBand() {
        const FrequencyRange& band = study_.band();
        LevelPresenter presenter(request_.view.unit,
                                 request_.view.antennaAt((band.low + band.high) / 2.0));
        Table<BandRow> table(
            request_.format,
            {{"hour", [](const BandRow& row) { return row.hour; },
              request_.question.counting.isByHour},
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
        for (const auto& [hour, counts] : study_.counts()) {
            table.add({hour, counts});
        }
        table.finish();
    }

    void printNotes() const {
        standardOutput().flush();  // the notes follow the tables
        for (const ChannelRemark& remark : study_.remarks()) {
            noteChannels(files_.first(), remark.channels, remark.what);
        }
        if (study_.parts() > 1) {
            printNote("the levels do not fit " + std::to_string(Occupancy::kMaxBytes / 1000000) +
                      " MB; the floor is that of each of " + std::to_string(study_.parts()) +
                      " parts of the recording");
        }
    }

    const OccupancyRequest& request_;
    const OccupancyStudy& study_;
    QStringList files_;
    PrefixNote note_;
};

/// @param inputs all files that are read
void show(const OccupancyStudy& study, const OccupancyRequest& request, const QStringList& files,
          const QStringList& inputs) {
    OccupancyReport report(request, study, files);
    report.print();
    if (!request.plot.file.isEmpty()) {
        savePlot(drawingOf(report.plot()), request.plot.file, inputs);
    }
}

void runOccupancy(const CommandLine& line) {
    const OccupancyRequest request(line);
    Recording recording(request.source);
    OccupancyStudy study(request.question);
    {
        const Interruption interruption;
        study.read(recording);
    }
    requireSweeps(recording, study.head().sweeps);
    show(study, request, recording.files(), request.source.inputs());
    if (!request.state.isEmpty()) {
        StateOutput output(request.state, request.source.inputs());
        study.write(output.writer());
        output.finish(study.head());
    }
    throwIfInterrupted();
}

void mergeOccupancies(const CommandLine& line, const StateSet& states, StateOutput* output) {
    const OccupancyRequest request(line);
    OccupancyStudy study(request.question);
    study.merge(states);
    show(study, request, states.files(), states.files());
    if (output != nullptr) {
        study.write(output->writer());
    }
}

}  // namespace

// clang-format off
constexpr Subcommand kOccupancy = {
    OccupancyStudy::kCommand, "How busy the channels of a recording are",
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

#include <QString>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "analysis/plots/tracePlot.h"
#include "analysis/statistics/limitMask.h"
#include "analysis/statistics/pointStatistics.h"
#include "analysis/statistics/sweepStore.h"
#include "analysis/studies/maskFile.h"
#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "recordings/checkedValues.h"
#include "recordings/levelView.h"
#include "recordings/mergers.h"
#include "recordings/plotOf.h"
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
#include "trace/traceTable.h"

namespace rfu::command {

namespace {

constexpr int kMaxKept = 1000000;
constexpr char kKeptByDefault[] = "1000";
constexpr char kEverySweep[] = "all";

/// --keep or, by its name in all commands on recordings, --last.
std::size_t capacityOf(const CommandLine& line) {
    if (line.isSet("keep") && line.isSet("last")) {
        throw UsageError("--keep and --last are the same; give one");
    }
    const char* const option = line.isSet("last") ? "last" : "keep";
    const std::string text =
        line.isSet(option) ? line.text(option).toStdString() : std::string(kKeptByDefault);
    if (text == kEverySweep) {
        return SweepStore::kAll;
    }
    const int kept = parseInteger(text).value_or(0);
    if (kept < 1 || kept > kMaxKept) {
        throw UsageError(std::string("--") + option + " takes 1 to " + std::to_string(kMaxKept) +
                         " sweeps, or " + kEverySweep);
    }
    return static_cast<std::size_t>(kept);
}

struct TraceOptions {
    /// @param areStates whether the files are states instead of recordings
    explicit TraceOptions(const CommandLine& line, bool areStates = false)
        : source(recordingOf(line)),
          markers(line.values<MarkerRequest>("marker")),
          limit(limitOf(line)),
          capacity(capacityOf(line)),
          view(levelViewOf(line)),
          allPoints(line.isSet("all-points")),
          mask(line.text("mask")),
          plot(plotOptionsOf(line, inputs())),
          follow(line.isSet("follow")),
          more(line.isSet("more")),
          state(stateFileOf(line, inputs())),
          isOfStates(areStates),
          format(line.format()) {
        source.isLive = follow;
        if (follow) {
            source.onRead = {};  // what it shows is the progress
        }
        source.window.last = 0;  // the statistics keep them
        if (follow && source.files.size() > 1) {
            throw UsageError("--follow takes one FILE");
        }
        if (follow && source.window.countsFromEnd()) {
            throw UsageError("--follow has no end that --from and --to could count from");
        }
        if (follow && markers.empty()) {
            throw UsageError("--follow needs a --marker");
        }
        if (follow && allPoints && format != Format::Text) {
            throw UsageError("--follow together with --all-points prints text only");
        }
        requireEffects(line);
    }

    /// An option without effect is a mistake.
    void requireEffects(const CommandLine& line) const {
        const bool showsLevels = !markers.empty() || allPoints;
        if (more && !showsLevels) {
            throw UsageError("--more needs a --marker or --all-points");
        }
        if (line.isSet("unit") && !showsLevels && !plots()) {
            throw UsageError("--unit needs a --marker, --all-points or --plot");
        }
        if (limit && markers.empty() && !keepsWholeSweeps()) {
            throw UsageError("--limit needs a --marker, --all-points, --plot or --state");
        }
        if (!mask.isEmpty() && !plots()) {
            throw UsageError("--mask needs --plot");
        }
        requireAntennaUnit(line, antennaUnitOf(line, view.unit));
    }

    QStringList inputs() const {
        return mask.isEmpty() ? source.inputs() : source.inputs() + QStringList(mask);
    }
    bool plots() const { return !plot.file.isEmpty(); }
    /// Whether all levels of a sweep are kept; else those of the markers.
    bool keepsWholeSweeps() const { return allPoints || plots() || !state.isEmpty() || isOfStates; }

    RecordingSource source;
    std::vector<MarkerRequest> markers;
    std::optional<double> limit;
    std::size_t capacity;
    LevelView view;
    bool allPoints;
    QString mask;  // empty for none
    PlotOptions plot;
    bool follow;
    bool more;
    QString state;  // to write; empty for none
    bool isOfStates;
    Format format;
};

std::vector<StateSetting> traceSettings(const TraceOptions& options) {
    std::vector<StateSetting> settings;
    if (options.limit) {
        settings.push_back({"limit", shortest(*options.limit)});
    }
    return settings;
}

TraceColumns markerColumns(const TraceOptions& options) {
    TraceColumns columns;
    columns.sweep = options.follow;
    columns.marker = true;
    columns.distribution = options.more;
    columns.limit = options.limit;
    return columns;
}

TraceColumns pointColumns(const TraceOptions& options) {
    TraceColumns columns;
    columns.distribution = options.more;
    columns.limit = options.limit;
    return columns;
}

std::optional<LimitMask> maskOf(const TraceOptions& options) {
    return options.mask.isEmpty()
               ? std::nullopt
               : std::optional(readLimitMask(options.mask, options.view.unit.isLinear()));
}

/// What is shown of sweeps: of a recording, or of states.
class TraceReport {
public:
    /// @param axis, sweeps may change as sweeps come
    TraceReport(const TraceOptions& options, const FrequencyAxis& axis, const QStringList& files,
                const SweepStore& sweeps)
        : options_(options),
          axis_(axis),
          files_(files),
          sweeps_(sweeps),
          mask_(maskOf(options)),
          note_(options.view.unit, true),
          markerTable_(options.format, markerColumns(options), options.view, axis, sweeps, note_) {}

    /// To be called once the axis is known, and when it has grown.
    void setPoints(std::size_t points) { points_ = points; }

    void placeMarkers() {
        if (mask_) {
            requireFrequencies(axis_, files_.first());
        }
        markers_ = rfu::placeMarkers(options_.markers, axis_, points_, files_.first());
        noteNumbers();
    }

    /// @param former of each point the number that it had before
    void moveMarkers(const std::vector<std::size_t>& former) {
        markers_ = rfu::moveMarkers(options_.markers, markers_, axis_, former, files_.first());
    }

    const std::vector<Marker>& markers() const { return markers_; }

    /// Shows the markers now.
    void follow() {
        addMarkers();
        markerTable_.show();
    }

    void print() {
        const bool showsMarkers = !markers_.empty() && !options_.follow;
        if (showsMarkers && options_.allPoints) {
            Sections sections(options_.format);
            sections.begin("markers");
            printMarkers();
            sections.begin("points");
            printPoints();
            sections.finish();
        } else if (showsMarkers) {
            printMarkers();
        } else if (options_.allPoints) {
            if (options_.follow) {
                standardOutput().write('\n');
            }
            printPoints();
        } else if (!options_.follow) {
            printSummary();
        }
    }

    TracePlot plot() const {
        const FrequencyAxis& axis = axis_;
        const std::vector<PointTally> tallies = sweeps_.tallies();
        TracePlot plot = plotOf(axis, tallies, options_.view);
        plot.shape = options_.plot.shape;
        plot.title = titleOf(files_, static_cast<long long>(sweeps_.kept()));
        for (const Marker& marker : markers_) {
            const auto point = static_cast<std::size_t>(marker.point);
            std::string label = marker.name;
            if (const auto maximum = tallies[point].statistics().maximum) {
                LevelPresenter presenter(options_.view.unit,
                                         options_.view.antennaAt(axis, marker.point));
                label += "  " + presenter.text(*maximum);
            }
            plot.marks.push_back({label, point});
        }
        if (options_.limit) {
            plot.limits.push_back(limitLine(*options_.limit, plot, axis, options_.view));
        }
        if (mask_) {
            plot.mask = linesOf(*mask_);
        }
        return plot;
    }

private:
    /// Notes markers whose numbers may be meant as frequencies.
    void noteNumbers() const {
        const FrequencyAxis& axis = axis_;
        for (const MarkerRequest& request : options_.markers) {
            if (isAlsoFrequency(request, axis)) {
                const double frequency = axis.points[static_cast<std::size_t>(*request.point)];
                printNote("marker " + request.name + " is the point of this number, at " +
                          std::string(ShortestText(frequency).view()) + " MHz; the frequency is " +
                          request.name + "MHz");
            }
        }
    }

    /// The columns of the store that hold the levels of the markers.
    std::vector<std::size_t> columnsOfMarkers() const {
        std::vector<std::size_t> columns;
        for (const Marker& marker : markers_) {
            columns.push_back(options_.keepsWholeSweeps() ? static_cast<std::size_t>(marker.point)
                                                          : columns.size());
        }
        return columns;
    }

    void addMarkers() { markerTable_.addMarkers(markers_, columnsOfMarkers()); }

    void printMarkers() {
        addMarkers();
        markerTable_.finish();
    }

    void printPoints() {
        TraceTable table(options_.format, pointColumns(options_), options_.view, axis_, sweeps_,
                         note_);
        table.addPoints();
        table.finish();
    }

    void printSummary() {
        const FrequencyAxis& axis = axis_;
        const bool hasAxis = !axis_.points.empty();
        writeObject(options_.format, {{"sweeps", sweeps_.count()},
                                      {"kept", sweeps_.kept()},
                                      {"points", points_},
                                      {"fromMHz", hasAxis ? Cell(axis.points.front()) : Cell()},
                                      {"toMHz", hasAxis ? Cell(axis.bands.back().high) : Cell()},
                                      {"bands", hasAxis ? Cell(bandsText(axis)) : Cell()},
                                      {"firstTime", hasAxis ? Cell(sweeps_.firstTime()) : Cell()},
                                      {"lastTime", hasAxis ? Cell(sweeps_.lastTime()) : Cell()}});
    }

    const TraceOptions& options_;
    const FrequencyAxis& axis_;
    QStringList files_;
    const SweepStore& sweeps_;
    std::optional<LimitMask> mask_;
    PrefixNote note_;
    TraceTable markerTable_;
    std::vector<Marker> markers_;
    std::size_t points_ = 0;
};

/// A recording while it is read.
class Trace {
public:
    explicit Trace(const TraceOptions& options)
        : options_(options),
          recording_(options.source),
          sweeps_(options.capacity, options.more, options.limit.value_or(0.0)),
          report_(options, recording_.axis(), recording_.files(), sweeps_) {}

    void read() {
        const Interruption interruption;
        Sweep sweep;
        while (recording_.next(sweep)) {
            report_.setPoints(sweep.levels.size());
            if (sweeps_.count() == 0) {
                report_.placeMarkers();
            } else if (recording_.hasGrown()) {
                grow();
            }
            points_ = sweep.levels.size();
            keep(sweep);
            if (options_.follow) {
                report_.follow();
            }
        }
        requireSweeps(recording_, sweeps_.count());
    }

    TraceReport& report() { return report_; }

    void save() const {
        StateOutput output(options_.state, options_.inputs());
        sweeps_.write(output.writer());
        StateHead head;
        head.command = kTrace.name;
        head.settings = traceSettings(options_);
        head.points = points_;
        head.axis = recording_.axis();
        head.sweeps = sweeps_.count();
        head.firstTime = sweeps_.firstTime();
        head.lastTime = sweeps_.lastTime();
        output.finish(head);
    }

private:
    void keep(const Sweep& sweep) {
        levelsOfMarkers_.clear();
        for (const Marker& marker : report_.markers()) {
            levelsOfMarkers_.push_back(sweep.levels[static_cast<std::size_t>(marker.point)]);
        }
        requireRoom(
            sweeps_.add(sweep.time, options_.keepsWholeSweeps() ? sweep.levels : levelsOfMarkers_));
        if (!options_.state.isEmpty() && sweeps_.count() > static_cast<long long>(sweeps_.kept())) {
            throw recording_.error("has more sweeps than the " + std::to_string(sweeps_.kept()) +
                                   " that are kept, while a state holds all; use --keep all");
        }
    }

    void grow() {
        if (!std::exchange(hasGrown_, true)) {
            options_.source.onNote(recording_.error(
                "a sweep has hops that the first one lacked; their points are added"));
        }
        const std::vector<std::size_t>& former = recording_.formerPoints();
        const std::vector<Marker> before = report_.markers();
        report_.moveMarkers(former);
        const std::vector<Marker>& moved = report_.markers();
        std::vector<std::size_t> formerColumns;
        for (std::size_t i = 0; i < moved.size(); ++i) {
            const bool isSamePoint = former[static_cast<std::size_t>(moved[i].point)] ==
                                     static_cast<std::size_t>(before[i].point);
            formerColumns.push_back(isSamePoint ? i : SweepStore::kNewColumn);
        }
        requireRoom(sweeps_.rearrange(options_.keepsWholeSweeps() ? former : formerColumns));
    }

    void requireRoom(bool isThere) const {
        if (!isThere) {
            throw recording_.error("the levels of " + std::to_string(sweeps_.kept()) +
                                   " sweeps take 1 GiB, the most that is held; use a smaller "
                                   "--keep, or --keep all without --more");
        }
    }

    const TraceOptions& options_;
    Recording recording_;
    SweepStore sweeps_;
    TraceReport report_;
    std::vector<double> levelsOfMarkers_;
    std::size_t points_ = 0;
    bool hasGrown_ = false;
};

void show(TraceReport& report, const TraceOptions& options) {
    report.print();
    if (options.plots()) {
        savePlot(drawingOf(report.plot()), options.plot.file, options.inputs());
    }
}

void runTrace(const CommandLine& line) {
    const TraceOptions options(line);
    Trace trace(options);
    trace.read();
    show(trace.report(), options);
    if (!options.state.isEmpty()) {
        trace.save();
    }
    throwIfInterrupted();
}

void mergeTraces(const CommandLine& line, const StateSet& states, StateOutput* output) {
    const TraceOptions options(line, true);
    const StateHead& head = states.head();
    SweepStore sweeps(SweepStore::kAll, false, options.limit.value_or(0.0));
    states.forEach([&](StatePart& part) { sweeps.merge(part, head.points); });
    TraceReport report(options, head.axis, states.files(), sweeps);
    report.setPoints(head.points);
    report.placeMarkers();
    show(report, options);
    if (output != nullptr) {
        sweeps.write(output->writer());
    }
}

}  // namespace

// clang-format off
constexpr Subcommand kTrace = {
    "trace", "Statistics of markers and points over recorded sweeps",
    "Statistics over the most recent sweeps of a recording, per marker or per point.\n"
    "Each FILE holds sweeps as rtl_power and hackrf_sweep write them (lines of date, time, Hz low, Hz "
    "high, Hz step, samples, dB, dB, ...) or plain CSV with one trace of levels per line; - reads "
    "standard input. Several files are one recording, in order of time. Levels are taken as dBm. An empty level, nan and -inf mean that a point was "
    "not measured; it counts nowhere. Points count from 0; the frequency of a point is that at "
    "which its bin begins. Without --marker and --all-points a summary of the recording is shown.\n"
    "\n"
    "Sweeps: a sweep ends where a hop comes again, as soon as it has all hops, where the time "
    "moves while the order of hops starts again, or where it moves by more than a second. Its hops "
    "are those of the first four sweeps; with --follow, which waits for none, new ones are added as "
    "they come. One that is missing in a sweep was not measured.\n"
    "\n"
    "average is the mean of the dBm numbers, as the instrument shows it. --more adds powerMean: "
    "the mean of the powers in milliwatts, converted back to dBm. That is the power that a thermal "
    "meter would show, and it is never below the average: they are equal only for a steady level, "
    "for noise powerMean lies about 2.5 dB higher, and short bursts raise it far above the "
    "average.\n"
    "\n"
    "Ctrl-C ends the reading: what was read is shown.\n"
    "\n"
    "A live read-out:\n"
    "  rtl_power -f 88M:108M:50k -i 1 - | rfutils trace - --follow --marker 88.1MHz",
    {kRecordingArgument},
    {{"marker", "FREQ", Kind::Marker,
      "Show this point, up to six times: the one nearest to a frequency such as 88.1MHz or 2.4GHz, "
      "or the number of a point.",
      nullptr, 0, static_cast<int>(traceRssiBuffer::kMarkers)},
     {"limit", "LEVEL", Kind::Quantity,
      "Count how often a level was above this one, such as -60 for dBm or 47dBuV, and draw it in "
      "the plot; a field needs --center."},
     {"all-points", "", Kind::Flag, "Show all points."},
     {"keep", "N", Kind::Text, "How many recent sweeps count, or all.", kKeptByDefault},
     {"follow", "", Kind::Flag, "Show the markers again as soon as a sweep is complete."},
     kPointUnitOption,
     kCenterOption,
     kGainOption,
     {"more", "", Kind::Flag,
      "Add for each marker or point the mean power, the median, the standard deviation in dB and the sweep "
      "that holds the maximum."},
     kStateOption,
     {"plot", "OUT", Kind::Plot,
      "Draw maximum, average and minimum over frequency, as PNG or SVG by the ending."},
     {"mask", "MASK.csv", Kind::CsvFile, "Draw these limits in the plot; rfutils mask reads the same."},
     kPlotLevelsOption,
     kPlotWidthOption,
     kPlotHeightOption},
    {"rfutils trace fm_band.csv",
     "rfutils trace fm_band.csv --marker 88.1MHz --marker 98.3MHz --limit -60",
     "rfutils trace fm_band.csv --marker 98.3MHz --more --unit dBuV",
     "rfutils trace fm_band.csv --all-points --keep 100 --format csv",
     "rfutils trace fm_band.csv --marker 98.3MHz --unit V/m --gain 2",
     "rfutils trace wifi_band.csv --marker 2.437GHz --plot wifi.png",
     "rfutils trace wifi_band.csv --limit -60 --plot wifi_limit.png --levels -100:-40",
     "rfutils trace fm_band.csv --state fm_band.state"},
    runTrace,
    nullptr,
    &kRecordingOptions};

const Merger kTraceMerger = {
    kTrace,
    {"limit"},
    {"marker", "all-points", "unit", "center", "gain", "plot", "mask", "levels", "width", "height"},
    mergeTraces};
// clang-format on

}  // namespace rfu::command

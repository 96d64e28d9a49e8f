#include <QString>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "analysis/plots/comparisonPlot.h"
#include "analysis/recordings/bins.h"
#include "analysis/statistics/comparison.h"
#include "analysis/studies/recordedTrace.h"
#include "analysis/support/files.h"
#include "analysis/support/lineReader.h"
#include "recordings/checkedValues.h"
#include "recordings/levelView.h"
#include "recordings/plotOf.h"
#include "recordings/recordingOptions.h"
#include "recordings/recordingTexts.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/format.h"
#include "support/interruption.h"
#include "support/named.h"
#include "support/output.h"
#include "support/picture.h"
#include "support/plotOptions.h"
#include "support/prefixNote.h"
#include "support/sections.h"
#include "support/table.h"
#include "support/units.h"

namespace rfu::command {

namespace {

constexpr int kDifferenceDecimals = 2;  // of dB
// Text is written in pieces, so that a table of many rows takes little memory.
constexpr std::size_t kPointsAtOnce = 10000;

struct CompareOptions {
    explicit CompareOptions(const CommandLine& line)
        : files(line.texts("A") + line.texts("B")),
          both(recordingOf(line, files)),
          nameOfStatistic(line.value<std::string>("of")),
          statistic(named(kComparedStatistics, nameOfStatistic).statistic),
          above(line.isSet("above") ? std::optional(positiveOf(line, "above")) : std::nullopt),
          isResampled(line.isSet("resample")),
          plot(plotOptionsOf(line, both.inputs())),
          view(levelViewOf(line)),
          format(line.format()) {
        requireAntennaUnit(line, view.unit);
    }

    RecordingSource sourceOf(const QString& file) const {
        RecordingSource source = both;
        source.files = QStringList(file);
        return source;
    }

    QStringList files;
    RecordingSource both;
    std::string nameOfStatistic;
    PointStatistic statistic;
    std::optional<double> above;
    bool isResampled;
    PlotOptions plot;
    LevelView view;
    Format format;
};

struct PointRow {
    std::size_t point;
    LevelPresenter& presenter;
};

struct ChangeRow {
    const LevelChange& change;
    LevelPresenter& presenter;
};

/// Two recordings, one behind the other in memory.
class Comparison {
public:
    explicit Comparison(const CompareOptions& options)
        : options_(options), note_(options.view.unit, true) {}

    void read() {
        const Interruption interruption;
        // Standard input may be live: what ends it shall not keep the file from being read.
        if (options_.files[0] == kStandardInput) {
            readTrace(options_.files[1], b_);
            readTrace(options_.files[0], a_);
        } else {
            readTrace(options_.files[0], a_);
            readTrace(options_.files[1], b_);
        }
        b_.levels = levelsAtPointsOf({options_.files[0], a_}, {options_.files[1], b_},
                                     options_.isResampled, "--resample");
        for (std::size_t i = 0; i < a_.levels.size(); ++i) {
            differences_.push_back(b_.levels[i] - a_.levels[i]);
        }
    }

    void print() {
        Sections sections(options_.format);
        if (options_.above) {
            sections.begin("points");
        }
        printPoints();
        if (options_.above) {
            sections.begin("signals");
            printChanges();
            sections.finish();
        }
        note_.print();
        noteMedians(resolution_);
    }

    ComparisonPlot plot() const {
        ComparisonPlot plot;
        plot.shape = options_.plot.shape;
        const std::string a = shortNameOf(options_.files[0]);
        const std::string b = shortNameOf(options_.files[1]);
        plot.nameOfA = "a: " + a;
        plot.nameOfB = "b: " + b;
        plot.title = a + " and " + b + ", " + options_.nameOfStatistic;
        plot.levelUnit = nameOf(options_.view.unit);
        const PlotPlaces places(a_.axis, a_.levels.size());
        plot.placeName = places.name;
        plot.places = places.places;
        plot.end = places.end;
        plot.isCounted = places.areCounted;
        plot.breaks = firstPointsOf(a_.axis);
        plot.a = shownLevels(a_.levels, a_.axis, options_.view);
        plot.b = shownLevels(b_.levels, a_.axis, options_.view);
        plot.differences = differences_;
        plot.threshold = options_.above;
        return plot;
    }

private:
    void readTrace(const QString& file, LevelTrace& trace) {
        Recording recording(options_.sourceOf(file));
        PointLevels levels(options_.statistic);
        long long sweeps = 0;
        for (Sweep sweep; recording.next(sweep); ++sweeps) {
            levels.add(sweep);
        }
        requireSweeps(recording, sweeps);
        trace = {recording.axis(), levels.levels()};
        resolution_ = std::max(resolution_, levels.resolution());
    }

    Cell level(double dBm, LevelPresenter& presenter) {
        return levelCell(std::isnan(dBm) ? std::nullopt : std::optional(dBm), options_.format,
                         presenter, note_);
    }
    Cell difference(std::size_t point) const {
        const double decibels = differences_[point];
        return std::isnan(decibels) ? Cell() : withDecimals(decibels, kDifferenceDecimals);
    }
    Cell frequency(std::size_t point) const {
        return a_.axis.points.empty() ? Cell()
                                      : withDecimals(a_.axis.points[point], kHertzDecimals);
    }
    Antenna antennaAt(std::size_t point) const {
        return options_.view.antennaAt(a_.axis, static_cast<int>(point));
    }

    void printPoints() {
        Table<PointRow> table(
            options_.format,
            {{"point", [](const PointRow& row) { return row.point; }},
             {"frequencyMHz", [this](const PointRow& row) { return frequency(row.point); }},
             {"a",
              [this](const PointRow& row) { return level(a_.levels[row.point], row.presenter); }},
             {"b",
              [this](const PointRow& row) { return level(b_.levels[row.point], row.presenter); }},
             {"difference", [this](const PointRow& row) { return difference(row.point); }},
             {"unit", [](const PointRow& row) { return row.presenter.unitName(); },
              options_.format != Format::Text}});
        std::optional<LevelPresenter> presenter;
        for (std::size_t i = 0; i < a_.levels.size(); ++i) {
            if (!presenter || options_.view.isOfEachPoint()) {
                presenter.emplace(options_.view.unit, antennaAt(i));
            }
            table.add({i, *presenter});
            if ((i + 1) % kPointsAtOnce == 0) {
                table.writeRows();
            }
        }
        table.finish();
    }

    void printChanges() {
        const bool isText = options_.format == Format::Text;
        const bool hasFrequencies = !a_.axis.points.empty();
        Table<ChangeRow> table(
            options_.format,
            {{"fromMHz", [this](const ChangeRow& row) { return frequency(row.change.first); }},
             {"toMHz",
              [hasFrequencies, ends = binEnds(a_.axis)](const ChangeRow& row) {
                  return hasFrequencies ? withDecimals(ends[row.change.last], kHertzDecimals)
                                        : Cell();
              }},
             // In text it would make the table too wide beside the frequency.
             {"point", [](const ChangeRow& row) { return row.change.largest; },
              !isText || !hasFrequencies},
             {"frequencyMHz",
              [this](const ChangeRow& row) { return frequency(row.change.largest); }},
             {"a",
              [this](const ChangeRow& row) {
                  return level(a_.levels[row.change.largest], row.presenter);
              }},
             {"b",
              [this](const ChangeRow& row) {
                  return level(b_.levels[row.change.largest], row.presenter);
              }},
             {"difference",
              [this](const ChangeRow& row) { return difference(row.change.largest); }},
             {"unit", [](const ChangeRow& row) { return row.presenter.unitName(); }, !isText}});
        for (const LevelChange& change :
             changesAbove(*options_.above, differences_, firstPointsOf(a_.axis))) {
            LevelPresenter presenter(options_.view.unit, antennaAt(change.largest));
            table.add({change, presenter});
        }
        table.finish();
    }

    const CompareOptions& options_;
    PrefixNote note_;
    LevelTrace a_;
    LevelTrace b_;
    std::vector<double> differences_;  // dB
    double resolution_ = 0.0;
};

void runCompare(const CommandLine& line) {
    const CompareOptions options(line);
    Comparison comparison(options);
    comparison.read();
    comparison.print();
    if (!options.plot.file.isEmpty()) {
        savePlot(drawingOf(comparison.plot()), options.plot.file, options.both.inputs());
    }
    throwIfInterrupted();
}

}  // namespace

// clang-format off
constexpr Subcommand kCompare = {
    "compare", "What changed between two recordings",
    "Compares a statistic of each point of two recordings A and B.\n"
    "A and B hold sweeps as rfutils trace reads them, one of them may be -, standard input; windows and corrections "
    "apply to both. Every sweep counts.\n"
    "\n"
    "The difference is b minus a, in dB in every unit; average is the mean of the dBm numbers. With "
    "--above a second table follows, one row for each run of points that all rose or all fell by "
    "more than that; a single point between them that did not ends no run. The row shows the point "
    "with the largest difference.\n"
    "\n"
    "The points of both have to lie together. With --resample the levels of B are taken at the "
    "points of A, straight between the middles of the bins of B in dB; where B does not reach, they are missing. "
    "Bins of another width hold another share of noise and of wide signals: that is not corrected.",
    {{"A", Kind::SweepFile}, {"B", Kind::SweepFile}},
    {{"of", "STATISTIC", Kind::Word, "What is compared: average, maximum, minimum or median.",
      kComparedStatistics[0].name, 0, 1, 0, [] { return namesOf(kComparedStatistics); }},
     {"above", "DB", Kind::Decibels, "Also gather the points that differ by more than this."},
     {"resample", "", Kind::Flag, "Take the levels of B at the points of A."},
     kPointUnitOption,
     kCenterOption,
     kGainOption,
     {"plot", "OUT", Kind::Plot,
      "Draw both and their difference over frequency, as PNG or SVG by the ending."},
     kPlotLevelsOption,
     kPlotWidthOption,
     kPlotHeightOption},
    {"rfutils compare fm_band.csv fm_next_day.csv --above 10",
     "rfutils compare fm_band.csv fm_next_day.csv --band 96M:98M --of maximum --format csv",
     "rfutils compare fm_band.csv fm_next_day.csv --of median --plot compared.png"},
    runCompare,
    nullptr,
    &kRecordingOptions};
// clang-format on

}  // namespace rfu::command

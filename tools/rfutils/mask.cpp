#include <QString>
#include <QStringList>
#include <optional>
#include <string>
#include <vector>

#include "analysis/plots/tracePlot.h"
#include "analysis/recordings/bins.h"
#include "analysis/statistics/limitMask.h"
#include "analysis/statistics/pointStatistics.h"
#include "analysis/statistics/sweepStore.h"
#include "analysis/studies/maskFile.h"
#include "recordings/levelView.h"
#include "recordings/plotOf.h"
#include "recordings/recordingOptions.h"
#include "recordings/recordingTexts.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/format.h"
#include "support/interruption.h"
#include "support/output.h"
#include "support/picture.h"
#include "support/plotOptions.h"
#include "support/prefixNote.h"
#include "support/table.h"
#include "support/units.h"

namespace rfu::command {

namespace {

constexpr int kMarginDecimals = 2;  // of dB

constexpr char kOfMaximum[] = "maximum";

std::vector<std::string> judgedStatistics() {
    return {kOfMaximum, "average"};
}

/// --of: true for the maxima, false for the averages.
bool judgesMaximum(const CommandLine& line) {
    return line.value<std::string>("of") == kOfMaximum;
}

struct MaskOptions {
    explicit MaskOptions(const CommandLine& line)
        : source(recordingOf(line)),
          mask(line.text("mask")),
          plot(plotOptionsOf(line, inputs())),
          ofMaximum(judgesMaximum(line)),
          view(levelViewOf(line)),
          format(line.format()) {
        requireAntennaUnit(line, view.unit);
    }

    QStringList inputs() const { return source.inputs() + QStringList(mask); }

    RecordingSource source;
    QString mask;
    PlotOptions plot;
    bool ofMaximum;
    LevelView view;
    Format format;
};

struct MaskRow {
    Violation violation;
    double level;  // dBm
    LevelPresenter& presenter;
};

/// A recording beside a mask.
class MaskRun {
public:
    explicit MaskRun(const MaskOptions& options)
        : options_(options),
          mask_(options.mask, options.view.unit),
          recording_(options.source),
          sweeps_(SweepStore::kAll, false, 0.0),
          note_(options.view.unit, true) {}

    void read() {
        const Interruption interruption;
        Sweep sweep;
        while (recording_.next(sweep)) {
            requireFrequencies(recording_.axis(), recording_.files().first());
            sweeps_.add(sweep.time, sweep.levels);
        }
        requireSweeps(recording_, sweeps_.count());
        tallies_ = sweeps_.tallies();
        plot_ = plotOf(recording_.axis(), tallies_, options_.view);
        result_ =
            mask_.judge(recording_.axis(), options_.ofMaximum ? plot_.maximum : plot_.average);
    }

    bool isViolated() const { return !result_.violations.empty(); }

    void print() {
        Table<MaskRow> table(options_.format, columns());
        for (const Violation& violation : result_.violations) {
            LevelPresenter presenter(
                options_.view.unit,
                options_.view.antennaAt(recording_.axis(), static_cast<int>(violation.worst)));
            table.add({violation, levelAt(violation.worst), presenter});
        }
        table.finish();
        note_.print();
    }

    TracePlot plot() {
        plot_.shape = options_.plot.shape;
        plot_.title = titleOf(recording_.files(), sweeps_.count());
        plot_.mask = linesOf(mask_.mask());
        return plot_;
    }

private:
    /// In dBm.
    double levelAt(std::size_t point) const {
        const PointStatistics statistics = tallies_[point].statistics();
        return *(options_.ofMaximum ? statistics.maximum : statistics.average);
    }

    std::vector<Column<MaskRow>> columns() {
        const FrequencyAxis& axis = recording_.axis();
        return {
            {"fromMHz",
             [&axis](const MaskRow& row) {
                 return withDecimals(axis.points[row.violation.first], kHertzDecimals);
             }},
            {"toMHz",
             [ends = binEnds(axis)](const MaskRow& row) {
                 return withDecimals(ends[row.violation.last], kHertzDecimals);
             }},
            {"frequencyMHz",
             [&axis](const MaskRow& row) {
                 return withDecimals(axis.points[row.violation.worst], kHertzDecimals);
             }},
            {"level",
             [this](const MaskRow& row) {
                 return levelCell(row.level, options_.format, row.presenter, note_);
             }},
            {"limit", [this](const MaskRow& row) { return limitCell(row); }},
            {"margin",
             [](const MaskRow& row) {
                 return withDecimals(row.violation.margin, kMarginDecimals);
             }},
        };
    }

    Cell limitCell(const MaskRow& row) {
        if (options_.format != Format::Text) {
            return row.violation.limit;
        }
        const double margin = row.violation.margin;
        const double dBm = row.violation.isUpper ? row.level + margin : row.level - margin;
        return levelCell(dBm, options_.format, row.presenter, note_);
    }

    const MaskOptions& options_;
    MaskFile mask_;
    Recording recording_;
    SweepStore sweeps_;
    PrefixNote note_;
    std::vector<PointTally> tallies_;
    TracePlot plot_;
    MaskResult result_;
};

void runMask(const CommandLine& line) {
    const MaskOptions options(line);
    MaskRun run(options);
    run.read();
    run.print();
    if (!options.plot.file.isEmpty()) {
        savePlot(drawingOf(run.plot()), options.plot.file, options.inputs());
    }
    throwIfInterrupted();
    if (run.isViolated()) {
        throw Ended{kExitViolated};
    }
}

}  // namespace

// clang-format off
constexpr Subcommand kMask = {
    "mask", "Whether a recording stays within limits over frequency",
    "Compares the points of a recording with a mask and shows where they lie beyond it. The exit "
    "status is 0 if none does and 3 if one does.\n"
    "FILE holds sweeps with frequencies as rfutils trace reads them, several files as one recording; - reads standard input.\n"
    "\n"
    "The mask is CSV: lines of frequency, upper limit, lower limit, such as 88.1MHz,-40,-90. A bare "
    "frequency is in MHz, a limit may be left empty, and the limits are in --unit. A limit goes "
    "straight from each of its points to the next, with a step where a frequency comes twice; "
    "beyond its points there is none. At a step the stricter limit applies.\n"
    "\n"
    "Each point is judged at its frequency; one at the limit is within it. Neighbours beyond a "
    "limit make one row, also if a single point between them is not. The row shows the point with "
    "the smallest margin, that is the distance to the limit in dB, below 0 beyond it.",
    {kRecordingArgument},
    {{"mask", "MASK.csv", Kind::CsvFile, "The limits.", nullptr, 1},
     {"of", "STATISTIC", Kind::Word, "What is judged of each point: maximum or average.", kOfMaximum,
      0, 1, 0, judgedStatistics},
     {"unit", "UNIT", Kind::Unit,
      "Unit of the mask and of what is shown (rfutils units lists them); a field unit takes the "
      "frequency of each point unless --center is given.",
      "dBm"},
     kCenterOption,
     kGainOption,
     {"plot", "OUT", Kind::Plot,
      "Draw the mask with maximum, average and minimum over frequency, as PNG or SVG by the ending."},
     kPlotLevelsOption,
     kPlotWidthOption,
     kPlotHeightOption},
    {"rfutils mask wifi_band.csv --mask wifi_mask.csv --of average",
     "rfutils mask wifi_band.csv --mask wifi_mask.csv --of average --plot wifi.png"},
    runMask,
    nullptr,
    &kRecordingOptions};
// clang-format on

}  // namespace rfu::command

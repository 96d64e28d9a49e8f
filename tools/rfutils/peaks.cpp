#include <QString>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "analysis/recordings/spurs.h"
#include "analysis/statistics/peaks.h"
#include "analysis/studies/signalStudy.h"
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
#include "support/prefixNote.h"
#include "support/table.h"

namespace rfu::command {

namespace {

PeakOptions optionsOf(const CommandLine& line) {
    PeakOptions options;
    if (line.isSet("above")) {
        options.above = positiveOf(line, "above");
    }
    options.widthAt = positiveOf(line, "width-at");
    options.window = floorWindowOf(line);
    return options;
}

std::vector<NamedSpur> spursOf(const CommandLine& line) {
    std::vector<NamedSpur> spurs;
    for (const Spur& spur : line.values<Spur>("spur")) {
        const auto place = static_cast<int>(spurs.size());
        spurs.push_back({spur, line.texts("spur")[place].toStdString()});
    }
    return spurs;
}

/// Times in text format: without their day where all have the same one, without seconds otherwise.
class ShownTimes {
public:
    explicit ShownTimes(const std::vector<Signal>& signals) {
        for (const Signal& signal : signals) {
            for (const std::string& time : {signal.first, signal.last}) {
                isOneDay_ = isOneDay_ && time.compare(0, kDay, signals.front().first, 0, kDay) == 0;
            }
        }
    }

    /// @param time "2024-05-04 21:15:00.308551"
    std::string operator()(const std::string& time) const {
        return isOneDay_ ? time.substr(kDay + 1, 8) : time.substr(kYear, 11);
    }

private:
    static constexpr std::size_t kYear = 5;  // "2024-"
    static constexpr std::size_t kDay = 10;  // "2024-05-04"

    bool isOneDay_ = true;
};

class PeakTable {
public:
    PeakTable(const CommandLine& line, const LevelView& view, const FrequencyAxis& axis)
        : format_(line.format()), view_(view), axis_(axis), note_(view.unit, true) {}

    void print(const std::vector<Signal>& signals) {
        Table<Row> table(format_, columns(ShownTimes(signals)));
        for (const Signal& signal : signals) {
            LevelPresenter presenter(view_.unit,
                                     view_.antennaAt(axis_, static_cast<int>(signal.point)));
            table.add({signal, presenter});
        }
        table.finish();
        note_.print();
    }

private:
    struct Row {
        const Signal& signal;
        LevelPresenter& presenter;
    };

    std::vector<Column<Row>> columns(const ShownTimes& shown) {
        constexpr int kDecibelDecimals = 1;
        constexpr int kPresentDecimals = 3;
        const auto level = [this](double Signal::*levelOf) {
            return [this, levelOf](const Row& row) {
                return levelCell(row.signal.*levelOf, format_, row.presenter, note_);
            };
        };
        const auto number = [](double Signal::*numberOf, int decimals) {
            return [numberOf, decimals](const Row& row) {
                return withDecimals(row.signal.*numberOf, decimals);
            };
        };
        const auto time = [this, shown](std::string Signal::*timeOf) {
            return [this, shown, timeOf](const Row& row) {
                const std::string& found = row.signal.*timeOf;
                return Cell(format_ == Format::Text ? shown(found) : found);
            };
        };
        const bool hasUnitColumn = format_ != Format::Text;  // a text has it beside each number
        return {{"frequencyMHz", number(&Signal::frequency, kHertzDecimals)},
                {"widthMHz",
                 [](const Row& row) {
                     // Eight characters, as the heading.
                     const double width = row.signal.width;
                     return withDecimals(width, width < 10.0     ? kHertzDecimals
                                                : width < 100.0  ? kHertzDecimals - 1
                                                : width < 1000.0 ? kHertzDecimals - 2
                                                                 : kHertzDecimals - 3);
                 }},
                {"maximum", level(&Signal::maximum)},
                {"average", level(&Signal::average), true, 1},
                {"floor", level(&Signal::floor), true, 2},
                {"above",
                 [](const Row& row) {
                     return withDecimals(row.signal.maximum - row.signal.floor, kDecibelDecimals);
                 }},
                {"present", number(&Signal::present, kPresentDecimals)},
                {"first", time(&Signal::first)},
                {"last", time(&Signal::last)},
                {"unit", [](const Row& row) { return row.presenter.unitName(); }, hasUnitColumn}};
    }

    Format format_;
    const LevelView& view_;
    const FrequencyAxis& axis_;
    PrefixNote note_;
};

/// How the signals are found and shown.
class PeakReport {
public:
    explicit PeakReport(const CommandLine& line)
        : line_(line), options_(optionsOf(line)), view_(levelViewOf(line)) {
        requireAntennaUnit(line, view_.unit);
    }

    void print(SignalStudy& study, bool areMerged) const {
        PeakTable(line_, view_, study.head().axis).print(study.find(spursOf(line_), options_));
        noteMedians(study.resolution(), areMerged);
    }

private:
    const CommandLine& line_;
    PeakOptions options_;
    LevelView view_;
};

void runPeaks(const CommandLine& line) {
    const PeakReport report(line);
    const RecordingSource source = recordingOf(line);
    const QString state = stateFileOf(line, source.inputs());
    Recording recording(source);
    SignalStudy study;
    {
        const Interruption interruption;
        study.read(recording);
    }
    requireSweeps(recording, study.head().sweeps);
    report.print(study, false);
    if (!state.isEmpty()) {
        StateOutput output(state, source.inputs());
        study.write(output.writer());
        output.finish(study.head());
    }
    throwIfInterrupted();
}

void mergePeaks(const CommandLine& line, const StateSet& states, StateOutput* output) {
    const PeakReport report(line);
    SignalStudy study;
    study.merge(states);
    report.print(study, true);
    if (output != nullptr) {
        study.write(output->writer());
    }
}

}  // namespace

// clang-format off
constexpr Subcommand kPeaks = {
    SignalStudy::kCommand, "Signals in recorded sweeps",
    "The signals of a recording, one row each: the middle of its width; the width, between the "
    "points 6 dB below the maximum; its highest and mean level; the noise floor there and how far "
    "above it the maximum is; the share of the sweeps in which it was present; the times when it "
    "was first and last seen. FILE holds sweeps as rtl_power and hackrf_sweep write them, several files are one recording; - reads "
    "standard input. All sweeps count. No signal is an empty table.\n"
    "\n"
    "The floor is the median level of the noise: a straight line through the quiet points of a "
    "window around each point. A steady signal wider than half the window counts as floor.\n"
    "\n"
    "A signal is a run of points whose maximum exceeds the threshold; a single point below it does "
    "not end the run. Unless --above is given, the threshold is the level that noise as spread as "
    "that of the recording would exceed in one cell of one recording in a hundred, at least 6 dB "
    "above the floor.",
    {kRecordingArgument},
    {{"above", "DB", Kind::Decibels, "Take signals that rise this far above the floor."},
     {"width-at", "DB", Kind::Decibels, "How far below the maximum the width is measured.", "6"},
     {"window", "POINTS", Kind::Integer, "How many points the floor follows from.", "101"},
     {"spur", "FREQ:WIDTH", Kind::Spur,
      "Leave out a range that holds a spur, such as 98.3MHz:50kHz; hops:WIDTH is the middle of "
      "every hop, where many receivers have a line of their own.",
      nullptr, 0, kAnyCount},
     {"unit", "UNIT", Kind::Unit,
      "Show levels in this unit (rfutils units lists them); a field unit takes the frequency of "
      "each signal unless --center is given.",
      "dBm"},
     kCenterOption,
     kGainOption,
     kStateOption},
    {"rfutils peaks fm_band.csv",
     "rfutils peaks fm_band.csv --above 20 --unit dBuV",
     "rfutils peaks fm_band.csv --spur hops:80kHz --format csv",
     "rfutils peaks wifi_band.csv --window 51 --width-at 20"},
    runPeaks,
    nullptr,
    &kRecordingOptions};

const Merger kPeaksMerger = {
    kPeaks, {}, {"above", "width-at", "window", "spur", "unit", "center", "gain"}, mergePeaks};
// clang-format on

}  // namespace rfu::command

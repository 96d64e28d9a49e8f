#include <QString>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "analysis/recordings/recordingWriter.h"
#include "recordings/levelView.h"
#include "recordings/recordingOptions.h"
#include "recordings/recordingTexts.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/interruption.h"
#include "support/output.h"
#include "support/outputFile.h"
#include "support/units.h"

namespace rfu::command {

namespace {

constexpr std::size_t kBlock = 262144;

struct CutOptions {
    explicit CutOptions(const CommandLine& line)
        : source(recordingOf(line)), output(line.text("output")), view(levelViewOf(line)) {
        if (line.isSet("format")) {
            throw UsageError("--format has no effect: a recording is written");
        }
        if (view.unit.isLinear()) {
            throw UsageError("--unit: a recording holds levels, and " + nameOf(view.unit) +
                             " is not one");
        }
        requireAntennaUnit(line, view.unit);
        if (!output.isEmpty()) {
            requireOwn(output, source.inputs());
        }
        source.keepsLines = true;
    }

    bool isInDbm() const { return view.unit.fromDbm.formula == rfu::FromDbm::Unchanged; }

    RecordingSource source;
    QString output;  // empty for standard output
    LevelView view;
};

/// What a unit adds to the dBm of each point.
std::vector<double> offsetsOf(const LevelView& view, const FrequencyAxis& axis,
                              std::size_t points) {
    std::vector<double> offsets;
    std::optional<LevelPresenter> presenter;
    for (std::size_t point = 0; point < points; ++point) {
        if (!presenter || view.isOfEachPoint()) {
            presenter.emplace(view.unit, view.antennaAt(axis, static_cast<int>(point)));
        }
        offsets.push_back(presenter->value(0.0));
    }
    return offsets;
}

class Cut {
public:
    explicit Cut(const CutOptions& options) : options_(options), recording_(options.source) {
        if (!options.output.isEmpty()) {
            file_.emplace(options.output, options.source.inputs());
        }
    }

    void run() {
        const Interruption interruption;
        std::optional<RecordingWriter> writer;
        long long sweeps = 0;
        for (Sweep sweep; recording_.next(sweep); ++sweeps) {
            if (!writer) {
                writer.emplace(recording_, !options_.source.correction.isNone());
                if (!options_.isInDbm()) {
                    writer->setOffsets(
                        offsetsOf(options_.view, recording_.axis(), sweep.levels.size()));
                }
            }
            writer->write(sweep, text_);
            if (!file_ || text_.size() >= kBlock) {
                put();
            }
        }
        requireSweeps(recording_, sweeps);
        if (writer) {
            writer->finish(text_);
        }
        put();
        if (file_) {
            file_->commit();
        }
    }

private:
    void put() {
        if (file_) {
            file_->write(text_);
        } else {
            standardOutput().write(text_);
        }
        text_.clear();
    }

    const CutOptions& options_;
    Recording recording_;
    std::optional<OutputFile> file_;
    std::string text_;  // not yet written
};

void runCut(const CommandLine& line) {
    const CutOptions options(line);
    Cut(options).run();
    if (!options.isInDbm()) {
        standardOutput().flush();
        printNote("the levels are in " + nameOf(options.view.unit) +
                  ", which the format does not tell; readers take them for dBm");
    }
    throwIfInterrupted();
}

}  // namespace

// clang-format off
constexpr Subcommand kCut = {
    "cut", "Part of a recording, as a recording",
    "Writes a part of a recording, or several files as one, in the format of rtl_power.\n"
    "FILE holds sweeps as rfutils trace reads them, several files as one recording; - reads standard input.\n"
    "\n"
    "Lines keep their order and their text. Of a hop that --band takes in part, that part becomes a line "
    "of its own. What was not measured is nan. The first sweep gets a line for each hop that it lacks. "
    "Comments, the header and lines that make no sense are left out.\n"
    "\n"
    "Levels that --offset, --correction or --unit change have the decimals that they had, but two at "
    "least. Readers of the format take all levels for dBm.\n"
    "\n"
    "Ctrl-C ends the reading: what was read is written.\n"
    "\n"
    "Several files as one:\n"
    "  rfutils cut monday.csv tuesday.csv -o both.csv",
    {kRecordingArgument},
    {{"output", "OUT.csv", Kind::Recording,
      "The file to write, instead of standard output. It replaces an older one.", nullptr, 0, 1, 'o'},
     {"unit", "UNIT", Kind::Unit,
      "Write levels in this unit, no linear one (rfutils units lists them). A field unit takes the "
      "frequency of each point unless --center is given.",
      "dBm"},
     kCenterOption,
     kGainOption},
    {"rfutils cut fm_band.csv --band 98M:99M --from 21:20 --to 21:30",
     "rfutils cut fm_band.csv --last 10 --offset 20 --correction fm_cable.csv",
     "rfutils cut wifi_band.csv --every 10"},
    runCut,
    nullptr,
    &kRecordingOptions};
// clang-format on

}  // namespace rfu::command

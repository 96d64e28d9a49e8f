#include <QImage>
#include <QSize>
#include <QString>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

#include "analysis/plots/rawWaterfall.h"
#include "analysis/plots/unitScale.h"
#include "analysis/plots/waterfall.h"
#include "analysis/support/fileWatch.h"
#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "recordings/levelView.h"
#include "recordings/recordingOptions.h"
#include "recordings/recordingTexts.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/format.h"
#include "support/interruption.h"
#include "support/named.h"
#include "support/picture.h"
#include "support/plotOptions.h"
#include "support/table.h"
#include "support/units.h"

namespace rfu::command {

namespace {

constexpr int kLevelDecimals = 2;

struct NamedReduction {
    const char* name;
    Reduction reduction;
};

constexpr NamedReduction kReductions[] = {
    {"max", Reduction::Maximum}, {"mean", Reduction::Mean}, {"min", Reduction::Minimum}};

/// The levels of a recording in the unit that they are shown in.
struct ShownLevels {
    /// --levels in dBm.
    std::optional<LevelRange> rangeOf(const CommandLine& line) const {
        const auto shown = line.find<NumberRange>("levels");
        if (!shown) {
            return std::nullopt;
        }
        if (common.scale.isLinear() && shown->low <= 0.0) {
            throw UsageError("--levels: " + common.scale.unit + " begin above zero");
        }
        const LevelRange range = {common.scale.dBm(shown->low), common.scale.dBm(shown->high)};
        if (!(range.high - range.low >= kNarrowestRange)) {
            throw UsageError("--levels: the two are less than " +
                             std::string(ShortestText(kNarrowestRange).view()) + " dB apart");
        }
        return range;
    }

    Cell cell(double dBm) {
        return unit.isLinear() ? Cell(common.scale.shown(dBm), presenter.text(dBm))
                               : withDecimals(common.scale.shown(dBm), kLevelDecimals);
    }

    const rfu::Unit& unit;
    UnitScale common;
    LevelPresenter presenter;
};

ShownLevels shownLevelsOf(const LevelView& view, const FrequencyAxis& axis) {
    const UnitScale common = unitScaleOf(view.unit, view.antenna, axis);
    return {view.unit, common, LevelPresenter(view.unit, common.antenna)};
}

/// A recording of which the first sweep is read, so that its axis is known.
class BegunRecording {
public:
    explicit BegunRecording(const RecordingSource& source) : recording_(source) {
        requireSweeps(recording_, recording_.next(sweep_) ? 1 : 0);
        points_ = sweep_.levels.size();
        firstTime_ = sweep_.time;
    }

    const FrequencyAxis& axis() const { return recording_.axis(); }
    std::size_t points() const { return points_; }
    long long sweeps() const { return sweeps_; }

    /// Calls use(sweep) with each sweep.
    template <typename Use>
    void forEachSweep(Use use) {
        do {
            ++sweeps_;
            lastTime_ = sweep_.time;
            use(std::as_const(sweep_));
        } while (recording_.next(sweep_));
    }

    void printSummary(Format format, QSize size, bool isMeasured, const LevelRange& range,
                      ShownLevels& shown) const {
        const bool hasAxis = recording_.hasFrequencies();
        writeObject(format, {{"sweeps", sweeps_},
                             {"points", points_},
                             {"fromMHz", hasAxis ? Cell(axis().points.front()) : Cell()},
                             {"toMHz", hasAxis ? Cell(axis().bands.back().high) : Cell()},
                             {"bands", hasAxis ? Cell(bandsText(axis())) : Cell()},
                             {"firstTime", textOrNone(firstTime_)},
                             {"lastTime", textOrNone(lastTime_)},
                             {"width", size.width()},
                             {"height", size.height()},
                             {"levelsMin", isMeasured ? shown.cell(range.low) : Cell()},
                             {"levelsMax", isMeasured ? shown.cell(range.high) : Cell()},
                             {"unit", shown.common.scale.unit}});
    }

private:
    const Interruption interruption_;
    Recording recording_;
    Sweep sweep_;
    std::size_t points_ = 0;
    long long sweeps_ = 0;
    std::string firstTime_;
    std::string lastTime_;
};

void requireSide(const RecordingSource& source, std::size_t pixels, const char* what) {
    if (pixels > RawWaterfall::kMostSide) {
        throw InputError(source.files.first(), "has too many " + std::string(what) +
                                                   " for --raw, " +
                                                   std::to_string(RawWaterfall::kMostSide) +
                                                   " at most; without --raw they share pixels");
    }
}

void readCells(const RecordingSource& source, BegunRecording& recording, RawWaterfall& raw) {
    const bool hasStandardInput = source.files.contains(kStandardInput);
    recording.forEachSweep([&](const Sweep& sweep) {
        raw.add(sweep);
        requireSide(source, raw.sweeps(), "sweeps");
        if (hasStandardInput && !raw.holdsCells()) {
            throw InputError(kStandardInput,
                             "--raw holds " + std::to_string(RawWaterfall::kMostHeld >> 20) +
                                 " MB of cells of standard input at most; give it a file, "
                                 "which is read twice, or leave --raw out");
        }
    });
    requireSide(source, raw.height(), "sweeps");
}

/// Calls use(row) with each row of a picture, for which the recording may be read once more.
void drawRows(RecordingSource source, RawWaterfall& raw, const FileWatch& watch,
              const PixelRows::Use& use) {
    if (raw.holdsCells()) {
        raw.draw([](Sweep&) { return false; }, use);
        return;
    }
    source.waiting = {};
    source.onNote = [](const InputError&) {};  // told once
    Recording again(source);
    raw.draw([&](Sweep& sweep) { return again.next(sweep); }, use);
    watch.requireUnchanged();
}

void runWaterfall(const CommandLine& line) {
    const RecordingSource source = recordingOf(line);
    const QString picture = line.text("png");
    const bool isRaw = line.isSet("raw");
    for (const char* option : {"width", "height", "reduce"}) {
        if (isRaw && line.isSet(option)) {
            throw UsageError(std::string("--") + option + " and --raw exclude each other");
        }
    }
    const LevelView view = levelViewOf(line);
    requireAntennaUnit(line, view.unit);
    WaterfallOptions options;
    options.size = sizeOf(line, Waterfall::kSmallest, Waterfall::kLargest);
    options.reduction = named(kReductions, line.value<std::string>("reduce")).reduction;
    options.showsGaps = !line.isSet("no-gaps");
    options.colors.palette = &named(kPalettes, line.value<std::string>("palette"));
    requireReplaceable(picture, source.inputs());

    BegunRecording recording(source);
    ShownLevels shown = shownLevelsOf(view, recording.axis());
    options.scale = shown.common.scale;
    options.colors.range = shown.rangeOf(line);
    options.colors.offsets = std::move(shown.common.offsets);
    const auto showSummary = [&](QSize size, const auto& waterfall) {
        const bool hasRange = waterfall.levels().measured() > 0 || line.isSet("levels");
        recording.printSummary(line.format(), size, hasRange, waterfall.range(), shown);
    };
    if (isRaw) {
        requireSide(source, recording.points(), "points");
        const FileWatch watch(source.files.contains(kStandardInput) ? QStringList() : source.files);
        RawWaterfall raw(std::move(options.colors), options.showsGaps, recording.points());
        readCells(source, recording, raw);
        const QSize size(static_cast<int>(recording.points()), static_cast<int>(raw.height()));
        showSummary(size, raw);
        savePicture({size, raw.colors(),
                     [&](const PixelRows::Use& use) { drawRows(source, raw, watch, use); }},
                    picture, source.inputs());
    } else {
        Waterfall waterfall(std::move(options), recording.axis(), recording.points());
        recording.forEachSweep([&](const Sweep& sweep) { waterfall.add(sweep); });
        const TextDrawing drawing;
        const QImage image = waterfall.draw(titleOf(source.files, recording.sweeps()));
        showSummary(image.size(), waterfall);
        savePicture(image, picture, source.inputs(), Encoding::Fast);
    }
    throwIfInterrupted();
}

}  // namespace

// clang-format off
constexpr Subcommand kWaterfall = {
    "waterfall", "Picture of a recording: frequency across, time down",
    "Draws a recording with frequency across, time down and level as colour, and shows what it "
    "drew.\n"
    "FILE holds sweeps as rfutils trace reads them, several files as one recording; - reads standard input. It is read once, in "
    "memory that does not grow with it.\n"
    "\n"
    "A pixel that stands for several cells shows their maximum, so that a burst of one sweep on "
    "one point stays visible. Cells that were not measured are transparent. The time axis is true "
    "to scale: times without sweeps are transparent too. A sweep reaches to the next one, or for "
    "the usual time from sweep to sweep where the next one comes more than one and a half times "
    "later. Without frequencies and times, points and sweeps are counted.\n"
    "\n"
    "The colours reach from the 1st to the 99.9th percentile of the levels of all cells. The "
    "palettes are perceptually uniform, equal steps of the level look alike; turbo is not, but "
    "has the most colours.\n"
    "\n"
    "Ctrl-C ends the reading: what was read is drawn.\n"
    "\n"
    "A live recording:\n"
    "  rtl_power -f 88M:108M:50k -i 1 -e 1h - | rfutils waterfall - --png fm.png",
    {kRecordingArgument},
    {{"png", "OUT.png", Kind::Picture, "The picture.", nullptr, 1},
     {"palette", "NAME", Kind::Word,
      "viridis, magma, cividis (made for colour-blind readers too), grey; or turbo, which is not "
      "uniform.",
      kPalettes[0].name, 0, 1, 0, [] { return namesOf(kPalettes); }},
     {"levels", "MIN:MAX", Kind::Range,
      "The levels of the first and the last colour, in the shown unit."},
     {"width", "PIXELS", Kind::Integer, "Of the whole picture, 320 to 10000.", "1920"},
     {"height", "PIXELS", Kind::Integer, "Of the whole picture, 200 to 10000.", "1080"},
     {"reduce", "HOW", Kind::Word,
      "What a pixel shows of its cells: max, mean (of the dBm numbers) or min.",
      kReductions[0].name, 0, 1, 0, [] { return namesOf(kReductions); }},
     {"raw", "", Kind::Flag,
      "One pixel per cell, without axes; a gap in time is one transparent row."},
     {"no-gaps", "", Kind::Flag, "Leave times without sweeps out; every sweep is as high."},
     {"unit", "UNIT", Kind::Unit,
      "Unit of the colour bar (rfutils units lists them); linear ones are on a logarithmic axis. A "
      "field unit takes the frequency of each point unless --center is given.",
      "dBm"},
     kCenterOption,
     kGainOption},
    {"rfutils waterfall fm_band.csv --png fm_waterfall.png",
     "rfutils waterfall fm_band.csv --png grey.png --palette grey --levels -100:-40",
     "rfutils waterfall wifi_band.csv --png wifi_cells.png --raw",
     "rfutils waterfall fm_band.csv --png small.png --width 640 --height 480"},
    runWaterfall,
    nullptr,
    &kRecordingOptions};
// clang-format on

}  // namespace rfu::command

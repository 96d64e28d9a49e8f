#include <QString>
#include <QStringList>
#include <algorithm>
#include <iterator>
#include <memory>
#include <string>

#include "analysis/recordings/stateFile.h"
#include "analysis/support/inputError.h"
#include "recordings/mergers.h"
#include "recordings/stateOutput.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/plotOptions.h"

namespace rfu::command {

namespace {

constexpr const Merger* kMergers[] = {&kTraceMerger, &kPeaksMerger, &kOccupancyMerger,
                                      &kPowerMerger};

bool names(const std::initializer_list<const char*>& names, const std::string& name) {
    return std::any_of(names.begin(), names.end(),
                       [&name](const char* candidate) { return name == candidate; });
}

const Merger& mergerOf(const StateSet& states) {
    const auto* const found = std::find_if(
        std::begin(kMergers), std::end(kMergers),
        [&states](const Merger* merger) { return states.head().command == merger->command.name; });
    if (found == std::end(kMergers)) {
        throw InputError(states.files().first(),
                         "is a state of " + rfu::quoted(states.head().command) +
                             ", which is not among those that rfutils merges");
    }
    return **found;
}

QString argumentOf(const Option& option, const QString& value) {
    const QString name = QStringLiteral("--") + QLatin1String(option.name);
    return option.kind == Kind::Flag ? name : name + QLatin1Char('=') + value;
}

/// The options that the states fix.
QStringList settingOptions(const StateSet& states, const Merger& merger) {
    QStringList arguments;
    for (const StateSetting& setting : states.head().settings) {
        for (const Option& option : merger.command.options) {
            if (setting.name == option.name && names(merger.settings, setting.name)) {
                arguments += argumentOf(option, QString::fromStdString(setting.value));
            }
        }
    }
    return arguments;
}

/// @throw UsageError for an option that states do not take
void requireOption(const std::string& name, const StateSet& states, const Merger& merger) {
    const std::string ofCommand = "the states of rfutils " + std::string(merger.command.name);
    if (name != "format" && !names(merger.options, name)) {
        throw UsageError("--" + name + " does not apply to " + ofCommand);
    }
    const auto& settings = states.head().settings;
    if (std::any_of(settings.begin(), settings.end(),
                    [&name](const StateSetting& setting) { return setting.name == name; })) {
        throw UsageError("--" + name + " is fixed by " + ofCommand);
    }
}

/// The options that show what the states hold.
QStringList optionsOf(const CommandLine& line, const StateSet& states, const Merger& merger) {
    QStringList arguments;
    for (const Option* option : rfu::command::optionsOf(kMerge)) {
        const std::string name = option->name;
        if (!line.isSet(name) || name == kStateOption.name) {
            continue;
        }
        requireOption(name, states, merger);
        for (const QString& value : line.texts(name)) {
            arguments += argumentOf(*option, value);
        }
    }
    return arguments;
}

CommandLine lineOf(const CommandLine& line, const StateSet& states, const Merger& merger) {
    const QStringList options = optionsOf(line, states, merger);
    try {
        return CommandLine(merger.command, settingOptions(states, merger) + options +
                                               QStringList(QStringLiteral("--")) + states.files());
    } catch (const Failure&) {  // the options have been read before
        throw InputError(states.files().first(), kDamagedState);
    }
}

void runMerge(const CommandLine& line) {
    const QStringList files = line.texts("STATE");
    const QString file = stateFileOf(line, files);
    const StateSet states(files);
    const Merger& merger = mergerOf(states);
    const CommandLine command = lineOf(line, states, merger);
    std::unique_ptr<StateOutput> output;
    if (!file.isEmpty()) {
        output = std::make_unique<StateOutput>(file, files);
    }
    merger.run(command, states, output.get());
    if (output) {
        output->finish(states.head());
    }
}

}  // namespace

// clang-format off
constexpr Subcommand kMerge = {
    "merge", "Go on from the states of parts of a recording",
    "Prints what trace, peaks, occupancy or power --series would have printed of one recording, from "
    "the states that they wrote of its parts (--state). States of one command and one receiver setting "
    "go together, in the order of their times, which must not overlap. --state writes the state of all of them, "
    "so that merging may go on in a tree.\n"
    "\n"
    "Counts, extremes and times are those of a single run, means differ by their rounding. Options "
    "that decide what is counted, such as --limit and --channel, come from the states; the others "
    "are given here, as to the command itself.",
    {{"STATE", Kind::StateFile, 1, kAnyCount}},
    {{"state", "OUT", Kind::State, "Write the state of all of them."},
     {"marker", "FREQ", Kind::Marker, "As in rfutils trace.", nullptr, 0, kAnyCount},
     {"all-points", "", Kind::Flag, "As in rfutils trace."},
     {"above", "DB", Kind::Decibels, "As in rfutils peaks."},
     {"width-at", "DB", Kind::Decibels, "As in rfutils peaks."},
     {"window", "POINTS", Kind::Integer, "As in rfutils peaks."},
     {"spur", "FREQ:WIDTH", Kind::Spur, "As in rfutils peaks.", nullptr, 0, kAnyCount},
     {"unit", "UNIT", Kind::Unit, "Show levels in this unit (rfutils units lists them)."},
     {"center", "FREQ", Kind::Frequency, kCenterOption.help},
     {"gain", "DBI", Kind::Gain, kGainOption.help},
     {"plot", "OUT", Kind::Plot, "As in rfutils trace and occupancy."},
     {"mask", "MASK.csv", Kind::CsvFile, "As in rfutils trace."},
     {"levels", "MIN:MAX", kPlotLevelsOption.kind, kPlotLevelsOption.help},
     {"width", "PIXELS", kPlotWidthOption.kind, kPlotWidthOption.help},
     {"height", "PIXELS", kPlotHeightOption.kind, kPlotHeightOption.help}},
    {"rfutils merge fm_band.state --marker 98.3MHz",
     "rfutils merge fm_band.state --all-points --format csv --state all.state"},
    runMerge};
// clang-format on

}  // namespace rfu::command

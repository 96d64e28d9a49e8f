#include "recordings/recordingOptions.h"

#include <string>

#include "analysis/recordings/levelCorrection.h"
#include "analysis/recordings/window.h"
#include "analysis/support/lineReader.h"
#include "recordings/progress.h"
#include "support/errors.h"
#include "support/interruption.h"
#include "support/output.h"

namespace rfu::command {

const std::initializer_list<Option> kRecordingOptions = {
    {"band", "LOW:HIGH", Kind::FrequencyRange,
     "Only points whose bins have their middle in it; may be given several times.", nullptr, 0,
     kAnyCount},
    {"from", "TIME", Kind::WindowTime,
     "Only sweeps from this time on: \"2024-05-04 21:15\"; 21:15:30 on the day of the first sweep; "
     "-10m (-90s, -2h, -1d) before the last one, which takes a file."},
    {"to", "TIME", Kind::WindowTime, "Only sweeps up to this time, those at it included."},
    {"every", "N", Kind::Integer,
     "Of the sweeps between these times the first and each Nth behind it.", "1"},
    {"last", "N", Kind::Integer, "Of these only the last N."},
    {"offset", "DB", Kind::Decibels,
     "Add this to all measured levels before anything else, such as the loss of a cable.", "0"},
    {"correction", "FILE.csv", Kind::CsvFile,
     "Also add the dB of a CSV file of frequencies and dB, straight between its lines."},
    {"quiet", "", Kind::Flag, "Show no progress on a terminal."},
    {"strict", "", Kind::Flag,
     "A line that makes no sense is an error; without, it is skipped with a note."}};

namespace {

long long countOf(const CommandLine& line, const char* option, long long fallback) {
    const long long count = line.find<int>(option).value_or(fallback);
    if (line.isSet(option) && count < 1) {
        throw UsageError(std::string("--") + option + " takes 1 or more");
    }
    return count;
}

WindowOptions windowOf(const CommandLine& line) {
    WindowOptions window;
    window.bands = line.values<FrequencyRange>("band");
    window.from = line.find<WindowTime>("from");
    window.to = line.find<WindowTime>("to");
    window.every = countOf(line, "every", window.every);
    window.last = countOf(line, "last", window.last);
    return window;
}

}  // namespace

RecordingSource recordingOf(const CommandLine& line) {
    return recordingOf(line, line.texts(kRecordingArgument.name));
}

RecordingSource recordingOf(const CommandLine& line, const QStringList& files) {
    RecordingSource source;
    source.files = files;
    if (source.files.count(kStandardInput) > 1) {
        throw UsageError("standard input, -, can be read only once");
    }
    source.waiting = {[] { standardOutput().flush(); }, stopDescriptor()};
    source.onNote = [](const InputError& note) {
        standardOutput().flush();
        printNote(note.message());
    };
    if (!line.isSet("quiet")) {
        source.onRead = progress();
    }
    source.isStrict = line.isSet("strict");
    source.window = windowOf(line);
    const double offset = line.value<double>("offset");
    source.correction = line.isSet("correction") ? LevelCorrection(offset, line.text("correction"))
                                                 : LevelCorrection(offset);
    return source;
}

}  // namespace rfu::command

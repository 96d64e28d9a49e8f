#include "recordings/recordingOptions.h"

#include "analysis/support/lineReader.h"
#include "support/errors.h"
#include "support/interruption.h"
#include "support/output.h"

namespace rfu::command {

const std::initializer_list<Option> kRecordingOptions = {
    {"strict", "", Kind::Flag,
     "A line that makes no sense is an error; without, it is skipped with a note."}};

RecordingSource recordingOf(const CommandLine& line) {
    RecordingSource source;
    source.files = line.texts(kRecordingArgument.name);
    if (source.files.count(kStandardInput) > 1) {
        throw UsageError("standard input, -, can be read only once");
    }
    source.waiting = {[] { standardOutput().flush(); }, stopDescriptor()};
    source.onNote = [](const InputError& note) {
        standardOutput().flush();
        printNote(note.message());
    };
    source.isStrict = line.isSet("strict");
    return source;
}

}  // namespace rfu::command

#pragma once

#include "analysis/recordings/stateFile.h"
#include "analysis/support/stateStream.h"
#include "support/commandLine.h"
#include "support/outputFile.h"
#include "support/subcommand.h"

namespace rfu::command {

inline constexpr Option kStateOption = {
    "state", "OUT", Kind::State,
    "Write the statistics as a state, with which rfutils merge goes on."};

/// --state, empty without. @throw InputError for a file that may not be replaced
inline QString stateFileOf(const CommandLine& line, const QStringList& inputs) {
    QString file = line.text(kStateOption.name);
    if (!file.isEmpty()) {
        requireOwn(file, inputs);
    }
    return file;
}

/// A state while it is written.
class StateOutput {
public:
    /// @param inputs files of the same run, which it must not replace
    /// @throw InputError
    StateOutput(const QString& file, const QStringList& inputs)
        : file_(file, inputs), writer_([this](std::string_view bytes) { file_.write(bytes); }) {
        beginState(writer_);
    }
    StateOutput(const StateOutput&) = delete;
    StateOutput& operator=(const StateOutput&) = delete;

    /// For the statistics.
    StateWriter& writer() { return writer_; }

    /// @throw InputError
    void finish(const StateHead& head) {
        finishState(writer_, head);
        file_.commit();
    }

private:
    OutputFile file_;
    StateWriter writer_;
};

}  // namespace rfu::command

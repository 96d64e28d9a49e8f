#pragma once

#include <QString>
#include <QStringList>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "analysis/recordings/sweepReader.h"
#include "analysis/support/inputError.h"
#include "analysis/support/lineReader.h"

namespace rfu {

/// How many sweeps the hops of a recording are learned from: a hop that the first sweep lost must not
/// make it unreadable.
inline constexpr std::size_t kLearnedSweeps = 4;

/// What a recording is read from, and how.
struct RecordingSource {
    QStringList files;  // at least one; kStandardInput at most once
    Waiting waiting = {};
    /// Told what was left out of a file, and that it ends early. Never null.
    std::function<void(const InputError&)> onNote = [](const InputError&) {};
    bool isLive = false;    // one source: no sweep waits for the next, and the axis grows
    bool isStrict = false;  // a line that makes no sense is an error
};

/// One recording in one file or several, sweep by sweep; see SweepReader for a single file.
///
/// Several files are put in the order of the times of their first sweeps, those without times stay in
/// the order given. They are of one receiver setting: each has the hops of the one that has most, or
/// some of them; traces are of one length. No file begins before the one ahead of it has ended.
///
/// A line that makes no sense is skipped as if it were not there, unless the source is strict; each
/// file's first one is told, and how many there were.
class Recording {
public:
    /// @throw InputError when a file cannot be read; several files: also where they do not go together
    explicit Recording(RecordingSource source);
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

    /// @return false at the end
    /// @throw InputError for a file without any sweep, for one that begins too early, and as
    ///        SweepReader does
    bool next(Sweep& sweep);

    /// See SweepReader.
    bool hasGrown() const { return reader_ && reader_->hasGrown(); }
    const std::vector<std::size_t>& formerPoints() const { return reader_->formerPoints(); }

    /// Both known after the first sweep.
    bool hasFrequencies() const { return !axis_.points.empty(); }
    const FrequencyAxis& axis() const { return axis_; }

    const QStringList& files() const { return source_.files; }
    /// What is wrong with the recording as a whole: names its first file.
    InputError error(const std::string& problem) const { return {files().first(), problem}; }

private:
    struct Part {
        QString file;
        std::unique_ptr<SweepReader> reader;  // where it cannot be opened again
        std::optional<Sweep> first;           // of that reader
        std::string time;                     // of its first sweep
        std::size_t levels;                   // of its first sweep
        FrequencyAxis axis;
    };

    std::unique_ptr<SweepReader> open(const QString& file, bool isTold);
    void tellBrokenLine(const InputError& error);
    void tellFirstBrokenLine();
    void finishFile();
    void look();
    std::optional<Part> lookInto(const QString& file);
    void requireOneSetting();
    bool openNext();
    void beginFile(const Sweep& sweep);
    bool nextOfFile(Sweep& sweep);
    void requireOrder(const std::string& time) const;
    void arrange(Sweep& sweep) const;

    RecordingSource source_;
    std::vector<Part> parts_;  // of several files, in their order
    std::size_t part_ = 0;     // how many files were opened
    std::unique_ptr<SweepReader> reader_;
    std::optional<Sweep> firstSweep_;  // that was read when the files were looked into
    FrequencyAxis axis_;
    std::vector<std::size_t>
        places_;  // of the file's points; empty where they are those of the axis

    std::optional<InputError> firstBrokenLine_;  // of the file, until it is told
    long long brokenLines_ = 0;                  // of the file
    long long sweeps_ = 0;                       // of the file
    std::string lastTime_;                       // of several files
};

}  // namespace rfu

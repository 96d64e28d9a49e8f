#pragma once

#include <QString>
#include <QStringList>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "analysis/recordings/levelCorrection.h"
#include "analysis/recordings/receiverSetting.h"
#include "analysis/recordings/sweepReader.h"
#include "analysis/recordings/window.h"
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
    /// Told how many bytes were read, and how many there are to read in all; 0 where nobody knows.
    std::function<void(std::int64_t read, std::int64_t all)> onRead = {};
    bool isLive = false;      // one source: no sweep waits for the next, and the axis grows
    bool keepsLines = false;  // sweeps have their lines as they stand, not corrected
    bool isStrict = false;    // a line that makes no sense is an error
    LevelCorrection correction = {};
    WindowOptions window = {};  // what is not live: also so many at the end

    /// All files that are read.
    QStringList inputs() const;
};

/// One recording in one file or several, sweep by sweep; see SweepReader for a single file.
///
/// Several files are put in the order of the times of their first sweeps, those without times stay in
/// the order given. They are of one receiver setting: each has the hops of the one that has most, or
/// some of them; traces are of one length. No file begins before the one ahead of it has ended.
///
/// A line that makes no sense is skipped as if it were not there, unless the source is strict; each
/// file's first one is told, and how many there were. Levels outside the window are not read, so that
/// what is wrong with them stays unknown.
///
/// What a window counts from the end is found by reading the heads of regular files before. From other
/// sources the last sweeps are held, up to kMostHeld bytes of them.
class Recording {
public:
    static constexpr std::size_t kMostHeld = 256u << 20;

    /// @throw InputError where a single file cannot be opened
    explicit Recording(RecordingSource source);
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

    /// @return false at the end
    /// @throw InputError for files that do not go together, for one without any sweep, for a window
    ///        without any, and as SweepReader does
    bool next(Sweep& sweep);

    /// See SweepReader.
    bool hasGrown() const { return !formerPoints_.empty(); }
    const std::vector<std::size_t>& formerPoints() const { return formerPoints_; }

    /// Both known after the first sweep.
    bool hasFrequencies() const { return !axis_.points.empty(); }
    const FrequencyAxis& axis() const { return axis_; }

    /// The hops in the order in which the receiver takes them, by frequency where the file that is read
    /// lacks some; known after the first sweep.
    std::vector<Hop> hopsInOrder() const;

    /// Lines that made no sense, of the file that is read so far.
    long long brokenLines() const { return brokenLines_; }

    const QStringList& files() const { return source_.files; }
    /// What is wrong with the recording as a whole: names its first file.
    InputError error(const std::string& problem) const { return {files().first(), problem}; }

private:
    struct Part : RecordingPart {
        std::unique_ptr<SweepReader> reader;  // where it cannot be opened again
        std::optional<Sweep> first;           // of that reader
    };

    /// What a file is opened for.
    enum class Reading {
        Beginning,  // to look into it before it is opened again
        Heads,      // of its lines, before it is opened again
        Whole
    };

    std::unique_ptr<SweepReader> open(const QString& file, Reading reading, SweepChoice* choice);
    std::unique_ptr<SweepReader> openToRead(const QString& file);
    void tellBrokenLine(const InputError& error);
    void tellFirstBrokenLine();
    void finishFile();
    void look();
    std::optional<Part> lookInto(const QString& file);
    void chooseAxis();
    bool begin();
    bool findEnd(const QString& lastFile);
    bool countSweeps(const QStringList& inOrder);
    std::int64_t bytesToRead(const QStringList& inOrder) const;
    bool readHeads(const QString& file, Window& window, std::string& lastTime);
    bool openNext();
    void beginFile(const Sweep& sweep);
    bool nextOfFile(Sweep& sweep);
    bool nextOfAll(Sweep& sweep);
    bool nextOfWindow(Sweep& sweep);
    bool nextOfLast(Sweep& sweep);
    void arrange(Sweep& sweep) const;
    void correctLevels(Sweep& sweep);
    bool isWanted(const Sweep& sweep);
    void setAxis();
    void grow();
    bool followAxis();
    void requireSweep() const;

    RecordingSource source_;
    std::vector<Part> parts_;  // of several files, in their order
    std::size_t part_ = 0;     // how many files were opened
    std::unique_ptr<SweepReader> reader_;
    std::optional<Sweep> firstSweep_;  // that was read when the files were looked into
    FrequencyAxis whole_;
    FrequencyAxis axis_;  // of the window
    std::vector<std::size_t>
        places_;  // of the file's points; empty where they are those of the whole axis

    Window window_;
    bool isBegun_ = false;
    bool isChosen_ = false;            // whether the reader hands out what the window wants
    std::vector<std::size_t> points_;  // of the whole axis, where the window has bands
    std::vector<double> corrections_;  // of the points of the axis; empty for none
    long long handedOut_ = 0;
    bool holdsLast_ = false;
    bool areHeld_ = false;
    std::deque<Sweep> last_;
    // Of a live source:
    std::vector<std::size_t>
        shown_;             // of the points of the whole axis, in the sweep handed out last
    bool isGrown_ = false;  // since then
    std::vector<std::size_t> formerPoints_;

    std::optional<InputError> firstBrokenLine_;  // of the file, until it is told
    long long brokenLines_ = 0;                  // of the file
    long long sweeps_ = 0;                       // of the file, that its reader handed out
    bool isStopped_ = false;
    std::int64_t read_ = 0;  // bytes
    std::int64_t all_ = 0;   // to be read; 0 where that is not known
    std::string firstTime_;
    std::string lastTime_;  // of the files that were read
};

}  // namespace rfu

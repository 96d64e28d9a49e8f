#pragma once

#include <QString>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/recordings/recordingLine.h"
#include "analysis/support/inputError.h"
#include "analysis/support/lineReader.h"

namespace rfu {

/// A line of a sweep as it stands in the file.
struct SweepLine {
    Hop hop;  // not of a trace
    std::string text;
    std::size_t levels;  // where its levels begin in the text
};

/// All levels that were measured in one go.
struct Sweep {
    std::string time;            // of its first line; empty where the recording has no times
    std::vector<double> levels;  // dBm, one per point; traceRssiBuffer::kNoMeasurement for none
    std::vector<SweepLine> lines = {};  // as they came, where the reader keeps them
};

/// A hop, and those of its bins that are points.
struct AxisHop : Hop {
    std::size_t firstBin;
    std::size_t bins;
};

/// Where the points of a sweep lie; empty for a recording without frequencies.
struct FrequencyAxis {
    /// Points without a gap between their bins.
    struct Band {
        std::size_t firstPoint;
        double low;   // MHz, where its first bin begins
        double high;  // MHz, where its last bin ends
    };

    std::vector<double> points;  // MHz, where the bin of each point begins
    std::vector<Band> bands;     // ascending
    std::vector<AxisHop> hops;   // ascending; their bins are the points
};

/// From the first to before the end.
struct BinRange {
    std::size_t first = 0;
    std::size_t end = 0;

    bool isEmpty() const { return first >= end; }
};

/// Which hops and sweeps of a recording are read. The levels of the others are not.
class SweepChoice {
public:
    virtual ~SweepChoice() = default;

    /// Bins of a hop, all that are wanted among them; none where it is not.
    virtual BinRange binsOf(const Hop& hop) const = 0;
    /// Of a sweep that would be the next.
    /// @param time in microseconds from a fixed day
    virtual bool wantsSweep(std::int64_t time) const = 0;
    /// That sweep comes. Called once for each, in their order.
    virtual void begin(std::int64_t time) = 0;
};

/// Reads a recording sweep by sweep; holds a few sweeps, however long the recording is.
///
/// A byte-order mark, blank lines, comments ("#") and a header line before all others are skipped. The
/// first line after them decides: with a date in front it is a recording of hops, else
/// every line is one trace without frequencies, and all traces have as many levels as the first.
///
/// A sweep ends
///  - before a hop that it already has;
///  - when it has all hops (once the hops are known);
///  - where the time stamp changes between two lines and the hop is not later in the order of the
///    first sweep than the one before. So a sweep that lost hops takes none from the next, while
///    the stamp may change within a sweep;
///  - where the time stamp changes by more than a second, or by more than the longest step within
///    the first sweep, if that is longer.
/// The first sweep ends where a hop comes again. If an earlier time step was longer than the one
/// there, the recording began in the middle of a sweep, and the longest step ends that sweep.
///
/// The hops of the learned sweeps, sorted by frequency, are the points of all sweeps. A hop missing
/// from a sweep was not measured; the line of a new hop after the learned sweeps makes no sense, except
/// in a live source, where it makes the axis grow. Levels that stand at Hz high or above are ignored, because rtl_power repeats the last
/// level of a line. Hops make one band unless at least half a bin is missing between them.
class SweepReader {
public:
    /// @param learned how many sweeps are read before the first is handed out, to learn their
    /// hops; one where nobody may wait
    /// @param onBrokenLine told of each line that makes no sense, which is skipped as if it were not
    /// there; without it such a line is an error
    /// @param isLive whether the axis grows with new hops
    /// @param choice of the sweeps to hand out, and of the hops in them that are measured; without it
    /// all. Levels that are not chosen are not checked either. Not asked for a live source and of traces
    /// @throw InputError when the file cannot be read
    SweepReader(const QString& file, std::size_t learned, Waiting waiting = {},
                std::function<void(const InputError&)> onBrokenLine = {}, bool isLive = false,
                SweepChoice* choice = nullptr);

    /// Lets sweeps have their lines, of those hops that are read. To be called first.
    void keepLines() { keepsLines_ = true; }

    /// Once the hops are learned it returns as soon as a sweep is known to be complete, without
    /// waiting for more input than that takes.
    /// @return false at the end
    /// @throw InputError where reading fails, and at a line that makes no sense without onBrokenLine
    bool next(Sweep& sweep);

    /// In formerPoints(): not among the points before.
    static constexpr std::size_t kNewPoint = static_cast<std::size_t>(-1);
    /// Whether the sweep handed out last has points that the one before had not. Points of a hop that
    /// follows a sweep already handed out make a sweep of their own.
    bool hasGrown() const { return !formerPoints_.empty(); }
    /// Of a sweep that has grown: of each point the number that it had before.
    const std::vector<std::size_t>& formerPoints() const { return formerPoints_; }

    /// Whether the recording says at which frequencies it was measured; known after the first
    /// sweep.
    bool hasFrequencies() const { return !axis_.points.empty(); }
    /// Known after the first sweep.
    const FrequencyAxis& axis() const { return axis_; }
    /// The hops in the order in which the receiver takes them; known with the axis.
    std::vector<Hop> hopsInOrder() const;
    const QString& file() const { return lines_.file(); }

    /// Number of the last line if it may be cut and was therefore left out, else 0; known at the
    /// end. A last line without line end counts when it has all its levels, with equal decimals.
    long long cutLine() const { return cutLine_; }
    /// Whether a sweep was read, handed out or not.
    bool hasSweeps() const { return sweep_ > 1 || traceLength_ > 0; }
    /// Of the first and the last sweep that were read, handed out or not; empty for traces.
    const std::string& firstTime() const { return firstTime_; }
    const std::string& lastTime() const { return lastSweepTime_; }
    /// Whether reading was stopped; see Waiting.
    bool isStopped() const { return lines_.isStopped(); }
    /// Whether a compressed file was cut, so that it has no whole last line; known at the end.
    bool endsEarly() const { return lines_.endsEarly(); }

private:
    enum class Shape { Unknown, Hops, Traces };

    struct Place {
        Hop hop;
        std::size_t firstLevel;  // in the levels of a sweep
        long long turn;          // in the order of arrival; see lastTurn_ for one that is new
        long long sweep;         // the last one that has it
    };

    void passOver(const InputError& error);
    bool nextLine(std::string_view& line);
    bool isWhole(std::string_view line) const;
    std::string problemOf(std::string_view line) const;
    std::optional<std::string> problemOfHop(std::string_view line) const;
    bool start();
    bool nextTrace(Sweep& sweep);
    void readTrace(std::string_view line, Sweep& sweep);
    bool nextHopLine();
    void readHop(std::string_view line);
    void requirePlace(const Hop& hop);
    BinRange wantedBins();
    void readWantedLevels();
    void choose(std::int64_t time);
    void chooseLearned();
    void learn();
    void learnFirstLines();
    void numberTurns();
    bool readSweep();
    bool beginsSweep(const Place* place) const;
    void closeSweep(Sweep& sweep);
    Place* find(const Hop& hop);
    Place* add(const Hop& hop);
    void take(Place& place);
    void addToAxis(const Hop& hop, double lastStep);
    std::vector<std::size_t> arrangePlaces();
    void learnPlaces();
    void grow(Sweep& sweep);
    std::int64_t timeStep() const;
    [[noreturn]] void fail(const std::string& what) const;

    LineReader lines_;
    std::function<void(const InputError&)> onBrokenLine_;
    bool isLive_;
    SweepChoice* choice_;
    bool keepsLines_ = false;
    Shape shape_ = Shape::Unknown;
    bool mayBeHeader_ = true;                    // the next line with text
    std::optional<std::string_view> firstLine_;  // until it is read as its shape
    std::size_t traceLength_ = 0;
    std::optional<std::size_t> decimals_;  // of the last level of the lines so far
    long long cutLine_ = 0;

    std::size_t learned_;
    bool isLearning_ = true;
    std::optional<HopLine> pending_;     // read, but not yet taken into a sweep
    std::vector<double> pendingLevels_;  // at least as many as its hop has
    BinRange pendingBins_;               // of which they are
    std::string_view pendingText_;       // the line
    std::map<double, Place> places_;     // by Hz low
    std::vector<Place*> order_;          // by turn; those new in the open sweep behind
    std::size_t points_ = 0;             // of all places
    FrequencyAxis axis_;
    std::vector<std::size_t> formerPoints_;
    std::int64_t longestPause_ = 1000000;  // microseconds from line to line within a sweep

    std::deque<Sweep> learnedSweeps_;
    // The sweep that is being read.
    Sweep open_;
    bool isOpenWanted_ = true;
    long long sweep_ = 1;  // its number, from 1
    std::string firstTime_;
    std::string lastSweepTime_;
    std::size_t openHops_ = 0;     // that it has
    const Place* last_ = nullptr;  // of its last line
    long long lastTurn_ = -1;      // of its last hop that was not new
    std::int64_t lastTime_ = 0;    // of its last line
};

}  // namespace rfu

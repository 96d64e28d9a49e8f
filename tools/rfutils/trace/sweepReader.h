#pragma once

#include <QString>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "support/lineReader.h"
#include "trace/recordingLine.h"

/// All levels that were measured in one go.
struct Sweep {
    std::string time;            // of its first line; empty where the recording has no times
    std::vector<double> levels;  // dBm, one per point; traceRssiBuffer::kNoMeasurement for none
};

/// Where the points of a sweep lie.
struct FrequencyAxis {
    std::vector<double> points;  // MHz, where the bin of each point begins
    double end = 0.0;            // MHz, where the last bin ends
};

/// Reads a recording sweep by sweep; holds one sweep, however long the recording is.
///
/// The first line that is not blank decides: with a date in front it is a recording of hops, else
/// every line is one trace without frequencies, and all traces have as many levels as the first.
///
/// Hops belong to one sweep until
///  - a hop comes that the sweep already has;
///  - after the first sweep: the sweep has all hops;
///  - after the first sweep: the time stamp moves by more than a second from line to line, or by
///    more than the longest such step within the first sweep, if that is longer. A sweep that lost
///    its first hops thus borrows none from the next one.
/// The hops of the first sweep, in order of frequency, make the points of all sweeps; what a later
/// sweep lacks was not measured, and a hop that the first sweep does not have is an error. Levels
/// that stand at Hz high or above are ignored, because rtl_power repeats the last level of a line.
class SweepReader {
public:
    /// @throw Failure when the file cannot be read
    explicit SweepReader(const QString& file);

    /// Returns as soon as a sweep is known to be complete, without waiting for more input than that
    /// takes.
    /// @return false at the end
    /// @throw Failure at the first line that makes no sense
    bool next(Sweep& sweep);

    /// Whether the recording says at which frequencies it was measured; known after the first
    /// sweep.
    bool hasFrequencies() const { return !axis_.points.empty(); }
    /// Known after the first sweep.
    const FrequencyAxis& axis() const { return axis_; }
    const QString& file() const { return lines_.file(); }

private:
    enum class Shape { Unknown, Hops, Traces };

    struct Place {
        Hop hop;
        std::size_t firstLevel;  // in the levels of a sweep
        long long sweep;         // the last one that has it
    };

    bool nextLine(std::string_view& line);
    bool nextTrace(Sweep& sweep);
    bool nextHopLine();
    bool firstHops(Sweep& sweep);
    bool laterHops(Sweep& sweep);
    Place* addPlace(const Hop& hop, std::size_t levels);
    void storeLevels(double* levels);
    void arrange(std::vector<double>& levels);
    [[noreturn]] void fail(const std::string& what) const;

    LineReader lines_;
    Shape shape_ = Shape::Unknown;
    std::string_view firstLine_;
    std::size_t traceLength_ = 0;

    std::optional<HopLine> pending_;  // read, but of the sweep that follows
    std::map<double, Place> places_;  // by Hz low
    FrequencyAxis axis_;
    long long sweep_ = 0;                  // counts from 1
    std::int64_t longestPause_ = 1000000;  // microseconds from line to line within a sweep
};

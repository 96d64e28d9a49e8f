#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/recordings/recording.h"
#include "analysis/recordings/sweepReader.h"

namespace rfu {

/// Writes sweeps as lines that a recording is read from: the same sweeps of the same points. Lines keep
/// their order and, as far as it can be, their text:
///  - the line of a hop all of whose bins are points stays as it is;
///  - of another hop each run of neighbouring bins becomes a line, with its own Hz low and Hz high;
///  - a level that was not measured is "nan";
///  - the first sweep has a line for each hop, so that all are learned from it, and the others have one
///    for the hop that was written first, so that they begin there: where they lacked it, a line of no
///    sample;
///  - where the first line of a sweep is not written, its others get its time, which is the sweep's; so do
///    those of the first sweep where a pause among them would make a reader take it for two;
///  - changed levels have the decimals of the first one of their line, two at least and six at most.
class RecordingWriter {
public:
    /// @param recording of sweeps that keep their lines; its first one was read
    /// @param isChanged whether levels differ from their texts
    RecordingWriter(const Recording& recording, bool isChanged);

    /// What is added to the level of each point of the axis; changes them.
    void setOffsets(std::vector<double> offsets);

    /// Appends the lines of a sweep, those of the first one with those of the second.
    void write(Sweep& sweep, std::string& text);
    /// Appends what is left at the end.
    void finish(std::string& text);

private:
    /// Neighbouring bins of a hop that are points.
    struct Run {
        std::size_t firstBin;
        std::size_t bins;
        std::size_t firstPoint;
        bool isWholeHop;
        std::string range;  // "88000000, 90500000", Hz low and Hz high
    };

    struct WrittenHop {
        Hop hop;
        std::size_t turn = 0;  // in the order of the receiver
        std::vector<Run> runs;
    };

    std::vector<const WrittenHop*> missingHops(const std::vector<const WrittenHop*>& there) const;
    void writeHops(const Sweep& sweep, std::string& text, bool hasOneStamp = false);
    void writeHeld(const Sweep& next, std::string& text);
    void writeRun(const SweepLine& line, std::string_view stamp, const Run& run,
                  const std::vector<double>& levels, std::string& text) const;
    void writeLevels(std::string_view fields, const Run& run, const std::vector<double>& levels,
                     std::string& text) const;

    std::map<double, WrittenHop> hops_;     // by Hz low
    std::vector<const WrittenHop*> order_;  // by turn
    bool isChanged_;
    std::vector<double> offsets_;
    const WrittenHop* firstHop_ = nullptr;  // that was written
    bool isFirst_ = true;
    std::optional<Sweep> held_;  // the first one
};

}  // namespace rfu

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "analysis/recordings/sweepReader.h"
#include "analysis/statistics/levelHistory.h"
#include "analysis/statistics/pointStatistics.h"

namespace rfu {

/// A signal in a recording; levels in dBm. All but frequency and width is of its strongest point.
struct Signal {
    double frequency;  // MHz, the middle of its width
    double width;      // MHz
    std::size_t point;
    double maximum;
    double average;  // mean of the dBm numbers
    double floor;
    double present;     // share of the sweeps that measured it
    std::string first;  // time of the first sweep and of the last one in which it was present
    std::string last;
};

struct PeakOptions {
    std::optional<double> above;  // dB from the floor to the threshold; none: from the noise
    double widthAt = 6.0;         // dB from the maximum down
    std::size_t window = 101;     // points, for the floor
};

/// Finds the signals of a recording, see docs/peaks.md.
class PeakFinder {
public:
    /// Smallest distance of the threshold that follows from the noise, in dB above the floor.
    static constexpr double kMinExcess = 6.0;

    void add(const Sweep& sweep);

    /// @param axis      of the recording
    /// @param isLeftOut of each point, whether it counts for nothing
    /// @return ascending in frequency
    std::vector<Signal> find(const FrequencyAxis& axis, const std::vector<bool>& isLeftOut,
                             const PeakOptions& options);

    void write(StateWriter& writer) const;
    /// Adds the sweeps of a state, which come after all others.
    /// @param points of all states together
    void merge(StatePart& part, std::size_t points);

    /// See LevelHistory.
    bool isFull() const { return history_.isFull(); }
    double resolution() const { return history_.resolution(); }

private:
    LevelHistory history_;
    std::vector<PointTally> tallies_;  // of each point
};

}  // namespace rfu

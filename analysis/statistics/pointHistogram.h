#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "analysis/statistics/packedLevel.h"

namespace rfu {

class StateReader;
class StateWriter;

/// How often each level of a point occurred, in bins of 0.05 dB or multiples of that, and in which
/// sweep a level was exceeded first and last. Bin b holds the codes above (b - 1) * width up to
/// b * width.
class PointHistogram {
public:
    /// Width of a bin in codes.
    static constexpr int kFinest = 5;

    /// Adds levels of consecutive sweeps.
    /// @param codes  kNotMeasured counts nowhere
    /// @param sweep  number of the first
    void add(const PackedLevel* codes, std::size_t count, std::uint32_t sweep, int width);

    long long measured() const { return measured_; }
    /// That is not empty. @pre a level was measured
    int highestBin() const { return firstBin_ + static_cast<int>(counts_.size()) - 1; }

    /// Calls use(bin, count) for each bin that is not empty, from the lowest on.
    void forEachBin(const std::function<void(int bin, long long count)>& use) const;

    struct Exceeding {
        long long count;
        std::uint32_t first;  // sweeps; both 0 without any
        std::uint32_t last;
    };
    /// What lies above a bin.
    Exceeding above(int bin) const;

    /// Calls use(sweep) for each sweep that above() may answer.
    void forEachSweep(const std::function<void(std::uint32_t sweep)>& use) const;

    /// Makes each bin twice as wide.
    void coarsen();

    /// Adds later sweeps.
    /// @param other of the same width
    /// @param sweep number of their first
    void merge(const PointHistogram& other, std::uint32_t sweep);

    void write(StateWriter& writer) const;
    /// @param sweeps of the state
    static PointHistogram read(StateReader& reader, int width, std::uint32_t sweeps);

    std::size_t bytes() const;

private:
    struct Step {
        int bin;
        std::uint32_t sweep;
    };

    void reserveBins(int lowest, int highest);
    void readSteps(StateReader& reader, const std::vector<std::pair<int, long long>>& bins,
                   std::uint32_t sweeps);
    void count(int bin, long long times);

    int firstBin_ = 0;
    std::vector<std::uint16_t> counts_;               // modulo 65536
    std::vector<std::pair<int, long long>> carries_;  // of the bins that ran over: multiples of it
    long long measured_ = 0;
    std::vector<Step> rises_;  // sweeps with a level above all before; bins ascend
    std::vector<Step> falls_;  // sweeps with a level not reached afterwards; bins descend
};

}  // namespace rfu

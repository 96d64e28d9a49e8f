#pragma once

#include <rfUtils/trace/traceRssiBuffer.h>
#include <deque>
#include <string>

#include "analysis/recordings/sweepReader.h"

namespace rfu {

/// The most recent sweeps of a recording.
class SweepStore {
public:
    /// @param capacity number of sweeps kept
    explicit SweepStore(int capacity)
        : capacity_(static_cast<std::size_t>(capacity)), buffer_(capacity, capacity) {}

    /// Drops the oldest sweep when the store is full.
    void add(Sweep& sweep);

    /// The sweeps themselves; its markers are free for use.
    traceRssiBuffer& buffer() { return buffer_; }
    /// How many were added.
    long long count() const { return count_; }
    std::size_t kept() const { return times_.size(); }

    /// Of a kept sweep, 0 for the oldest: which sweep of the recording it is, counted from 1.
    long long number(std::size_t index) const;
    const std::string& time(std::size_t index) const { return times_[index]; }

private:
    std::size_t capacity_;
    traceRssiBuffer buffer_;
    std::deque<std::string> times_;
    long long count_ = 0;
};

}  // namespace rfu

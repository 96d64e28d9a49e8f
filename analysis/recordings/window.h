#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/recordings/sweepReader.h"
#include "analysis/support/numbers.h"

namespace rfu {

/// A time to begin or to end at.
struct WindowTime {
    enum class Origin {
        FixedDay,  // that of the stamps of a recording
        FirstDay,  // midnight of the day of the first sweep
        End        // the last sweep
    };
    Origin origin;
    std::int64_t microseconds;  // from there
};

/// "2024-05-04 21:15", "2024-05-04 21:15:30.5", "21:15" or "21:15:30" on the first day, or before the
/// end "-90s", "-10m", "-1.5h" or "-2d".
std::optional<WindowTime> parseWindowTime(std::string_view text);

/// Which part of a recording is asked for.
struct WindowOptions {
    /// In which the bins' middles lie, from low to below high; without any, all bins.
    std::vector<FrequencyRange> bands = {};
    // Sweeps at either time belong to the window.
    std::optional<WindowTime> from = {};
    std::optional<WindowTime> to = {};
    long long every = 1;  // the first sweep between these times and each every-th behind it
    long long last = 0;   // of those so many at the end; 0 for all
    /// Behind them also the sweeps later than `to`, so that reading goes on from a time. What is
    /// counted for `last` ends at the first of them.
    bool goesOn = false;

    bool limitsTime() const { return from || to; }
    bool countsFromEnd() const;
    bool takesAll() const { return bands.empty() && !limitsTime() && every == 1 && last == 0; }
};

/// The part of a recording that is asked for, while its sweeps come one after another.
class Window : public SweepChoice {
public:
    explicit Window(WindowOptions options) : options_(std::move(options)) {}

    const WindowOptions& options() const { return options_; }

    /// Times before the end need the time of the last sweep.
    void setEnd(std::int64_t time) { end_ = time; }
    /// How many sweeps that the options want are left out nevertheless.
    void skip(long long sweeps) { skipped_ = sweeps; }
    void skipAll() { skip(std::numeric_limits<long long>::max()); }

    BinRange binsOf(const Hop& hop) const override;
    bool wantsSweep(std::int64_t time) const override;
    void begin(std::int64_t time) override;

    /// How many sweeps the options wanted so far, also of those that were left out.
    long long sweeps() const { return (between_ + options_.every - 1) / options_.every; }

    /// The points of an axis within the bands.
    std::vector<std::size_t> pointsOf(const FrequencyAxis& axis) const;

private:
    bool isBetween(std::int64_t time) const;
    bool isBehind(std::int64_t time) const;
    std::int64_t timeOf(const WindowTime& bound, std::int64_t time) const;

    WindowOptions options_;
    long long between_ = 0;  // sweeps between the two times so far
    long long skipped_ = 0;
    std::optional<std::int64_t> firstDay_;
    std::int64_t end_ = 0;
};

/// An axis of some of the points of another.
/// @param points ascending
FrequencyAxis axisOf(const FrequencyAxis& axis, const std::vector<std::size_t>& points);

}  // namespace rfu

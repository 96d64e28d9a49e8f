#include "analysis/statistics/traceHistory.h"

#include <rfUtils/trace/traceRssiBuffer.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace rfu {

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kNoMeasurement = traceRssiBuffer::kNoMeasurement;
constexpr double kStepsOfSum = 1e6;    // per dB
constexpr double kLargestInSum = 1e6;  // dB, so that the sum of a million traces fits

double orNan(double level) {
    return level == kNoMeasurement ? kNan : level;
}

double orNone(double level) {
    return std::isfinite(level) ? level : kNoMeasurement;
}

std::int64_t stepsOf(double level) {
    const double steps = std::clamp(level, -kLargestInSum, kLargestInSum) * kStepsOfSum;
    return static_cast<std::int64_t>(steps + (steps < 0.0 ? -0.5 : 0.5));
}

/// The values of points by the numbers that the points had before.
template <typename T>
void rearrange(std::vector<T>& values, const std::vector<std::size_t>& former, T none) {
    std::vector<T> result;
    result.reserve(former.size());
    for (const std::size_t point : former) {
        result.push_back(point < values.size() ? values[point] : none);
    }
    values = std::move(result);
}

}  // namespace

TraceHistory::TraceHistory(std::size_t depth) : depth_(std::max<std::size_t>(depth, 1)) {}

void TraceHistory::setDepth(std::size_t depth) {
    depth_ = std::max<std::size_t>(depth, 1);
    while (size() > depth_) {
        dropOldest();
    }
    arrangeTimes();
}

void TraceHistory::setAxis(const FrequencyAxis& axis) {
    axis_ = axis;
    begin(axis.points.size());
}

void TraceHistory::grow(const FrequencyAxis& axis, const std::vector<std::size_t>& former) {
    LevelRows rows(former.size());
    std::vector<double> levels;
    for (; rows_.size() > 0; rows_.dropOldest()) {
        levels.resize(rows_.columns());
        rows_.copyRow(0, levels.data());
        rearrange(levels, former, kNoMeasurement);
        rows.append(levels);
    }
    rows_ = std::move(rows);
    axis_ = axis;
    rearrange(newest_, former, kNan);
    rearrange(maximum_, former, kNan);
    rearrange(minimum_, former, kNan);
    rearrange(sums_, former, Sum());
    row_.resize(former.size());
    ++generation_;
}

/// Anew, with nothing measured.
void TraceHistory::begin(std::size_t points) {
    rows_ = LevelRows(points);
    times_.clear();
    oldestTime_ = 0;
    count_ = 0;
    newest_.assign(points, kNan);
    maximum_.assign(points, kNan);
    minimum_.assign(points, kNan);
    sums_.assign(points, Sum());
    row_.resize(points);
    ++generation_;
}

void TraceHistory::clear() {
    begin(points());
}

void TraceHistory::clearHolds() {
    std::fill(maximum_.begin(), maximum_.end(), kNan);
    std::fill(minimum_.begin(), minimum_.end(), kNan);
}

void TraceHistory::add(const std::vector<double>& levels, std::int64_t time) {
    if (levels.size() != points()) {
        axis_ = {};
        begin(levels.size());
    }
    if (size() == depth_) {
        dropOldest();
    }
    std::transform(levels.begin(), levels.end(), row_.begin(), orNone);
    rows_.append(row_);
    addTime(time);
    addToSums(row_, 1);
    for (std::size_t i = 0; i < row_.size(); ++i) {
        const double level = orNan(row_[i]);
        newest_[i] = level;
        // A NaN on the left is replaced, one on the right is not taken.
        maximum_[i] = maximum_[i] >= level || std::isnan(level) ? maximum_[i] : level;
        minimum_[i] = minimum_[i] <= level || std::isnan(level) ? minimum_[i] : level;
    }
    ++count_;
}

/// @param sign 1 for a row that comes, -1 for one that goes
void TraceHistory::addToSums(const std::vector<double>& levels, std::int64_t sign) {
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const bool isMeasured = levels[i] != kNoMeasurement;
        sums_[i].level += isMeasured ? sign * stepsOf(levels[i]) : 0;
        sums_[i].count += isMeasured ? sign : 0;
    }
}

void TraceHistory::dropOldest() {
    rows_.copyRow(0, row_.data());
    addToSums(row_, -1);
    rows_.dropOldest();
    oldestTime_ = (oldestTime_ + 1) % times_.size();
}

/// Of the row that has just been appended.
void TraceHistory::addTime(std::int64_t time) {
    if (times_.size() < size()) {
        times_.push_back(time);
    } else {
        times_[(oldestTime_ + size() - 1) % times_.size()] = time;
    }
}

/// Lets the ring begin with the oldest row, and hold no other times.
void TraceHistory::arrangeTimes() {
    std::rotate(times_.begin(), times_.begin() + static_cast<std::ptrdiff_t>(oldestTime_),
                times_.end());
    times_.resize(size());
    oldestTime_ = 0;
}

std::vector<double> TraceHistory::average() const {
    std::vector<double> levels(sums_.size());
    std::transform(sums_.begin(), sums_.end(), levels.begin(), [](const Sum& sum) {
        return sum.count == 0 ? kNan
                              : static_cast<double>(sum.level) /
                                    (static_cast<double>(sum.count) * kStepsOfSum);
    });
    return levels;
}

void TraceHistory::copyRow(std::size_t row, std::vector<PackedLevel>& packed) const {
    packed.resize(rows_.columns());
    rows_.copyRow(row, packed.data());
}

double TraceHistory::level(std::size_t row, std::size_t point) const {
    return orNan(rows_.level(row, point));
}

}  // namespace rfu

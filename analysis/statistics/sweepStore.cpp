#include "analysis/statistics/sweepStore.h"

#include <algorithm>
#include <utility>

#include "analysis/recordings/timeStamp.h"

namespace rfu {

namespace {

template <typename Item, typename Items>
std::vector<Item> rearranged(const Items& items, const std::vector<std::size_t>& former,
                             Item none) {
    std::vector<Item> result;
    result.reserve(former.size());
    for (const std::size_t column : former) {
        result.push_back(column == SweepStore::kNewColumn ? none : items[column]);
    }
    return result;
}

}  // namespace

SweepStore::SweepStore(std::size_t capacity, bool hasDistributions, double limit,
                       std::size_t maxBytes)
    : capacity_(capacity),
      holdsLevels_(capacity != kAll || hasDistributions),
      limit_(limit),
      maxBytes_(maxBytes) {}

bool SweepStore::fits(std::size_t sweeps, std::size_t columns) const {
    return !holdsLevels_ || sweeps <= maxBytes_ / (columns * sizeof(double) + kBytesOfTime);
}

bool SweepStore::add(const std::string& time, const std::vector<double>& levels) {
    if (!fits(std::min(rows_.size() + 1, capacity_), levels.size())) {
        return false;
    }
    if (count_ == 0) {
        rows_ = LevelRows(levels.size());
        tallies_.resize(holdsLevels_ ? 0 : levels.size());
    }
    if (!holdsLevels_) {
        for (std::size_t i = 0; i < levels.size(); ++i) {
            tallies_[i].add(levels[i], limit_);
        }
        times_.resize(std::min<std::size_t>(times_.size(), 1));
    } else {
        if (rows_.size() == capacity_) {
            rows_.dropOldest();
            times_.pop_front();
        }
        rows_.append(levels);
    }
    times_.push_back(time);
    ++count_;
    return true;
}

bool SweepStore::rearrange(const std::vector<std::size_t>& former) {
    if (!fits(rows_.size(), former.size())) {
        return false;
    }
    tallies_ =
        rearranged(tallies_, holdsLevels_ ? std::vector<std::size_t>() : former, PointTally());
    LevelRows rows(former.size());
    std::vector<double> levels(rows_.columns());
    for (; rows_.size() > 0; rows_.dropOldest()) {
        rows_.copyRow(0, levels.data());
        rows.append(rearranged(levels, former, double{traceRssiBuffer::kNoMeasurement}));
    }
    rows_ = std::move(rows);
    return true;
}

std::size_t SweepStore::kept() const {
    return holdsLevels_ ? rows_.size() : static_cast<std::size_t>(count_);
}

PointStatistics SweepStore::statistics(std::size_t column) const {
    if (!holdsLevels_) {
        return tallies_[column].statistics();
    }
    PointTally tally;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        tally.add(rows_.level(i, column), limit_);
    }
    return tally.statistics();
}

std::vector<PointTally> SweepStore::tallies() const {
    std::vector<PointTally> tallies = tallies_;
    tallies.resize(rows_.columns());
    std::vector<double> levels(rows_.columns());
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        rows_.copyRow(i, levels.data());
        for (std::size_t column = 0; column < tallies.size(); ++column) {
            tallies[column].add(levels[column], limit_);
        }
    }
    return tallies;
}

void SweepStore::write(StateWriter& writer) const {
    for (const PointTally& tally : tallies()) {
        tally.write(writer);
    }
}

void SweepStore::merge(StatePart& part, std::size_t columns) {
    if (count_ == 0) {
        rows_ = LevelRows(columns);
        tallies_.resize(columns);
    }
    for (const std::size_t column : part.places) {
        tallies_[column].merge(part.statistics, part.head.sweeps);
    }
    times_.resize(std::min<std::size_t>(times_.size(), 1));
    if (times_.empty()) {
        times_.push_back(part.head.firstTime);
    }
    times_.push_back(part.head.lastTime);
    count_ += part.head.sweeps;
}

LevelDistribution SweepStore::distribution(std::size_t column) const {
    std::vector<double> levels(rows_.size());
    for (std::size_t i = 0; i < levels.size(); ++i) {
        levels[i] = rows_.level(i, column);
    }
    return distributionOf(std::move(levels));
}

long long SweepStore::number(std::size_t index) const {
    return count_ - static_cast<long long>(kept()) + static_cast<long long>(index) + 1;
}

}  // namespace rfu

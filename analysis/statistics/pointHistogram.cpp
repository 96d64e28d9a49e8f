#include "analysis/statistics/pointHistogram.h"

#include <algorithm>
#include <iterator>

#include "analysis/support/stateStream.h"

namespace rfu {

namespace {

constexpr long long kCounts = 65536;  // of a 16-bit counter

/// The quotient, rounded up.
int dividedUp(int value, int divisor) {
    return value >= 0 ? (value + divisor - 1) / divisor : -(-value / divisor);
}

}  // namespace

void PointHistogram::reserveBins(int lowest, int highest) {
    if (counts_.empty()) {
        firstBin_ = lowest;
    } else if (lowest < firstBin_) {
        counts_.insert(counts_.begin(), static_cast<std::size_t>(firstBin_ - lowest), 0);
        firstBin_ = lowest;
    }
    const auto bins = static_cast<std::size_t>(highest - firstBin_) + 1;
    if (bins > counts_.size()) {
        counts_.reserve(bins);  // no more than that: there is one histogram for each point
        counts_.resize(bins, 0);
    }
}

void PointHistogram::count(int bin, long long times) {
    std::uint16_t& counter = counts_[static_cast<std::size_t>(bin - firstBin_)];
    const long long sum = counter + times;
    counter = static_cast<std::uint16_t>(sum % kCounts);
    if (sum >= kCounts) {
        const auto carry = std::find_if(carries_.begin(), carries_.end(),
                                        [bin](const auto& known) { return known.first == bin; });
        if (carry == carries_.end()) {
            carries_.emplace_back(bin, sum - sum % kCounts);
        } else {
            carry->second += sum - sum % kCounts;
        }
    }
}

void PointHistogram::add(const PackedLevel* codes, std::size_t count, std::uint32_t sweep,
                         int width) {
    int lowest = INT16_MAX;
    int highest = kNotMeasured;
    for (std::size_t i = 0; i < count; ++i) {
        lowest = std::min<int>(lowest, codes[i] == kNotMeasured ? INT16_MAX : codes[i]);
        highest = std::max<int>(highest, codes[i]);
    }
    if (highest == kNotMeasured) {
        return;
    }
    reserveBins(dividedUp(lowest, width), dividedUp(highest, width));
    for (std::size_t i = 0; i < count; ++i) {
        if (codes[i] == kNotMeasured) {
            continue;
        }
        const int bin = dividedUp(codes[i], width);
        this->count(bin, 1);
        ++measured_;
        if (rises_.empty() || bin > rises_.back().bin) {
            rises_.push_back({bin, sweep + static_cast<std::uint32_t>(i)});
        }
    }
    // From the newest on, what is above everything newer.
    std::vector<Step> newFalls;
    int exceeded = kNotMeasured;
    for (std::size_t i = count; i-- > 0;) {
        if (codes[i] > exceeded) {
            exceeded = codes[i];
            const int bin = dividedUp(codes[i], width);
            if (newFalls.empty() || bin > newFalls.back().bin) {
                newFalls.push_back({bin, sweep + static_cast<std::uint32_t>(i)});
            }
        }
    }
    while (!falls_.empty() && falls_.back().bin <= newFalls.back().bin) {
        falls_.pop_back();
    }
    falls_.insert(falls_.end(), newFalls.rbegin(), newFalls.rend());
}

void PointHistogram::forEachBin(const std::function<void(int bin, long long count)>& use) const {
    for (std::size_t i = 0; i < counts_.size(); ++i) {
        const int bin = firstBin_ + static_cast<int>(i);
        long long times = counts_[i];
        for (const auto& [carried, count] : carries_) {
            times += carried == bin ? count : 0;
        }
        if (times > 0) {
            use(bin, times);
        }
    }
}

PointHistogram::Exceeding PointHistogram::above(int bin) const {
    Exceeding found = {0, 0, 0};
    const auto isAbove = [bin](const Step& step) { return step.bin > bin; };
    const auto first = std::find_if(rises_.begin(), rises_.end(), isAbove);
    if (first == rises_.end()) {
        return found;
    }
    found.first = first->sweep;
    found.last = std::find_if(falls_.rbegin(), falls_.rend(), isAbove)->sweep;
    forEachBin([&](int other, long long count) { found.count += other > bin ? count : 0; });
    return found;
}

void PointHistogram::forEachSweep(const std::function<void(std::uint32_t sweep)>& use) const {
    for (const auto* steps : {&rises_, &falls_}) {
        for (const Step& step : *steps) {
            use(step.sweep);
        }
    }
}

void PointHistogram::coarsen() {
    const PointHistogram fine = std::exchange(*this, PointHistogram());
    measured_ = fine.measured_;
    if (fine.counts_.empty()) {
        return;
    }
    reserveBins(dividedUp(fine.firstBin_, 2), dividedUp(fine.highestBin(), 2));
    fine.forEachBin([&](int bin, long long times) { count(dividedUp(bin, 2), times); });
    // The earliest of equal rises and the latest of equal falls tell.
    for (const Step& step : fine.rises_) {
        if (rises_.empty() || dividedUp(step.bin, 2) > rises_.back().bin) {
            rises_.push_back({dividedUp(step.bin, 2), step.sweep});
        }
    }
    for (const Step& step : fine.falls_) {
        if (!falls_.empty() && falls_.back().bin == dividedUp(step.bin, 2)) {
            falls_.pop_back();
        }
        falls_.push_back({dividedUp(step.bin, 2), step.sweep});
    }
}

void PointHistogram::merge(const PointHistogram& other, std::uint32_t sweep) {
    if (other.counts_.empty()) {
        return;
    }
    reserveBins(other.firstBin_, other.highestBin());
    other.forEachBin([this](int bin, long long times) { count(bin, times); });
    measured_ += other.measured_;
    for (const Step& step : other.rises_) {
        if (rises_.empty() || step.bin > rises_.back().bin) {
            rises_.push_back({step.bin, sweep + step.sweep});
        }
    }
    while (!falls_.empty() && falls_.back().bin <= other.falls_.front().bin) {
        falls_.pop_back();
    }
    for (const Step& step : other.falls_) {
        falls_.push_back({step.bin, sweep + step.sweep});
    }
}

void PointHistogram::write(StateWriter& writer) const {
    std::vector<std::pair<int, long long>> bins;
    forEachBin([&bins](int bin, long long times) { bins.emplace_back(bin, times); });
    writer.count(bins.size());
    for (std::size_t i = 0; i < bins.size(); ++i) {
        if (i == 0) {
            writer.integer(bins[i].first);
        } else {
            writer.count(static_cast<std::uint64_t>(bins[i].first - bins[i - 1].first));
        }
        writer.count(static_cast<std::uint64_t>(bins[i].second));
    }
    for (const auto* steps : {&rises_, &falls_}) {
        writer.count(steps->size());
        for (const Step& step : *steps) {
            writer.integer(step.bin);
            writer.count(step.sweep);
        }
    }
}

PointHistogram PointHistogram::read(StateReader& reader, int width, std::uint32_t sweeps) {
    const int least = dividedUp(-INT16_MAX, width);
    const int most = dividedUp(INT16_MAX, width);
    PointHistogram histogram;
    std::vector<std::pair<int, long long>> bins(reader.countOf(2));
    for (std::size_t i = 0; i < bins.size(); ++i) {
        if (i == 0) {
            bins[i].first = static_cast<int>(reader.integer(least, most));
        } else {
            const int before = bins[i - 1].first;
            const auto gap = reader.count(static_cast<std::uint64_t>(most - before));
            reader.require(gap > 0);
            bins[i].first = before + static_cast<int>(gap);
        }
        bins[i].second = static_cast<long long>(reader.count(sweeps));
        reader.require(bins[i].second > 0);
        histogram.measured_ += bins[i].second;
        reader.require(histogram.measured_ <= static_cast<long long>(sweeps));
    }
    if (!bins.empty()) {
        histogram.reserveBins(bins.front().first, bins.back().first);
    }
    for (const auto& [bin, times] : bins) {
        histogram.count(bin, times);
    }
    histogram.readSteps(reader, bins, sweeps);
    return histogram;
}

/// Both lists lead to the highest bin, and the sweeps ascend.
void PointHistogram::readSteps(StateReader& reader,
                               const std::vector<std::pair<int, long long>>& bins,
                               std::uint32_t sweeps) {
    for (auto* steps : {&rises_, &falls_}) {
        steps->resize(reader.countOf(2));
        reader.require(steps->empty() == bins.empty());
        for (std::size_t i = 0; i < steps->size(); ++i) {
            Step& step = (*steps)[i];
            step.bin = static_cast<int>(reader.integer(firstBin_, highestBin()));
            step.sweep = static_cast<std::uint32_t>(reader.count(sweeps - 1));
            if (i > 0) {
                const Step& before = (*steps)[i - 1];
                reader.require(steps == &rises_ ? step.bin > before.bin : step.bin < before.bin);
                reader.require(step.sweep > before.sweep);
            }
        }
    }
    reader.require(bins.empty() ||
                   (rises_.back().bin == highestBin() && falls_.front().bin == highestBin()));
}

std::size_t PointHistogram::bytes() const {
    return sizeof *this + counts_.capacity() * sizeof counts_[0] +
           (rises_.capacity() + falls_.capacity()) * sizeof(Step) +
           carries_.capacity() * sizeof carries_[0];
}

}  // namespace rfu

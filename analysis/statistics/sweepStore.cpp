#include "analysis/statistics/sweepStore.h"

namespace rfu {

void SweepStore::add(Sweep& sweep) {
    buffer_.push_back(sweep.levels);
    times_.push_back(sweep.time);
    if (kept() > capacity_) {
        times_.pop_front();
    }
    ++count_;
}

long long SweepStore::number(std::size_t index) const {
    return count_ - static_cast<long long>(times_.size()) + static_cast<long long>(index) + 1;
}

}  // namespace rfu

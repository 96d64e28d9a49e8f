#include "analysis/statistics/levelRows.h"

#include <algorithm>
#include <utility>

namespace rfu {

namespace {

constexpr std::size_t kLevelsOfBlock = 8192;

}  // namespace

LevelRows::LevelRows(std::size_t columns)
    : columns_(columns),
      rowsOfBlock_(std::max<std::size_t>(kLevelsOfBlock / std::max<std::size_t>(columns, 1), 1)) {}

void LevelRows::append(const std::vector<double>& row) {
    if ((dropped_ + size_) / rowsOfBlock_ == blocks_.size()) {
        blocks_.push_back(std::exchange(spare_, {}));
        blocks_.back().reserve(rowsOfBlock_ * columns_);
    }
    blocks_.back().insert(blocks_.back().end(), row.begin(), row.end());
    ++size_;
}

void LevelRows::dropOldest() {
    ++dropped_;
    --size_;
    if (dropped_ == rowsOfBlock_) {
        spare_ = std::move(blocks_.front());
        spare_.clear();
        blocks_.pop_front();
        dropped_ = 0;
    }
}

}  // namespace rfu

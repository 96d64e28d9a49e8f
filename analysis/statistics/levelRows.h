#pragma once

#include <cstddef>
#include <deque>
#include <vector>

namespace rfu {

/// Rows of levels, all of the same length, from oldest to newest. They stand one behind the other in
/// blocks, so that a short row takes no more memory than its levels.
class LevelRows {
public:
    explicit LevelRows(std::size_t columns);

    std::size_t columns() const { return columns_; }
    std::size_t size() const { return size_; }
    /// @param index from 0, the oldest
    const double* row(std::size_t index) const {
        const std::size_t at = dropped_ + index;
        return blocks_[at / rowsOfBlock_].data() + at % rowsOfBlock_ * columns_;
    }

    /// @param row of the right length
    void append(const std::vector<double>& row);
    void dropOldest();

private:
    std::size_t columns_;
    std::size_t rowsOfBlock_;
    std::deque<std::vector<double>> blocks_;
    std::vector<double> spare_;  // an empty block with its memory
    std::size_t dropped_ = 0;    // rows of the first block
    std::size_t size_ = 0;
};

}  // namespace rfu

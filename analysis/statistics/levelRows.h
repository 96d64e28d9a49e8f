#pragma once

#include <boost/circular_buffer.hpp>

#include <cstddef>
#include <vector>

#include "analysis/statistics/packedLevel.h"

namespace rfu {

/// Rows of levels in dBm, all of the same length, from oldest to newest; levels come back bit for bit.
/// Rows are stored in blocks, so that a short row takes no more memory than its levels. A block stores
/// packed levels as long as all of its levels are whole hundredths of a dB. The memory of dropped rows is used
/// again, so that none is allocated where one is dropped for each that comes.
class LevelRows {
public:
    explicit LevelRows(std::size_t columns);

    std::size_t columns() const { return columns_; }
    std::size_t size() const { return size_; }
    /// @param row from 0, the oldest
    double level(std::size_t row, std::size_t column) const;
    /// @param levels of the row, as many as columns
    void copyRow(std::size_t row, double* levels) const;
    /// The same, rounded as by packLevels().
    void copyRow(std::size_t row, PackedLevel* levels) const;

    /// @param row of the right length
    void append(const std::vector<double>& row);
    void dropOldest();

private:
    struct Block {
        bool isPacked = true;
        std::vector<PackedLevel> packed;
        std::vector<double> whole;
    };

    const Block& blockOf(std::size_t row) const { return blocks_[(dropped_ + row) / rowsOfBlock_]; }
    std::size_t startOf(std::size_t row) const {
        return (dropped_ + row) % rowsOfBlock_ * columns_;
    }
    Block& blockWithRoom();
    void unpack(Block& block);

    std::size_t columns_;
    std::size_t rowsOfBlock_;
    boost::circular_buffer<Block> blocks_;
    std::vector<PackedLevel> sparePacked_;  // empty, but with the memory of former blocks
    std::vector<double> spareWhole_;
    std::vector<PackedLevel> row_;  // the last one, packed
    std::size_t dropped_ = 0;       // rows of the first block
    std::size_t size_ = 0;
};

}  // namespace rfu

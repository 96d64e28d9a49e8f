#include "analysis/statistics/levelRows.h"

#include <rfUtils/trace/traceRssiBuffer.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace rfu {

namespace {

constexpr std::size_t kLevelsOfBlock = 8192;

double levelOfPacked(PackedLevel packed) {
    return packed == kNotMeasured ? double{traceRssiBuffer::kNoMeasurement} : unpacked(packed);
}

/// Packs a row.
/// @return false where a level would not come back bit for bit
bool packExactly(const std::vector<double>& row, PackedLevel* packed) {
    packLevels(row.data(), nullptr, row.size(), packed);
    bool isExact = true;
    for (std::size_t i = 0; i < row.size(); ++i) {
        isExact &= levelOfPacked(packed[i]) == row[i] && !(row[i] == 0.0 && std::signbit(row[i]));
    }
    return isExact;
}

/// Keeps the memory of levels that are no longer needed, or what is spare already if that is more.
template <typename Level>
void recycle(std::vector<Level>& levels, std::vector<Level>& spare) {
    if (levels.capacity() > spare.capacity()) {
        spare = std::exchange(levels, std::vector<Level>());
    }
    levels = std::vector<Level>();  // frees the memory, unlike clear()
    spare.clear();
}

}  // namespace

LevelRows::LevelRows(std::size_t columns)
    : columns_(columns),
      rowsOfBlock_(std::max<std::size_t>(kLevelsOfBlock / std::max<std::size_t>(columns, 1), 1)),
      row_(columns) {}

double LevelRows::level(std::size_t row, std::size_t column) const {
    const Block& block = blockOf(row);
    const std::size_t at = startOf(row) + column;
    return block.isPacked ? levelOfPacked(block.packed[at]) : block.whole[at];
}

void LevelRows::copyRow(std::size_t row, double* levels) const {
    const Block& block = blockOf(row);
    const std::size_t at = startOf(row);
    if (block.isPacked) {
        const PackedLevel* const packed = block.packed.data() + at;
        std::transform(packed, packed + columns_, levels, levelOfPacked);
    } else {
        std::copy_n(block.whole.data() + at, columns_, levels);
    }
}

void LevelRows::copyRow(std::size_t row, PackedLevel* levels) const {
    const Block& block = blockOf(row);
    const std::size_t at = startOf(row);
    if (block.isPacked) {
        std::copy_n(block.packed.data() + at, columns_, levels);
    } else {
        packLevels(block.whole.data() + at, nullptr, columns_, levels);
    }
}

void LevelRows::unpack(Block& block) {
    block.whole = std::exchange(spareWhole_, std::vector<double>());
    block.whole.reserve(rowsOfBlock_ * columns_);
    block.whole.resize(block.packed.size());
    std::transform(block.packed.begin(), block.packed.end(), block.whole.begin(), levelOfPacked);
    recycle(block.packed, sparePacked_);
    block.isPacked = false;
}

/// For the next row.
LevelRows::Block& LevelRows::blockWithRoom() {
    if ((dropped_ + size_) / rowsOfBlock_ == blocks_.size()) {
        if (blocks_.full()) {
            blocks_.set_capacity(2 * blocks_.capacity() + 1);
        }
        blocks_.push_back({});
    }
    return blocks_.back();
}

void LevelRows::append(const std::vector<double>& row) {
    Block& block = blockWithRoom();
    if (block.isPacked && !packExactly(row, row_.data())) {
        unpack(block);
    }
    if (!block.isPacked) {
        block.whole.insert(block.whole.end(), row.begin(), row.end());
    } else {
        if (block.packed.empty()) {
            block.packed = std::exchange(sparePacked_, std::vector<PackedLevel>());
            block.packed.reserve(rowsOfBlock_ * columns_);
        }
        block.packed.insert(block.packed.end(), row_.begin(), row_.end());
    }
    ++size_;
}

void LevelRows::dropOldest() {
    ++dropped_;
    --size_;
    if (dropped_ == rowsOfBlock_) {
        recycle(blocks_.front().packed, sparePacked_);
        recycle(blocks_.front().whole, spareWhole_);
        blocks_.pop_front();
        dropped_ = 0;
    }
}

}  // namespace rfu

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

}  // namespace

LevelRows::LevelRows(std::size_t columns)
    : columns_(columns),
      rowsOfBlock_(std::max<std::size_t>(kLevelsOfBlock / std::max<std::size_t>(columns, 1), 1)) {}

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
    block.whole.resize(block.packed.size());
    std::transform(block.packed.begin(), block.packed.end(), block.whole.begin(), levelOfPacked);
    block.packed = {};
    block.isPacked = false;
}

void LevelRows::append(const std::vector<double>& row) {
    if ((dropped_ + size_) / rowsOfBlock_ == blocks_.size()) {
        blocks_.push_back(std::exchange(spare_, {}));
        blocks_.back().packed.reserve(rowsOfBlock_ * columns_);
    }
    Block& block = blocks_.back();
    if (block.isPacked) {
        const std::size_t at = block.packed.size();
        block.packed.resize(at + columns_);
        if (!packExactly(row, block.packed.data() + at)) {
            block.packed.resize(at);
            unpack(block);
        }
    }
    if (!block.isPacked) {
        block.whole.insert(block.whole.end(), row.begin(), row.end());
    }
    ++size_;
}

void LevelRows::dropOldest() {
    ++dropped_;
    --size_;
    if (dropped_ == rowsOfBlock_) {
        spare_ = std::move(blocks_.front());
        spare_.packed.clear();
        spare_.whole.clear();
        spare_.isPacked = true;
        blocks_.pop_front();
        dropped_ = 0;
    }
}

}  // namespace rfu

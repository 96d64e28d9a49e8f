#include "analysis/plots/waterfallRows.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace rfu {

namespace {

// Each cell reduces the levels added to it to one; levels that were not measured are ignored.

struct MaximumCell {
    PackedLevel level = kNotMeasured;  // which is below all others

    void add(PackedLevel added) { level = std::max(level, added); }
    void add(MaximumCell added) { add(added.level); }
    PackedLevel reduced() const { return level; }
};

struct MinimumCell {
    PackedLevel level = kNotMeasured;

    void add(PackedLevel added) {
        if (level == kNotMeasured || (added != kNotMeasured && added < level)) {
            level = added;
        }
    }
    void add(MinimumCell added) { add(added.level); }
    PackedLevel reduced() const { return level; }
};

/// Exact up to 8 million levels; from then on the earlier ones count half.
struct MeanCell {
    std::int64_t sum : 40;
    std::int64_t count : 24;

    MeanCell() : sum(0), count(0) {}
    explicit MeanCell(PackedLevel level)
        : sum(level == kNotMeasured ? 0 : level), count(level == kNotMeasured ? 0 : 1) {}

    void add(PackedLevel added) { add(MeanCell(added)); }
    void add(MeanCell added) {
        constexpr std::int64_t kMostCount = (1 << 23) - 1;
        if (count + added.count > kMostCount) {
            halve();
            added.halve();
        }
        sum += added.sum;
        count += added.count;
    }
    void halve() {
        sum /= 2;
        count /= 2;
    }
    PackedLevel reduced() const {
        return count == 0 ? kNotMeasured
                          : static_cast<PackedLevel>(
                                std::lround(static_cast<double>(sum) / static_cast<double>(count)));
    }
};

template <typename Cell>
class RowsOf : public WaterfallRows {
public:
    RowsOf(const std::vector<ColumnPoints>& columns, std::size_t most)
        : columns_(columns), most_(most) {}

    void add(std::int64_t key, std::int64_t time, const PackedLevel* levels) override {
        const bool isMerged = binWidth_ > 1 && !keys_.empty() && isSameBin(keys_.back(), key);
        if (!isMerged) {
            if (size() == most_) {
                mergeRows();
            }
            keys_.push_back(key);
            times_.push_back(time);
            rows_.emplace_back(columns_.size());
        }
        std::vector<Cell>& row = rows_.back();
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            Cell cell = row[i];
            for (std::size_t point = columns_[i].begin; point < columns_[i].end; ++point) {
                cell.add(levels[point]);
            }
            row[i] = cell;
        }
    }

    std::vector<PackedLevel> reduced(std::size_t begin, std::size_t end) const override {
        std::vector<Cell> cells(columns_.size());
        for (std::size_t row = begin; row < end; ++row) {
            addTo(cells, rows_[row]);
        }
        std::vector<PackedLevel> levels(cells.size());
        std::transform(cells.begin(), cells.end(), levels.begin(),
                       [](const Cell& cell) { return cell.reduced(); });
        return levels;
    }

private:
    bool isSameBin(std::int64_t a, std::int64_t b) const { return a / binWidth_ == b / binWidth_; }

    std::size_t countBins() const {
        std::size_t bins = 1;
        for (std::size_t i = 1; i < size(); ++i) {
            bins += isSameBin(keys_[i - 1], keys_[i]) ? 0 : 1;
        }
        return bins;
    }

    static void addTo(std::vector<Cell>& cells, const std::vector<Cell>& added) {
        for (std::size_t i = 0; i < cells.size(); ++i) {
            cells[i].add(added[i]);
        }
    }

    /// Widens the bins until a quarter of the rows is free. Each merge visits all rows; with fewer free
    /// ones it would come too often.
    void mergeRows() {
        do {
            binWidth_ *= 2;
        } while (countBins() > most_ - most_ / 4);
        std::size_t kept = 0;
        for (std::size_t i = 1; i < size(); ++i) {
            if (isSameBin(keys_[kept], keys_[i])) {
                addTo(rows_[kept], rows_[i]);
            } else if (++kept != i) {
                keys_[kept] = keys_[i];
                times_[kept] = times_[i];
                rows_[kept] = std::move(rows_[i]);
            }
        }
        keys_.resize(kept + 1);
        times_.resize(kept + 1);
        rows_.resize(kept + 1);
    }

    std::vector<ColumnPoints> columns_;
    std::size_t most_;
    std::int64_t binWidth_ = 1;
    std::vector<std::vector<Cell>> rows_;
};

}  // namespace

std::unique_ptr<WaterfallRows> WaterfallRows::make(Reduction reduction,
                                                   const std::vector<ColumnPoints>& columns,
                                                   std::size_t most) {
    switch (reduction) {
        case Reduction::Maximum:
            return std::make_unique<RowsOf<MaximumCell>>(columns, most);
        case Reduction::Mean:
            return std::make_unique<RowsOf<MeanCell>>(columns, most);
        case Reduction::Minimum:
            break;
    }
    return std::make_unique<RowsOf<MinimumCell>>(columns, most);
}

}  // namespace rfu

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "analysis/plots/decimation.h"
#include "analysis/statistics/packedLevel.h"

namespace rfu {

/// Which level of several cells is shown.
enum class Reduction { Maximum, Mean, Minimum };

/// The rows of a waterfall while it is read: one for each sweep, until there are too many. Then
/// neighbouring rows on the time axis are merged, so that the memory is bounded.
class WaterfallRows {
public:
    /// A new row is added for each sweep at first.
    /// @param columns the points of each cell
    /// @param most rows that are held; a merged row covers at most 2.7 / most of the axis
    static std::unique_ptr<WaterfallRows> make(Reduction reduction,
                                               const std::vector<ColumnPoints>& columns,
                                               std::size_t most);
    virtual ~WaterfallRows() = default;

    /// @param key place on the time axis, not negative; need not ascend
    /// @param time when the sweep began
    /// @param levels of all points
    virtual void add(std::int64_t key, std::int64_t time, const PackedLevel* levels) = 0;

    /// The key and the time of the first sweep of each row.
    const std::vector<std::int64_t>& keys() const { return keys_; }
    const std::vector<std::int64_t>& times() const { return times_; }
    std::size_t size() const { return keys_.size(); }

    /// The reduced levels of the rows from begin to before end, one for each column.
    virtual std::vector<PackedLevel> reduced(std::size_t begin, std::size_t end) const = 0;

protected:
    std::vector<std::int64_t> keys_;
    std::vector<std::int64_t> times_;
};

}  // namespace rfu

#pragma once

#include <rfUtils/geo/veltaGEO.h>
#include <tests/support/mapModel.h>

#include <cstddef>

namespace rfu::fuzz {

using Rows = rfu::test::MapRows;

/// Whether two sets of rows hold the same bits.
bool sameCells(const Rows& a, const Rows& b);

/// A map that notices everything written out of place without looking at all 16 MiB each time: its
/// grid begins at a page, and only the rows that a load is expected to write are writable
/// meanwhile. Guard bytes lie on both sides of the object, and behind them memory that nobody may
/// access. The object is made once; each run starts from fields and cells of kUntouched bytes.
class GuardedMap {
public:
    GuardedMap();
    GuardedMap(const GuardedMap&) = delete;
    GuardedMap& operator=(const GuardedMap&) = delete;

    veltaGEO& map() { return *map_; }

    /// Begins a run: resets the fields, makes these rows writable.
    void open(const Rows& writable);

    /// Ends it: the cells of the rows opened, as many as `open` was given. Requires that no other
    /// cell of these rows and no guard byte has changed, and makes the cells as they were.
    Rows take();

private:
    void allow(int protection);

    veltaGEO* map_;
    char* frontGuard_;
    std::size_t frontGuardSize_;
    char* backGuard_;
    std::size_t backGuardSize_;
    Rows opened_;
};

}  // namespace rfu::fuzz

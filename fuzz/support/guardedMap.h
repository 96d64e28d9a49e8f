#pragma once

#include <rfUtils/geo/veltaGEO.h>
#include <tests/support/mapModel.h>

#include <cstddef>

namespace rfu::fuzz {

using Rows = rfu::test::MapRows;

/// Whether two sets of rows hold the same bits.
bool sameCells(const Rows& a, const Rows& b);

/// A map that detects stray writes without scanning all 16 MiB in each run: its grid begins at a
/// page, and only the rows that a load is expected to write are writable. The object lies between
/// guard bytes and inaccessible pages. It is constructed once; each run starts from fields and
/// cells of kUntouched bytes.
class GuardedMap {
public:
    GuardedMap();
    GuardedMap(const GuardedMap&) = delete;
    GuardedMap& operator=(const GuardedMap&) = delete;

    veltaGEO& map() { return *map_; }

    /// Begins a run: resets the fields and makes these rows writable.
    void open(const Rows& writable);

    /// Ends a run. Requires that no other cell of the opened rows and no guard byte has changed,
    /// and resets the cells.
    /// @return the cells of the opened rows
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

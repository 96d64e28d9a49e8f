#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "analysis/recordings/markers.h"
#include "analysis/statistics/pointStatistics.h"
#include "analysis/statistics/sweepStore.h"
#include "recordings/levelView.h"
#include "support/format.h"
#include "support/prefixNote.h"
#include "support/table.h"

namespace rfu::command {

/// The optional columns of a table.
struct TraceColumns {
    bool sweep = false;           // number and time of the newest sweep
    bool marker = false;          // name of the marker
    bool distribution = false;    // statistics that need the single levels
    std::optional<double> limit;  // dBm; the column counts the levels above it
};

/// One row per point or marker with the statistics of the kept sweeps.
class TraceTable {
public:
    TraceTable(Format format, const TraceColumns& wanted, const LevelView& view,
               const FrequencyAxis& axis, const SweepStore& sweeps, PrefixNote& note);

    /// @param columns of the store, one for each marker
    void addMarkers(const std::vector<Marker>& markers, const std::vector<std::size_t>& columns);
    /// @pre the store has a column for each point
    void addPoints();

    /// Shows the rows so far without waiting for the end of the recording. They are flushed before
    /// the reader waits for more input.
    void show();
    void finish();

private:
    struct Row {
        const Marker* marker;  // null for a point
        int point;
        PointStatistics statistics;
        LevelDistribution distribution;
        LevelPresenter& presenter;
    };

    std::vector<Column<Row>> columns();
    void start();
    void add(int point, std::size_t column, const PointStatistics& statistics, const Marker* named);

    Format format_;
    TraceColumns wanted_;
    const LevelView& view_;
    const FrequencyAxis& axis_;
    const SweepStore& sweeps_;
    PrefixNote& note_;
    std::optional<Table<Row>> table_;
};

}  // namespace rfu::command

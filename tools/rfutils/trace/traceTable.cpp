#include "trace/traceTable.h"

#include <cstddef>
#include <string>

namespace rfu::command {

namespace {

constexpr int kDeviationDecimals = 2;  // of dB

Cell frequencyCell(const FrequencyAxis& axis, int point) {
    return axis.points.empty()
               ? Cell()
               : withDecimals(axis.points[static_cast<std::size_t>(point)], kHertzDecimals);
}

}  // namespace

TraceTable::TraceTable(Format format, const TraceColumns& wanted, const LevelView& view,
                       const FrequencyAxis& axis, const SweepStore& sweeps, PrefixNote& note)
    : format_(format), wanted_(wanted), view_(view), axis_(axis), sweeps_(sweeps), note_(note) {}

std::vector<Column<TraceTable::Row>> TraceTable::columns() {
    const auto level = [this](auto levelOf) {
        return [this, levelOf](const Row& row) {
            return levelCell(levelOf(row), format_, row.presenter, note_);
        };
    };
    const auto strongest = [](auto cellOf) {
        return [cellOf](const Row& row) {
            return row.distribution.strongest ? cellOf(*row.distribution.strongest) : Cell();
        };
    };
    const bool hasUnitColumn = format_ != Format::Text;  // a text has it beside each number
    return {
        {"sweep", [this](const Row&) { return sweeps_.count(); }, wanted_.sweep},
        {"time", [this](const Row&) { return textOrNone(sweeps_.lastTime()); }, wanted_.sweep},
        {"marker", [](const Row& row) { return row.marker->name; }, wanted_.marker},
        {"point", [](const Row& row) { return row.point; }},
        {"frequencyMHz", [this](const Row& row) { return frequencyCell(axis_, row.point); }},
        {"count", [](const Row& row) { return row.statistics.count; }},
        {"average", level([](const Row& row) { return row.statistics.average; })},
        {"maximum", level([](const Row& row) { return row.statistics.maximum; })},
        {"minimum", level([](const Row& row) { return row.statistics.minimum; })},
        {"powerMean", level([](const Row& row) { return row.distribution.powerMean; }),
         wanted_.distribution},
        {"median", level([](const Row& row) { return row.distribution.median; }),
         wanted_.distribution},
        {"unit", [](const Row& row) { return row.presenter.unitName(); }, hasUnitColumn},
        {"above", [](const Row& row) { return row.statistics.above; }, wanted_.limit.has_value()},
        {"deviationDb",
         [](const Row& row) {
             return withDecimals(row.distribution.deviation, kDeviationDecimals);
         },
         wanted_.distribution},
        {"maximumSweep",
         strongest([this](std::size_t sweep) { return Cell(sweeps_.number(sweep)); }),
         wanted_.distribution},
        {"maximumTime",
         strongest([this](std::size_t sweep) { return textOrNone(sweeps_.time(sweep)); }),
         wanted_.distribution},
    };
}

void TraceTable::start() {
    if (!table_) {
        table_.emplace(format_, columns());
    }
}

void TraceTable::add(int point, std::size_t column, const PointStatistics& statistics,
                     const Marker* named) {
    LevelPresenter presenter(view_.unit, view_.antennaAt(axis_, point));
    table_->add({named, point, statistics,
                 wanted_.distribution ? sweeps_.distribution(column) : LevelDistribution(),
                 presenter});
}

void TraceTable::addMarkers(const std::vector<Marker>& markers,
                            const std::vector<std::size_t>& columns) {
    start();
    for (std::size_t i = 0; i < markers.size(); ++i) {
        add(markers[i].point, columns[i], sweeps_.statistics(columns[i]), &markers[i]);
    }
}

void TraceTable::addPoints() {
    start();
    const std::vector<PointTally> tallies = sweeps_.tallies();
    for (std::size_t point = 0; point < tallies.size(); ++point) {
        add(static_cast<int>(point), point, tallies[point].statistics(), nullptr);
    }
}

void TraceTable::show() {
    if (format_ == Format::Json) {
        finish();  // each sweep is an array of its own
    } else {
        table_->writeRows();
        note_.print();
    }
}

void TraceTable::finish() {
    if (table_) {
        table_->finish();
        table_.reset();
        note_.print();
    }
}

}  // namespace rfu::command

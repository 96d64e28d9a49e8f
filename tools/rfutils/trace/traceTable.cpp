#include "trace/traceTable.h"

#include <string>
#include <vector>

#include "analysis/statistics/pointStatistics.h"
#include "support/output.h"

namespace rfu::command {

namespace {

constexpr int kHertzDecimals = 6;      // of a number of MHz
constexpr int kDeviationDecimals = 2;  // of dB

std::vector<std::string> columnNames(const TraceColumns& columns, Format format) {
    std::vector<std::string> names;
    const auto add = [&names](bool used, std::initializer_list<const char*> more) {
        if (used) {
            names.insert(names.end(), more.begin(), more.end());
        }
    };
    add(columns.sweep, {"sweep", "time"});
    add(columns.marker, {"marker"});
    add(true, {"point", "frequencyMHz", "count", "average", "maximum", "minimum"});
    add(columns.distribution, {"powerMean", "median"});
    add(format != Format::Text, {"unit"});  // a text has it beside each number
    add(columns.limit.has_value(), {"above"});
    add(columns.distribution, {"deviationDb", "maximumSweep", "maximumTime"});
    return names;
}

void addTextOrNone(TableWriter& table, const std::string& text) {
    text.empty() ? table.none() : table.text(text);
}

}  // namespace

bool LevelView::isOfEachPoint() const {
    return needsAntenna(unit) && !antenna.center;
}

Antenna LevelView::antennaAt(const FrequencyAxis& axis, int point) const {
    Antenna used = antenna;
    if (!used.center && !axis.points.empty()) {
        used.center = axis.points[static_cast<std::size_t>(point)];
    }
    return used;
}

TraceTable::TraceTable(Format format, const TraceColumns& columns, const LevelView& view,
                       const FrequencyAxis& axis, SweepStore& sweeps, PrefixNote& note)
    : format_(format), columns_(columns), view_(view), axis_(axis), sweeps_(sweeps), note_(note) {}

void TraceTable::start() {
    if (!table_) {
        table_.emplace(standardOutput(), format_, columnNames(columns_, format_));
    }
}

void TraceTable::addLevel(const std::optional<double>& level, LevelPresenter& presenter) {
    if (!level) {
        table_->none();
        return;
    }
    const double value = presenter.value(*level);
    if (format_ != Format::Text) {
        table_->number(value);
        return;
    }
    const std::string text = presenter.text(*level);
    note_.check(*level, text, presenter);
    table_->number(value, text.empty() ? "-" : text);  // too small for a prefix
}

void TraceTable::addPoint(int marker, int point) {
    traceRssiBuffer& buffer = sweeps_.buffer();
    buffer.calcMarkerPower(marker, point);
    const PointStatistics statistics = summarise(buffer, marker, columns_.limit.value_or(0.0));
    const LevelDistribution distribution =
        columns_.distribution ? distributionOf(buffer, marker) : LevelDistribution();
    LevelPresenter presenter(view_.unit, view_.antennaAt(axis_, point));

    table_->integer(point);
    if (axis_.points.empty()) {
        table_->none();
    } else {
        table_->number(axis_.points[static_cast<std::size_t>(point)], kHertzDecimals);
    }
    table_->integer(statistics.count);
    addLevel(statistics.average, presenter);
    addLevel(statistics.maximum, presenter);
    addLevel(statistics.minimum, presenter);
    if (columns_.distribution) {
        addLevel(distribution.powerMean, presenter);
        addLevel(distribution.median, presenter);
    }
    if (format_ != Format::Text) {
        table_->text(presenter.unitName());
    }
    if (columns_.limit) {
        table_->integer(statistics.above);
    }
    if (columns_.distribution && distribution.strongest) {
        table_->number(*distribution.deviation, kDeviationDecimals);
        table_->integer(sweeps_.number(*distribution.strongest));
        addTextOrNone(*table_, sweeps_.time(*distribution.strongest));
    } else if (columns_.distribution) {
        table_->none().none().none();
    }
}

void TraceTable::addMarkers(const std::vector<Marker>& markers) {
    start();
    for (std::size_t i = 0; i < markers.size(); ++i) {
        if (columns_.sweep) {
            table_->integer(sweeps_.count());
            addTextOrNone(*table_, sweeps_.time(sweeps_.kept() - 1));
        }
        table_->text(markers[i].name);
        addPoint(static_cast<int>(i), markers[i].point);
    }
}

void TraceTable::addPoints(int count) {
    start();
    for (int point = 0; point < count; ++point) {
        addPoint(0, point);
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

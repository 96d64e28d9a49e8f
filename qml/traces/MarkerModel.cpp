#include "qml/traces/MarkerModel.h"

#include <QByteArray>
#include <QHash>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <memory>
#include <mutex>
#include <utility>

#include "analysis/recordings/markers.h"
#include "analysis/statistics/tracePeaks.h"
#include "analysis/support/inputError.h"
#include "qml/support/properties.h"

namespace rfu::qml {

namespace {

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

struct MarkerRole {
    const char* name;
    QVariant (*value)(const MarkerValues& values);
};

/// In the order of MarkerModel::Role.
constexpr MarkerRole kMarkerRoles[] = {
    {"frequency", [](const MarkerValues& values) { return QVariant(values.frequency); }},
    {"valid", [](const MarkerValues& values) { return QVariant(values.isValid); }},
    {"point", [](const MarkerValues& values) { return QVariant(values.point); }},
    {"pointFrequency", [](const MarkerValues& values) { return QVariant(values.pointFrequency); }},
    {"level", [](const MarkerValues& values) { return QVariant(values.level); }},
    {"average", [](const MarkerValues& values) { return QVariant(values.average); }},
    {"powerMean", [](const MarkerValues& values) { return QVariant(values.powerMean); }},
    {"maximum", [](const MarkerValues& values) { return QVariant(values.maximum); }},
    {"minimum", [](const MarkerValues& values) { return QVariant(values.minimum); }},
    {"above", [](const MarkerValues& values) { return QVariant(values.above); }},
    {"delta", [](const MarkerValues& values) { return QVariant(values.delta); }},
    {"deltaFrequency", [](const MarkerValues& values) { return QVariant(values.deltaFrequency); }}};

bool isSameValue(const QVariant& a, const QVariant& b) {
    if (a.userType() != QMetaType::Double) {
        return a == b;
    }
    double before = a.toDouble();
    return !assign(before, b.toDouble());
}

/// What differs.
QVector<int> changedRoles(const MarkerValues& before, const MarkerValues& now) {
    QVector<int> roles;
    int role = MarkerModel::FrequencyRole;
    for (const MarkerRole& known : kMarkerRoles) {
        if (!isSameValue(known.value(before), known.value(now))) {
            roles.append(role);
        }
        ++role;
    }
    return roles;
}

/// The point nearest to a frequency, or without frequencies to the number of a point.
std::optional<std::size_t> placeOf(double frequency, const TraceHistory& history) {
    const FrequencyAxis& axis = history.axis();
    if (axis.points.empty()) {
        const double point = std::round(frequency);
        return point >= 0.0 && point < static_cast<double>(history.points())
                   ? std::optional(static_cast<std::size_t>(point))
                   : std::nullopt;
    }
    if (std::isnan(frequency)) {
        return std::nullopt;
    }
    try {
        const MarkerRequest request = {{}, frequency, {}};
        return static_cast<std::size_t>(
            placeMarkers({request}, axis, history.points(), {}).front().point);
    } catch (const InputError&) {  // outside the bands
        return std::nullopt;
    }
}

/// The measured point that no other precedes.
template <typename Precedes>
std::optional<std::size_t> extremeOf(const std::vector<double>& levels, Precedes precedes) {
    std::optional<std::size_t> extreme;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        if (!std::isnan(levels[i]) && (!extreme || precedes(levels[i], levels[*extreme]))) {
            extreme = i;
        }
    }
    return extreme;
}

double frequencyOf(std::size_t point, const FrequencyAxis& axis) {
    return axis.points.empty() ? static_cast<double>(point) : axis.points[point];
}

}  // namespace

MarkerModel::MarkerModel() = default;

void MarkerModel::setTrace(TraceModel* trace) {
    if (trace_ == trace) {
        return;
    }
    if (trace_ != nullptr) {
        trace_->disconnect(this);
    }
    trace_ = trace;
    if (trace != nullptr) {
        connect(trace, &TraceModel::updated, this, &MarkerModel::refresh);
        connect(trace, &QObject::destroyed, this, [this] {
            forgetTrace();
            Q_EMIT traceChanged();
        });
    }
    forgetTrace();
    Q_EMIT traceChanged();
}

/// What is known of the former one.
void MarkerModel::forgetTrace() {
    for (Marker& marker : markers_) {
        marker.followed.clear();
        marker.isPlaced = false;
    }
    refresh();
}

void MarkerModel::setLimit(double limit) {
    if (assign(limit_, limit)) {
        refresh();
        Q_EMIT limitChanged();
    }
}

void MarkerModel::setPeakExcursion(double excursion) {
    if (assign(peakExcursion_, excursion)) {
        Q_EMIT peakExcursionChanged();
    }
}

MarkerValues MarkerModel::measure(Marker& marker, const TraceHistory& history) {
    if (!marker.isPlaced || marker.generation != history.generation()) {
        marker.point = placeOf(marker.frequency, history);
        marker.generation = history.generation();
        marker.isPlaced = true;
    }
    MarkerValues values;
    if (!marker.point) {
        return values;
    }
    const std::size_t point = *marker.point;
    marker.followed.follow(history, point);
    const PointStatistics statistics = marker.followed.statistics(limit_);
    values.isValid = statistics.count > 0;
    values.point = static_cast<int>(point);
    values.pointFrequency = frequencyOf(point, history.axis());
    values.level = history.newest()[point];
    values.average = statistics.average.value_or(kUnknown);
    values.powerMean = marker.followed.powerMean(milliwatts_).value_or(kUnknown);
    values.maximum = statistics.maximum.value_or(kUnknown);
    values.minimum = statistics.minimum.value_or(kUnknown);
    values.above =
        std::isnan(limit_) || !values.isValid ? kUnknown : static_cast<double>(statistics.above);
    return values;
}

/// Shows the markers as they are now.
void MarkerModel::refresh() {
    std::array<MarkerValues, kMarkers> now;
    if (trace_ != nullptr) {
        const std::shared_ptr<SharedTrace> shared = trace_->shared();
        const std::lock_guard lock(shared->mutex);
        for (std::size_t row = 0; row < kMarkers; ++row) {
            now[row] = measure(markers_[row], shared->history);
        }
    }
    std::array<QVector<int>, kMarkers> changed;
    for (std::size_t row = 0; row < kMarkers; ++row) {
        now[row].frequency = markers_[row].frequency;
        now[row].delta = now[row].level - now[0].level;
        now[row].deltaFrequency = now[row].pointFrequency - now[0].pointFrequency;
        changed[row] = changedRoles(markers_[row].shown, now[row]);
        markers_[row].shown = now[row];
    }
    for (std::size_t row = 0; row < kMarkers; ++row) {
        if (!changed[row].isEmpty()) {
            const QModelIndex where = index(static_cast<int>(row));
            Q_EMIT dataChanged(where, where, changed[row]);
        }
    }
}

bool MarkerModel::set(int row, double frequency) {
    if (!hasRow(row)) {
        return false;
    }
    Marker& marker = markers_[static_cast<std::size_t>(row)];
    if (assign(marker.frequency, std::isfinite(frequency) ? frequency : kUnknown)) {
        marker.isPlaced = false;
        refresh();
    }
    return true;
}

void MarkerModel::clear(int row) {
    set(row, kUnknown);
}

QVariantMap MarkerModel::get(int row) const {
    QVariantMap values;
    if (hasRow(row)) {
        for (const MarkerRole& role : kMarkerRoles) {
            values.insert(QString::fromLatin1(role.name),
                          role.value(markers_[static_cast<std::size_t>(row)].shown));
        }
    }
    return values;
}

std::vector<double> MarkerModel::newestTrace() const {
    if (trace_ == nullptr) {
        return {};
    }
    const std::shared_ptr<SharedTrace> shared = trace_->shared();
    const std::lock_guard lock(shared->mutex);
    return shared->history.newest();
}

/// @return whether there is such a row and point
bool MarkerModel::moveTo(int row, std::optional<std::size_t> point) {
    if (!hasRow(row) || !point || trace_ == nullptr) {
        return false;
    }
    double frequency = kUnknown;
    {
        const std::shared_ptr<SharedTrace> shared = trace_->shared();
        const std::lock_guard lock(shared->mutex);
        if (*point >= shared->history.points()) {
            return false;
        }
        frequency = frequencyOf(*point, shared->history.axis());
    }
    return set(row, frequency);
}

bool MarkerModel::toPeak(int row) {
    return moveTo(row, extremeOf(newestTrace(), std::greater<>()));
}

bool MarkerModel::toMinimum(int row) {
    return moveTo(row, extremeOf(newestTrace(), std::less<>()));
}

bool MarkerModel::nextPeak(int row, int direction) {
    if (!hasRow(row) || direction == 0) {
        return false;
    }
    const std::vector<std::size_t> peaks = peaksOf(newestTrace(), peakExcursion_);
    const int point = markers_[static_cast<std::size_t>(row)].shown.point;
    const bool isPlaced = point >= 0;
    const auto at = static_cast<std::size_t>(std::max(point, 0));
    if (direction > 0) {
        const auto next =
            isPlaced ? std::upper_bound(peaks.begin(), peaks.end(), at) : peaks.begin();
        return next != peaks.end() && moveTo(row, *next);
    }
    const auto next = isPlaced ? std::lower_bound(peaks.begin(), peaks.end(), at) : peaks.end();
    return next != peaks.begin() && moveTo(row, *std::prev(next));
}

int MarkerModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant MarkerModel::data(const QModelIndex& index, int role) const {
    const int known = role - FrequencyRole;
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || known < 0 ||
        known >= static_cast<int>(std::size(kMarkerRoles))) {
        return {};
    }
    return kMarkerRoles[static_cast<std::size_t>(known)].value(
        markers_[static_cast<std::size_t>(index.row())].shown);
}

bool MarkerModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != FrequencyRole) {
        return false;
    }
    bool isNumber = false;
    const double frequency = value.toDouble(&isNumber);
    return isNumber && set(index.row(), frequency);
}

QHash<int, QByteArray> MarkerModel::roleNames() const {
    QHash<int, QByteArray> names;
    int role = FrequencyRole;
    for (const MarkerRole& known : kMarkerRoles) {
        names.insert(role, known.name);
        ++role;
    }
    return names;
}

}  // namespace rfu::qml

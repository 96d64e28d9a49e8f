#include "qml/traces/TraceModel.h"

#include <qqml.h>
#include <QJSEngine>
#include <QMetaObject>
#include <QSaveFile>

#include <algorithm>
#include <cmath>
#include <limits>
#include <mutex>
#include <string>
#include <utility>

#include "analysis/recordings/recordingLine.h"
#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "qml/support/files.h"
#include "qml/support/properties.h"
#include "qml/traces/levelList.h"

namespace rfu::qml {

namespace {

constexpr int kFirstDepth = 1000;
constexpr int kMostDepth = 1000000;
constexpr int kLevelDecimals = 2;      // of dBm
constexpr int kFrequencyDecimals = 6;  // of MHz, as the command prints them

/// Bins side by side.
FrequencyAxis evenAxis(double start, double stop, std::size_t points) {
    FrequencyAxis axis;
    const double step = (stop - start) / static_cast<double>(points);
    axis.points.resize(points);
    for (std::size_t i = 0; i < points; ++i) {
        axis.points[i] = start + step * static_cast<double>(i);
    }
    axis.bands = {{0, start, stop}};
    const Hop hop = {start * kHertzPerMegahertz, stop * kHertzPerMegahertz,
                     step * kHertzPerMegahertz};
    axis.hops = {{hop, 0, points}};
    return axis;
}

/// What a file gets.
struct Columns {
    std::vector<double> frequencies;  // MHz
    std::vector<double> newest;       // dBm, as the others
    std::vector<double> average;
    std::vector<double> maximum;
    std::vector<double> minimum;
};

void addLevel(std::string& line, double level) {
    line += ',';
    if (!std::isnan(level)) {
        line += fixedText(level, kLevelDecimals);
    }
}

/// @return whether it was not stopped
bool write(const Columns& columns, const QString& name, const std::atomic<bool>& isCancelled) {
    QSaveFile file(name);
    const auto require = [&](bool isDone) {
        if (!isDone) {
            throw InputError(name, file.errorString().toStdString());
        }
    };
    require(file.open(QIODevice::WriteOnly));
    const bool hasFrequencies = !columns.frequencies.empty();
    std::string line = hasFrequencies ? "frequencyMHz" : "point";
    line += ",newest,average,maximum,minimum\n";
    for (std::size_t i = 0; i < columns.newest.size() && !isCancelled; ++i) {
        require(file.write(line.data(), static_cast<qint64>(line.size())) >= 0);
        line = hasFrequencies ? fixedText(columns.frequencies[i], kFrequencyDecimals)
                              : std::to_string(i);
        addLevel(line, columns.newest[i]);
        addLevel(line, columns.average[i]);
        addLevel(line, columns.maximum[i]);
        addLevel(line, columns.minimum[i]);
        line += '\n';
    }
    if (isCancelled) {
        return false;
    }
    require(file.write(line.data(), static_cast<qint64>(line.size())) >= 0);
    require(file.commit());
    return true;
}

QVector<double> vectorOf(const std::vector<double>& values) {
    return QVector<double>(values.begin(), values.end());
}

}  // namespace

TraceModel::TraceModel()
    : shared_(std::make_shared<SharedTrace>(kFirstDepth)),
      depth_(kFirstDepth),
      saving_([this](const std::shared_ptr<const bool>& isWritten, const QString& error) {
          finishSaving(isWritten != nullptr && *isWritten, error);
      }) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &TraceModel::tell);
    shared_->setListener(
        [this] { QMetaObject::invokeMethod(this, "tellSoon", Qt::QueuedConnection); });
}

TraceModel::~TraceModel() {
    shared_->setListener({});
}

void TraceModel::setDepth(int depth) {
    if (!assign(depth_, std::clamp(depth, 1, kMostDepth))) {
        return;
    }
    {
        const std::lock_guard lock(shared_->mutex);
        shared_->history.setDepth(static_cast<std::size_t>(depth_));
    }
    Q_EMIT depthChanged();
    tell();
}

void TraceModel::setStartFrequency(double frequency) {
    setEnd(start_, frequency);
}

void TraceModel::setStopFrequency(double frequency) {
    setEnd(stop_, frequency);
}

/// @param end of the range
void TraceModel::setEnd(double& end, double frequency) {
    const bool hadRange = hasRange();
    if (!assign(end,
                std::isfinite(frequency) ? frequency : std::numeric_limits<double>::quiet_NaN())) {
        return;
    }
    if (hadRange || hasRange()) {
        const std::lock_guard lock(shared_->mutex);
        if (shared_->history.points() > 0) {
            shared_->history.setAxis({});
        }
    }
    tell();
}

void TraceModel::setUpdateInterval(int interval) {
    if (assign(updateInterval_, std::max(interval, 0))) {
        Q_EMIT updateIntervalChanged();
        if (timer_.isActive()) {
            timer_.stop();
            tellSoon();
        }
    }
}

bool TraceModel::append(const QJSValue& levels) {
    QJSEngine* const engine = qjsEngine(this);
    if (engine == nullptr || !readLevelList(levels, *engine, levels_)) {
        return false;
    }
    add(levels_);
    return true;
}

void TraceModel::add(const std::vector<double>& levels) {
    {
        const std::lock_guard lock(shared_->mutex);
        TraceHistory& history = shared_->history;
        if (hasRange() && history.axis().points.size() != levels.size()) {
            history.setAxis(evenAxis(start_, stop_, levels.size()));
        }
        history.add(levels);
    }
    tellSoon();
}

void TraceModel::clear() {
    {
        const std::lock_guard lock(shared_->mutex);
        shared_->history.clear();
    }
    tell();
}

void TraceModel::clearHolds() {
    {
        const std::lock_guard lock(shared_->mutex);
        shared_->history.clearHolds();
    }
    tell();
}

QVector<double> TraceModel::levels(Series series) const {
    const std::lock_guard lock(shared_->mutex);
    const TraceHistory& history = shared_->history;
    switch (series) {
        case Newest:
            return vectorOf(history.newest());
        case Maximum:
            return vectorOf(history.maximum());
        case Minimum:
            return vectorOf(history.minimum());
        case Average:
            return vectorOf(history.average());
    }
    return {};
}

QVector<double> TraceModel::frequencies() const {
    const std::lock_guard lock(shared_->mutex);
    return vectorOf(shared_->history.axis().points);
}

/// The first change is told at once, those that follow too soon when the interval is over.
void TraceModel::tellSoon() {
    if (timer_.isActive()) {
        return;
    }
    const qint64 left = sinceTold_.isValid() ? updateInterval_ - sinceTold_.elapsed() : 0;
    if (left > 0) {
        timer_.start(static_cast<int>(left));
    } else {
        tell();
    }
}

TraceModel::Told TraceModel::toldNow() {
    shared_->expectChange();
    const std::lock_guard lock(shared_->mutex);
    const TraceHistory& history = shared_->history;
    const auto& bands = history.axis().bands;
    return {history.generation(),
            static_cast<int>(history.points()),
            static_cast<int>(history.size()),
            static_cast<double>(history.count()),
            bands.empty() ? start_ : bands.front().low,
            bands.empty() ? stop_ : bands.back().high};
}

void TraceModel::tell() {
    timer_.stop();
    sinceTold_.start();
    const Told before = std::exchange(told_, toldNow());
    const Told now = told_;  // a receiver of the signals may change the model
    const auto isOther = [](double a, double b) {
        return a != b && !(std::isnan(a) && std::isnan(b));
    };
    if (now.generation != before.generation) {
        Q_EMIT cleared();
    }
    if (isOther(now.start, before.start)) {
        Q_EMIT startFrequencyChanged();
    }
    if (isOther(now.stop, before.stop)) {
        Q_EMIT stopFrequencyChanged();
    }
    if (now.points != before.points) {
        Q_EMIT pointsChanged();
    }
    if (now.count != before.count) {
        Q_EMIT countChanged();
    }
    if (now.total != before.total) {
        Q_EMIT totalChanged();
    }
    if ((now.count == 0) != (before.count == 0)) {
        Q_EMIT emptyChanged();
    }
    Q_EMIT updated();
}

void TraceModel::save(const QUrl& file) {
    Columns columns;
    {
        const std::lock_guard lock(shared_->mutex);
        const TraceHistory& history = shared_->history;
        columns = {history.axis().points, history.newest(), history.average(), history.maximum(),
                   history.minimum()};
    }
    saving_.start([columns = std::move(columns), file](const std::atomic<bool>& isCancelled) {
        return write(columns, fileOf(file), isCancelled);
    });
    if (assign(isSaving_, true)) {
        Q_EMIT savingChanged();
    }
}

void TraceModel::finishSaving(bool isSaved, const QString& error) {
    if (assign(error_, error)) {
        Q_EMIT errorStringChanged();
    }
    if (assign(isSaving_, false)) {
        Q_EMIT savingChanged();
    }
    Q_EMIT saved(isSaved);
}

}  // namespace rfu::qml

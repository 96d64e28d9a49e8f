#include "qml/traces/RecordingSource.h"

#include <QMetaObject>

#include <algorithm>
#include <cmath>
#include <utility>

#include "analysis/support/inputError.h"
#include "qml/support/files.h"
#include "qml/support/properties.h"

namespace rfu::qml {

namespace {

constexpr int kTellInterval = 34;      // ms
constexpr int kSettleInterval = 300;   // ms, between the ends of a program and of its output
constexpr double kMostSeconds = 1e11;  // more than stamps reach

bool isOther(double before, double now) {
    return assign(before, now);
}

}  // namespace

RecordingSource::RecordingSource() {
    beginTimer_.setSingleShot(true);
    connect(&beginTimer_, &QTimer::timeout, this, &RecordingSource::begin);
    tellTimer_.setSingleShot(true);
    tellTimer_.setInterval(kTellInterval);
    connect(&tellTimer_, &QTimer::timeout, this, [this] {
        if (feed_ != nullptr && feed_->hasNews()) {
            tell();
        }
    });
    settleTimer_.setSingleShot(true);
    settleTimer_.setInterval(kSettleInterval);
    connect(&settleTimer_, &QTimer::timeout, this, &RecordingSource::settle);
}

RecordingSource::~RecordingSource() = default;

void RecordingSource::setTrace(TraceModel* trace) {
    if (trace_ == trace) {
        return;
    }
    if (trace_ != nullptr) {
        trace_->disconnect(this);
    }
    trace_ = trace;
    if (trace != nullptr) {
        connect(trace, &QObject::destroyed, this, [this] {
            beginAnew();
            Q_EMIT traceChanged();
        });
    }
    beginAnew();
    Q_EMIT traceChanged();
}

void RecordingSource::setSource(const QUrl& source) {
    if (assign(source_, inPage(*this, source))) {
        if (program_.isEmpty()) {
            beginAnew();
        }
        Q_EMIT sourceChanged();
    }
}

void RecordingSource::setProgram(const QString& program) {
    if (assign(program_, program)) {
        beginAnew();
        Q_EMIT programChanged();
    }
}

void RecordingSource::setArguments(const QStringList& arguments) {
    if (assign(arguments_, arguments)) {
        if (!program_.isEmpty()) {
            beginAnew();
        }
        Q_EMIT argumentsChanged();
    }
}

void RecordingSource::setRunning(bool isRunning) {
    if (!assign(isRunning_, isRunning)) {
        return;
    }
    told_.isRunning = isRunning;
    isHeld_ = false;
    followRunning();
    Q_EMIT runningChanged();
}

void RecordingSource::followRunning() {
    if (feed_ != nullptr) {
        feed_->setRunning(isRunning_);
    } else if (status_ == Loading) {
        beginTimer_.start();
    }
}

void RecordingSource::setLooping(bool isLooping) {
    if (assign(isLooping_, isLooping)) {
        followLooping();
        Q_EMIT loopChanged();
    }
}

/// A file that was read to its end begins again.
void RecordingSource::followLooping() {
    if (feed_ != nullptr) {
        feed_->setLooping(isLooping_);
    } else if (isLooping_ && status_ == Ready && told_.end == SweepFeed::End::Whole && isFile()) {
        keepsTrace_ = true;
        finish(Loading, {});
        beginTimer_.start();
    }
}

void RecordingSource::setSpeed(double speed) {
    if (!assign(speed_, speed > 0.0 ? speed : 0.0)) {
        return;
    }
    if (feed_ != nullptr) {
        feed_->setSpeed(speed_);
    }
    Q_EMIT speedChanged();
}

void RecordingSource::setPosition(double position) {
    if (std::isnan(position) || (isComplete_ && !isFile())) {
        return;
    }
    SweepFeed::State now = told_;
    now.position = std::clamp(position, 0.0, kMostSeconds);
    if (now.position == told_.position) {
        return;
    }
    wanted_ = now.position;
    if (isComplete_) {
        halt();
        now = told_;
        now.position = *wanted_;
        now.isSeeking = true;
        now.end = SweepFeed::End::None;
        finish(Loading, {});
        beginTimer_.start();
    }
    show(now);
}

void RecordingSource::componentComplete() {
    isComplete_ = true;
    const auto wanted = wanted_;
    beginAnew();
    if (wanted) {
        setPosition(*wanted);
    }
}

void RecordingSource::restart() {
    beginAnew();
}

void RecordingSource::stop() {
    halt();
    if (status_ == Loading) {
        SweepFeed::State now = told_;
        now.isSeeking = false;
        show(now);
        finish(Ready, {});
    }
}

bool RecordingSource::hasInput() const {
    return trace_ != nullptr && !(program_.isEmpty() && source_.isEmpty());
}

/// Whether there is something to read that has positions, as far as that is known.
bool RecordingSource::isFile() const {
    return hasInput() && program_.isEmpty() && source_.fileName() != kStandardInput &&
           !told_.isLive;
}

/// Begins to read what the properties name, once all of them were set.
void RecordingSource::beginAnew() {
    if (!isComplete_) {
        return;
    }
    halt();
    before_ = {};
    wanted_.reset();
    keepsTrace_ = false;
    SweepFeed::State now;
    now.isRunning = isRunning_ || isHeld_;
    isHeld_ = false;
    show(now);
    finish(hasInput() ? Loading : Null, {});
    if (status_ == Loading) {
        beginTimer_.start();
    }
}

void RecordingSource::begin() {
    if (status_ != Loading || !hasInput() || feed_ != nullptr || live_ != nullptr) {
        return;
    }
    if (program_.isEmpty()) {
        beginFile();
    } else if (isRunning_) {
        beginProgram();
    }
}

void RecordingSource::beginFile() {
    try {
        SweepFeed::Order order;
        order.file = source_.fileName() == kStandardInput ? kStandardInput : fileOf(source_);
        order.position = std::exchange(wanted_, std::nullopt);
        order.clearsTrace = !std::exchange(keepsTrace_, false);
        feed(std::move(order));
    } catch (const InputError& error) {
        finish(Error, QString::fromStdString(error.message()));
    }
}

/// An earlier program may hold a device that this one needs.
void RecordingSource::beginProgram() {
    if (ending_ != nullptr) {
        connect(ending_, &QObject::destroyed, &beginTimer_, QOverload<>::of(&QTimer::start),
                Qt::UniqueConnection);
        return;
    }
    live_ = std::make_unique<LiveProgram>(program_, arguments_, [this] {
        QMetaObject::invokeMethod(this, "conclude", Qt::QueuedConnection);
    });
    SweepFeed::Order order;
    order.file = program_;
    order.input = live_->takeOutput();
    if (order.input.number() >= 0) {
        feed(std::move(order));
    }
}

void RecordingSource::feed(SweepFeed::Order order) {
    order.trace = trace_->shared();
    order.isRunning = isRunning_;
    order.isLooping = isLooping_;
    order.speed = speed_;
    feed_ = std::make_unique<SweepFeed>(std::move(order), [this] {
        QMetaObject::invokeMethod(this, "look", Qt::QueuedConnection);
    });
}

/// Ends what reads, and what is read.
void RecordingSource::halt() {
    beginTimer_.stop();
    tellTimer_.stop();
    settleTimer_.stop();
    if (feed_ != nullptr) {
        feed_->stop();
        const SweepFeed::State last = feed_->takeState();
        before_.sweeps += last.sweeps;
        before_.brokenLines = std::max(before_.brokenLines, last.brokenLines);
        feed_.reset();
    }
    if (live_ != nullptr) {
        ending_ = live_->process();
        live_.reset();
    }
}

void RecordingSource::look() {
    if (!tellTimer_.isActive()) {
        tell();
    }
}

void RecordingSource::tell() {
    if (feed_ == nullptr) {
        return;
    }
    tellTimer_.start();
    SweepFeed::State now = feed_->takeState();
    isHeld_ = isHeld_ || (isRunning_ && !now.isRunning);
    now.sweeps += before_.sweeps;
    now.brokenLines = std::max(now.brokenLines, before_.brokenLines);
    if (std::isnan(now.duration) && !now.isLive) {
        now.duration = told_.duration;  // of an earlier reading
    }
    show(now);
    conclude();
}

/// Reports what has changed.
void RecordingSource::show(SweepFeed::State now) {
    const SweepFeed::State before = std::exchange(told_, now);  // receivers may change it again
    const bool wasRunning = std::exchange(isRunning_, now.isRunning);
    if (wasRunning != now.isRunning) {
        Q_EMIT runningChanged();
    }
    if (before.isLive != now.isLive) {
        Q_EMIT liveChanged();
    }
    if (isOther(before.duration, now.duration)) {
        Q_EMIT durationChanged();
    }
    if (isOther(before.position, now.position)) {
        Q_EMIT positionChanged();
    }
    if (isOther(before.progress, now.progress)) {
        Q_EMIT progressChanged();
    }
    if (before.sweeps != now.sweeps) {
        Q_EMIT sweepsChanged();
    }
    if (before.brokenLines != now.brokenLines) {
        Q_EMIT brokenLinesChanged();
    }
    if (before.note != now.note) {
        Q_EMIT noteChanged();
    }
    if (before.isSeeking != now.isSeeking) {
        Q_EMIT seekingChanged();
    }
}

/// Finishes once all was read, and a program has ended.
void RecordingSource::conclude() {
    const bool isRead = feed_ == nullptr || told_.end != SweepFeed::End::None;
    const bool hasEnded = live_ == nullptr || live_->hasEnded();
    const bool hasFailed = told_.end == SweepFeed::End::Failed;
    if (status_ != Loading || (feed_ == nullptr && live_ == nullptr)) {
        return;
    }
    if (!hasEnded || !isRead) {
        if (live_ != nullptr && (hasEnded || hasFailed) && !settleTimer_.isActive()) {
            settleTimer_.start();
        }
        return;
    }
    const QString problem = live_ == nullptr ? QString() : live_->problem();
    end(problem.isEmpty() ? told_.error : problem);
}

/// Ends the program whose output cannot be read, or the reading of a program that has ended: what that has
/// left behind may keep the pipe open, but nothing more is there.
void RecordingSource::settle() {
    if (feed_ == nullptr || live_ == nullptr) {
        return;
    }
    if (!live_->hasEnded()) {
        end(told_.error);
    } else if (feed_->hasInput()) {
        settleTimer_.start();
    } else {
        feed_->endInput();
    }
}

void RecordingSource::end(const QString& error) {
    halt();
    finish(error.isEmpty() ? Ready : Error, error);
}

void RecordingSource::finish(Status status, const QString& error) {
    if (assign(error_, error)) {
        Q_EMIT errorStringChanged();
    }
    if (assign(status_, status)) {
        Q_EMIT statusChanged();
    }
}

}  // namespace rfu::qml

#include "qml/traces/sweepFeed.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <exception>
#include <utility>
#include <vector>

#include "analysis/recordings/recordingEnd.h"
#include "analysis/recordings/timeStamp.h"
#include "analysis/support/files.h"
#include "analysis/support/inputError.h"

#include <sys/eventfd.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace rfu::qml {

namespace {

double secondsOf(std::int64_t microseconds) {
    return static_cast<double>(microseconds) / static_cast<double>(kMicrosecondsPerSecond);
}

bool isSameAxis(const FrequencyAxis& a, const FrequencyAxis& b) {
    return a.points == b.points &&
           std::equal(a.hops.begin(), a.hops.end(), b.hops.begin(), b.hops.end(),
                      [](const Hop& x, const Hop& y) { return x == y; });
}

/// How many points a recording that has grown had.
std::size_t pointsBefore(const Recording& recording) {
    const auto& former = recording.formerPoints();
    return former.size() - static_cast<std::size_t>(
                               std::count(former.begin(), former.end(), SweepReader::kNewPoint));
}

/// Of a position in seconds.
std::int64_t microsecondsAt(double position) {
    constexpr double kMost = 1e17;  // more than stamps reach
    return std::llround(
        std::clamp(position * static_cast<double>(kMicrosecondsPerSecond), 0.0, kMost));
}

}  // namespace

OwnDescriptor::~OwnDescriptor() {
    if (number_ >= 0) {
        ::close(number_);
    }
}

SweepFeed::SweepFeed(Order order, std::function<void()> onNews)
    : order_(std::move(order)),
      onNews_(std::move(onNews)),
      stop_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      speed_(order_.speed),
      isLooping_(order_.isLooping),
      clearsTrace_(order_.clearsTrace) {
    target_ = microsecondsAt(order_.position.value_or(0.0));
    state_.isRunning = order_.isRunning;
    state_.isSeeking = order_.position.has_value();
    state_.position = order_.position.value_or(0.0);
    thread_ = std::thread([this] { run(); });
}

SweepFeed::~SweepFeed() {
    stop();
}

void SweepFeed::stop() {
    {
        const std::lock_guard lock(mutex_);
        isStopped_ = true;
    }
    changed_.notify_all();
    endInput();
    if (thread_.joinable()) {
        thread_.join();
    }
}

SweepFeed::State SweepFeed::takeState() {
    isTold_ = false;
    const std::lock_guard lock(mutex_);
    return state_;
}

void SweepFeed::setRunning(bool isRunning) {
    {
        const std::lock_guard lock(mutex_);
        state_.isRunning = isRunning;
    }
    changed_.notify_all();
}

void SweepFeed::setSpeed(double speed) {
    {
        const std::lock_guard lock(mutex_);
        speed_ = speed;
    }
    changed_.notify_all();
}

void SweepFeed::setLooping(bool isLooping) {
    const std::lock_guard lock(mutex_);
    isLooping_ = isLooping;
}

bool SweepFeed::hasInput() const {
    int bytes = 0;
    return ::ioctl(order_.input.number(), FIONREAD, &bytes) == 0 && bytes > 0;
}

void SweepFeed::endInput() {
    ::eventfd_write(stop_.number(), 1);
}

bool SweepFeed::isStopped() const {
    const std::lock_guard lock(mutex_);
    return isStopped_;
}

/// Changes the state, and lets the other thread know.
template <typename Change>
void SweepFeed::tell(Change change) {
    {
        const std::lock_guard lock(mutex_);
        change(state_);
    }
    if (!isTold_.exchange(true)) {
        onNews_();
    }
}

void SweepFeed::run() {
    QString error;
    try {
        read();
    } catch (const InputError& problem) {
        error = QString::fromStdString(problem.message());
    } catch (const std::exception& problem) {  // such as a lack of memory
        error = order_.file + QStringLiteral(": ") + QString::fromUtf8(problem.what());
    }
    tell([&error](State& state) {
        state.isSeeking = false;
        state.end = error.isEmpty() ? End::Whole : End::Failed;
        state.error = error;
    });
}

void SweepFeed::read() {
    if (stop_.number() < 0) {
        throw InputError(order_.file, std::strerror(EMFILE));
    }
    const bool isLive = order_.input.number() >= 0 || order_.file == kStandardInput ||
                        (!sizeOfRegular(order_.file) && QFile::exists(order_.file));
    tell([isLive](State& state) {
        state.isLive = isLive;
        if (isLive) {
            state.isSeeking = false;
            state.position = 0.0;
        }
    });
    bool seeks = order_.position && !isLive && findFirst();
    const auto loops = [this, isLive] {
        const std::lock_guard lock(mutex_);
        return isLooping_ && !isLive && !isStopped_;
    };
    do {
        readOnce(seeks);
        seeks = false;
    } while (loops());
}

/// Reads the first sweep, from which the position counts. Without times the sweeps up to the target are counted.
/// @return false where reading is stopped
bool SweepFeed::findFirst() {
    {
        const std::lock_guard lock(order_.trace->mutex);
        depth_ = order_.trace->history.depth();
    }
    Recording recording(source({}));
    Sweep sweep;
    std::size_t before = 0;
    while (recording.next(sweep)) {
        takePlace(sweep);
        if (time_ || place_ > target_) {
            break;
        }
        ++before;
    }
    skipped_ = before - std::min(before, depth_);
    return !isStopped();
}

rfu::RecordingSource SweepFeed::source(const WindowOptions& window) {
    rfu::RecordingSource source;
    source.files = QStringList(order_.file);
    source.isLive = state_.isLive;  // no other thread changes it
    source.window = window;
    source.waiting.stop = stop_.number();
    source.waiting.input = order_.input.number();
    source.waiting.before = [this] { countBrokenLines(); };
    source.onNote = [this](const InputError& note) {
        tell([&note](State& state) { state.note = QString::fromStdString(note.message()); });
    };
    source.onRead = [this](std::int64_t read, std::int64_t all) {
        if (all > 0 && recording_ != nullptr) {
            const double share = static_cast<double>(read) / static_cast<double>(all);
            tell([share](State& state) { state.progress = std::min(share, 1.0); });
        }
    };
    return source;
}

/// Of the sweeps up to the target, and all behind it. Without times all are read.
WindowOptions SweepFeed::windowToSeek() const {
    WindowOptions window;
    if (time_) {
        window.to = {WindowTime::Origin::FixedDay, *time_ + target_};
        window.last = static_cast<long long>(depth_);
        window.goesOn = true;
    }
    return window;
}

/// Reads the recording once.
/// @param seeks whether to the position of the order, from the first sweep, which is known then
void SweepFeed::readOnce(bool seeks) {
    if (!seeks) {
        time_.reset();
    }
    Recording recording(source(seeks ? windowToSeek() : WindowOptions()));
    const struct Reset {
        ~Reset() {
            feed->countBrokenLines();
            feed->recording_ = nullptr;
        }
        SweepFeed* feed;
    } reset{this};
    recording_ = &recording;
    isFilling_ = seeks;
    number_ = 0;
    filled_ = 0;
    lastPlace_.reset();
    pace_.reset();
    feed(recording);
}

void SweepFeed::feed(Recording& recording) {
    bool isFirst = true;
    for (Sweep sweep; recording.next(sweep);) {
        takePlace(sweep);
        if (!isFilling_ || !fill(sweep, isFirst)) {
            if (!awaitTurn()) {
                return;
            }
            give(sweep, isFirst);
            order_.trace->noteChange();
        }
        if (std::exchange(isFirst, false)) {
            findDuration();
        }
    }
    if (isStopped()) {
        return;
    }
    if (isFilling_) {
        endFilling();
    }
    tell([this](State& state) { state.duration = secondsOf(lastPlace_.value_or(0)); });
}

/// Finds where a sweep lies in the recording.
void SweepFeed::takePlace(const Sweep& sweep) {
    if (sweep.time.empty()) {
        place_ = number_++ * kMicrosecondsPerSecond;
        return;
    }
    const std::int64_t time = microsecondsOf(sweep.time);
    time_ = time_.value_or(time);
    place_ = time - *time_;
}

/// Gives the trace a sweep up to the target.
/// @return false for the first one behind
bool SweepFeed::fill(const Sweep& sweep, bool isFirst) {
    if (place_ > target_) {
        endFilling();
        return false;
    }
    if (skipped_ > 0) {
        --skipped_;
        return true;
    }
    give(sweep, isFirst);
    if (++filled_ == depth_) {
        endFilling();
    }
    return true;
}

/// At a speed without a pace reading would go on to the end at once: it waits.
void SweepFeed::endFilling() {
    isFilling_ = false;
    order_.trace->noteChange();
    tell([this](State& state) {
        state.isSeeking = false;
        state.position = secondsOf(lastPlace_.value_or(0));
        state.isRunning = state.isRunning && speed_ > 0.0;
    });
}

/// Waits until the sweep at hand may be shown.
/// @return false where reading is stopped
bool SweepFeed::awaitTurn() {
    std::unique_lock lock(mutex_);
    while (!isStopped_) {
        if (!state_.isRunning) {
            pace_.reset();
            changed_.wait(lock);
            continue;
        }
        const double wait = state_.isLive || speed_ <= 0.0 ? 0.0 : secondsToWait();
        if (!(wait > 0.0)) {
            return true;
        }
        constexpr double kLongest = 3600.0;  // s, which clocks can count
        changed_.wait_for(lock, std::chrono::duration<double>(std::min(wait, kLongest)));
    }
    return false;
}

/// For the sweep at hand, at the speed.
double SweepFeed::secondsToWait() {
    const Clock::time_point now = Clock::now();
    if (!pace_ || pace_->speed != speed_) {
        pace_ = {now, lastPlace_.value_or(place_), speed_};
    }
    const std::chrono::duration<double> since = now - pace_->begin;
    return secondsOf(place_ - pace_->place) / speed_ - since.count();
}

/// @param isFirst of a reading
void SweepFeed::give(const Sweep& sweep, bool isFirst) {
    {
        const std::lock_guard lock(order_.trace->mutex);
        TraceHistory& history = order_.trace->history;
        followAxis(history, isFirst);
        history.add(sweep.levels,
                    sweep.time.empty() ? TraceHistory::kNoTime : microsecondsOf(sweep.time));
    }
    lastPlace_ = place_;
    const double position = secondsOf(place_);
    tell([this, position](State& state) {
        ++state.sweeps;
        if (!isFilling_) {
            state.position = position;
        }
        if (position > state.duration) {  // the file has grown
            state.duration = position;
        }
    });
}

/// Gives the trace the axis of the recording, if it has another.
void SweepFeed::followAxis(TraceHistory& history, bool isFirst) {
    const FrequencyAxis& axis = recording_->axis();
    const FrequencyAxis& held = history.axis();
    if (recording_->hasGrown() && held.points.size() == pointsBefore(*recording_)) {
        history.grow(axis, recording_->formerPoints());
    } else if (std::exchange(clearsTrace_, false) || held.points.size() != axis.points.size() ||
               (isFirst && !isSameAxis(held, axis))) {
        history.setAxis(axis);
    }
}

/// Looks at the end of a file that is not compressed.
void SweepFeed::findDuration() {
    const std::vector<Hop> hops = recording_->hopsInOrder();
    if (state_.isLive || hops.empty()) {
        return;
    }
    Waiting waiting;
    waiting.stop = stop_.number();
    if (const auto end = timeOfLastSweep(order_.file, hops.front(), waiting)) {
        tell([this, end](State& state) {
            state.duration = std::max(secondsOf(*end - *time_), state.position);
        });
    }
}

void SweepFeed::countBrokenLines() {
    const long long lines = recording_ == nullptr ? 0 : recording_->brokenLines();
    if (lines > brokenLines_) {
        brokenLines_ = lines;
        tell([lines](State& state) { state.brokenLines = lines; });
    }
}

}  // namespace rfu::qml

#pragma once

#include <QString>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "analysis/recordings/recording.h"
#include "qml/traces/SharedTrace.h"

namespace rfu::qml {

/// A descriptor that is closed with the object; negative for none.
class OwnDescriptor {
public:
    explicit OwnDescriptor(int number = -1) : number_(number) {}
    OwnDescriptor(OwnDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    OwnDescriptor& operator=(OwnDescriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~OwnDescriptor();

    int number() const { return number_; }

private:
    int number_;
};

/// Reads a recording on a thread of its own and gives its sweeps to a trace. With the object the thread
/// ends, without waiting for input.
class SweepFeed {
public:
    struct Order {
        QString file;         // kStandardInput for that
        OwnDescriptor input;  // to read from, where the file only names it
        std::shared_ptr<SharedTrace> trace;
        /// Seconds from the first sweep to the one to begin at: the trace gets those up to there at
        /// once, as many as it keeps. Not of a live source.
        std::optional<double> position = {};
        bool clearsTrace = true;  // before the first sweep; else only one of other points
        bool isRunning = true;    // else sweeps wait
        double speed = 0.0;  // of the recorded pace at which a file is read; 0 for all that can be
        bool isLooping = false;  // whether a file begins again at its end
    };

    enum class End { None, Whole, Failed };

    /// How far the reading is.
    struct State {
        bool isLive = false;  // what is read is no regular file
        bool isRunning = true;
        bool isSeeking = false;  // the order's position has not been reached
        double position = 0.0;   // of the newest sweep, in seconds from the first one
        double duration = std::numeric_limits<double>::quiet_NaN();  // position of the last one
        double progress = std::numeric_limits<double>::quiet_NaN();  // share of the bytes, 0 to 1
        long long sweeps = 0;                                        // given to the trace
        long long brokenLines = 0;
        QString note;  // what was left out last
        End end = End::None;
        QString error;  // where it has failed
    };

    /// @param onNews called on the thread when there is another state than that taken last
    SweepFeed(Order order, std::function<void()> onNews);
    ~SweepFeed();
    SweepFeed(const SweepFeed&) = delete;
    SweepFeed& operator=(const SweepFeed&) = delete;

    /// From now on onNews is called again.
    State takeState();
    /// Whether there is another state than that taken last.
    bool hasNews() const { return isTold_; }

    /// Ends the thread.
    void stop();

    void setRunning(bool isRunning);
    void setSpeed(double speed);
    void setLooping(bool isLooping);

    /// Whether input is there that has not been read.
    bool hasInput() const;
    /// Ends reading once it would have to wait for input.
    void endInput();

private:
    using Clock = std::chrono::steady_clock;

    /// From when on sweeps come at which pace.
    struct Pace {
        Clock::time_point begin;
        std::int64_t place;  // of the sweep shown then
        double speed;
    };

    void run();
    void read();
    bool findFirst();
    rfu::RecordingSource source(const WindowOptions& window);
    WindowOptions windowToSeek() const;
    void readOnce(bool seeks);
    void feed(Recording& recording);
    void takePlace(const Sweep& sweep);
    bool fill(const Sweep& sweep, bool isFirst);
    void endFilling();
    bool awaitTurn();
    double secondsToWait();
    void give(const Sweep& sweep, bool isFirst);
    void followAxis(TraceHistory& history, bool isFirst);
    void findDuration();
    void countBrokenLines();
    bool isStopped() const;
    template <typename Change>
    void tell(Change change);

    const Order order_;
    const std::function<void()> onNews_;
    OwnDescriptor stop_;  // readable when waiting for input ends

    mutable std::mutex mutex_;
    std::condition_variable changed_;  // of what waits for its turn
    bool isStopped_ = false;
    double speed_;
    bool isLooping_;
    State state_;
    std::atomic<bool> isTold_ = false;

    // Of the thread. Places are microseconds from the first sweep.
    const Recording* recording_ = nullptr;  // that is read
    std::int64_t target_ = 0;               // the order's position
    bool clearsTrace_;
    bool isFilling_ = false;                 // up to the target
    std::size_t depth_ = 0;                  // of the trace that is filled
    std::size_t skipped_ = 0;                // sweeps without times before those that fill it
    std::size_t filled_ = 0;                 // of it
    std::optional<std::int64_t> time_;       // of the first sweep; nothing where there are no times
    long long number_ = 0;                   // of the next sweep without a time
    std::int64_t place_ = 0;                 // of the sweep at hand
    std::optional<std::int64_t> lastPlace_;  // of the one before
    std::optional<Pace> pace_;
    long long brokenLines_ = 0;

    std::thread thread_;  // at last: it uses all the others
};

}  // namespace rfu::qml

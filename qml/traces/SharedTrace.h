#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <mutex>
#include <utility>

#include "analysis/statistics/traceHistory.h"

namespace rfu::qml {

/// A history with the lock that its writers (any thread) and its readers (that of the TraceModel) take,
/// each for a short time. Whoever writes on another thread holds the shared trace, not the model, which
/// may end before.
struct SharedTrace {
    /// @param depth how many traces are kept, at least 1
    explicit SharedTrace(std::size_t depth) : history(depth) {}

    std::mutex mutex;      ///< to be held while the history is used
    TraceHistory history;  ///< the traces

    /// Tells the model, if there still is one, that the history has changed. Called on any thread, without
    /// the lock; until the model has looked, further calls cost nothing.
    void noteChange() {
        if (!isNoted_.exchange(true)) {
            const std::lock_guard lock(listenerMutex_);
            if (listener_) {
                listener_();
            }
        }
    }
    /// From now on noteChange() calls the listener again. Called before looking.
    void expectChange() { isNoted_ = false; }
    /// @param listener called on the thread that changes the history; none from now on if empty
    void setListener(std::function<void()> listener) {
        const std::lock_guard lock(listenerMutex_);
        listener_ = std::move(listener);
    }

private:
    std::atomic<bool> isNoted_ = false;
    std::mutex listenerMutex_;
    std::function<void()> listener_;
};

}  // namespace rfu::qml

#pragma once

#include <QFutureWatcher>
#include <QString>
#include <QtConcurrent>

#include <atomic>
#include <exception>
#include <functional>
#include <memory>

namespace rfu::qml {

/// Reads files for an object on another thread, one order at a time. A new order replaces the one
/// under way, and with this object it ends: its result is dropped, and it is told to stop.
template <typename Result>
class BackgroundRead {
public:
    /// What an order does on the other thread; its exceptions become texts.
    using Read = std::function<Result(const std::atomic<bool>& isCancelled)>;
    /// Gets the result, or no result and why, on the thread of this object.
    using Done = std::function<void(std::shared_ptr<const Result> result, const QString& error)>;

    explicit BackgroundRead(Done done) : done_(std::move(done)) {
        QObject::connect(&watcher_, &QFutureWatcherBase::finished, [this] {
            if (!watcher_.isCanceled()) {
                const Outcome outcome = watcher_.result();
                done_(outcome.result, outcome.error);
            }
        });
    }
    ~BackgroundRead() { *isCancelled_ = true; }
    BackgroundRead(const BackgroundRead&) = delete;
    BackgroundRead& operator=(const BackgroundRead&) = delete;

    void start(Read read) {
        *isCancelled_ = true;
        isCancelled_ = std::make_shared<std::atomic<bool>>(false);
        watcher_.setFuture(QtConcurrent::run([read = std::move(read), isCancelled = isCancelled_] {
            try {
                return Outcome{std::make_shared<const Result>(read(*isCancelled)), {}};
            } catch (const std::exception& error) {
                return Outcome{nullptr, QString::fromUtf8(error.what())};
            }
        }));
    }

    void cancel() {
        *isCancelled_ = true;
        watcher_.setFuture({});
    }

private:
    struct Outcome {
        std::shared_ptr<const Result> result;
        QString error;
    };

    Done done_;
    QFutureWatcher<Outcome> watcher_;
    std::shared_ptr<std::atomic<bool>> isCancelled_ = std::make_shared<std::atomic<bool>>(false);
};

}  // namespace rfu::qml

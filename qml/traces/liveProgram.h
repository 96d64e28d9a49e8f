#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <functional>

#include "qml/traces/sweepFeed.h"

namespace rfu::qml {

/// A program whose standard output is read, started without a shell. Its standard input is empty, and its
/// messages stay off the console. With the object the program ends: it is asked to, and killed two seconds
/// later.
class LiveProgram {
public:
    /// @param onEnd called once, on the thread of this object, when the program has ended or cannot be started
    LiveProgram(const QString& program, const QStringList& arguments, std::function<void()> onEnd);
    ~LiveProgram();
    LiveProgram(const LiveProgram&) = delete;
    LiveProgram& operator=(const LiveProgram&) = delete;

    /// The end from which its standard output is read, to be taken once; negative where there is none.
    OwnDescriptor takeOutput() { return std::move(output_); }

    bool hasEnded() const { return hasEnded_; }
    /// Why it failed, with the last line of its messages; empty where it did not.
    QString problem() const { return problem_; }

    /// What remains after this object until the program has ended.
    QPointer<QObject> process() const { return process_; }

private:
    void start();
    void readMessages();
    void fail(const QString& why);
    void finish();

    QString program_;
    QProcess* process_;  // without a parent, as it may outlive this object
    std::function<void()> onEnd_;
    OwnDescriptor output_;
    QByteArray messages_;  // the last of them
    bool hasEnded_ = false;
    QString problem_;
};

}  // namespace rfu::qml

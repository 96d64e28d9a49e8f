#include "qml/traces/liveProgram.h"

#include <QCoreApplication>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace rfu::qml {

namespace {

constexpr int kMillisecondsToEnd = 2000;
constexpr int kMostMessages = 4096;  // bytes
constexpr int kLongestMessage = 200;

/// The last line that is not blank, for a message.
QString lastLineOf(QByteArray messages) {
    messages.replace('\r', '\n');  // progress is written so
    const QList<QByteArray> lines = messages.split('\n');
    const auto last = std::find_if(lines.rbegin(), lines.rend(), [](const QByteArray& line) {
        return !line.trimmed().isEmpty();
    });
    return last == lines.rend() ? QString()
                                : QString::fromLocal8Bit(*last).simplified().left(kLongestMessage);
}

void waitForEnd(QProcess& process) {
    if (!process.waitForFinished(kMillisecondsToEnd)) {
        process.kill();
        process.waitForFinished();
    }
}

/// Looks after a program that has been asked to end.
void sendAway(QProcess* process) {
    if (QThread::currentThread()->loopLevel() == 0) {  // nothing would look after it
        waitForEnd(*process);
        delete process;
        return;
    }
    QObject::connect(process, &QProcess::stateChanged, process,
                     [process](QProcess::ProcessState state) {
                         if (state == QProcess::NotRunning) {
                             process->deleteLater();
                         }
                     });
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, process,
                     [process] { waitForEnd(*process); });
    QTimer::singleShot(kMillisecondsToEnd, process, SLOT(kill()));
}

}  // namespace

LiveProgram::LiveProgram(const QString& program, const QStringList& arguments,
                         std::function<void()> onEnd)
    : program_(program), process_(new QProcess), onEnd_(std::move(onEnd)) {
    process_->setProgram(program);
    process_->setArguments(arguments);
    process_->setStandardInputFile(QProcess::nullDevice());
    QObject::connect(process_, &QProcess::readyReadStandardError, process_,
                     [this] { readMessages(); });
    QObject::connect(process_, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished),
                     process_, [this] { finish(); });
    QObject::connect(process_, &QProcess::errorOccurred, process_,
                     [this](QProcess::ProcessError error) {
                         if (error == QProcess::FailedToStart) {
                             fail(QStringLiteral("cannot be started: ") + process_->errorString());
                         }
                     });
    start();
}

LiveProgram::~LiveProgram() {
    process_->disconnect();
    if (process_->state() == QProcess::NotRunning) {
        delete process_;
        return;
    }
    process_->terminate();
    sendAway(process_);
}

/// The program gets the writing end of a pipe, which is closed here then: its end is the end of input.
void LiveProgram::start() {
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        fail(QStringLiteral("cannot be started: ") + qt_error_string(errno));
        return;
    }
    output_ = OwnDescriptor(ends[0]);
    const OwnDescriptor writing(ends[1]);
    process_->setStandardOutputFile(QStringLiteral("/dev/fd/%1").arg(writing.number()));
    process_->start();
}

void LiveProgram::readMessages() {
    messages_ = (messages_ + process_->readAllStandardError()).right(kMostMessages);
}

void LiveProgram::fail(const QString& why) {
    problem_ = program_ + QStringLiteral(": ") + why;
    hasEnded_ = true;
    onEnd_();
}

void LiveProgram::finish() {
    readMessages();
    const QString message = lastLineOf(messages_);
    const QString details = message.isEmpty() ? QString() : QStringLiteral(": ") + message;
    const QString number = QString::number(process_->exitCode());
    if (process_->exitStatus() == QProcess::CrashExit) {
        fail(QStringLiteral("was ended by signal ") + number + details);
    } else if (process_->exitCode() != 0) {
        fail(QStringLiteral("ended with code ") + number + details);
    } else {
        hasEnded_ = true;
        onEnd_();
    }
}

}  // namespace rfu::qml

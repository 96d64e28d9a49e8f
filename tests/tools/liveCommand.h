// Runs the real rfutils on a source that goes on for ever.
#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <chrono>
#include <csignal>
#include <string>
#include <thread>

#include "runCommand.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

/// A FIFO that the test holds open at both ends.
struct Fifo {
    explicit Fifo(const QString& path) : name(path) {
        const QByteArray native = QFile::encodeName(path);
        EXPECT_EQ(::mkfifo(native.constData(), 0600), 0);
        descriptor = ::open(native.constData(), O_RDWR | O_CLOEXEC);
        EXPECT_GE(descriptor, 0);
    }
    ~Fifo() { ::close(descriptor); }

    int held() const {
        int bytes = 0;
        EXPECT_EQ(::ioctl(descriptor, FIONREAD, &bytes), 0);
        return bytes;
    }

    QString name;
    int descriptor;
};

/// The command, whose standard input is that source.
class LiveCommand {
public:
    /// Returns once the command has read the lines.
    /// @param output a file in place of result()
    LiveCommand(const QStringList& arguments, const std::string& lines,
                const QString& output = {}) {
        process.setWorkingDirectory(folder.path());
        process.setStandardInputFile(input_.name);
        if (!output.isEmpty()) {
            process.setStandardOutputFile(output);
        }
        process.start(QStringLiteral(RFUTILS_COMMAND), arguments);
        EXPECT_TRUE(process.waitForStarted());
        EXPECT_EQ(::write(input_.descriptor, lines.data(), lines.size()),
                  static_cast<ssize_t>(lines.size()));
        for (int patience = 0; input_.held() > 0 && patience < 3000; ++patience) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        EXPECT_EQ(input_.held(), 0) << "the command does not read";
    }

    void send(int signal) { ::kill(static_cast<pid_t>(process.processId()), signal); }

    CommandResult result() {
        EXPECT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return {process.exitCode(), process.readAllStandardOutput().toStdString(),
                process.readAllStandardError().toStdString()};
    }

    SampleFolder folder;
    QProcess process;

private:
    Fifo input_{folder.path() + QStringLiteral("/input")};
};

/// A signal that interrupts, and the status of the command then.
struct SignalStatus {
    int signal;
    int exitStatus;
};
inline constexpr SignalStatus kSignalStatus[] = {{SIGINT, 130}, {SIGTERM, 143}};

// Private to the library: not installed, may change in any release.
#pragma once

#include <QByteArray>
#include <QChar>
#include <QFile>
#include <QFileInfo>
#include <QString>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace rfu::detail {

/// A file descriptor that is closed with the object.
class Descriptor {
public:
    Descriptor() = default;
    ~Descriptor() {
        if (number_ >= 0) {
            ::close(number_);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    /// Opens a file for reading and gives 0, or the system's error. Waits for nobody, also where a
    /// FIFO stands under the name by now, and takes no terminal as the process's own.
    int open(const QByteArray& name) {
        do {
            number_ = ::open(name.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
        } while (number_ < 0 && errno == EINTR);
        return number_ < 0 ? errno : 0;
    }

    bool isRegularFile() const {
        struct stat status;
        return fstat(number_, &status) == 0 && S_ISREG(status.st_mode);
    }

    int number() const { return number_; }

private:
    int number_ = -1;
};

/// Opens a file read-only, as bytes, where it is a regular one or a Qt resource. Anything else is
/// refused: a folder holds nothing to load, a FIFO or device could keep the caller waiting for
/// ever. What has been opened is looked at, not only its name, which may lead elsewhere meanwhile.
class RegularFile {
public:
    explicit RegularFile(const QString& name) : file_(name) {}

    /// False, with the reason in refusal(), where the file does not open.
    bool open() {
        // No file has such a name, and Qt would write a warning about it.
        if (file_.fileName().isEmpty() || file_.fileName().contains(QChar::Null)) {
            return refuse(QStringLiteral("not a file name"));
        }
        const QFileInfo info(file_);
        // Merely opening a device may do something to it.
        if (info.exists() && !info.isFile()) {
            return refuse(notRegular());
        }
        return info.isNativePath() ? openNative(info.filePath()) : openResource();
    }

    /// Everything in the open file. False, with the reason in refusal(), where reading fails.
    bool readAll(QByteArray& bytes) {
        bytes = file_.readAll();
        // An error behind bytes that came looks like the end of the file; the next read tells.
        char next{};
        file_.read(&next, sizeof next);
        return file_.error() == QFileDevice::NoError || refuse(file_.errorString());
    }

    /// Why the file was refused, in words for the operator.
    const QString& refusal() const { return refusal_; }

    QFile& device() { return file_; }

private:
    static QString notRegular() { return QStringLiteral("not a regular file"); }

    bool refuse(const QString& reason) {
        refusal_ = reason;
        return false;
    }

    bool openNative(const QString& path) {
        if (const int error = descriptor_.open(QFile::encodeName(path))) {
            return refuse(qt_error_string(error));
        }
        if (!descriptor_.isRegularFile()) {
            return refuse(notRegular());
        }
        return file_.open(descriptor_.number(), QIODevice::ReadOnly) || refuse(file_.errorString());
    }

    bool openResource() { return file_.open(QIODevice::ReadOnly) || refuse(file_.errorString()); }

    Descriptor descriptor_;  // closed after the file that reads from it
    QFile file_;
    QString refusal_;
};

}  // namespace rfu::detail

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

    /// Opens a file for reading without blocking, even if the name is a FIFO by now, and without
    /// making a terminal the controlling one.
    /// @return 0, or the system's error
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

/// Opens a regular file or Qt resource read-only, as bytes. Anything else is refused: a folder
/// holds nothing to load, and a FIFO or device could block the caller for ever. The type is checked
/// again on the open descriptor, since the name may refer to another file meanwhile.
class RegularFile {
public:
    explicit RegularFile(const QString& name) : file_(name) {}

    /// @return false, with the reason in refusal(), if the file does not open
    bool open() {
        // Qt would log a warning about such a name.
        if (file_.fileName().isEmpty() || file_.fileName().contains(QChar::Null)) {
            return refuse(QStringLiteral("not a file name"));
        }
        const QFileInfo info(file_);
        // Opening a device may have side effects.
        if (info.exists() && !info.isFile()) {
            return refuse(notRegular());
        }
        return info.isNativePath() ? openNative(info.filePath()) : openResource();
    }

    /// Reads the whole open file.
    /// @return false, with the reason in refusal(), if reading fails
    bool readAll(QByteArray& bytes) {
        bytes = file_.readAll();
        // readAll() takes an error behind some bytes for the end of the file; the next read reports
        // it.
        char next{};
        file_.read(&next, sizeof next);
        return file_.error() == QFileDevice::NoError || refuse(file_.errorString());
    }

    /// Why the file was refused, for the operator.
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

    Descriptor descriptor_;  // outlives the file that reads from it
    QFile file_;
    QString refusal_;
};

}  // namespace rfu::detail

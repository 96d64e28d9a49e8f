#include "analysis/support/files.h"

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstddef>

#include "analysis/support/inputError.h"
#include "analysis/support/lineReader.h"
#include "analysis/support/plainText.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

namespace rfu {

namespace {

void refuseUnlessRegular(const QString& name, const struct stat& status) {
    if (!S_ISREG(status.st_mode)) {
        throw InputError(name,
                         S_ISDIR(status.st_mode) ? "Is a directory" : "is not a regular file");
    }
}

/// Files of these systems claim to be regular, with a size that is not theirs, and change without a
/// new time: what has been checked need not be what is read next.
void refuseIfMadeUp(const QString& name, int descriptor) {
    struct statfs system {};
    if (::fstatfs(descriptor, &system) == 0 &&
        (system.f_type == PROC_SUPER_MAGIC || system.f_type == SYSFS_MAGIC)) {
        throw InputError(name, "is made up by the system as it is read; copy it first");
    }
}

}  // namespace

std::string shortNameOf(const QString& file) {
    return file == kStandardInput ? "standard input" : QFileInfo(file).fileName().toStdString();
}

int openForReading(const QString& name, int flags) {
    const QByteArray native = QFile::encodeName(name);
    int descriptor = -1;
    do {
        descriptor = ::open(native.constData(), O_RDONLY | O_CLOEXEC | flags);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

std::optional<std::int64_t> sizeOfRegular(const QString& name) {
    struct stat status {};
    return ::stat(QFile::encodeName(name).constData(), &status) == 0 && S_ISREG(status.st_mode)
               ? std::optional<std::int64_t>(status.st_size)
               : std::nullopt;
}

void openRegular(QFile& file, const QString& name) {
    if (name.startsWith(QLatin1String(":/"))) {
        file.setFileName(name);
        if (!file.open(QIODevice::ReadOnly)) {
            throw InputError(name, file.errorString().toStdString());
        }
        return;
    }
    struct stat status {};
    // Opening a device may have side effects.
    if (::stat(QFile::encodeName(name).constData(), &status) == 0) {
        refuseUnlessRegular(name, status);
    }
    // Does not block, even if the name is a FIFO by now, and makes no terminal the controlling one.
    const int descriptor = openForReading(name, O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0 ||
        !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle) ||
        ::fstat(descriptor, &status) != 0) {
        throw InputError(name, qt_error_string(errno).toStdString());
    }
    // Again, on the open descriptor: the name may refer to another file meanwhile.
    refuseUnlessRegular(name, status);
    refuseIfMadeUp(name, descriptor);
}

void requireReadable(const QString& name) {
    QFile file;
    openRegular(file, name);
}

QByteArray readWhole(const QString& name) {
    QFile file;
    openRegular(file, name);
    QByteArray bytes = file.readAll();
    // readAll() takes an error behind some bytes for the end of the file; the next read reports it.
    char next = 0;
    file.read(&next, sizeof next);
    if (file.error() != QFileDevice::NoError) {
        throw InputError(name, file.errorString().toStdString());
    }
    return bytes;
}

bool beginsWithUtf8Mark(const QString& name) {
    QFile file;
    openRegular(file, name);
    return viewOf(file.peek(static_cast<qint64>(kUtf8Mark.size()))) == kUtf8Mark;
}

std::string_view viewOf(const QByteArray& bytes) {
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

}  // namespace rfu

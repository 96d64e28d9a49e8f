#include "analysis/support/fileWatch.h"

#include <QFile>

#include "analysis/support/inputError.h"

#include <fcntl.h>
#include <unistd.h>

namespace rfu {

namespace {

/// All zero where there is no file.
struct stat stateOf(const QString& name) {
    struct stat state {};
    if (::stat(QFile::encodeName(name).constData(), &state) != 0) {
        state = {};
    }
    return state;
}

bool isSame(const timespec& a, const timespec& b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

bool isSame(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
           isSame(a.st_mtim, b.st_mtim) && isSame(a.st_ctim, b.st_ctim);
}

}  // namespace

FileWatch::FileWatch(const QStringList& names) {
    for (const QString& name : names) {
        // O_PATH does not open the file itself, so that it neither blocks nor has side effects.
        const int descriptor = ::open(QFile::encodeName(name).constData(), O_PATH | O_CLOEXEC);
        watched_.push_back({name, descriptor, stateOf(name)});
    }
}

FileWatch::~FileWatch() {
    for (const Watched& file : watched_) {
        if (file.descriptor >= 0) {
            ::close(file.descriptor);
        }
    }
}

void FileWatch::requireUnchanged() const {
    for (const Watched& file : watched_) {
        if (!isSame(file.state, stateOf(file.name))) {
            throw InputError(file.name, "changed while it was read");
        }
    }
}

}  // namespace rfu

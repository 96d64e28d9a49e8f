#include "detail/openRegularFile.h"

#include <QChar>
#include <QFile>
#include <QFileInfo>
#include <QString>

#include <sys/stat.h>

namespace rfu::detail {

namespace {

/// Whether the file that has been opened is the regular one that was asked for.
bool isRegular(const QFile& file) {
    constexpr int kResource = -1;  // resources have no descriptor
    const int descriptor = file.handle();
    struct stat status;
    return descriptor == kResource || (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode));
}

}  // namespace

bool openRegularFile(QFile& file) {
    // No file has a name with a NUL in it, and Qt would write a warning about it.
    const bool canExist = !file.fileName().contains(QChar::Null);
    if (!canExist || !QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) {
        return false;
    }
    if (!isRegular(file)) {
        file.close();
        return false;
    }
    return true;
}

}  // namespace rfu::detail

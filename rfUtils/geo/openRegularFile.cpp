#include "detail/openRegularFile.h"

#include <QFile>
#include <QFileInfo>

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
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) {
        return false;
    }
    if (!isRegular(file)) {
        file.close();
        return false;
    }
    return true;
}

}  // namespace rfu::detail

#include "support/files.h"

#include <QFile>
#include <QFileInfo>

#include "support/errors.h"

void requireReadable(const QString& name) {
    const QFileInfo info(name);
    if (info.exists() && !info.isFile()) {
        throw fileError(name, info.isDir() ? "Is a directory" : "is not a regular file");
    }
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        throw fileError(name, file.errorString().toStdString());
    }
}

#include "support/jsonFile.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include "support/errors.h"

namespace {

QByteArray readWhole(const QString& name) {
    const QFileInfo info(name);
    // Opening a FIFO would wait for its writer.
    if (info.exists() && !info.isFile()) {
        throw fileError(name, info.isDir() ? "Is a directory" : "is not a regular file");
    }
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        throw fileError(name, file.errorString().toStdString());
    }
    return file.readAll();
}

}  // namespace

QJsonObject readJsonObject(const QString& file) {
    const QByteArray bytes = readWhole(file);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        const int line = 1 + bytes.left(error.offset).count('\n');
        throw lineError(file, line, error.errorString().toStdString());
    }
    if (!document.isObject()) {
        throw fileError(file, "the top level is not an object");
    }
    return document.object();
}

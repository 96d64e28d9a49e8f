#include "support/jsonFile.h"

#include <QByteArray>
#include <QFile>
#include <QJsonDocument>

#include "support/errors.h"
#include "support/files.h"

namespace {

QByteArray readWhole(const QString& name) {
    requireReadable(name);
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
        if (bytes.trimmed().isEmpty()) {
            throw fileError(file, "is empty (" + error.errorString().toStdString() + ")");
        }
        const int line = 1 + bytes.left(error.offset).count('\n');
        throw lineError(file, line, error.errorString().toStdString());
    }
    if (!document.isObject()) {
        throw fileError(file, "the top level is not an object");
    }
    return document.object();
}

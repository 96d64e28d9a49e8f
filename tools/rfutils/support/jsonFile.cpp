#include "support/jsonFile.h"

#include <QByteArray>
#include <QJsonDocument>

#include "support/errors.h"
#include "support/files.h"

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

#include "support/jsonFile.h"

#include <QByteArray>
#include <QJsonDocument>

#include "analysis/support/files.h"
#include "analysis/support/inputError.h"

namespace rfu::command {

QJsonObject readJsonObject(const QString& file) {
    const QByteArray bytes = readWhole(file);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        if (bytes.trimmed().isEmpty()) {
            throw InputError(file, "is empty (" + error.errorString().toStdString() + ")");
        }
        const int line = 1 + bytes.left(error.offset).count('\n');
        throw InputError(file, line, error.errorString().toStdString());
    }
    if (!document.isObject()) {
        throw InputError(file, "the top level is not an object");
    }
    return document.object();
}

}  // namespace rfu::command

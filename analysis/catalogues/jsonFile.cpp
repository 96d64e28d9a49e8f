#include "analysis/catalogues/jsonFile.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>

#include "analysis/support/fileWatch.h"
#include "analysis/support/files.h"
#include "analysis/support/inputError.h"

namespace rfu {

QJsonObject readJsonObject(const QString& file) {
    const QByteArray bytes = readWhole(file);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        if (bytes.trimmed().isEmpty()) {
            throw InputError(file, "is empty (" + error.errorString().toStdString() + ")");
        }
        const auto line = 1 + static_cast<int>(bytes.left(error.offset).count('\n'));
        throw InputError(file, line, error.errorString().toStdString());
    }
    if (!document.isObject()) {
        throw InputError(file, "the top level is not an object");
    }
    return document.object();
}

QJsonObject loadJsonObject(const QString& file, const std::function<bool()>& load) {
    const FileWatch watch({file});  // the library opens the name itself
    QJsonObject object = readJsonObject(file);
    const bool isLoaded = load();
    watch.requireUnchanged();
    if (!isLoaded) {
        throw InputError(file, "cannot be read");
    }
    return object;
}

void requireNothing(const QJsonObject& object, const QString& file, const char* problem) {
    const bool holdsOthers = std::any_of(object.begin(), object.end(), [](const QJsonValue& value) {
        return !value.isArray() || !value.toArray().isEmpty();
    });
    if (holdsOthers) {
        throw InputError(file, problem);
    }
}

}  // namespace rfu

#include <rfUtils/platform/VemoJsonDocument.h>

#include <QByteArray>
#include <QChar>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonParseError>

namespace {

/// The file's bytes; on failure nothing, and the reason in `error`.
QByteArray bytesOf(const QString& path, QString& error) {
    // Qt would write a warning about such a name.
    if (path.isEmpty() || path.contains(QChar::Null)) {
        error = QStringLiteral("not a file name");
        return {};
    }
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) {
        error = QStringLiteral("not a regular file");
        return {};
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = file.errorString();
        return {};
    }
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        error = file.errorString();
        return {};
    }
    return bytes;
}

}  // namespace

bool VemoJsonDocument::readFile(const QString& path) {
    object_ = {};
    error_.clear();
    const QByteArray bytes = bytesOf(path, error_);
    if (hasError()) {
        return false;
    }
    QJsonParseError parsed;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &parsed);
    if (parsed.error != QJsonParseError::NoError) {
        error_ = parsed.errorString();
        return false;
    }
    object_ = document.object();
    return true;
}

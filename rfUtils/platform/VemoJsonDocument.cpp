#include <rfUtils/platform/VemoJsonDocument.h>

#include <rfUtils/detail/regularFile.h>

#include <QByteArray>
#include <QJsonDocument>

namespace {

/// The file's bytes; if it cannot be read, none, and the reason in `error`.
QByteArray bytesOf(const QString& path, QString& error) {
    rfu::detail::RegularFile file(path);
    QByteArray bytes;
    if (!file.open() || !file.readAll(bytes)) {
        error = file.refusal();
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

#include <rfUtils/platform/VemoJsonDocument.h>

#include <rfUtils/detail/regularFile.h>

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonParseError>

namespace {

/// The file's bytes; on failure nothing, and the reason in `error`.
QByteArray bytesOf(const QString& path, QString& error) {
    rfu::detail::RegularFile file(path);
    if (!file.open()) {
        error = file.refusal();
        return {};
    }
    QByteArray bytes = file.device().readAll();
    // A read that fails behind some bytes ends as at the end of the file; the next one tells.
    char next = 0;
    file.device().read(&next, sizeof next);
    if (file.device().error() != QFileDevice::NoError) {
        error = file.device().errorString();
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

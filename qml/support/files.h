#pragma once

#include <QQmlFile>
#include <QString>
#include <QUrl>

#include "analysis/support/inputError.h"

namespace rfu::qml {

/// The file that a url names, a local one or a Qt resource.
/// @throw InputError for any other url
inline QString fileOf(const QUrl& url) {
    QString file = QQmlFile::urlToLocalFileOrQrc(url);
    if (file.isEmpty()) {
        throw InputError(url.toString(), "is not a local file");
    }
    return file;
}

}  // namespace rfu::qml

#pragma once

#include <qqml.h>
#include <QObject>
#include <QQmlContext>
#include <QQmlFile>
#include <QString>
#include <QUrl>

#include <rfUtils/detail/qtVersion.h>

#include "analysis/support/inputError.h"

namespace rfu::qml {

/// A url that a page sets, which may be relative to the page. Qt 5 gives properties whole ones.
inline QUrl inPage(const QObject& object, const QUrl& url) {
    if constexpr (qt::kIsQt6) {
        QQmlContext* const page = qmlContext(&object);
        if (page != nullptr && !url.isEmpty()) {
            return page->resolvedUrl(url);
        }
    }
    return url;
}

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

#pragma once

#include <QDir>
#include <QFile>
#include <QObject>
#include <QUrl>
#include <QVariant>

/// The pages of the documents, as documents.py has written them.
class DocumentPages : public QObject {
    Q_OBJECT

public:
    /// Each with its name, its url and the text that it shows.
    Q_INVOKABLE QVariantList pages() const {
        return pagesOf(QStringLiteral(RFUTILS_DOCUMENT_PAGES));
    }

    /// The examples in the headers of types, with empty texts.
    Q_INVOKABLE QVariantList headerPages() const {
        return pagesOf(QStringLiteral(RFUTILS_DOCUMENT_PAGES "/headers"));
    }

private:
    static QVariantList pagesOf(const QString& path) {
        const QDir folder(path);
        QVariantList pages;
        for (const QFileInfo& page : folder.entryInfoList({QStringLiteral("*.qml")})) {
            QFile text(folder.filePath(page.completeBaseName() + QStringLiteral(".txt")));
            text.open(QIODevice::ReadOnly);
            pages.append(
                QVariantMap{{QStringLiteral("tag"), page.completeBaseName()},
                            {QStringLiteral("source"), QUrl::fromLocalFile(page.filePath())},
                            {QStringLiteral("text"), QString::fromUtf8(text.readAll())}});
        }
        return pages;
    }
};

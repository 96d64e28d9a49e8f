#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QString>
#include <QStringList>

/// A reader unlike the embedded one: it is a QJsonDocument, its readFile() returns nothing, and it
/// "reads" the content set by the test from every file.
class VemoJsonDocument : public QJsonDocument {
public:
    void readFile(const QString& path);
    bool hasError() const { return !error.isEmpty(); }
    QString errorString() const { return error; }

    static QByteArray content;  // of every file
    static QString error;       // of every file, or empty
    static QStringList pathsRead;
};

#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QString>
#include <QStringList>

/// A reader of another make: it is a QJsonDocument, its readFile() answers nothing, and whatever
/// the file holds it "reads" what the test has laid out.
class VemoJsonDocument : public QJsonDocument {
public:
    void readFile(const QString& path);
    bool hasError() const { return !error.isEmpty(); }
    QString errorString() const { return error; }

    static QByteArray content;  // what every file holds
    static QString error;       // what is wrong with every file; empty: nothing
    static QStringList pathsRead;
};

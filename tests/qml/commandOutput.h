#pragma once

#include <QFile>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QUrl>

/// What the command rfutils prints.
class CommandOutput : public QObject {
    Q_OBJECT

public:
    /// Whether the command is built, beside the tests.
    Q_INVOKABLE bool exists() const { return QFile::exists(QStringLiteral(RFUTILS_COMMAND)); }
    /// Its standard output, run in the folder of the samples.
    Q_INVOKABLE QString of(const QStringList& arguments) const {
        QProcess process;
        process.setWorkingDirectory(QStringLiteral(RFUTILS_SAMPLES));
        process.start(QStringLiteral(RFUTILS_COMMAND), arguments);
        process.waitForFinished();
        return QString::fromUtf8(process.readAllStandardOutput());
    }
    /// A file among the samples.
    Q_INVOKABLE QUrl sample(const QString& name) const {
        return QUrl::fromLocalFile(QStringLiteral(RFUTILS_SAMPLES "/") + name);
    }
};

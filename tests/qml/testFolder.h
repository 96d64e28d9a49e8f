#pragma once

#include <QDir>
#include <QFile>
#include <QObject>
#include <QTemporaryDir>
#include <QUrl>

#include <sys/stat.h>

/// A folder for the files of a test, removed with the object.
class TestFolder : public QObject {
    Q_OBJECT

public:
    /// Writes a file, with the folders above it, in the place of an earlier one.
    Q_INVOKABLE QUrl write(const QString& name, const QString& text) const {
        const QString path = folder_.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile::remove(path);
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write(text.toUtf8());
        return url(name);
    }
    Q_INVOKABLE QString read(const QString& name) const {
        QFile file(folder_.filePath(name));
        file.open(QIODevice::ReadOnly);
        return QString::fromUtf8(file.readAll());
    }
    Q_INVOKABLE bool remove(const QString& name) const {
        return QFile::remove(folder_.filePath(name));
    }
    Q_INVOKABLE QUrl url(const QString& name) const {
        return QUrl::fromLocalFile(folder_.filePath(name));
    }
    /// A FIFO that nobody writes to.
    Q_INVOKABLE QUrl makeFifo(const QString& name) const {
        mkfifo(QFile::encodeName(folder_.filePath(name)).constData(), S_IRUSR | S_IWUSR);
        return url(name);
    }
    /// Whether there is a process, also one that has ended and was not waited for.
    Q_INVOKABLE bool hasProcess(int number) const {
        return QFile::exists(QStringLiteral("/proc/%1").arg(number));
    }
    Q_INVOKABLE QString path(const QString& name) const { return folder_.filePath(name); }
    /// Whether this build reads what gzip has compressed.
    Q_INVOKABLE bool unpacksGzip() const {
        return QStringLiteral(RFUTILS_UNPACKED).contains(QStringLiteral("gzip"));
    }

private:
    QTemporaryDir folder_;
};

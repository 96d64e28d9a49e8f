#pragma once

#include <QColor>
#include <QFile>
#include <QImage>
#include <QObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QUrl>
#include <QVariant>

#include <cstdlib>

/// What tests of the viewer need of the machine: files, programs, the environment, and the pixels of grabbed items.
class Machine : public QObject {
    Q_OBJECT

public:
    /// A file in a folder that ends with the object.
    Q_INVOKABLE QUrl write(const QString& name, const QString& text) const {
        QFile file(folder_.filePath(name));
        file.open(QIODevice::WriteOnly);
        file.write(text.toUtf8());
        file.setPermissions(file.permissions() | QFile::ExeOwner);
        return url(name);
    }
    Q_INVOKABLE QUrl url(const QString& name) const {
        return QUrl::fromLocalFile(folder_.filePath(name));
    }
    Q_INVOKABLE QString path(const QString& name) const { return folder_.filePath(name); }
    /// The text of a file; empty where there is none.
    Q_INVOKABLE QString read(const QString& name) const {
        QFile file(folder_.filePath(name));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    /// The text of a page in docs/.
    Q_INVOKABLE QString document(const QString& name) const {
        QFile file(QStringLiteral(RFUTILS_DOCUMENTS "/") + name);
        file.open(QIODevice::ReadOnly);
        return QString::fromUtf8(file.readAll());
    }

    /// A sample file of the documents.
    Q_INVOKABLE QUrl sample(const QString& name) const {
        return QUrl::fromLocalFile(QStringLiteral(RFUTILS_SAMPLES "/") + name);
    }
    Q_INVOKABLE QString samplePath(const QString& name) const {
        return QStringLiteral(RFUTILS_SAMPLES "/") + name;
    }
    /// What the command prints.
    Q_INVOKABLE QString rfutils(const QStringList& arguments) const {
        QProcess command;
        command.start(QStringLiteral(RFUTILS_COMMAND), arguments);
        command.waitForFinished();
        return QString::fromUtf8(command.readAllStandardOutput());
    }
    Q_INVOKABLE QString environment(const QString& name) const {
        return qEnvironmentVariable(name.toUtf8().constData());
    }

    /// The size of a picture that was saved, or grabbed: `image` of an ItemGrabResult.
    Q_INVOKABLE QSize sizeOf(const QVariant& picture) const { return imageOf(picture).size(); }
    /// The colour of a pixel, such as "#ff0080".
    Q_INVOKABLE QString pixel(const QVariant& picture, int x, int y) const {
        return imageOf(picture).pixelColor(x, y).name();
    }
    /// In which rows of a column, from y to below end, the colour stands; within 24 in each of its parts.
    Q_INVOKABLE QVariantList rowsOf(const QVariant& picture, const QColor& color, int x, int y,
                                    int end) const {
        constexpr int kNear = 24;
        const QImage image = imageOf(picture);
        QVariantList rows;
        for (; y < end; ++y) {
            const QColor there = image.pixelColor(x, y);
            if (std::abs(there.red() - color.red()) <= kNear &&
                std::abs(there.green() - color.green()) <= kNear &&
                std::abs(there.blue() - color.blue()) <= kNear) {
                rows.append(y);
            }
        }
        return rows;
    }

private:
    static QImage imageOf(const QVariant& picture) {
        return picture.canConvert<QUrl>() && !picture.value<QUrl>().isEmpty()
                   ? QImage(picture.toUrl().toLocalFile())
                   : picture.value<QImage>();
    }

    QTemporaryDir folder_;
};

#include "support/picture.h"

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QSaveFile>
#include <clocale>
#include <optional>

#include "analysis/support/inputError.h"

#include <sys/stat.h>

namespace rfu::command {

namespace {

/// The status of a file behind all links.
std::optional<struct stat> statusOf(const QString& file) {
    struct stat status {};
    return ::stat(QFile::encodeName(file).constData(), &status) == 0 ? std::optional(status)
                                                                     : std::nullopt;
}

/// A write may take the first part only; the next one then gives the reason.
bool writeWhole(QIODevice& output, const QByteArray& bytes) {
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 written = output.write(bytes.constData() + done, bytes.size() - done);
        if (written <= 0) {
            return false;
        }
        done += written;
    }
    return true;
}

bool endsIn(const QString& file, const char* ending) {
    return file.endsWith(QLatin1String(ending), Qt::CaseInsensitive);
}

void requireOwn(const QString& file, const QStringList& inputs) {
    const auto status = statusOf(file);
    if (status && !S_ISREG(status->st_mode)) {
        throw InputError(file, "cannot be written: it is not a regular file");
    }
    for (const QString& input : inputs) {
        const auto other = statusOf(input);
        if (status && other && status->st_dev == other->st_dev && status->st_ino == other->st_ino) {
            throw InputError(file, "cannot be written: it is the input " + input.toStdString());
        }
    }
}

/// Replaces an older file only once the new one is complete.
void save(const QByteArray& bytes, const QString& file) {
    QSaveFile output(file);
    if (!output.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || !writeWhole(output, bytes) ||
        !output.commit()) {
        throw InputError(file, "cannot be written: " + output.errorString().toStdString());
    }
}

}  // namespace

void requireReplaceable(const QString& file, const QStringList& inputs) {
    if (!endsIn(file, ".png")) {
        throw InputError(file, "cannot be written: pictures are PNG and end in .png");
    }
    requireOwn(file, inputs);
}

void requireReplaceablePlot(const QString& file, const QStringList& inputs) {
    if (!endsIn(file, ".png") && !endsIn(file, ".svg")) {
        throw InputError(file, "cannot be written: plots are PNG or SVG and end in .png or .svg");
    }
    if (endsIn(file, ".svg") && !canWriteSvg()) {
        throw InputError(file, "cannot be written: this build lacks Qt SVG; plots end in .png");
    }
    requireOwn(file, inputs);
}

TextDrawing::TextDrawing() {
    qputenv("QT_QPA_PLATFORM", "minimal:enable_fonts");
    application_ = std::make_unique<QGuiApplication>(argumentCount_, arguments_);
    // Qt takes over the locale of the environment; the system's part of a message stays English.
    std::setlocale(LC_ALL, "C");
}

void savePicture(const QImage& image, const QString& file, const QStringList& inputs,
                 Encoding encoding) {
    constexpr int kFastest = 89;  // the largest at which Qt compresses
    const int quality = encoding == Encoding::Fast ? kFastest : -1;
    requireReplaceable(file, inputs);
    // Into memory, so that what fails below is the file, with the system's reason.
    QBuffer picture;
    if (!picture.open(QIODevice::WriteOnly) || !image.save(&picture, "PNG", quality)) {
        throw InputError(file, "cannot be written: it cannot be encoded as PNG");
    }
    save(picture.data(), file);
}

void savePlot(const Drawing& drawing, const QString& file, const QStringList& inputs) {
    requireReplaceablePlot(file, inputs);
    const TextDrawing texts;
    if (endsIn(file, ".svg")) {
        save(svgOf(drawing), file);
    } else {
        savePicture(imageOf(drawing), file, inputs);
    }
}

void saveText(const std::string& text, const QString& file, const QStringList& inputs) {
    requireOwn(file, inputs);
    save(QByteArray::fromStdString(text), file);
}

}  // namespace rfu::command

#include "support/picture.h"

#include <QBuffer>
#include <QByteArray>
#include <QRunnable>
#include <QSemaphore>
#include <QThreadPool>
#include <clocale>
#include <new>
#include <system_error>
#include <thread>

#include "analysis/support/inputError.h"
#include "support/outputFile.h"

namespace rfu::command {

namespace {

bool endsIn(const QString& file, const char* ending) {
    return file.endsWith(QLatin1String(ending), Qt::CaseInsensitive);
}

void save(const QByteArray& bytes, const QString& file, const QStringList& inputs) {
    OutputFile output(file, inputs);
    output.write({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    output.commit();
}

class Signal : public QRunnable {
public:
    explicit Signal(QSemaphore& started) : started_(started) {}
    void run() override { started_.release(); }

private:
    QSemaphore& started_;
};

/// Qt hands large conversions of pictures, and Qt 6 large fills, to the threads of its pool, and waits
/// for ever where memory is too short to start one. So one is started before, and stays the only one.
/// @throw std::bad_alloc
void startPaintingThread() {
    try {
        std::thread([] {}).join();  // whose stack the C library keeps for the next one
    } catch (const std::system_error&) {
        throw std::bad_alloc();
    }
    QThreadPool& pool = *QThreadPool::globalInstance();
    pool.setMaxThreadCount(1);
    pool.setExpiryTimeout(-1);
    QSemaphore started;
    pool.start(new Signal(started));
    started.acquire();
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
    startPaintingThread();
}

void savePicture(const QImage& image, const QString& file, const QStringList& inputs,
                 Encoding encoding) {
    constexpr int kFastest = 89;  // the highest quality at which Qt still compresses
    const int quality = encoding == Encoding::Fast ? kFastest : -1;
    requireReplaceable(file, inputs);
    // Encoded in memory, so that only writing the file fails below, with the reason of the system.
    QBuffer picture;
    if (!picture.open(QIODevice::WriteOnly) || !image.save(&picture, "PNG", quality)) {
        throw InputError(file, "cannot be written: it cannot be encoded as PNG");
    }
    save(picture.data(), file, inputs);
}

void savePicture(const PixelRows& picture, const QString& file, const QStringList& inputs) {
    requireReplaceable(file, inputs);
    OutputFile output(file, inputs);
    output.writeBy([&](QIODevice& device) { return writePng(device, picture); });
    output.commit();
}

void savePlot(const Drawing& drawing, const QString& file, const QStringList& inputs) {
    requireReplaceablePlot(file, inputs);
    const TextDrawing texts;
    if (endsIn(file, ".svg")) {
        save(svgOf(drawing), file, inputs);
    } else {
        savePicture(imageOf(drawing), file, inputs);
    }
}

void saveText(const std::string& text, const QString& file, const QStringList& inputs) {
    save(QByteArray::fromStdString(text), file, inputs);
}

}  // namespace rfu::command

#include "support/picture.h"

#include <QSaveFile>
#include <clocale>

#include "analysis/support/inputError.h"

namespace rfu::command {

TextDrawing::TextDrawing() {
    qputenv("QT_QPA_PLATFORM", "minimal:enable_fonts");
    application_ = std::make_unique<QGuiApplication>(argumentCount_, arguments_);
    // Qt takes over the locale of the environment; the system's part of a message stays English.
    std::setlocale(LC_ALL, "C");
}

void savePicture(const QImage& image, const QString& file) {
    // Replaces an older picture only once the new one is complete.
    QSaveFile output(file);
    if (!output.open(QIODevice::WriteOnly) || !image.save(&output, "PNG") || !output.commit()) {
        throw InputError(file, "cannot be written: " + output.errorString().toStdString());
    }
}

}  // namespace rfu::command

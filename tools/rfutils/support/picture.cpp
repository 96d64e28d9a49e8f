#include "support/picture.h"

#include <QSaveFile>

#include "support/errors.h"

void savePicture(const QImage& image, const QString& file) {
    // Replaces an older picture only once the new one is complete.
    QSaveFile output(file);
    if (!output.open(QIODevice::WriteOnly) || !image.save(&output, "PNG") || !output.commit()) {
        throw fileError(file, "cannot be written: " + output.errorString().toStdString());
    }
}

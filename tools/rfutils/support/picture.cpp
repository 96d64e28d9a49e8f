#include "support/picture.h"

#include <QSaveFile>

#include "analysis/support/inputError.h"
#include "support/errors.h"

namespace rfu::command {

void savePicture(const QImage& image, const QString& file) {
    // Replaces an older picture only once the new one is complete.
    QSaveFile output(file);
    if (!output.open(QIODevice::WriteOnly) || !image.save(&output, "PNG") || !output.commit()) {
        throw InputError(file, "cannot be written: " + output.errorString().toStdString());
    }
}

}  // namespace rfu::command

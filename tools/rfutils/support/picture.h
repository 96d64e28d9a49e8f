#pragma once

#include <QImage>
#include <QString>

namespace rfu::command {

/// Writes a picture as PNG, whatever the file is called.
/// @throw Failure when the file cannot be written
void savePicture(const QImage& image, const QString& file);

}  // namespace rfu::command

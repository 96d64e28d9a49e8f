#pragma once

#include <QGuiApplication>
#include <QImage>
#include <QString>
#include <memory>

namespace rfu::command {

/// While it lives, texts can be drawn, without a display. Nothing else needs Qt's application, and
/// without it the command starts faster.
class TextDrawing {
public:
    TextDrawing();

private:
    int argumentCount_ = 1;
    char name_[8] = "rfutils";
    char* arguments_[2] = {name_, nullptr};
    std::unique_ptr<QGuiApplication> application_;
};

/// Writes a picture as PNG, whatever the file is called.
/// @throw InputError when the file cannot be written
void savePicture(const QImage& image, const QString& file);

}  // namespace rfu::command

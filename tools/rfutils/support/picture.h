#pragma once

#include <QGuiApplication>
#include <QImage>
#include <QString>
#include <QStringList>
#include <memory>
#include <string>

#include "analysis/plots/drawing.h"
#include "analysis/plots/pngRows.h"

namespace rfu::command {

/// Texts can be drawn, without a display, while an object of this class exists. Only they need Qt's
/// application; without it the command starts faster.
class TextDrawing {
public:
    TextDrawing();

private:
    int argumentCount_ = 1;
    char name_[8] = "rfutils";
    char* arguments_[2] = {name_, nullptr};
    std::unique_ptr<QGuiApplication> application_;
};

/// What savePicture() refuses by the names alone, before the picture is made.
/// @throw InputError
void requireReplaceable(const QString& file, const QStringList& inputs);
/// The same for savePlot().
void requireReplaceablePlot(const QString& file, const QStringList& inputs);

/// The effort of the encoder. Waterfalls are mostly noise, which more effort hardly makes smaller.
enum class Encoding { Usual, Fast };

/// Writes a picture as PNG. It replaces an older one, and no other file.
/// @param inputs files of the same run, which it must not replace under any name
/// @throw InputError if the file is no regular one, is one of the inputs, does not end in .png or
///        cannot be written
void savePicture(const QImage& image, const QString& file, const QStringList& inputs = {},
                 Encoding encoding = Encoding::Usual);

/// The same for a picture that is not held.
void savePicture(const PixelRows& picture, const QString& file, const QStringList& inputs);

/// The same for a drawing, as PNG or SVG by the ending of the name.
void savePlot(const Drawing& drawing, const QString& file, const QStringList& inputs);

/// The same for a text that goes with a picture, under any name.
void saveText(const std::string& text, const QString& file, const QStringList& inputs);

}  // namespace rfu::command

#pragma once

#include <QByteArray>
#include <QImage>
#include <QPainter>
#include <QSize>
#include <functional>
#include <string>

namespace rfu {

/// Lines and texts, to be painted on pixels or written as SVG. A clip of the painter has no effect in
/// SVG. Needs a QGuiApplication for its fonts.
struct Drawing {
    QSize size;  // of the whole, in pixels
    std::string title;
    std::function<void(QPainter&)> paint;
};

QImage imageOf(const Drawing& drawing);

/// Whether this build has Qt SVG, which svgOf() needs.
bool canWriteSvg();

/// Texts are written as text. The bytes depend on nothing but the drawing and the widths of the font.
/// @pre canWriteSvg()
QByteArray svgOf(const Drawing& drawing);

}  // namespace rfu

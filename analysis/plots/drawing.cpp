#include "analysis/plots/drawing.h"

#ifdef RFUTILS_HAS_SVG
#include <QBuffer>
#include <QSvgGenerator>
#endif

#include "analysis/plots/style.h"

namespace rfu {

namespace {

void paintOn(QPaintDevice& device, const Drawing& drawing) {
    QPainter painter(&device);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    // SVG names a font even before the first text: without this one, that of the system.
    painter.setFont(fontOf(13));
    painter.fillRect(QRect(QPoint(0, 0), drawing.size), kPaper);
    drawing.paint(painter);
}

}  // namespace

QImage imageOf(const Drawing& drawing) {
    QImage image(drawing.size, QImage::Format_RGB32);
    paintOn(image, drawing);
    return image;
}

#ifdef RFUTILS_HAS_SVG

bool canWriteSvg() {
    return true;
}

QByteArray svgOf(const Drawing& drawing) {
    constexpr int kCssPixelsPerInch = 96;
    QBuffer bytes;
    QSvgGenerator generator;
    generator.setOutputDevice(&bytes);
    generator.setResolution(kCssPixelsPerInch);
    generator.setSize(drawing.size);
    generator.setViewBox(QRect(QPoint(0, 0), drawing.size));
    generator.setTitle(qtText(drawing.title).toHtmlEscaped());  // Qt does not escape it
    generator.setDescription({});
    paintOn(generator, drawing);
    return bytes.data();
}

#else

bool canWriteSvg() {
    return false;
}

QByteArray svgOf(const Drawing&) {
    return {};
}

#endif

}  // namespace rfu

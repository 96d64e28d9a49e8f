#include "qml/views/plotLabels.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

#include "qml/support/properties.h"

namespace rfu::qml {

namespace {

constexpr double kBetweenLabels = 14.0;
constexpr double kFromPlot = 5.0;  // from the edge of the plot to a label

bool isSame(double a, double b) {
    return !assign(a, b);
}

/// A line one device pixel thick.
void drawLine(QPainter& painter, const QPointF& from, const QPointF& to, const QColor& color) {
    QPen pen(color, 0.0);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.drawLine(from, to);
}

/// The middle of the device pixel at a logical place.
double middleOfPixel(double at, double ratio) {
    constexpr double kRounding = 1e-6;  // of a pixel
    return (std::floor(at * ratio + kRounding) + 0.5) / ratio;
}

/// A label with its unit below the number where both are too wide for one line: the number has to be seen.
QString inLines(QString label, const QFontMetricsF& metrics, double width) {
    if (const int blank = static_cast<int>(label.indexOf(QLatin1Char(' ')));
        blank >= 0 && metrics.horizontalAdvance(label) > width) {
        label[blank] = QLatin1Char('\n');
    }
    return label;
}

void drawLevels(QPainter& painter, const PlotFace& face) {
    const QRectF& plot = face.plot;
    const QFontMetricsF metrics(face.look.font);
    const double half = metrics.height() / 2.0;
    for (const LevelTick& tick :
         levelTicks(face.scale, face.levels, verticalTicks(plot.height()))) {
        const double part = (face.levels.high - tick.level) / (face.levels.high - face.levels.low);
        const double y = middleOfPixel(
            std::min(plot.top() + part * plot.height(), plot.bottom() - 0.5), face.look.ratio);
        drawLine(painter, {plot.left(), y}, {plot.right(), y}, face.look.grid);
        painter.setPen(face.look.text);
        const double width = plot.left() - kFromPlot;
        painter.drawText(QRectF(0.0, y - half, width, 2.0 * half),
                         Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip,
                         inLines(tick.label, metrics, width));
    }
    if (!face.scale.isLinear()) {
        painter.setPen(face.look.text);
        painter.drawText(plot.topLeft() + QPointF(kFromPlot, metrics.ascent()),
                         QString::fromStdString(face.scale.unit));
    }
}

void drawFrequencies(QPainter& painter, const PlotFace& face) {
    const QRectF& plot = face.plot;
    const QFontMetricsF metrics(face.look.font);
    const double top = plot.bottom() + kFromPlot;
    const double height = metrics.height();
    const QString unit = face.isCounted ? QStringLiteral("point") : QStringLiteral("MHz");
    const double unitLeft = plot.right() - metrics.horizontalAdvance(unit);
    for (const AxisTick& tick :
         frequencyTicks(face.shown, face.isCounted, plot.left(), plot.width(), metrics)) {
        const double x = middleOfPixel(std::min(tick.at, plot.right() - 0.5), face.look.ratio);
        const double half = metrics.horizontalAdvance(tick.label) / 2.0;
        drawLine(painter, {x, plot.top()}, {x, plot.bottom()}, face.look.grid);
        if (x + half + kFromPlot < unitLeft) {
            painter.setPen(face.look.text);
            painter.drawText(QRectF(x - half, top, 2.0 * half, height),
                             Qt::AlignCenter | Qt::TextDontClip, tick.label);
        }
    }
    painter.setPen(face.look.text);
    painter.drawText(QRectF(unitLeft, top, plot.right() - unitLeft, height),
                     Qt::AlignCenter | Qt::TextDontClip, unit);
}

void drawBorder(QPainter& painter, const PlotFace& face) {
    const QRectF& plot = face.plot;
    const double half = 0.5 / face.look.ratio;
    drawLine(painter, {plot.left() - half, plot.top()}, {plot.left() - half, plot.bottom() + half},
             face.look.text);
    drawLine(painter, {plot.left() - half, plot.bottom() + half},
             {plot.right(), plot.bottom() + half}, face.look.text);
}

}  // namespace

std::vector<AxisTick> frequencyTicks(const ValueRange& shown, bool isCounted, double left,
                                     double width, const QFontMetricsF& metrics) {
    std::vector<AxisTick> ticks;
    for (int wanted = Axis::kWantedTicks; wanted > 0; --wanted) {
        const Axis axis(shown.low, shown.high, Axis::Ends::Exact, Axis::kPlaceDigits,
                        isCounted ? 1.0 : 0.0, wanted);
        ticks.clear();
        double widest = 0.0;
        for (const double place : axis.ticks()) {
            ticks.push_back({left + axis.position(place) * width, axis.label(place)});
            widest = std::max(widest, metrics.horizontalAdvance(ticks.back().label));
        }
        if (ticks.size() < 2 || ticks[1].at - ticks[0].at >= widest + kBetweenLabels) {
            break;
        }
    }
    return ticks;
}

bool PlotLook::operator==(const PlotLook& other) const {
    return font == other.font && text == other.text && grid == other.grid &&
           background == other.background && isSame(ratio, other.ratio);
}

bool PlotFace::operator==(const PlotFace& other) const {
    return look == other.look && size == other.size && plot == other.plot &&
           isSame(shown.low, other.shown.low) && isSame(shown.high, other.shown.high) &&
           isCounted == other.isCounted && isSame(levels.low, other.levels.low) &&
           isSame(levels.high, other.levels.high) && scale.unit == other.scale.unit &&
           isSame(scale.atZero, other.scale.atZero) &&
           isSame(scale.decibelsPerDecade, other.scale.decibelsPerDecade);
}

QImage pictureOf(const PlotFace& face) {
    const bool isOpaque = face.look.background.alpha() == 255;
    QImage image(face.size, isOpaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) {
        return image;
    }
    image.fill(face.look.background);
    QPainter painter(&image);
    painter.scale(face.look.ratio, face.look.ratio);
    painter.setFont(face.look.font);
    drawLevels(painter, face);
    if (face.shown.low < face.shown.high) {
        drawFrequencies(painter, face);
    }
    drawBorder(painter, face);
    return image;
}

}  // namespace rfu::qml

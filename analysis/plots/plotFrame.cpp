#include "analysis/plots/plotFrame.h"

#include <QFontMetricsF>
#include <QPen>
#include <QPointF>
#include <algorithm>

#include "analysis/plots/style.h"

namespace rfu {

namespace {

constexpr double kLeft = 84.0;
constexpr double kRight = 28.0;
constexpr double kBottom = 62.0;
constexpr double kLegend = 56.0;  // the row in which it stands

void drawGridLine(QPainter& painter, QPointF from, QPointF to) {
    painter.setPen(QPen(kGrid, 1));
    painter.drawLine(from, to);
    painter.setPen(kFaint);
}

}  // namespace

PlotFrame::PlotFrame(QSize size, const Axis& across, const Axis& up)
    : size_(size),
      across_(across),
      up_(up),
      area_(kLeft, kTop, size.width() - kLeft - kRight, size.height() - kTop - kBottom) {}

void PlotFrame::drawTitle(QPainter& painter, const QString& title) const {
    rfu::drawTitle(painter, QRectF(area_.left(), 14, area_.width(), 28), title);
}

void PlotFrame::drawLegend(QPainter& painter, const std::vector<CurveStyle>& styles) const {
    painter.setFont(fontOf(13));
    const QFontMetricsF metrics(painter.font());
    double left = area_.left();
    for (const CurveStyle& style : styles) {
        painter.setPen(QPen(style.color, style.width + 1.0, style.stroke));
        painter.drawLine(QPointF(left, kLegend), QPointF(left + 26, kLegend));
        painter.setPen(kInk);
        const QString name = QString::fromUtf8(style.name);
        painter.drawText(QPointF(left + 33, kLegend + metrics.capHeight() / 2), name);
        left += 33 + metrics.horizontalAdvance(name) + 28;
    }
}

void PlotFrame::drawAxes(QPainter& painter, const QString& acrossName,
                         const QString& upName) const {
    painter.fillRect(area_, Qt::white);
    painter.setFont(fontOf(13));
    const QFontMetricsF metrics(painter.font());
    for (const double tick : up_.ticks()) {
        drawGridLine(painter, {area_.left(), sharp(y(tick))}, {area_.right(), sharp(y(tick))});
        painter.drawText(QRectF(0, y(tick) - 10, area_.left() - kTickLength - 5, 20),
                         Qt::AlignRight | Qt::AlignVCenter, up_.label(tick));
    }
    for (const double tick : across_.ticks()) {
        drawGridLine(painter, {sharp(x(tick)), area_.top()}, {sharp(x(tick)), area_.bottom()});
        const QString label = across_.label(tick);
        const double mostRight = size_.width() - 4 - metrics.horizontalAdvance(label) / 2;
        painter.drawText(
            QRectF(std::min(x(tick), mostRight) - 60, area_.bottom() + kTickLength + 1, 120, 20),
            Qt::AlignHCenter | Qt::AlignTop, label);
    }
    painter.setPen(QPen(kFrame, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(area_);

    painter.setPen(kInk);
    painter.drawText(QRectF(area_.left(), size_.height() - 32, area_.width(), 22), Qt::AlignCenter,
                     acrossName);
    painter.save();
    painter.translate(20, area_.center().y());
    painter.rotate(-90);
    painter.drawText(QRectF(-area_.height() / 2, -11, area_.height(), 22), Qt::AlignCenter, upName);
    painter.restore();
}

}  // namespace rfu

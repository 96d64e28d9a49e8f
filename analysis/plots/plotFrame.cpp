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
constexpr double kTop = 74.0;           // below a legend of one row
constexpr double kLegendMiddle = 56.0;  // of its first row
constexpr double kLegendRowHeight = 20.0;
constexpr double kLegendLine = 26.0;
constexpr double kBeforeName = 33.0;  // from the beginning of the line
constexpr double kBetweenEntries = 28.0;
constexpr double kPixelsPerPlace = 110.0;  // a label of the horizontal axis and the blank behind it

Axis horizontalAxis(const AxisRange& range, double pixels) {
    const double ticks = std::clamp(pixels / kPixelsPerPlace, 1.0, 1.0 * Axis::kWantedTicks);
    return {range.values.low, range.values.high, Axis::Ends::Exact,
            range.maxDigits,  range.minStep,     static_cast<int>(ticks)};
}

Axis verticalAxis(const AxisRange& range, const std::optional<ValueRange>& wanted, double pixels) {
    const ValueRange& values = wanted ? *wanted : range.values;
    return {values.low,      values.high,   wanted ? Axis::Ends::Exact : Axis::Ends::Rounded,
            range.maxDigits, range.minStep, verticalTicks(pixels)};
}

void drawGridLine(QPainter& painter, QPointF from, QPointF to) {
    painter.setPen(QPen(kGrid, 1));
    painter.drawLine(from, to);
    painter.setPen(kFaint);
}

}  // namespace

PlotFrame::PlotFrame(const PlotShape& shape, const AxisRange& across, const AxisRange& up,
                     std::vector<CurveStyle> legend)
    : size_(shape.size),
      across_(horizontalAxis(across, size_.width() - kLeft - kRight)),
      up_(verticalAxis(up, shape.values, size_.height() - kTop - kBottom)) {
    arrangeLegend(legend);
    area_ = QRectF(kLeft, top_, size_.width() - kLeft - kRight, size_.height() - top_ - kBottom);
}

void PlotFrame::arrangeLegend(const std::vector<CurveStyle>& legend) {
    const QFontMetricsF metrics(fontOf(13));
    double left = kLeft;
    double middle = kLegendMiddle;
    for (const CurveStyle& style : legend) {
        const double width = kBeforeName + metrics.horizontalAdvance(QString::fromUtf8(style.name));
        if (left > kLeft && left + width > size_.width() - kRight) {
            left = kLeft;
            middle += kLegendRowHeight;
        }
        legend_.push_back({style, left, middle});
        left += width + kBetweenEntries;
    }
    top_ = kTop + middle - kLegendMiddle;
}

void PlotFrame::drawTitle(QPainter& painter, const QString& title) const {
    rfu::drawTitle(painter, QRectF(area_.left(), 14, area_.width(), 28), title);
}

void PlotFrame::drawLegend(QPainter& painter) const {
    painter.setFont(fontOf(13));
    const QFontMetricsF metrics(painter.font());
    for (const LegendEntry& entry : legend_) {
        const CurveStyle& style = entry.style;
        painter.setPen(QPen(style.color, style.width + 1.0, style.stroke));
        painter.drawLine(QPointF(entry.left, entry.middle),
                         QPointF(entry.left + kLegendLine, entry.middle));
        painter.setPen(kInk);
        painter.drawText(QPointF(entry.left + kBeforeName, entry.middle + metrics.capHeight() / 2),
                         QString::fromUtf8(style.name));
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

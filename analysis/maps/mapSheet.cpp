#include "analysis/maps/mapSheet.h"

#include <QColor>
#include <QFontMetricsF>
#include <QPainter>
#include <QPen>
#include <QRect>
#include <QRectF>
#include <QSizeF>
#include <algorithm>

#include "analysis/plots/style.h"

namespace rfu {

namespace {

constexpr int kSheetMargin = 64;
constexpr int kLabelSize = 14;
constexpr int kWantedSide = 960;     // of the longer side of the map
constexpr int kMinSheetWidth = 360;  // room for two labels side by side

const QColor kBackground(0xec, 0xf1, 0xf5);  // where the map is transparent
const QColor kPointColor(0xd6, 0x33, 0x4c);

void drawCross(QPainter& painter, QPointF at, const QColor& color) {
    constexpr double kRadius = 8.0;
    for (const QPen& pen : {QPen(Qt::white, 5.0), QPen(color, 2.0)}) {
        painter.setPen(pen);
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(at, kRadius, kRadius);
        painter.drawLine(at - QPointF(kRadius + 4, 0), at + QPointF(kRadius + 4, 0));
        painter.drawLine(at - QPointF(0, kRadius + 4), at + QPointF(0, kRadius + 4));
    }
}

/// A line of a label.
struct LabelLine {
    QString text;
    QFont font;
    QColor color;
};

void drawLabel(QPainter& painter, QPointF at, const std::vector<LabelLine>& lines,
               const QColor& plate, QSizeF area) {
    double width = 0.0;
    double height = 0.0;
    for (const LabelLine& line : lines) {
        const QFontMetricsF metrics(line.font);
        width = std::max(width, metrics.horizontalAdvance(line.text) + 8.0);
        height += metrics.height();
    }
    const double highest = std::max(area.width() - width - 4.0, 4.0);
    const double left = std::clamp(at.x() - width / 2.0, 4.0, highest);
    const bool isAbove = at.y() < area.height() / 2.0;
    double top = isAbove ? at.y() - 15.0 - height : at.y() + 15.0;
    painter.fillRect(QRectF(left, top, width, height), plate);
    for (const LabelLine& line : lines) {
        const QRectF place(left, top, width, QFontMetricsF(line.font).height());
        painter.setPen(line.color);
        painter.setFont(line.font);
        painter.drawText(place, Qt::AlignCenter, line.text);
        top = place.bottom();
    }
}

}  // namespace

MarkStyle sheetStyle() {
    return {kPointColor, kInk, QColor(255, 255, 255, 215), fontOf(kLabelSize, true),
            fontOf(kLabelSize, false)};
}

void drawMark(QPainter& painter, QPointF at, const MapMark& mark, const MarkStyle& style,
              QSizeF area) {
    drawCross(painter, at, style.color);
    std::vector<LabelLine> lines;
    if (!mark.name.isEmpty()) {
        lines.push_back({mark.name, style.nameFont, style.color});
    }
    if (!mark.place.isEmpty()) {
        lines.push_back({mark.place, style.placeFont, style.ink});
    }
    if (!lines.empty()) {
        drawLabel(painter, at, lines, style.plate, area);
    }
}

QImage drawSheet(const QImage& map, const std::vector<MapMark>& marks) {
    const int factor = std::max(1, kWantedSide / std::max(map.width(), map.height()));
    const QRect area(
        QPoint(std::max(kSheetMargin, (kMinSheetWidth - factor * map.width()) / 2), kSheetMargin),
        map.size() * factor);
    QImage sheet(2 * area.left() + area.width(), 2 * area.top() + area.height(),
                 QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    painter.fillRect(area, kBackground);
    painter.drawImage(area, map);
    painter.setPen(QPen(kFaint, 1));
    painter.drawRect(area.adjusted(-1, -1, 0, 0));
    painter.setRenderHint(QPainter::Antialiasing);
    const MarkStyle style = sheetStyle();
    for (const MapMark& mark : marks) {
        if (QRectF(QPointF(0, 0), QSizeF(map.size())).contains(mark.pixel)) {
            drawMark(painter, QPointF(area.topLeft()) + mark.pixel * factor, mark, style,
                     sheet.size());
        }
    }
    return sheet;
}

}  // namespace rfu

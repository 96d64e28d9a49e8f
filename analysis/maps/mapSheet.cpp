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

void drawCross(QPainter& painter, QPointF at) {
    constexpr double kRadius = 8.0;
    for (const QPen& pen : {QPen(Qt::white, 5.0), QPen(kPointColor, 2.0)}) {
        painter.setPen(pen);
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(at, kRadius, kRadius);
        painter.drawLine(at - QPointF(kRadius + 4, 0), at + QPointF(kRadius + 4, 0));
        painter.drawLine(at - QPointF(0, kRadius + 4), at + QPointF(0, kRadius + 4));
    }
}

/// The label is above its mark in the upper half of the sheet and below it in the lower half, so that
/// labels of marks at the corners are outside the map.
void drawLabel(QPainter& painter, QPointF at, const MapMark& mark, QSizeF sheet) {
    const QFontMetricsF bold(fontOf(kLabelSize, true));
    const QFontMetricsF plain(fontOf(kLabelSize, false));
    const double width =
        std::max(bold.horizontalAdvance(mark.name), plain.horizontalAdvance(mark.place)) + 8.0;
    const double line = plain.height();
    const double highest = std::max(sheet.width() - width - 4.0, 4.0);
    const double left = std::clamp(at.x() - width / 2.0, 4.0, highest);
    const bool isAbove = at.y() < sheet.height() / 2.0;
    const double top = isAbove ? at.y() - 15.0 - 2.0 * line : at.y() + 15.0;
    painter.fillRect(QRectF(left, top, width, 2.0 * line), QColor(255, 255, 255, 215));
    painter.setPen(kPointColor);
    painter.setFont(fontOf(kLabelSize, true));
    painter.drawText(QRectF(left, top, width, line), Qt::AlignCenter, mark.name);
    painter.setPen(kInk);
    painter.setFont(fontOf(kLabelSize, false));
    painter.drawText(QRectF(left, top + line, width, line), Qt::AlignCenter, mark.place);
}

}  // namespace

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
    for (const MapMark& mark : marks) {
        if (QRectF(QPointF(0, 0), QSizeF(map.size())).contains(mark.pixel)) {
            const QPointF at = QPointF(area.topLeft()) + mark.pixel * factor;
            drawCross(painter, at);
            drawLabel(painter, at, mark, sheet.size());
        }
    }
    return sheet;
}

}  // namespace rfu

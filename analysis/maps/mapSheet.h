#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QPointF>
#include <QSizeF>
#include <QString>
#include <vector>

namespace rfu {

/// A mark on a map.
struct MapMark {
    QPointF pixel;  // in the map, 0,0 being its upper left corner
    QString name;
    QString place;  // a second line below the name; either may be empty
};

/// How marks look.
struct MarkStyle {
    QColor color;  // of the mark and its name
    QColor ink;    // of the second line
    QColor plate;  // behind the label
    QFont nameFont;
    QFont placeFont;
};

/// Those of drawSheet(). Needs a QGuiApplication for its fonts.
MarkStyle sheetStyle();

/// Draws a mark with its label, which is above it in the upper half of the area and below it in the lower half, so that
/// labels of marks at the corners of a map are outside it.
/// @param area of the picture, whose edges keep the label from leaving it to the sides
void drawMark(QPainter& painter, QPointF at, const MapMark& mark, const MarkStyle& style,
              QSizeF area);

/// A map, enlarged by a whole factor where it is small, with marks and a margin for their labels.
/// Marks outside the map are left out. Needs a QGuiApplication for its fonts.
QImage drawSheet(const QImage& map, const std::vector<MapMark>& marks);

}  // namespace rfu

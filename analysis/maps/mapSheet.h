#pragma once

#include <QImage>
#include <QPointF>
#include <QString>
#include <vector>

namespace rfu {

/// A mark on a map.
struct MapMark {
    QPointF pixel;  // in the map, 0,0 being its upper left corner
    QString name;
    QString place;
};

/// A map, enlarged by a whole factor where it is small, with marks and a margin for their labels.
/// Marks outside the map are left out. Needs a QGuiApplication for its fonts.
QImage drawSheet(const QImage& map, const std::vector<MapMark>& marks);

}  // namespace rfu

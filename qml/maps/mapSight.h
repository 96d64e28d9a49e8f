#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <limits>

#include "analysis/maps/cellGrid.h"

namespace rfu::qml {

/// What a page or the operator wants to see of a map.
struct WantedSight {
    double pixelsPerCell = std::numeric_limits<double>::quiet_NaN();  // NaN: the whole map
    double x = std::numeric_limits<double>::quiet_NaN();  // in the middle of the view, in map
    double y = std::numeric_limits<double>::quiet_NaN();  // coordinates; NaN: that of the map
};

/// The part of a map that a view of some size shows.
class MapSight {
public:
    /// Of no map.
    MapSight() = default;
    /// The sight that comes nearest to the wanted one: at least a few cells stay visible, the map is never smaller than
    /// it fits the view, and the view does not leave it.
    MapSight(const CellGrid& grid, QSizeF view, const WantedSight& wanted);

    bool isEmpty() const { return !(pixelsPerCell_ > 0.0); }
    /// NaN where it is empty, as all numbers.
    double pixelsPerCell() const { return pixelsPerCell_; }
    /// Map coordinates in the middle of the view.
    QPointF center() const { return center_; }
    /// Whether the whole map is shown.
    bool isFitted() const { return isFitted_; }

    QPointF pixelOf(QPointF point) const;
    QPointF pointAt(QPointF pixel) const;
    /// The pixels of the whole map.
    QRectF mapArea() const;

    /// The wanted sight in which what is at one pixel now is at another, and cells are larger by a factor.
    WantedSight dragged(QPointF from, QPointF to, double factor = 1.0) const;

private:
    CellGrid grid_{0, 0, 1.0, 0.0, 0.0, 0.0, 0.0};
    QSizeF view_;
    double pixelsPerCell_ = std::numeric_limits<double>::quiet_NaN();
    QPointF center_{std::numeric_limits<double>::quiet_NaN(),
                    std::numeric_limits<double>::quiet_NaN()};
    bool isFitted_ = true;
};

}  // namespace rfu::qml

#include "qml/maps/mapSight.h"

#include <algorithm>
#include <cmath>

namespace rfu::qml {

namespace {

constexpr double kLargestCell = 64.0;  // pixels, where the whole map does not need larger ones

/// At which the whole map fits the view.
double fittingScale(const CellGrid& grid, QSizeF view) {
    return std::min(view.width() / grid.columns, view.height() / grid.rows);
}

double largestScale(double fitting) {
    return std::max(fitting, kLargestCell);
}

/// The middle of the view along one axis.
/// @param seen  how much of the map fits the view
double middleWithin(double wanted, double low, double high, double seen) {
    const double middle = (low + high) / 2.0;
    if (std::isnan(wanted) || seen >= high - low) {
        return middle;
    }
    return std::clamp(wanted, low + seen / 2.0, high - seen / 2.0);
}

}  // namespace

MapSight::MapSight(const CellGrid& grid, QSizeF view, const WantedSight& wanted)
    : grid_(grid), view_(view) {
    if (grid.columns <= 0 || grid.rows <= 0 || view.isEmpty()) {
        return;
    }
    const double fitting = fittingScale(grid, view);
    pixelsPerCell_ = std::isnan(wanted.pixelsPerCell)
                         ? fitting
                         : std::clamp(wanted.pixelsPerCell, fitting, largestScale(fitting));
    isFitted_ = pixelsPerCell_ == fitting;
    const QSizeF seen = view / pixelsPerCell_ * grid.cellSize;
    center_ = {middleWithin(wanted.x, grid.west, grid.east, seen.width()),
               middleWithin(wanted.y, grid.south, grid.north, seen.height())};
}

QPointF MapSight::pixelOf(QPointF point) const {
    const double pixelsPerUnit = pixelsPerCell_ / grid_.cellSize;
    return {view_.width() / 2.0 + (point.x() - center_.x()) * pixelsPerUnit,
            view_.height() / 2.0 - (point.y() - center_.y()) * pixelsPerUnit};
}

QPointF MapSight::pointAt(QPointF pixel) const {
    const double unitsPerPixel = grid_.cellSize / pixelsPerCell_;
    return {center_.x() + (pixel.x() - view_.width() / 2.0) * unitsPerPixel,
            center_.y() - (pixel.y() - view_.height() / 2.0) * unitsPerPixel};
}

QRectF MapSight::mapArea() const {
    return {pixelOf({grid_.west, grid_.north}), pixelOf({grid_.east, grid_.south})};
}

WantedSight MapSight::dragged(QPointF from, QPointF to, double factor) const {
    const double fitting = fittingScale(grid_, view_);
    const double scale = std::clamp(pixelsPerCell_ * factor, fitting, largestScale(fitting));
    const QPointF point = pointAt(from);
    const QPointF rest = (to - QPointF(view_.width(), view_.height()) / 2.0) / scale;
    return {scale > fitting ? scale : std::numeric_limits<double>::quiet_NaN(),
            point.x() - rest.x() * grid_.cellSize, point.y() + rest.y() * grid_.cellSize};
}

}  // namespace rfu::qml

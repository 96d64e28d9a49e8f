#include "qml/maps/RasterMap.h"

#include <cmath>
#include <limits>
#include <optional>
#include <tuple>
#include <utility>

#include "qml/support/files.h"
#include "qml/support/properties.h"

namespace rfu::qml {

namespace {

constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();
const QPointF kNowhere(kMissing, kMissing);

std::optional<QPoint> cellOf(const MapContents& map, double column, double row) {
    const CellGrid& grid = map.grid;
    if (column >= 0.0 && column < grid.columns && row >= 0.0 && row < grid.rows) {
        return QPoint(static_cast<int>(column), static_cast<int>(row));
    }
    return std::nullopt;
}

std::optional<QPoint> cellAtPoint(const MapContents& map, double x, double y) {
    return map.cells.empty() ? std::nullopt : map.grid.cellAt(QPointF(x, y));
}

double valueOrMissing(const MapContents& map, std::optional<QPoint> cell) {
    return cell ? map.value(*cell) : kMissing;
}

}  // namespace

RasterMap::RasterMap()
    : reading_([this](std::shared_ptr<const Contents> contents, const QString& error) {
          if (contents == nullptr) {
              finish(Error, error);
          } else {
              hold(*contents);
              finish(Ready, {});
          }
      }) {}

RasterMap::~RasterMap() {
    if (store_ != nullptr) {
        store_->drop(picture_);
    }
}

void RasterMap::classBegin() {
    isComplete_ = false;
}

void RasterMap::componentComplete() {
    isComplete_ = true;
    reload();
}

void RasterMap::setFile(QUrl MapFiles::*which, const QUrl& file, Changed changed) {
    if (assign(files_.*which, inPage(*this, file))) {
        reload();
        Q_EMIT(this->*changed)();
    }
}

void RasterMap::reload() {
    if (!isComplete_) {
        return;
    }
    if (files_.raster.isEmpty()) {
        reading_.cancel();
        hold(std::make_shared<const MapContents>());
        finish(Null, {});
        return;
    }
    reading_.start(
        [files = files_, held = held_](const std::atomic<bool>&) { return readMap(files, held); });
    finish(Loading, {});
}

QRectF RasterMap::extent() const {
    const CellGrid& grid = held_->grid;
    return {grid.west, grid.south, grid.columns * grid.cellSize, grid.rows * grid.cellSize};
}

double RasterMap::cellSize() const {
    return isEmpty() ? kMissing : held_->grid.cellSize;
}

void RasterMap::hold(Contents contents) {
    if (contents == held_ || (contents->cells.empty() && isEmpty())) {
        return;
    }
    const auto facts = [this] {
        return std::make_tuple(columns(), rows(), extent(), cellSize(), smallest(), largest(),
                               hasPlaces(), placesError(), image_);
    };
    const auto [columns, rows, extent, cellSize, smallest, largest, hasPlaces, placesError, image] =
        facts();
    held_ = std::move(contents);
    ++revision_;
    showPicture();
    const auto tell = [this](auto before, auto now, Changed changed) {
        if (assign(before, now)) {
            Q_EMIT(this->*changed)();
        }
    };
    tell(columns, this->columns(), &RasterMap::columnsChanged);
    tell(rows, this->rows(), &RasterMap::rowsChanged);
    tell(extent, this->extent(), &RasterMap::extentChanged);
    tell(cellSize, this->cellSize(), &RasterMap::cellSizeChanged);
    tell(smallest, this->smallest(), &RasterMap::smallestChanged);
    tell(largest, this->largest(), &RasterMap::largestChanged);
    tell(hasPlaces, this->hasPlaces(), &RasterMap::hasPlacesChanged);
    tell(placesError, this->placesError(), &RasterMap::placesErrorChanged);
    tell(image, image_, &RasterMap::imageChanged);
    Q_EMIT revisionChanged();
}

/// Shows the picture of the map under a name of its own, so that no cache shows an older one.
void RasterMap::showPicture() {
    if (store_ == nullptr) {
        store_ = MapPictures::storeOf(this);
        if (store_ == nullptr) {
            return;
        }
        name_ = store_->newName();
    }
    store_->drop(picture_);
    picture_.clear();
    image_.clear();
    if (!isEmpty()) {
        picture_ = QStringLiteral("%1/%2").arg(name_).arg(revision_);
        store_->hold(picture_, held_->picture);
        image_ = QUrl(MapPictures::urlOf(picture_));
    }
}

void RasterMap::finish(Status status, const QString& error) {
    if (assign(error_, error)) {
        Q_EMIT errorStringChanged();
    }
    if (assign(status_, status)) {
        Q_EMIT statusChanged();
    }
}

QPointF RasterMap::cellAt(double x, double y) const {
    const auto cell = cellAtPoint(*held_, x, y);
    return cell ? QPointF(*cell) : kNowhere;
}

double RasterMap::valueAt(double x, double y) const {
    return valueOrMissing(*held_, cellAtPoint(*held_, x, y));
}

double RasterMap::valueOfCell(double column, double row) const {
    return valueOrMissing(*held_, cellOf(*held_, column, row));
}

QPointF RasterMap::centerOfCell(double column, double row) const {
    const auto cell = cellOf(*held_, column, row);
    const CellGrid& grid = held_->grid;
    return cell ? QPointF(grid.west + (cell->x() + 0.5) * grid.cellSize,
                          grid.north - (cell->y() + 0.5) * grid.cellSize)
                : kNowhere;
}

QPointF RasterMap::coordinatesOf(double latitude, double longitude) const {
    if (!std::isfinite(latitude) || !std::isfinite(longitude)) {
        return kNowhere;
    }
    return pointAt({latitude, longitude}, held_->projection, held_->grid.middle())
        .value_or(kNowhere);
}

QVariantMap RasterMap::placeAt(double x, double y) const {
    const Place place =
        rfu::placeAt(QPointF(x, y), held_->projection).value_or(Place{kMissing, kMissing});
    return {{QStringLiteral("latitude"), place.latitude},
            {QStringLiteral("longitude"), place.longitude}};
}

}  // namespace rfu::qml

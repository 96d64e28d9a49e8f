#include "analysis/maps/georeference.h"

#include <rfUtils/geo/detail/utm.h>
#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "analysis/maps/rasterFile.h"
#include "analysis/support/inputError.h"

namespace rfu {

namespace {

constexpr double kDegreesPerRadian = detail::utm::kDegreesPerRadian;

/// The conversion of the library without its rounding.
Place placeOf(QPointF point, const Projection& utm) {
    const auto place = detail::utm::placeOf(point.x(), point.y(), utm.utmZone, utm.isSouth);
    return {place.latitude * kDegreesPerRadian, place.longitude};
}

/// The longitude, moved by full turns to within 180 degrees of another one.
double longitudeNear(double longitude, double other) {
    return other + std::remainder(longitude - other, 360.0);
}

/// Newton's method; the derivatives are differences over one kilometre.
std::optional<QPointF> utmPointAt(const Place& place, const Projection& utm, QPointF point) {
    constexpr int kMaxSteps = 30;  // five are enough within a zone
    constexpr double kStep = 1000.0;
    constexpr double kTolerance = 1e-6;  // metres
    const double longitude =
        longitudeNear(place.longitude, detail::utm::centralMeridianOf(utm.utmZone));
    const auto change = [&](QPointF step) {
        const Place before = placeOf(point - step, utm);
        const Place after = placeOf(point + step, utm);
        return QPointF(after.longitude - before.longitude, after.latitude - before.latitude) /
               (2.0 * kStep);
    };
    for (int i = 0; i < kMaxSteps; ++i) {
        const Place reached = placeOf(point, utm);
        const QPointF missing(longitude - reached.longitude, place.latitude - reached.latitude);
        const QPointF perX = change({kStep, 0.0});
        const QPointF perY = change({0.0, kStep});
        const double determinant = perX.x() * perY.y() - perY.x() * perX.y();
        const QPointF step((missing.x() * perY.y() - missing.y() * perY.x()) / determinant,
                           (missing.y() * perX.x() - missing.x() * perX.y()) / determinant);
        point += step;
        if (std::hypot(step.x(), step.y()) < kTolerance) {
            return point;
        }
    }
    return std::nullopt;
}

void requireFitting(const TabFile& tab, const QString& tabFile, const QString& rasterFile,
                    const CellGrid& grid) {
    if (tab.units() == MapUnits::Unknown) {
        throw InputError(tabFile, "does not say what its coordinates are: it has no Units");
    }
    for (std::size_t i = 0; i < tab.points.size(); ++i) {
        if (!isPlacedAt(tab.points[i], grid)) {
            throw InputError(
                tabFile, "places Pt " + std::to_string(i + 1) + " more than a cell from where " +
                             QFileInfo(rasterFile).fileName().toStdString() + " has it");
        }
    }
}

}  // namespace

bool isPlacedAt(const PointAsRead& point, const CellGrid& grid) {
    const auto isNear = [&](float given, double expected) {
        const double rounding = 2.0 * static_cast<double>(std::numeric_limits<float>::epsilon());
        return std::abs(static_cast<double>(given) - expected) <=
               grid.cellSize + rounding * std::abs(expected);
    };
    return isNear(point.x, grid.west + point.pixel.x() * grid.cellSize) &&
           isNear(point.y, grid.north - point.pixel.y() * grid.cellSize);
}

TabFile loadTabOf(const QString& rasterFile, const CellGrid& grid, const QString& tabFile) {
    TabFile tab = loadTab(tabFile);
    requireFitting(tab, tabFile, rasterFile, grid);
    return tab;
}

TabFile loadTabBeside(const QString& rasterFile, const CellGrid& grid) {
    const QString name = tabBeside(rasterFile);
    if (!QFileInfo::exists(name)) {
        throw InputError(rasterFile, "has no georeference beside it: there is no " +
                                         QFileInfo(name).fileName().toStdString());
    }
    TabFile tab = loadTab(name);
    if (QFileInfo(tab.rasterFile).completeBaseName() != QFileInfo(name).completeBaseName()) {
        throw InputError(name, "is the georeference of another raster, " +
                                   rfu::quoted(QFileInfo(tab.rasterFile).fileName().toStdString()));
    }
    requireFitting(tab, name, rasterFile, grid);
    return tab;
}

QString tabBeside(const QString& rasterFile) {
    return withExtension(rasterFile, "tab");
}

std::optional<QPointF> pointAt(const Place& place, const Projection& projection, QPointF near) {
    switch (projection.units) {
        case MapUnits::Degrees:
            return QPointF(longitudeNear(place.longitude, near.x()), place.latitude);
        case MapUnits::Utm:
            return utmPointAt(place, projection, near);
        case MapUnits::Unknown:
            break;
    }
    return std::nullopt;
}

std::optional<Place> placeAt(QPointF point, const Projection& projection) {
    Place place{point.y(), point.x()};
    if (projection.units == MapUnits::Utm) {
        place = placeOf(point, projection);
    }
    const bool isPlace = std::abs(place.latitude) <= 90.0 && std::isfinite(place.longitude);
    if (projection.units == MapUnits::Unknown || !isPlace) {
        return std::nullopt;
    }
    return Place{place.latitude, longitudeNear(place.longitude, 0.0)};
}

bool isInDegrees(const CellGrid& grid, const QString& rasterFile) {
    try {
        const MapUnits units = loadTab(tabBeside(rasterFile)).units();
        if (units != MapUnits::Unknown) {
            return units == MapUnits::Degrees;
        }
    } catch (const InputError&) {  // none that says anything
    }
    // Grids of the whole Earth may have the centres of cells at its edges.
    return grid.west >= -180.0 - grid.cellSize && grid.east <= 360.0 + grid.cellSize &&
           grid.south >= -90.0 - grid.cellSize && grid.north <= 90.0 + grid.cellSize;
}

}  // namespace rfu

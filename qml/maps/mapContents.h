#pragma once

#include <QImage>
#include <QPoint>
#include <QString>
#include <QUrl>

#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include "analysis/maps/cellGrid.h"
#include "analysis/maps/georeference.h"

namespace rfu::qml {

/// The files of a map. The colour table and the georeference may be empty: then those beside the
/// raster count.
struct MapFiles {
    QUrl raster;
    QUrl colorTable;
    QUrl controlPoints;
};

/// A map as it was read. It is not changed afterwards, so that threads may share it.
struct MapContents {
    CellGrid grid{0,   0,   1.0, 0.0,
                  0.0, 0.0, 0.0};  // counts cells where the raster does not place them
    std::vector<float> cells;      // row after row from the north; NaN where not measured
    QImage picture;
    double smallest = std::numeric_limits<double>::quiet_NaN();  // of the measured cells
    double largest = std::numeric_limits<double>::quiet_NaN();
    Projection projection;
    QString placesError;  // why there is no projection

    /// The value of a cell of the map; NaN where it was not measured.
    double value(QPoint cell) const;
};

/// Reads a map.
/// @param held  the map before; it is given back where the files hold the same
/// @throw InputError where a file cannot be used
std::shared_ptr<const MapContents> readMap(const MapFiles& files,
                                           const std::shared_ptr<const MapContents>& held);

}  // namespace rfu::qml

#pragma once

#include <rfUtils/geo/veltaGEO.h>
#include <QPointF>
#include <QString>
#include <array>
#include <memory>

namespace rfu {

/// A control point as the file gives it, before the library converts it.
struct PointAsRead {
    bool found = false;
    float x = 0.0F;  // map coordinates in the file's units
    float y = 0.0F;
    QPointF pixel;  // column and row in the raster
};

/// A georeference file.
struct TabFile {
    std::unique_ptr<veltaGEO> map;  // as the library reads it: points converted
    std::array<PointAsRead, 4> points;

    /// The raster beside the file.
    QString rasterFile;
};

/// @throw InputError when the file is missing, cut short or no georeference of a raster
TabFile loadTab(const QString& file);

}  // namespace rfu

#pragma once

#include <rfUtils/geo/veltaGEO.h>
#include <QPointF>
#include <QString>
#include <array>
#include <memory>

#include "analysis/support/finding.h"

namespace rfu {

/// A control point as the file gives it, before the library converts it.
struct PointAsRead {
    float x = 0.0F;  // map coordinates in the file's units
    float y = 0.0F;
    QPointF pixel;  // column and row in the raster
};

/// What checkTab() looks at.
RuleTable tabRules();

struct TabCheck {
    Findings findings;
    std::array<PointAsRead, 4> points;
    std::array<long long, 4> pointLines = {};  // 0 where there is none
    long long fileLine = 0;                    // that names the raster
};

/// Everything in a georeference that the library does not read as it is written.
/// @throw InputError where the file cannot be read
TabCheck checkTab(const QString& file);

/// What the coordinates of a georeference are.
enum class MapUnits { Unknown, Degrees, Utm };

/// How map coordinates lie on the Earth.
struct Projection {
    MapUnits units = MapUnits::Unknown;
    int utmZone = 0;       // of UTM coordinates
    bool isSouth = false;  // likewise
};

/// A georeference file.
struct TabFile {
    std::unique_ptr<veltaGEO> map;  // as the library reads it: points converted
    std::array<PointAsRead, 4> points;

    MapUnits units() const;
    Projection projection() const;

    /// The raster beside the file.
    QString rasterFile;
};

/// @throw InputError as checkTab() does, and with the first error that it finds
TabFile loadTab(const QString& file);

}  // namespace rfu

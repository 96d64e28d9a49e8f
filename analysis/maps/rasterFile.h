#pragma once

#include <rfUtils/geo/veltaGEO.h>
#include <QString>
#include <QStringList>
#include <cmath>
#include <memory>
#include <optional>
#include <vector>

#include "analysis/support/finding.h"

namespace rfu {

/// What the origin in a raster file means.
enum class Origin {
    LowerLeftCorner,  // of the map
    UpperLeftCentre   // the centre of the upper left cell
};

/// A raster map with its colours as the library loads it, and what the library does not tell about it.
struct Raster {
    std::unique_ptr<veltaGEO> map;
    Origin origin = Origin::LowerLeftCorner;
    bool hasCells = true;   // false for a grid of integers, which the library does not read
    bool hasNoData = true;  // false where the file names no such value

    float cell(int column, int row) const { return map->grid[row][column]; }
    /// Whether a value was measured: it is finite and not the no-data value.
    bool isMeasured(float value) const {
        return std::isfinite(value) && !(hasNoData && value == map->noData);
    }
};

struct RasterCheck {
    std::vector<Findings> files;  // in the order in which the library reads them
    bool hasNoData = false;       // whether the raster names such a value
};

/// Checks FILE.asc, or FILE.hdr with FILE.bil for either of the two names, and FILE.clr if there is
/// one. A file beside FILE that cannot be read is a finding.
/// @throw InputError when FILE is missing or its name is not that of a raster
RasterCheck checkRaster(const QString& file);

/// The names of the files that checkRaster() checks, which need not exist.
/// @throw InputError when FILE's name is not that of a raster
QStringList filesOfRaster(const QString& file);

/// Loads the files that checkRaster() checks.
/// @throw InputError as checkRaster() does, and with the first error that it finds
Raster loadRaster(const QString& file);

/// The same with another colour table than the one beside the raster.
/// @param colorTable FILE.clr, which has to exist
Raster loadRaster(const QString& file, const QString& colorTable);

/// The name of the file of the same family with another extension.
QString withExtension(const QString& file, const char* extension);

/// Why a raster has no cells.
inline constexpr char kNoCells[] =
    "holds integers (PIXELTYPE is not FLOAT), which are not read; gdal_translate -of EHdr -ot "
    "Float32 converts them";

/// @throw InputError for a grid of integers
void requireCells(const Raster& raster, const QString& file);

struct RasterStatistics {
    long long measured = 0;
    std::optional<float> smallest;
    std::optional<float> largest;
    std::optional<double> mean;
};

RasterStatistics statisticsOf(const Raster& raster);

}  // namespace rfu

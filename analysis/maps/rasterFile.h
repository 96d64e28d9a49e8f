#pragma once

#include <rfUtils/geo/veltaGEO.h>
#include <QString>
#include <cmath>
#include <memory>
#include <optional>

namespace rfu {

/// A raster map with its colours, as the library loads it, and what the library leaves open.
struct Raster {
    std::unique_ptr<veltaGEO> map;
    bool hasCells = true;   // false for a grid of integers, which the library does not read
    bool hasNoData = true;  // false where the file names no such value

    float cell(int column, int row) const { return map->grid[row][column]; }
    /// Whether a value says something: it is finite and not the no-data value.
    bool isMeasured(float value) const {
        return std::isfinite(value) && !(hasNoData && value == map->noData);
    }
};

/// Loads FILE.asc, or FILE.hdr with FILE.bil for either of the two names, and FILE.clr if there is
/// one.
/// @throw InputError when a file is missing, cut short or no raster
Raster loadRaster(const QString& file);

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

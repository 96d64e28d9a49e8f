// Private to the library: not installed, may change in any release.
#pragma once

#include <rfUtils/geo/veltaGEO.h>

#include <cstdint>
#include <string_view>
#include <type_traits>

namespace rfu::detail {

inline constexpr std::int32_t kMaxRows = std::extent_v<decltype(veltaGEO::grid)>;
inline constexpr std::int32_t kMaxColumns =
    std::extent_v<std::remove_extent_t<decltype(veltaGEO::grid)>>;

inline constexpr char kTooManyColumns[] = "Too many columns in the file. Unable to open";
inline constexpr char kTooManyRows[] = "Too many rows in the file. Unable to open";
inline constexpr char kRasterLoaded[] = "Raster file loaded";

/// The names that a raster format gives to the size and place of a map.
struct GridHeaderKeys {
    std::string_view nCols;
    std::string_view nRows;
    std::string_view originX;
    std::string_view originY;
    std::string_view cellSize;
    std::string_view noData;
};

/// Stores the value of one header line if its key is among the format's names. False, with the
/// message set and the value stored, where it is a size that the grid cannot hold.
bool storeGridHeader(veltaGEO& map, const GridHeaderKeys& keys, std::string_view key,
                     std::string_view value);

}  // namespace rfu::detail

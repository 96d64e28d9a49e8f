// Private to the library: not installed, may change in any release.
#pragma once

#include <rfUtils/geo/veltaGEO.h>

#include <QString>

#include <cstdint>
#include <string_view>
#include <type_traits>

namespace rfu::detail {

inline constexpr std::int32_t kMaxRows = std::extent_v<decltype(veltaGEO::grid)>;
inline constexpr std::int32_t kMaxColumns =
    std::extent_v<std::remove_extent_t<decltype(veltaGEO::grid)>>;

inline constexpr char kTooManyColumns[] = "Too many columns in the file. Unable to open";
inline constexpr char kTooManyRows[] = "Too many rows in the file. Unable to open";

/// A header key that holds an integer, and the message where it exceeds its limit.
struct SizeKey {
    std::string_view key;
    std::int32_t veltaGEO::*field;
    std::int32_t limit;
    const char* refusal;
};

/// A header key that holds a decimal number.
struct PlaceKey {
    std::string_view key;
    float veltaGEO::*field;
};

/// The keys of a raster format's header lines, which have two tokens: key and value.
struct GridHeader {
    SizeKey sizes[2];
    PlaceKey places[4];
};

/// Rows of an ASC grid are counted from the line after this key.
inline constexpr std::string_view kAscLastKey = "NODATA_value";

/// Tells floats from integers in an HDR, beside the keys of kHdrHeader.
inline constexpr std::string_view kPixelTypeKey = "PIXELTYPE";

inline constexpr GridHeader kAscHeader = {
    {{"ncols", &veltaGEO::nCols, kMaxColumns, kTooManyColumns},
     {"nrows", &veltaGEO::nRows, kMaxRows, kTooManyRows}},
    {{"xllcorner", &veltaGEO::originX},
     {"yllcorner", &veltaGEO::originY},
     {"cellsize", &veltaGEO::cellSize},
     {kAscLastKey, &veltaGEO::noData}}};

inline constexpr GridHeader kHdrHeader = {
    {{"NCOLS", &veltaGEO::nCols, kMaxColumns, kTooManyColumns},
     {"NROWS", &veltaGEO::nRows, kMaxRows, kTooManyRows}},
    {{"ULXMAP", &veltaGEO::originX},
     {"ULYMAP", &veltaGEO::originY},
     {"XDIM", &veltaGEO::cellSize},
     {"NODATA", &veltaGEO::noData}}};

/// Stores the value of a header line if the format has its key. False, with the message set and
/// the value stored, for a size beyond its limit.
bool storeGridHeader(veltaGEO& map, const GridHeader& header, std::string_view key,
                     std::string_view value);

/// Ends the load of a raster's cells: sets the map's state, reads its colour table, sets the message.
/// @return true
bool finishRaster(veltaGEO& map, const QString& fileName);

}  // namespace rfu::detail

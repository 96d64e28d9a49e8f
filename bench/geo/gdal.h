#pragma once

#include <string>

namespace rfu::bench {

/// Reads the first band of a raster into an array of floats; false if GDAL cannot.
bool readByGdal(const std::string& path, float* cells, int columns, int rows);

}  // namespace rfu::bench

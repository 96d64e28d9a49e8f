#include "geo/gdal.h"

#include <gdal.h>

namespace rfu::bench {

bool readByGdal(const std::string& path, float* cells, int columns, int rows) {
    static const bool registered = [] {
        GDALAllRegister();
        return true;
    }();
    const GDALDatasetH raster = registered ? GDALOpen(path.c_str(), GA_ReadOnly) : nullptr;
    if (raster == nullptr) {
        return false;
    }
    const CPLErr error = GDALRasterIO(GDALGetRasterBand(raster, 1), GF_Read, 0, 0, columns, rows,
                                      cells, columns, rows, GDT_Float32, 0, 0);
    GDALClose(raster);
    return error == CE_None;
}

}  // namespace rfu::bench

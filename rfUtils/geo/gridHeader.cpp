#include "detail/gridHeader.h"

#include <rfUtils/detail/numberPrefix.h>
#include <rfUtils/detail/saturate.h>

namespace rfu::detail {

bool storeGridHeader(veltaGEO& map, const GridHeader& header, std::string_view key,
                     std::string_view value) {
    for (const SizeKey& size : header.sizes) {
        if (key == size.key) {
            map.*size.field = integerPrefix(value);
            if (map.*size.field > size.limit) {
                map.setErrMsg(QLatin1String(size.refusal));
                return false;
            }
        }
    }
    for (const PlaceKey& place : header.places) {
        if (key == place.key) {
            map.*place.field = toFloat(decimalPrefix(value));
        }
    }
    return true;
}

bool finishRaster(veltaGEO& map, const QString& fileName) {
    map.isLoaded = 1;
    map.isValid = 1;
    map.LoadColorTable(fileName);
    map.setErrMsg(QStringLiteral("Raster file loaded"));
    return true;
}

}  // namespace rfu::detail

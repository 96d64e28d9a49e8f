#include <rfUtils/detail/saturate.h>
#include <rfUtils/geo/detail/utm.h>
#include <rfUtils/geo/veltaGEO.h>

#include <cmath>

using rfu::detail::toFloat;
using rfu::detail::toInt32;

namespace {

constexpr double kMicroDegreesPerRadian = 57295779.513082325;
constexpr double kMicro = 1e-06;
constexpr double kInvZoneWidth = 0.16666666666666666;

}  // namespace

int veltaGEO::LatLngToUTMZone(float /*latitude*/, float longitude) const {
    const double fromDateLine = static_cast<double>(longitude) + 180.0;
    return toInt32(std::floor(fromDateLine * kInvZoneWidth) + 1.0);
}

void veltaGEO::utmToLatLng(float easting, float northing, int zone, int south, float* latitude,
                           float* longitude) const {
    const rfu::detail::utm::UnroundedPlace place = rfu::detail::utm::placeOf(
        static_cast<double>(easting), static_cast<double>(northing), zone, south != 0);
    if (latitude != nullptr) {
        *latitude = toFloat(std::floor(place.latitude * kMicroDegreesPerRadian) * kMicro);
    }
    if (longitude != nullptr) {
        *longitude = toFloat(place.longitude);
    }
}

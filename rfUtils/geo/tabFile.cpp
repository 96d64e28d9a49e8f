#include "detail/lineReader.h"
#include "detail/tabLine.h"

#include <rfUtils/detail/numberPrefix.h>
#include <rfUtils/detail/regularFile.h>
#include <rfUtils/detail/saturate.h>
#include <rfUtils/geo/veltaGEO.h>

#include <cstdint>
#include <cstring>
#include <string_view>

using namespace rfu::detail;

namespace {

constexpr std::int32_t kDegrees = 1;
constexpr std::int32_t kOtherUnit = 2;

float number(std::string_view token) {
    return toFloat(decimalPrefix(token));
}

void storeRasterFile(veltaGEO& map, std::string_view name) {
    static_assert(sizeof(map.rasterFileName) > kMaxTokenLength, "a token and its NUL fit");
    std::memset(map.rasterFileName, 0, sizeof(map.rasterFileName));
    std::memcpy(map.rasterFileName, name.data(), name.size());
    map.fileKind = map.GetFileNameExt(map.rasterFileName);
}

/// Converts the control points from UTM metres in the coordinate system read so far.
void convertControlPoints(veltaGEO& map) {
    map.utmZone = map.LatLngToUTMZone(map.originLatitude, map.centralMeridian);
    map.southHemisphere = map.falseNorthing != 0.0F ? 1 : 0;
    for (auto& point : map.controlPoint) {
        map.utmToLatLng(point.x, point.y, map.utmZone, map.southHemisphere, &point.y, &point.x);
    }
}

void storeUnits(veltaGEO& map, std::string_view unit) {
    if (unit == "degree") {
        map.unitKind = kDegrees;
    } else {
        map.unitKind = kOtherUnit;
        convertControlPoints(map);
    }
}

/// False for a file of a type that is not supported.
bool storeLine(veltaGEO& map, const TabLine& line) {
    const auto& tokens = line.tokens;
    switch (line.kind) {
        case TabLine::Kind::Type:
            return tokens[1] == "RASTER";
        case TabLine::Kind::File:
            storeRasterFile(map, tokens[1]);
            break;
        case TabLine::Kind::Units:
            storeUnits(map, tokens[1]);
            break;
        case TabLine::Kind::CoordSys:
            map.centralMeridian = number(tokens[6]);
            map.originLatitude = number(tokens[7]);
            map.falseEasting = number(tokens[9]);
            map.falseNorthing = number(tokens[10]);
            break;
        case TabLine::Kind::Point:
            map.controlPoint[line.point] = {number(tokens[0]), number(tokens[1])};
            break;
        case TabLine::Kind::Ignored:
            break;
    }
    return true;
}

}  // namespace

bool veltaGEO::loadTabFile(const QString& fileName) {
    RegularFile file(fileName);
    if (!file.open()) {
        return false;
    }
    LineReader lines(file.device(), kMaxTabLine);
    while (char* const line = lines.next()) {
        if (!storeLine(*this, tabLine(line))) {
            setErrMsg(QStringLiteral("File not supported"));
            return false;
        }
    }
    return true;
}

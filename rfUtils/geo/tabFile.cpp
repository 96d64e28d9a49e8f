#include "detail/lineReader.h"
#include "detail/tokenizer.h"

#include <rfUtils/detail/numberPrefix.h>
#include <rfUtils/detail/regularFile.h>
#include <rfUtils/detail/saturate.h>
#include <rfUtils/geo/veltaGEO.h>

#include <cstring>
#include <iterator>

using namespace rfu::detail;

namespace {

constexpr std::int32_t kDegrees = 1;
constexpr std::int32_t kOtherUnit = 2;

constexpr std::size_t kCoordSysTokens = 11;
using Tokens = std::array<std::string_view, kCoordSysTokens + 1>;

constexpr std::string_view kPointLabels[] = {"Pt 1", "Pt 2", "Pt 3", "Pt 4"};
static_assert(std::size(kPointLabels) == std::extent_v<decltype(veltaGEO::controlPoint)>);

float number(std::string_view token) {
    return toFloat(decimalPrefix(token));
}

void storeControlPoint(veltaGEO& map, const Tokens& tokens) {
    for (std::size_t i = 0; i < std::size(kPointLabels); ++i) {
        if (tokens[5] == kPointLabels[i]) {
            map.controlPoint[i] = {number(tokens[0]), number(tokens[1])};
        }
    }
}

void storeCoordSys(veltaGEO& map, const Tokens& tokens) {
    map.centralMeridian = number(tokens[6]);
    map.originLatitude = number(tokens[7]);
    map.falseEasting = number(tokens[9]);
    map.falseNorthing = number(tokens[10]);
}

void storeRasterFile(veltaGEO& map, std::string_view name) {
    static_assert(sizeof(map.rasterFileName) > kMaxTokenLength, "a token and its NUL fit");
    std::memset(map.rasterFileName, 0, sizeof(map.rasterFileName));
    std::memcpy(map.rasterFileName, name.data(), name.size());
    map.fileKind = map.GetFileNameExt(map.rasterFileName);
}

/// Takes the control points as UTM metres of the coordinate system read so far.
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
bool storePair(veltaGEO& map, std::string_view key, std::string_view value) {
    if (key == "Type") {
        return value == "RASTER";
    }
    if (key == "File") {
        storeRasterFile(map, value);
    } else if (key == "Units") {
        storeUnits(map, value);
    }
    return true;
}

bool storeLine(veltaGEO& map, char* line) {
    Tokens tokens;
    const std::size_t count = Tokenizer(line).take(tokens);
    if (count == 2) {
        return storePair(map, tokens[0], tokens[1]);
    }
    if (count == 6) {
        storeControlPoint(map, tokens);
    } else if (count == kCoordSysTokens && tokens[0] == "CoordSys") {
        storeCoordSys(map, tokens);
    }
    return true;
}

}  // namespace

bool veltaGEO::loadTabFile(const QString& fileName) {
    RegularFile file(fileName);
    if (!file.open()) {
        return false;
    }
    LineReader lines(file.device(), kMaxLongLineLength);
    while (char* const line = lines.next()) {
        const bool comment = line[0] == '!';
        if (!comment && !storeLine(*this, line)) {
            setErrMsg(QStringLiteral("File not supported"));
            return false;
        }
    }
    return true;
}

// Holds for any bytes:
// - the answer, every field and the message are those of a plain restatement of the format;
// - the raster's name is terminated within 64 characters once it is set;
// - no cell changes, nor a byte on either side of the map.
#include "support/guardedMap.h"
#include "support/mapText.h"
#include "support/require.h"
#include "support/scratchFile.h"

#include <cstring>
#include <memory>

using namespace rfu::fuzz;

namespace {

constexpr std::size_t kLineLimit = 1023999;

void storeUnits(const std::string& unit, veltaGEO& map) {
    if (unit == "degree") {
        map.unitKind = 1;
        return;
    }
    map.unitKind = 2;
    map.utmZone = map.LatLngToUTMZone(map.originLatitude, map.centralMeridian);
    map.southHemisphere = map.falseNorthing == 0.0F ? 0 : 1;
    for (veltaGEO::ControlPoint& point : map.controlPoint) {
        float latitude = 0.0F;
        float longitude = 0.0F;
        map.utmToLatLng(point.x, point.y, map.utmZone, map.southHemisphere, &latitude, &longitude);
        point = {longitude, latitude};
    }
}

bool load(std::string_view file, veltaGEO& map) {
    for (const std::string& line : linesOf(file, kLineLimit)) {
        if (!line.empty() && line[0] == '!') {
            continue;
        }
        const auto tokens = tokensOf(line);
        if (tokens.size() == 6 && tokens[5].size() == 4 && tokens[5].substr(0, 3) == "Pt " &&
            tokens[5][3] >= '1' && tokens[5][3] <= '4') {
            map.controlPoint[tokens[5][3] - '1'] = {decimalOf(tokens[0]), decimalOf(tokens[1])};
        } else if (tokens.size() == 11 && tokens[0] == "CoordSys") {
            map.centralMeridian = decimalOf(tokens[6]);
            map.originLatitude = decimalOf(tokens[7]);
            map.falseEasting = decimalOf(tokens[9]);
            map.falseNorthing = decimalOf(tokens[10]);
        } else if (tokens.size() == 2 && tokens[0] == "File") {
            std::memset(map.rasterFileName, 0, sizeof map.rasterFileName);
            std::strcpy(map.rasterFileName, tokens[1].c_str());
            map.fileKind = map.GetFileNameExt(map.rasterFileName);
        } else if (tokens.size() == 2 && tokens[0] == "Type" && tokens[1] != "RASTER") {
            map.errMsg = QStringLiteral("File not supported");
            return false;
        } else if (tokens.size() == 2 && tokens[0] == "Units") {
            storeUnits(tokens[1], map);
        }
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ScratchFile file("map.tab");
    static GuardedMap guarded;
    static const auto expected = std::make_unique<veltaGEO>();
    file.write(data, size);
    resetFields(*expected);
    const std::string before(expected->rasterFileName, sizeof expected->rasterFileName);
    const bool loads = load({reinterpret_cast<const char*>(data), size}, *expected);

    guarded.open({});
    const veltaGEO& map = guarded.map();
    REQUIRE(guarded.map().loadTabFile(file.path()) == loads);
    REQUIRE(sameFields(map, *expected));
    const std::string name(map.rasterFileName, sizeof map.rasterFileName);
    REQUIRE(name == before || name.find('\0') < 64);
    guarded.take();
    return 0;
}

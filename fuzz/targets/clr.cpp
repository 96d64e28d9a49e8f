// Holds for any bytes:
// - the load succeeds, and the table is that of a plain restatement of the format, entries that the
//   file does not reach being as before;
// - there are 1 to 32 entries;
// - no other field changes, nor a cell, nor a byte on either side of the map.
#include "support/guardedMap.h"
#include "support/mapText.h"
#include "support/require.h"
#include "support/scratchFile.h"

#include <memory>

using namespace rfu::fuzz;

namespace {

constexpr std::size_t kLineLimit = 1023;
constexpr std::size_t kMostLines = 64;

void storeDefault(veltaGEO& map) {
    map.colorCount = 1;
    map.lowValue[0] = -9999.0F;
    map.highValue[0] = 9999.0F;
    map.lowRed[0] = map.lowGreen[0] = map.lowBlue[0] = 0;
}

void load(std::string_view file, veltaGEO& map) {
    storeDefault(map);
    const auto lines = linesOf(file, kLineLimit);
    const std::size_t count = std::min(lines.size(), kMostLines);
    for (std::size_t i = 0; i < count; ++i) {
        const auto tokens = tokensOf(lines[i]);
        const std::size_t entry = i / 2;
        if (tokens.size() != 4) {
            continue;
        }
        if (i % 2 == 0) {
            map.lowValue[entry] = decimalOf(tokens[0]);
            map.lowRed[entry] = integerOf(tokens[1]);
            map.lowGreen[entry] = integerOf(tokens[2]);
            map.lowBlue[entry] = integerOf(tokens[3]);
        } else {
            map.highValue[entry] = decimalOf(tokens[0]);
            map.highRed[entry] = integerOf(tokens[1]);
            map.highGreen[entry] = integerOf(tokens[2]);
            map.highBlue[entry] = integerOf(tokens[3]);
        }
    }
    if (count < 2) {
        storeDefault(map);
    } else {
        map.colorCount = static_cast<std::int32_t>(count / 2);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ScratchFile file("map.clr");
    static GuardedMap guarded;
    static const auto expected = std::make_unique<veltaGEO>();
    file.write(data, size);
    resetFields(*expected);
    load({reinterpret_cast<const char*>(data), size}, *expected);

    guarded.open({});
    const veltaGEO& map = guarded.map();
    REQUIRE(guarded.map().LoadColorTable(file.path()));
    REQUIRE(map.colorCount >= 1 && map.colorCount <= 32);
    REQUIRE(sameFields(map, *expected));
    guarded.take();
    return 0;
}

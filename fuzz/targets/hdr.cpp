// Holds for any bytes:
// - the answer, every field and the message are those of a plain restatement of the format;
// - no cell changes, nor a byte on either side of the map.
#include "support/guardedMap.h"
#include "support/mapText.h"
#include "support/require.h"
#include "support/scratchFile.h"

#include <memory>

using namespace rfu::fuzz;

namespace {

constexpr std::size_t kLineLimit = 10239;

bool load(std::string_view file, veltaGEO& map) {
    map.isLoaded = 0;
    for (const std::string& line : linesOf(file, kLineLimit)) {
        const auto tokens = tokensOf(line);
        if (tokens.size() != 2) {
            continue;
        }
        const std::string& key = tokens[0];
        const std::string& value = tokens[1];
        if (key == "NCOLS") {
            map.nCols = integerOf(value);
            if (map.nCols > 2048) {
                map.errMsg = QStringLiteral("Too many columns in the file. Unable to open");
                return false;
            }
        } else if (key == "NROWS") {
            map.nRows = integerOf(value);
            if (map.nRows > 2048) {
                map.errMsg = QStringLiteral("Too many rows in the file. Unable to open");
                return false;
            }
        } else if (key == "ULXMAP") {
            map.originX = decimalOf(value);
        } else if (key == "ULYMAP") {
            map.originY = decimalOf(value);
        } else if (key == "XDIM") {
            map.cellSize = decimalOf(value);
        } else if (key == "NODATA") {
            map.noData = decimalOf(value);
        } else if (key == "PIXELTYPE") {
            map.isFloat = value == "FLOAT" ? 1 : 0;
        }
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ScratchFile file("map.hdr");
    static GuardedMap guarded;
    static const auto expected = std::make_unique<veltaGEO>();
    file.write(data, size);
    resetFields(*expected);
    const bool loads = load({reinterpret_cast<const char*>(data), size}, *expected);

    guarded.open({});
    REQUIRE(guarded.map().loadHDRFile(file.path()) == loads);
    REQUIRE(sameFields(guarded.map(), *expected));
    guarded.take();
    return 0;
}

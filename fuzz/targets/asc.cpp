#include "support/mapLoad.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return rfu::fuzz::requireModelled("map.asc", data, size, rfu::test::ascModel,
                                      &veltaGEO::loadASCFile);
}

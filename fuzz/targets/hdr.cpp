#include "support/mapLoad.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return rfu::fuzz::requireModelled("map.hdr", data, size, rfu::test::hdrModel,
                                      &veltaGEO::loadHDRFile);
}

#include "support/mapLoad.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return rfu::fuzz::requireModelled("map.clr", data, size, rfu::test::clrModel,
                                      &veltaGEO::LoadColorTable);
}

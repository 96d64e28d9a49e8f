// For any bytes in a text file of a map:
// - the result, every field, every cell and the message are those of the format's model;
// - no other cell changes, nor a byte beside the map.
#pragma once

#include "guardedMap.h"
#include "require.h"
#include "scratchFile.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace rfu::fuzz {

using MapModel = bool (*)(std::string_view file, veltaGEO& map, Rows& rows);
using MapLoader = bool (veltaGEO::*)(const QString&);

/// Loads the bytes as a file of this name, which is the same in each run, and compares with the
/// model.
/// @return 0, the result of a target
inline int requireModelled(const char* name, const std::uint8_t* data, std::size_t size,
                           MapModel model, MapLoader loader) {
    static ScratchFile file(name);
    static GuardedMap guarded;
    static const auto expected = std::make_unique<veltaGEO>();
    file.write(data, size);
    rfu::test::resetFields(*expected);
    Rows rows;
    const bool loads = model({reinterpret_cast<const char*>(data), size}, *expected, rows);

    guarded.open(rows);
    REQUIRE((guarded.map().*loader)(file.path()) == loads);
    REQUIRE(rfu::test::sameFields(guarded.map(), *expected));
    REQUIRE(sameCells(guarded.take(), rows));
    return 0;
}

}  // namespace rfu::fuzz

#pragma once

#include <cstdint>
#include <string>

namespace rfu {

/// How far reading is, "42 % of 2100 MB, 812 MB/s, 2 s left", or "12 MB, 0.4 MB/s" where nobody knows how
/// many bytes there are; a MB is a million bytes.
/// @param read    bytes so far
/// @param all     bytes to read; 0 where that is not known
/// @param seconds that reading took so far, above 0
std::string progressText(std::int64_t read, std::int64_t all, double seconds);

}  // namespace rfu

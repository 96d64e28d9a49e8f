#pragma once

#include <QString>
#include <memory>

#include "analysis/support/compression.h"

namespace rfu {

// One unpacker for each library that was found (analysis/CMakeLists.txt).

using MakeUnpacker = std::unique_ptr<Unpacker> (*)(const QString& file);

#ifdef RFUTILS_HAS_ZLIB
std::unique_ptr<Unpacker> makeGzipUnpacker(const QString& file);
inline constexpr MakeUnpacker kMakeGzipUnpacker = makeGzipUnpacker;
#else
inline constexpr MakeUnpacker kMakeGzipUnpacker = nullptr;
#endif

#ifdef RFUTILS_HAS_LZMA
std::unique_ptr<Unpacker> makeXzUnpacker(const QString& file);
inline constexpr MakeUnpacker kMakeXzUnpacker = makeXzUnpacker;
#else
inline constexpr MakeUnpacker kMakeXzUnpacker = nullptr;
#endif

#ifdef RFUTILS_HAS_ZSTD
std::unique_ptr<Unpacker> makeZstdUnpacker(const QString& file);
inline constexpr MakeUnpacker kMakeZstdUnpacker = makeZstdUnpacker;
#else
inline constexpr MakeUnpacker kMakeZstdUnpacker = nullptr;
#endif

}  // namespace rfu

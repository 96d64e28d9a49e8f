#include "analysis/support/compression.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace rfu {

namespace {

using namespace std::string_view_literals;

struct Magic {
    std::string_view bytes;
    const char* unpacker;
};

constexpr Magic kMagics[] = {
    {"\x1F\x8B"sv, "gzip"}, {"\xFD\x37\x7A\x58\x5A\x00"sv, "xz"}, {"\x28\xB5\x2F\xFD"sv, "zstd"}};

}  // namespace

const char* unpackerOf(std::string_view firstBytes) {
    const auto found =
        std::find_if(std::begin(kMagics), std::end(kMagics), [firstBytes](const Magic& magic) {
            return firstBytes.substr(0, magic.bytes.size()) == magic.bytes;
        });
    return found == std::end(kMagics) ? nullptr : found->unpacker;
}

CompressedInput::CompressedInput(const QString& file, const char* unpacker)
    : InputError(file, std::string("is compressed; unpack it: ") + unpacker + " -dc " +
                           file.toStdString()) {}

}  // namespace rfu

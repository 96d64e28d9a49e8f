#include "analysis/support/compression.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "analysis/support/unpackers.h"

namespace rfu {

namespace {

using namespace std::string_view_literals;

// clang-format off
constexpr Packing kPackings[] = {
    {"\x1F\x8B"sv,                 "gzip", kMakeGzipUnpacker},
    {"\xFD\x37\x7A\x58\x5A\x00"sv, "xz",   kMakeXzUnpacker},
    {"\x28\xB5\x2F\xFD"sv,         "zstd", kMakeZstdUnpacker}};
// clang-format on

}  // namespace

std::size_t Unpacker::unpack(std::string_view& packed, char* unpacked, std::size_t room) {
    for (;;) {
        if (!isOpen_) {
            packed.remove_prefix(std::min(packed.find_first_not_of('\0'), packed.size()));
            if (packed.empty()) {
                return 0;
            }
            begin();
            isOpen_ = true;
        }
        const Step step = advance(packed, unpacked, room);
        if (step.state == State::Damaged) {
            throw InputError(file_, "the compressed data is damaged");
        }
        if (step.state == State::TooLarge) {
            throw InputError(file_, "takes more than " + std::to_string(kMaxMemory >> 20U) +
                                        " MiB of memory to unpack");
        }
        isOpen_ = step.state == State::Open;
        if (step.written > 0 || packed.empty()) {
            return step.written;
        }
    }
}

const Packing* packingOf(std::string_view firstBytes) {
    const auto* const found = std::find_if(
        std::begin(kPackings), std::end(kPackings), [firstBytes](const Packing& packing) {
            return firstBytes.substr(0, packing.firstBytes.size()) == packing.firstBytes;
        });
    return found == std::end(kPackings) ? nullptr : found;
}

CompressedInput::CompressedInput(const QString& file, const char* unpacker)
    : InputError(file, std::string("is compressed; unpack it: ") + unpacker + " -dc " +
                           file.toStdString()) {}

}  // namespace rfu

// The readers of compressed data behind the lines of a file. Holds for any bytes:
// - unpacking ends, at the end of the bytes or with an InputError that names the file;
// - no more than `room` bytes come at once, and none before bytes were given;
// - what comes of undamaged data does not depend on how the bytes are cut, nor on the room;
// - LineReader gives the lines of it, but for one that the end of the data cuts.
#include "support/input.h"
#include "support/require.h"
#include "support/scratchFile.h"

#include "analysis/support/compression.h"
#include "analysis/support/inputError.h"
#include "analysis/support/lineReader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

using namespace rfu;
using namespace rfu::fuzz;

namespace {

constexpr std::size_t kEnough = 1U << 18U;  // small inputs expand to gigabytes
constexpr std::size_t kMaxRoom = 65536;

struct Unpacked {
    std::string text;
    bool isComplete = false;
    bool failed = false;
};

/// Of damaged data it depends on the portions how much precedes the damage, and even whether the
/// library notices it: zstd checks the size that a frame names only where it has the whole frame.
bool isEqual(const Unpacked& a, const Unpacked& b) {
    return a.failed || b.failed || (a.text == b.text && a.isComplete == b.isComplete);
}

/// At most kEnough bytes.
Unpacked unpack(const QString& file, std::string_view packed, std::size_t piece, std::size_t room) {
    Unpacked result;
    char out[kMaxRoom];
    try {
        const std::unique_ptr<Unpacker> unpacker = packingOf(packed)->makeUnpacker(file);
        std::string_view none;
        REQUIRE(unpacker->unpack(none, out, room) == 0);
        while (!packed.empty() && result.text.size() < kEnough) {
            std::string_view given = packed.substr(0, piece);
            packed.remove_prefix(given.size());
            std::size_t got = 0;
            while ((got = unpacker->unpack(given, out, room)) > 0 && result.text.size() < kEnough) {
                REQUIRE(got <= room);
                result.text.append(out, got);
            }
        }
        result.isComplete = unpacker->isComplete();
    } catch (const InputError& error) {
        REQUIRE(error.file() == file);
        result.failed = true;
    }
    if (result.text.size() >= kEnough) {
        result = {result.text.substr(0, kEnough), false, false};
    }
    return result;
}

void requireLines(const QString& file, const Unpacked& whole) {
    std::string text;
    bool failed = false;
    LineReader reader(file);
    try {
        std::string_view line;
        while (text.size() < kEnough && reader.next(line)) {
            text += line;
            text += reader.hasLineEnd() ? "\n" : "";
        }
    } catch (const InputError& error) {
        REQUIRE(error.file() == file);
        failed = true;
    }
    if (whole.text.size() == kEnough || text.size() >= kEnough) {
        return;  // not both have seen the end
    }
    REQUIRE(failed == whole.failed);
    REQUIRE(failed || reader.endsEarly() != whole.isComplete);
    std::string expected = whole.text;
    if (failed || reader.endsEarly()) {
        expected.resize(expected.rfind('\n') + 1);
    }
    // A reader drops carriage returns before line ends and a byte-order mark.
    const auto isDropped = [](char c) {
        return c == '\r' || static_cast<unsigned char>(c) >= 0x80;
    };
    for (std::string* const part : {&text, &expected}) {
        part->erase(std::remove_if(part->begin(), part->end(), isDropped), part->end());
    }
    REQUIRE(text == expected);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const Packing* const packing = packingOf(bytes);
    if (packing == nullptr || packing->makeUnpacker == nullptr) {
        return 0;
    }
    static ScratchFile file("packed");
    file.write(data, size);
    const Unpacked whole = unpack(file.path(), bytes, size, kMaxRoom);
    REQUIRE(isEqual(whole, unpack(file.path(), bytes, 1, kMaxRoom)));
    REQUIRE(isEqual(whole, unpack(file.path(), bytes, 7, 1024)));
    requireLines(file.path(), whole);
    return 0;
}

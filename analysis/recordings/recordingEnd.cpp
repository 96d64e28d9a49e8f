#include "analysis/recordings/recordingEnd.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "analysis/support/compression.h"
#include "analysis/support/files.h"
#include "analysis/support/inputError.h"

#include <unistd.h>

namespace rfu {

namespace {

struct Descriptor {
    ~Descriptor() {
        if (number >= 0) {
            ::close(number);
        }
    }
    int number;
};

bool isCompressed(int descriptor) {
    std::array<char, 8> bytes = {};  // longer than what packingOf() looks for
    const auto got = ::pread(descriptor, bytes.data(), bytes.size(), 0);
    return got > 0 && packingOf({bytes.data(), static_cast<std::size_t>(got)}) != nullptr;
}

/// The time of a line of a hop; nothing for any other line.
std::optional<std::int64_t> timeOfHop(std::string_view line, const Hop& hop,
                                      const LineReader& where) {
    if (!where.hasLineEnd() || !looksLikeHop(line)) {
        return std::nullopt;
    }
    try {
        const HopLine read = readHopLine(line, where);
        return read.hop == hop ? std::optional(read.microseconds) : std::nullopt;
    } catch (const InputError&) {
        return std::nullopt;
    }
}

/// The time of the last such line.
std::optional<std::int64_t> lastTimeOfHop(LineReader& lines, const Hop& hop) {
    std::optional<std::int64_t> last;
    try {
        for (std::string_view line; lines.next(line);) {
            if (const auto time = timeOfHop(line, hop, lines)) {
                last = time;
            }
        }
    } catch (const InputError&) {  // bytes that are no lines
        return std::nullopt;
    }
    return lines.isStopped() ? std::nullopt : last;
}

}  // namespace

std::optional<std::int64_t> timeOfLastSweep(const QString& file, const Hop& first,
                                            Waiting waiting) {
    const auto size = sizeOfRegular(file);
    const Descriptor descriptor = {size ? openForReading(file, 0) : -1};
    if (descriptor.number < 0 || isCompressed(descriptor.number)) {
        return std::nullopt;
    }
    ::lseek(descriptor.number, std::max(std::int64_t{0}, *size - kBytesOfEnd), SEEK_SET);
    waiting.input = descriptor.number;
    LineReader lines(file, std::move(waiting));
    return lastTimeOfHop(lines, first);
}

}  // namespace rfu

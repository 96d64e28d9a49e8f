#pragma once

#include <QString>
#include <cstdint>
#include <optional>

#include "analysis/recordings/recordingLine.h"
#include "analysis/support/lineReader.h"

namespace rfu {

/// How much of the end of a file is looked at; holds the sweeps of a million points.
inline constexpr std::int64_t kBytesOfEnd = std::int64_t{8} << 20;

/// When the last sweep of a recording begins, in microseconds from a fixed day, without reading all of
/// it: the time of the last whole line of the hop with which its sweeps begin. A last sweep that lost
/// this hop is overlooked.
/// @param first hop of each sweep; see Recording::hopsInOrder()
/// @return nothing for anything but a regular file that is not compressed, where the hop is not among
///         the last kBytesOfEnd bytes, and where reading is stopped
std::optional<std::int64_t> timeOfLastSweep(const QString& file, const Hop& first, Waiting waiting);

}  // namespace rfu

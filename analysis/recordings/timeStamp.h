#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace rfu {

// Date and time of the lines of a recording.

/// Whether a text is written as "2024-05-04", whatever the numbers.
bool looksLikeDate(std::string_view text);

/// Whether a text is written as "2024-05-04" and that day exists.
bool isDate(std::string_view text);

/// Whether a text is a time of day as "21:15:00" or "21:15:00.308551". Second 60 is a leap second.
bool isTime(std::string_view text);

/// Microseconds from a fixed day to a date and time, which isDate() and isTime() accept. Further
/// decimals are cut.
std::int64_t microsecondsOf(std::string_view date, std::string_view time);

/// Whether a text is a date and a time with a blank between them, as a Sweep has them.
bool isStamp(std::string_view text);

/// The microseconds of a stamp.
std::int64_t microsecondsOf(std::string_view stamp);

/// The hour of day of such a stamp, from 0 to 23.
int hourOf(std::string_view stamp);

inline constexpr std::int64_t kMicrosecondsPerSecond = 1000000;
inline constexpr std::int64_t kMicrosecondsPerDay = 86400 * kMicrosecondsPerSecond;

/// Memory of a stamp that is kept, as "2024-05-04 21:15:00.308551", and of its place.
inline constexpr std::size_t kBytesOfTime = 64;

/// "2024-05-04", of a time from the fixed day.
std::string dateText(std::int64_t microseconds);

/// "21:15:00", or "21:15:00.30" with two decimals, which are cut.
/// @param decimals of the seconds, at most 6
std::string timeText(std::int64_t microseconds, int decimals = 0);

}  // namespace rfu

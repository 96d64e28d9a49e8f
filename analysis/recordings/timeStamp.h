#pragma once

#include <cstdint>
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

}  // namespace rfu

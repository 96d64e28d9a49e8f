#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace rfu {

class LineReader;

// Lines of a recording. A line is either a hop of a sweep, as rtl_power and hackrf_sweep write it,
//   date, time, Hz low, Hz high, Hz step, samples, dB, dB, ...
// or a whole trace without frequencies:
//   dB, dB, ...
// Lines that hold no data are skipped: blank ones, comments, and a header before all others.
// A line that cannot be read ends in an InputError with file and line.

inline constexpr double kHertzPerMegahertz = 1e6;

/// The range that one tuning of the receiver covers, and the bins in it.
struct Hop {
    double low;   // Hz
    double high;  // Hz
    double step;  // Hz

    /// Number of bins between low and high.
    std::size_t points() const;
};

bool operator==(const Hop& a, const Hop& b);

/// "88000000 to 90500000 Hz in steps of 39062.5 Hz"
std::string describe(const Hop& hop);

struct HopLine {
    std::string time;           // "2024-05-04 21:15:00.308551", as many decimals as the line has
    std::int64_t microseconds;  // the same time, from a fixed day
    Hop hop;
    std::string_view levels;  // the fields after the head, within the line
};

/// Whether the line names columns, as "date,time,Hz low,...": its first field begins with a letter, and
/// no field is a level, measured or not. Fields may be quoted.
bool looksLikeHeader(std::string_view line);

/// Whether the line begins with a date, as the lines of a sweep do.
bool looksLikeHop(std::string_view line);

/// Whether the line begins with a level or an empty field, as a trace without frequencies does.
bool looksLikeTrace(std::string_view line);

/// Reads the fields before the levels, which are left to readLevels().
HopLine readHopLine(std::string_view line, const LineReader& where);

/// Number of comma separated fields.
std::size_t countFields(std::string_view fields);

/// Where the comma behind so many fields stands; npos where there are no more.
/// @param count above 0
std::size_t endOfFields(std::string_view fields, std::size_t count);

/// Number of decimals of a level plus one for the point, 0 without a point; nothing for a level that
/// was not measured.
std::optional<std::size_t> decimalsOf(std::string_view level);

/// Whether the levels are written with the same decimals and the last field is not empty.
/// @param decimals of other lines, which a line of one measured level is compared with
bool haveSameDecimals(std::string_view fields, std::optional<std::size_t> decimals);

/// Reads comma separated levels in dBm. The first `wanted` are stored, all are checked. A level
/// that was not measured (an empty field, "nan", "inf", "-inf") is stored as
/// traceRssiBuffer::kNoMeasurement.
/// @return number of fields
std::size_t readLevels(std::string_view fields, double* levels, std::size_t wanted,
                       const LineReader& where);

}  // namespace rfu

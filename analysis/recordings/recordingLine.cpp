#include "analysis/recordings/recordingLine.h"

#include <rfUtils/detail/numberPrefix.h>
#include <rfUtils/detail/shortDecimal.h>
#include <rfUtils/trace/traceRssiBuffer.h>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

#include "analysis/recordings/hundredths.h"
#include "analysis/recordings/timeStamp.h"
#include "analysis/support/csvLine.h"
#include "analysis/support/inputError.h"
#include "analysis/support/lineReader.h"
#include "analysis/support/numbers.h"

namespace rfu {

namespace {

constexpr double kMaxPointsOfHop = 1e6;  // more than fit into the longest line

InputError badLine(const LineReader& where, const std::string& what) {
    return InputError(where.file(), where.number(), what);
}

double nextNumber(CsvFields& fields, const char* name, const LineReader& where) {
    std::string_view field;
    if (!fields.next(field)) {
        throw badLine(where, std::string("the line ends before ") + name);
    }
    const auto number = parseNumber(field);
    if (!number) {
        throw badLine(where,
                      std::string(name) + " is " + rfu::quoted(field) + " instead of a number");
    }
    return *number;
}

void check(const Hop& hop, const LineReader& where) {
    const double points = (hop.high - hop.low) / hop.step;
    if (!(hop.low >= 0.0 && hop.high > hop.low && hop.step > 0.0) || !(points >= 0.5) ||
        !(points < kMaxPointsOfHop)) {
        throw badLine(where, "Hz low, Hz high and Hz step do not fit together: " + describe(hop));
    }
}

/// Whether the field is a number, or empty or a word for a level that was not measured.
bool looksLikeLevel(std::string_view field) {
    double level = 0.0;
    const char* const end = field.data() + field.size();
    return field.empty() || std::from_chars(withoutPlus(field).data(), end, level).ptr == end;
}

const char* skipBlanks(const char* at, const char* end) {
    while (at != end && detail::isBlank(*at)) {
        ++at;
    }
    return at;
}

std::string_view textBetween(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

[[noreturn]] void throwBadLevel(const char* at, const char* end, const LineReader& where) {
    const std::string_view field = textBetween(at, std::find(at, end, ','));
    throw badLine(where, rfu::quoted(trimmed(field)) + " is not a level in dBm");
}

/// Fast path for a level such as "-51.23" that ends at a comma and not near the end of the line.
/// @return the comma; null where the fast path does not apply
const char* readShortLevel(const char* at, const char* end, double& level) {
    static_assert(detail::kRoundsOnce, "the quotient has to be rounded to double at once");
    const bool isNegative = *at == '-';
    at += isNegative ? 1 : 0;
    if (end - at < 8) {
        return nullptr;
    }
    const detail::PlainDecimal number = detail::shortDecimal(at, [](char c) { return c == ','; });
    level = isNegative ? -number.value : number.value;
    return number.end;
}

bool endsField(const char* at, const char* end) {
    return at == end || *at == ',';
}

/// Any level that std::from_chars reads; one that is not finite was not measured.
/// @return the end of the field
const char* readAnyLevel(const char* begin, const char* end, double& level,
                         const LineReader& where) {
    const auto result = std::from_chars(withoutPlus(textBetween(begin, end)).data(), end, level);
    const char* const at = skipBlanks(result.ptr, end);
    if (result.ec != std::errc() || !endsField(at, end)) {
        throwBadLevel(begin, end, where);
    }
    if (!std::isfinite(level)) {
        level = traceRssiBuffer::kNoMeasurement;
    }
    return at;
}

/// Reads one field and moves `at` to the comma or the end behind it.
double readLevel(const char*& at, const char* end, const LineReader& where) {
    const char* const begin = skipBlanks(at, end);
    if (endsField(begin, end)) {
        at = begin;
        return traceRssiBuffer::kNoMeasurement;
    }
    double level = 0.0;
    at = end - begin < 8 ? nullptr : readHundredths(begin, level);
    if (at != nullptr) {
        return level;
    }
    at = readShortLevel(begin, end, level);
    if (at == nullptr) {
        at = readAnyLevel(begin, end, level, where);
    }
    // No power is that far from a milliwatt, and the statistics reserve the two ends.
    if (std::abs(level) >= 999.0 && level != traceRssiBuffer::kNoMeasurement) {
        throwBadLevel(begin, end, where);
    }
    return level;
}

}  // namespace

std::size_t Hop::points() const {
    return static_cast<std::size_t>(std::llround((high - low) / step));
}

bool operator==(const Hop& a, const Hop& b) {
    return a.low == b.low && a.high == b.high && a.step == b.step;
}

std::string describe(const Hop& hop) {
    const auto text = [](double hertz) {
        // The shortest text of 88 MHz is 8.8e+07.
        return hertz == std::floor(hertz) && std::abs(hertz) < 1e15
                   ? fixedText(hertz, 0)
                   : std::string(ShortestText(hertz).view());
    };
    return text(hop.low) + " to " + text(hop.high) + " Hz in steps of " + text(hop.step) + " Hz";
}

bool looksLikeHeader(std::string_view line) {
    CsvFields fields(line);
    std::string_view field;
    bool isFirst = true;
    while (fields.next(field)) {
        if (looksLikeLevel(field) || (isFirst && !looksLikeName(field))) {
            return false;
        }
        isFirst = false;
    }
    return true;
}

bool looksLikeHop(std::string_view line) {
    std::string_view date;
    return CsvFields(line).next(date) && looksLikeDate(date);
}

bool looksLikeTrace(std::string_view line) {
    std::string_view field;
    CsvFields(line).next(field);
    return looksLikeLevel(field);
}

HopLine readHopLine(std::string_view line, const LineReader& where) {
    CsvFields fields(line);
    std::string_view date;
    std::string_view time;
    fields.next(date);
    if (!isDate(date)) {
        throw badLine(where, rfu::quoted(date) + " is not a date (2024-05-04)");
    }
    if (!fields.next(time) || !isTime(time)) {
        throw badLine(where, rfu::quoted(time) + " is not a time (21:15:00)");
    }
    Hop hop;
    hop.low = nextNumber(fields, "Hz low", where) + 0.0;  // -0 is 0
    hop.high = nextNumber(fields, "Hz high", where);
    hop.step = nextNumber(fields, "Hz step", where);
    check(hop, where);
    nextNumber(fields, "the number of samples", where);
    if (fields.atEnd()) {
        throw badLine(where, "the line ends before the levels");
    }
    return {std::string(date) + ' ' + std::string(time), microsecondsOf(date, time), hop,
            fields.rest()};
}

std::size_t countFields(std::string_view fields) {
    return static_cast<std::size_t>(std::count(fields.begin(), fields.end(), ',')) + 1;
}

std::size_t endOfFields(std::string_view fields, std::size_t count) {
    using namespace detail;
    constexpr std::uint64_t kLow = inEachByte(0x7F);
    const char* at = fields.data();
    const char* const end = at + fields.size();
    for (; end - at >= 8; at += 8) {
        const std::uint64_t other = loadEight(at) ^ inEachByte(',');
        const std::uint64_t commas = ~(((other & kLow) + kLow) | other | kLow);
        const std::size_t found = ((commas >> 7U) * inEachByte(1)) >> 56U;
        if (found >= count) {
            break;
        }
        count -= found;
    }
    for (; at != end; ++at) {
        if (*at == ',' && --count == 0) {
            return static_cast<std::size_t>(at - fields.data());
        }
    }
    return std::string_view::npos;
}

std::optional<std::size_t> decimalsOf(std::string_view level) {
    if (std::none_of(level.begin(), level.end(), detail::isDigit)) {
        return std::nullopt;
    }
    const std::size_t point = level.find('.');
    return point == std::string_view::npos ? 0 : level.size() - point;
}

bool haveSameDecimals(std::string_view fields, std::optional<std::size_t> decimals) {
    bool isFirst = true;
    CsvFields levels(fields);
    std::string_view level;
    while (levels.next(level)) {
        const auto found = decimalsOf(level);
        if (!found) {
            continue;
        }
        const bool isCompared = !isFirst || levels.atEnd();
        if (isCompared && decimals && found != decimals) {
            return false;
        }
        decimals = found;
        isFirst = false;
    }
    return !level.empty();
}

std::size_t readLevels(std::string_view fields, double* levels, std::size_t wanted,
                       const LineReader& where) {
    const char* at = fields.data();
    const char* const end = at + fields.size();
    for (std::size_t count = 0;; ++count) {
        const double level = readLevel(at, end, where);
        if (count < wanted) {
            levels[count] = level;
        }
        if (at == end) {
            return count + 1;
        }
        ++at;  // the comma
    }
}

}  // namespace rfu

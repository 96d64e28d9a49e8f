#include "analysis/recordings/recordingLine.h"

#include <rfUtils/detail/numberPrefix.h>
#include <rfUtils/detail/shortDecimal.h>
#include <rfUtils/trace/traceRssiBuffer.h>
#include <algorithm>
#include <charconv>
#include <cmath>

#include "analysis/support/inputError.h"
#include "analysis/support/lineReader.h"
#include "analysis/support/numbers.h"

namespace rfu {

namespace {

constexpr double kMostPointsOfHop = 1e6;  // more than fit into the longest line

InputError badLine(const LineReader& where, const std::string& what) {
    return InputError(where.file(), where.number(), what);
}

/// Whether a text has the pattern's separators where the pattern has them, and digits elsewhere.
bool hasShape(std::string_view text, std::string_view pattern) {
    return text.size() == pattern.size() &&
           std::equal(text.begin(), text.end(), pattern.begin(),
                      [](char c, char p) { return p == '0' ? detail::isDigit(c) : c == p; });
}

int digitsAt(std::string_view text, std::size_t at, std::size_t count) {
    int value = 0;
    for (const char c : text.substr(at, count)) {
        value = value * 10 + (c - '0');
    }
    return value;
}

constexpr std::string_view kDate = "0000-00-00";
constexpr std::string_view kTime = "00:00:00";

bool isLeapYear(int year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

/// Of a month that exists.
int daysOfMonth(int year, int month) {
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return kDays[month - 1] + int{month == 2 && isLeapYear(year)};
}

bool isDate(std::string_view text) {
    if (!hasShape(text, kDate)) {
        return false;
    }
    const int month = digitsAt(text, 5, 2);
    const int day = digitsAt(text, 8, 2);
    return month >= 1 && month <= 12 && day >= 1 && day <= daysOfMonth(digitsAt(text, 0, 4), month);
}

bool isTime(std::string_view text) {
    if (!hasShape(text.substr(0, kTime.size()), kTime)) {
        return false;
    }
    constexpr int kLeapSecond = 60;
    const std::string_view fraction = text.substr(kTime.size());
    return digitsAt(text, 0, 2) < 24 && digitsAt(text, 3, 2) < 60 &&
           digitsAt(text, 6, 2) <= kLeapSecond &&
           (fraction.empty() ||
            (fraction.size() > 1 && fraction[0] == '.' &&
             std::all_of(fraction.begin() + 1, fraction.end(), detail::isDigit)));
}

/// Days since 1970-01-01 in the Gregorian calendar.
std::int64_t daysOf(int year, int month, int day) {
    // Years begin in March, so that the day that leap years add is the last of a year.
    const std::int64_t y = month <= 2 ? year - 1 : year;
    const std::int64_t sinceMarch = month <= 2 ? month + 9 : month - 3;
    return y * 365 + y / 4 - y / 100 + y / 400 + (153 * sinceMarch + 2) / 5 + day - 719469;
}

std::int64_t microsecondsOf(std::string_view date, std::string_view time) {
    const std::int64_t days =
        daysOf(digitsAt(date, 0, 4), digitsAt(date, 5, 2), digitsAt(date, 8, 2));
    const std::int64_t seconds =
        digitsAt(time, 0, 2) * 3600 + digitsAt(time, 3, 2) * 60 + digitsAt(time, 6, 2);
    std::int64_t fraction = 0;
    for (std::size_t i = kTime.size() + 1, weight = 100000; weight > 0; ++i, weight /= 10) {
        fraction += i < time.size() ? digitsAt(time, i, 1) * static_cast<std::int64_t>(weight) : 0;
    }
    return (days * 86400 + seconds) * 1000000 + fraction;
}

/// The next comma separated field without the blanks around it.
class Fields {
public:
    explicit Fields(std::string_view line) : rest_(line) {}

    bool next(std::string_view& field) {
        if (atEnd_) {
            return false;
        }
        const std::size_t comma = rest_.find(',');
        field = trimmed(rest_.substr(0, comma));
        atEnd_ = comma == std::string_view::npos;
        rest_.remove_prefix(atEnd_ ? rest_.size() : comma + 1);
        return true;
    }

    std::string_view rest() const { return rest_; }
    bool atEnd() const { return atEnd_; }

private:
    std::string_view rest_;
    bool atEnd_ = false;
};

double nextNumber(Fields& fields, const char* name, const LineReader& where) {
    std::string_view field;
    if (!fields.next(field)) {
        throw badLine(where, std::string("the line ends before ") + name);
    }
    const auto number = parseNumber(field);
    if (!number) {
        throw badLine(where, std::string(name) + " is " + quoted(field) + " instead of a number");
    }
    return *number;
}

void check(const Hop& hop, const LineReader& where) {
    const double points = (hop.high - hop.low) / hop.step;
    if (!(hop.low >= 0.0 && hop.high > hop.low && hop.step > 0.0) || !(points >= 0.5) ||
        !(points < kMostPointsOfHop)) {
        throw badLine(where, "Hz low, Hz high and Hz step do not fit together: " + describe(hop));
    }
}

const char* skipBlanks(const char* at, const char* end) {
    while (at != end && (*at == ' ' || *at == '\t' || *at == '\r')) {
        ++at;
    }
    return at;
}

/// std::from_chars knows no plus sign.
const char* behindPlus(const char* at, const char* end) {
    return end - at > 1 && at[0] == '+' && at[1] != '-' ? at + 1 : at;
}

[[noreturn]] void throwBadLevel(const char* at, const char* end, const LineReader& where) {
    const std::string_view field =
        trimmed({at, static_cast<std::size_t>(std::find(at, end, ',') - at)});
    throw badLine(where, quoted(field) + " is not a level in dBm");
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
    const auto result = std::from_chars(behindPlus(begin, end), end, level);
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

bool looksLikeHop(std::string_view line) {
    std::string_view date;
    return Fields(line).next(date) && hasShape(date, kDate);
}

bool looksLikeTrace(std::string_view line) {
    std::string_view field;
    Fields(line).next(field);
    double level = 0.0;
    const char* const end = field.data() + field.size();
    return field.empty() || std::from_chars(behindPlus(field.data(), end), end, level).ptr == end;
}

HopLine readHopLine(std::string_view line, const LineReader& where) {
    Fields fields(line);
    std::string_view date;
    std::string_view time;
    fields.next(date);
    if (!isDate(date)) {
        throw badLine(where, quoted(date) + " is not a date (2024-05-04)");
    }
    if (!fields.next(time) || !isTime(time)) {
        throw badLine(where, quoted(time) + " is not a time (21:15:00)");
    }
    Hop hop;
    hop.low = nextNumber(fields, "Hz low", where);
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

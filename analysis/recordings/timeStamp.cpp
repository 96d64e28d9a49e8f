#include "analysis/recordings/timeStamp.h"

#include <rfUtils/detail/numberPrefix.h>
#include <QDate>
#include <algorithm>
#include <cstddef>

namespace rfu {

namespace {

constexpr std::string_view kDate = "0000-00-00";
constexpr std::string_view kTime = "00:00:00";

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

QDate dateOf(std::string_view text) {
    return {digitsAt(text, 0, 4), digitsAt(text, 5, 2), digitsAt(text, 8, 2)};
}

std::string twoDigits(int number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

}  // namespace

bool looksLikeDate(std::string_view text) {
    return hasShape(text, kDate);
}

bool isDate(std::string_view text) {
    return looksLikeDate(text) && dateOf(text).isValid();
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

std::int64_t microsecondsOf(std::string_view date, std::string_view time) {
    const std::int64_t days = dateOf(date).toJulianDay();
    const std::int64_t seconds =
        digitsAt(time, 0, 2) * 3600 + digitsAt(time, 3, 2) * 60 + digitsAt(time, 6, 2);
    std::int64_t fraction = 0;
    std::int64_t weight = 100000;
    for (std::size_t i = kTime.size() + 1; i < time.size() && weight > 0; ++i, weight /= 10) {
        fraction += digitsAt(time, i, 1) * weight;
    }
    return days * kMicrosecondsPerDay + seconds * kMicrosecondsPerSecond + fraction;
}

bool isStamp(std::string_view text) {
    return text.size() > kDate.size() && text[kDate.size()] == ' ' &&
           isDate(text.substr(0, kDate.size())) && isTime(text.substr(kDate.size() + 1));
}

std::int64_t microsecondsOf(std::string_view stamp) {
    return microsecondsOf(stamp.substr(0, kDate.size()), stamp.substr(kDate.size() + 1));
}

int hourOf(std::string_view stamp) {
    return digitsAt(stamp, kDate.size() + 1, 2);
}

std::string dateText(std::int64_t microseconds) {
    return QDate::fromJulianDay(microseconds / kMicrosecondsPerDay)
        .toString(Qt::ISODate)
        .toStdString();
}

std::string timeText(std::int64_t microseconds, int decimals) {
    const std::int64_t ofDay = microseconds % kMicrosecondsPerDay;
    const auto seconds = static_cast<int>(ofDay / kMicrosecondsPerSecond);
    std::string text = twoDigits(seconds / 3600) + ':' + twoDigits(seconds / 60 % 60) + ':' +
                       twoDigits(seconds % 60);
    if (decimals > 0) {
        // A leading 1 keeps the zeros in front.
        const std::string fraction =
            std::to_string(kMicrosecondsPerSecond + ofDay % kMicrosecondsPerSecond);
        text += '.' + fraction.substr(1, static_cast<std::size_t>(decimals));
    }
    return text;
}

}  // namespace rfu

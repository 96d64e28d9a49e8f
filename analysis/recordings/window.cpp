#include "analysis/recordings/window.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "analysis/recordings/timeStamp.h"

namespace rfu {

namespace {

constexpr std::string_view kMidnight = "00:00:00";
constexpr std::string_view kAnyDay = "2000-01-01";

struct TimeUnit {
    const char* name;
    double seconds;
};

constexpr TimeUnit kTimeUnits[] = {{"s", 1.0}, {"m", 60.0}, {"h", 3600.0}, {"d", 86400.0}};

/// "-10m"
std::optional<WindowTime> parseTimeBeforeEnd(std::string_view text) {
    constexpr double kMostSeconds = 1e11;  // more than all days of stamps
    const auto split = splitValue(text);
    if (!split) {
        return std::nullopt;
    }
    for (const TimeUnit& unit : kTimeUnits) {
        const double seconds = split->value * unit.seconds;
        if (split->unit == unit.name && seconds >= -kMostSeconds && seconds <= 0.0) {
            return WindowTime{WindowTime::Origin::End,
                              std::llround(seconds * static_cast<double>(kMicrosecondsPerSecond))};
        }
    }
    return std::nullopt;
}

std::int64_t dayOf(std::int64_t time) {
    return time - time % kMicrosecondsPerDay;
}

bool contains(const FrequencyRange& band, double frequency) {
    return band.low <= frequency && frequency < band.high;
}

}  // namespace

std::optional<WindowTime> parseWindowTime(std::string_view text) {
    text = trimmed(text);
    if (!text.empty() && text.front() == '-') {
        return parseTimeBeforeEnd(text);
    }
    const std::size_t blank = text.find(' ');
    const std::string_view date = blank == std::string_view::npos ? "" : text.substr(0, blank);
    std::string time(trimmed(text.substr(date.size())));
    constexpr std::string_view kWithoutSeconds = "21:15";
    if (time.size() == kWithoutSeconds.size()) {
        time += ":00";
    }
    if (!isTime(time)) {
        return std::nullopt;
    }
    if (!date.empty()) {
        return isDate(date) ? std::optional(WindowTime{WindowTime::Origin::FixedDay,
                                                       microsecondsOf(date, time)})
                            : std::nullopt;
    }
    return WindowTime{WindowTime::Origin::FirstDay,
                      microsecondsOf(kAnyDay, time) - microsecondsOf(kAnyDay, kMidnight)};
}

bool WindowOptions::countsFromEnd() const {
    return (from && from->origin == WindowTime::Origin::End) ||
           (to && to->origin == WindowTime::Origin::End);
}

BinRange Window::binsOf(const Hop& hop) const {
    const std::size_t points = hop.points();
    if (options_.bands.empty()) {
        return {0, points};
    }
    // The first bin whose middle is not below a frequency. The margin is for what rounding does.
    constexpr double kMargin = 1e-3;
    const auto bin = [&hop, points](double frequency, double margin) {
        const double at = (frequency * kHertzPerMegahertz - hop.low) / hop.step - 0.5 + margin;
        return static_cast<std::size_t>(
            std::clamp(std::ceil(at), 0.0, static_cast<double>(points)));
    };
    BinRange range;
    for (const FrequencyRange& band : options_.bands) {
        const BinRange some = {bin(band.low, -kMargin), bin(band.high, kMargin)};
        if (!some.isEmpty()) {
            range = range.isEmpty() ? some
                                    : BinRange{std::min(range.first, some.first),
                                               std::max(range.end, some.end)};
        }
    }
    return range;
}

/// Of a bound, from the fixed day.
/// @param time of a sweep, whose day counts before the first one is known
std::int64_t Window::timeOf(const WindowTime& bound, std::int64_t time) const {
    switch (bound.origin) {
        case WindowTime::Origin::FixedDay:
            return bound.microseconds;
        case WindowTime::Origin::FirstDay:
            return firstDay_.value_or(dayOf(time)) + bound.microseconds;
        case WindowTime::Origin::End:
            break;
    }
    return end_ + bound.microseconds;
}

bool Window::isBehind(std::int64_t time) const {
    return options_.to && time > timeOf(*options_.to, time);
}

bool Window::isBetween(std::int64_t time) const {
    return (!options_.from || time >= timeOf(*options_.from, time)) && !isBehind(time);
}

bool Window::wantsSweep(std::int64_t time) const {
    if (options_.goesOn && isBehind(time)) {
        return true;
    }
    return isBetween(time) && between_ % options_.every == 0 &&
           between_ / options_.every >= skipped_;
}

void Window::begin(std::int64_t time) {
    between_ += isBetween(time) ? 1 : 0;
    if (!firstDay_) {
        firstDay_ = dayOf(time);
    }
}

std::vector<std::size_t> Window::pointsOf(const FrequencyAxis& axis) const {
    std::vector<std::size_t> points;
    std::size_t point = 0;
    for (const AxisHop& hop : axis.hops) {
        for (std::size_t bin = hop.firstBin; bin < hop.firstBin + hop.bins; ++bin, ++point) {
            const double middle =
                (hop.low + (static_cast<double>(bin) + 0.5) * hop.step) / kHertzPerMegahertz;
            if (options_.bands.empty() || std::any_of(options_.bands.begin(), options_.bands.end(),
                                                      [middle](const FrequencyRange& band) {
                                                          return contains(band, middle);
                                                      })) {
                points.push_back(point);
            }
        }
    }
    return points;
}

FrequencyAxis axisOf(const FrequencyAxis& axis, const std::vector<std::size_t>& points) {
    FrequencyAxis part;
    auto hop = axis.hops.begin();
    auto band = axis.bands.begin();
    std::size_t firstOfHop = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const std::size_t point = points[i];
        bool isNewHop = i == 0 || point != points[i - 1] + 1;
        bool isNewBand = isNewHop;
        for (; point >= firstOfHop + hop->bins; ++hop) {
            firstOfHop += hop->bins;
            isNewHop = true;
        }
        for (; band + 1 != axis.bands.end() && point >= (band + 1)->firstPoint; ++band) {
            isNewBand = true;
        }
        const std::size_t bin = hop->firstBin + (point - firstOfHop);
        if (isNewHop) {
            part.hops.push_back({*hop, bin, 0});
        }
        ++part.hops.back().bins;
        if (isNewBand) {
            part.bands.push_back({i, axis.points[point], 0.0});
        }
        const double end = bin + 1 == hop->points()
                               ? hop->high
                               : hop->low + static_cast<double>(bin + 1) * hop->step;
        part.bands.back().high = std::max(part.bands.back().high, end / kHertzPerMegahertz);
        part.points.push_back(axis.points[point]);
    }
    return part;
}

}  // namespace rfu

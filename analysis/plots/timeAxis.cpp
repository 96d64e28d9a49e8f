#include "analysis/plots/timeAxis.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

#include "analysis/recordings/timeStamp.h"

namespace rfu {

namespace {

constexpr double kWantedDistance = 50.0;  // pixels between round times
constexpr double kLabelHeight = 18.0;
constexpr double kDateHeight = 16.0;  // above the label
constexpr std::int64_t kMinute = 60 * kMicrosecondsPerSecond;
constexpr std::int64_t kHour = 60 * kMinute;

// Each divides the days, so that midnights are among the round times. Longer ones are whole days.
constexpr std::int64_t kSteps[] = {
    1,       2,           5,           10,           20,           50,
    100,     200,         500,         1000,         2000,         5000,
    10000,   20000,       50000,       100000,       200000,       500000,
    1000000, 2000000,     5000000,     10000000,     15000000,     30000000,
    kMinute, 2 * kMinute, 5 * kMinute, 10 * kMinute, 15 * kMinute, 30 * kMinute,
    kHour,   2 * kHour,   3 * kHour,   6 * kHour,    12 * kHour,   kMicrosecondsPerDay};

/// The first round step that is not below a step.
std::int64_t roundTimeStep(double step) {
    const auto found =
        std::find_if(std::begin(kSteps), std::end(kSteps),
                     [step](std::int64_t known) { return static_cast<double>(known) >= step; });
    if (found != std::end(kSteps)) {
        return *found;
    }
    std::int64_t days = 1;
    while (static_cast<double>(days * kMicrosecondsPerDay) < step) {
        days *= 2;
    }
    return days * kMicrosecondsPerDay;
}

/// Decimals of the seconds of round times.
int secondDecimals(std::int64_t step) {
    int decimals = 0;
    for (std::int64_t unit = kMicrosecondsPerSecond; step % unit != 0; unit /= 10) {
        ++decimals;
    }
    return decimals;
}

std::int64_t stepOf(const std::vector<TimeStretch>& stretches) {
    double time = 0.0;
    double pixels = 0.0;
    for (const TimeStretch& stretch : stretches) {
        time += static_cast<double>(stretch.time.end - stretch.time.begin);
        pixels += stretch.bottom - stretch.top;
    }
    return roundTimeStep(pixels > 0.0 ? time / pixels * kWantedDistance : 1.0);
}

class Ticks {
public:
    explicit Ticks(std::int64_t step) : step_(step) {}

    /// @param isRound a tick that is not replaces round ones that its label touches
    void add(double at, std::int64_t time, bool isRound) {
        while (!isRound && !placed_.empty() && placed_.back().isRound && touches(at, time)) {
            placed_.pop_back();
        }
        if (!touches(at, time)) {
            placed_.push_back({at, time, isRound});
        }
    }

    std::vector<TimeTick> labelled() const {
        std::vector<TimeTick> ticks;
        QString lastDate;
        for (const Placed& placed : placed_) {
            const QString date = QString::fromStdString(dateText(placed.time));
            if (step_ >= kMicrosecondsPerDay && placed.isRound) {
                ticks.push_back({placed.at, date, {}});
            } else {
                ticks.push_back(
                    {placed.at, timeLabel(placed), date == lastDate ? QString() : date});
            }
            lastDate = date;
        }
        return ticks;
    }

private:
    struct Placed {
        double at;
        std::int64_t time;
        bool isRound;
    };

    bool touches(double at, std::int64_t time) const {
        if (placed_.empty()) {
            return false;
        }
        const Placed& last = placed_.back();
        const bool isOtherDay = time / kMicrosecondsPerDay != last.time / kMicrosecondsPerDay;
        return at - last.at < kLabelHeight + (isOtherDay ? kDateHeight : 0.0);
    }

    QString timeLabel(const Placed& placed) const {
        const bool showsSeconds = step_ % kMinute != 0 || placed.time % kMinute != 0;
        const std::string text = timeText(placed.time, secondDecimals(step_));
        return QString::fromStdString(showsSeconds ? text : text.substr(0, text.rfind(':')));
    }

    std::int64_t step_;
    std::vector<Placed> placed_;
};

}  // namespace

std::vector<TimeTick> timeTicks(const std::vector<TimeStretch>& stretches) {
    const std::int64_t step = stepOf(stretches);
    Ticks ticks(step);
    for (std::size_t i = 0; i < stretches.size(); ++i) {
        const TimeStretch& stretch = stretches[i];
        const TimeSpan& time = stretch.time;
        if (i > 0 && isGap(stretches[i - 1].time, time)) {
            ticks.add(stretch.top, time.begin, false);
        }
        const double pixels = (stretch.bottom - stretch.top) /
                              static_cast<double>(std::max<std::int64_t>(time.end - time.begin, 1));
        for (std::int64_t round = (time.begin + step - 1) / step * step; round < time.end;
             round += step) {
            ticks.add(stretch.top + static_cast<double>(round - time.begin) * pixels, round, true);
        }
    }
    std::vector<TimeTick> labelled = ticks.labelled();
    if (labelled.empty()) {
        Ticks first(step);
        first.add(stretches.front().top, stretches.front().time.begin, false);
        labelled = first.labelled();
    }
    return labelled;
}

}  // namespace rfu

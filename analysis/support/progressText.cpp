#include "analysis/support/progressText.h"

#include <algorithm>
#include <cmath>

#include "analysis/support/numbers.h"

namespace rfu {

namespace {

/// A number of MB: with a decimal where that says more.
std::string megabytes(double bytes) {
    constexpr double kMega = 1e6;
    constexpr double kWhole = 10.0;
    return fixedText(bytes / kMega, bytes / kMega < kWhole ? 1 : 0);
}

/// "59 s", "3 min", "2 h 05 min"
std::string durationText(double seconds) {
    constexpr long long kSixty = 60;  // seconds of a minute, minutes of an hour
    constexpr long long kMost = 100LL * 24 * kSixty * kSixty;
    const long long whole = std::llround(std::min(std::ceil(seconds), static_cast<double>(kMost)));
    if (whole < 2 * kSixty) {
        return std::to_string(whole) + " s";
    }
    const long long minutes = (whole + kSixty - 1) / kSixty;
    if (minutes < 2 * kSixty) {
        return std::to_string(minutes) + " min";
    }
    const long long rest = minutes % kSixty;
    return std::to_string(minutes / kSixty) + (rest < 10 ? " h 0" : " h ") + std::to_string(rest) +
           " min";
}

}  // namespace

std::string progressText(std::int64_t read, std::int64_t all, double seconds) {
    const auto done = static_cast<double>(read);
    const double rate = done / seconds;
    const std::string speed = ", " + megabytes(rate) + " MB/s";
    if (all <= 0) {
        return megabytes(done) + " MB" + speed;
    }
    // A file may grow while it is read.
    const double left = std::max(static_cast<double>(all) - done, 0.0);
    const auto percent =
        static_cast<long long>(std::min(done / static_cast<double>(all), 1.0) * 100.0);
    return std::to_string(percent) + " % of " + megabytes(static_cast<double>(all)) + " MB" +
           speed + ", " + (rate > 0.0 ? durationText(left / rate) + " left" : "waiting");
}

}  // namespace rfu

#include "analysis/plots/axis.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace rfu {

namespace {

constexpr double kMinSpan = 1e-250;     // its ticks are still normal doubles
constexpr double kStepRounding = 1e-3;  // of a step: a tick this little outside counts as the end

/// The smallest of 1, 2, 5, 10, 20, ... that is not below a step.
double roundStep(double step) {
    const double decade = std::pow(10.0, std::floor(std::log10(step)));
    for (const double digit : {1.0, 2.0, 5.0}) {
        if (step <= digit * decade) {
            return digit * decade;
        }
    }
    return 10.0 * decade;
}

constexpr double kPixelsPerTick = 40.0;

}  // namespace

ValueRange rangeOf(const std::vector<const std::vector<double>*>& series) {
    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    for (const auto* values : series) {
        for (const double value : *values) {
            if (std::isfinite(value)) {
                low = std::min(low, value);
                high = std::max(high, value);
            }
        }
    }
    return low <= high ? ValueRange{low, high} : ValueRange{0.0, 1.0};
}

int verticalTicks(double pixels) {
    return static_cast<int>(std::clamp(pixels / kPixelsPerTick, 1.0, 1.0 * Axis::kWantedTicks));
}

bool Axis::isWide(const ValueRange& range, int maxDigits) {
    const double magnitude = std::max(std::abs(range.low), std::abs(range.high));
    const double minLabelledStep = magnitude * std::pow(10.0, 1 - maxDigits);
    return range.high - range.low > std::max(kWantedTicks * minLabelledStep, kMinSpan);
}

Axis::Axis(double low, double high, Ends ends, int maxDigits, double minStep, int wantedTicks)
    : low_(low), high_(high), maxDigits_(maxDigits) {
    if (!isWide({low, high}, maxDigits)) {
        const double margin = std::max(std::abs(low) * 0.01, 0.5);
        low_ -= margin;
        high_ += margin;
    }
    step_ = std::max(roundStep((high_ - low_) / wantedTicks), minStep);
    if (ends == Ends::Rounded) {
        low_ = std::floor(low_ / step_) * step_;
        high_ = std::ceil(high_ / step_) * step_;
    }
}

std::vector<double> Axis::ticks() const {
    const double first = std::ceil(low_ / step_ - kStepRounding);
    const double last = std::floor(high_ / step_ + kStepRounding);
    // Counted by an int: a double beyond 2^53 does not move when 1 is added.
    const int count = static_cast<int>(last - first) + 1;
    std::vector<double> result;
    result.reserve(static_cast<std::size_t>(std::max(count, 0)));
    for (int i = 0; i < count; ++i) {
        result.push_back((first + i) * step_);
    }
    return result;
}

QString Axis::label(double tick) const {
    return QString::number(tick, 'g', maxDigits_);
}

}  // namespace rfu

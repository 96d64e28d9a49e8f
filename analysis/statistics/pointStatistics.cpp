#include "analysis/statistics/pointStatistics.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "analysis/statistics/milliwatts.h"
#include "analysis/support/stateStream.h"

namespace rfu {

namespace {

constexpr double kNone = traceRssiBuffer::kNoMeasurement;

/// The larger half of an even count starts behind the middle.
double medianOf(std::vector<double> levels) {
    const auto middle = levels.begin() + static_cast<std::ptrdiff_t>(levels.size() / 2);
    std::nth_element(levels.begin(), middle, levels.end());
    if (levels.size() % 2 == 1) {
        return *middle;
    }
    return (*std::max_element(levels.begin(), middle) + *middle) / 2.0;
}

}  // namespace

PointStatistics PointTally::statistics() const {
    if (count_ == 0) {
        return {};
    }
    return {count_, above_, sum_ / static_cast<double>(count_), maximum_, minimum_};
}

void PointTally::write(StateWriter& writer) const {
    writer.count(static_cast<std::uint64_t>(count_));
    if (count_ > 0) {
        writer.count(static_cast<std::uint64_t>(above_));
        writer.number(sum_);
        writer.number(maximum_);
        writer.number(minimum_);
    }
}

void PointTally::merge(StateReader& reader, long long sweeps) {
    const auto count = static_cast<long long>(reader.count(static_cast<std::uint64_t>(sweeps)));
    if (count == 0) {
        return;
    }
    count_ += count;
    above_ += static_cast<long long>(reader.count(static_cast<std::uint64_t>(count)));
    sum_ += reader.number();  // beyond doubles where levels are near their end
    const double maximum = reader.finite();
    const double minimum = reader.finite();
    reader.require(minimum <= maximum && minimum > kNone);
    widen(maximum);
    widen(minimum);
}

LevelDistribution distributionOf(std::vector<double> levels) {
    const auto strongest = std::max_element(levels.begin(), levels.end());
    if (strongest == levels.end() || *strongest == kNone) {
        return {};
    }
    LevelDistribution result;
    result.strongest = static_cast<std::size_t>(strongest - levels.begin());
    levels.erase(std::remove(levels.begin(), levels.end(), kNone), levels.end());

    const auto count = static_cast<double>(levels.size());
    double power = 0.0;
    double sum = 0.0;
    for (const double level : levels) {
        power += milliwattsOf(level);
        sum += level;
    }
    double squares = 0.0;
    for (const double level : levels) {
        squares += (level - sum / count) * (level - sum / count);
    }
    result.powerMean = dBmOf(power / count);
    result.median = medianOf(levels);
    result.deviation = std::sqrt(squares / count);
    return result;
}

}  // namespace rfu

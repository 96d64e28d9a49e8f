#include "analysis/recordings/levelCorrection.h"

#include <rfUtils/trace/traceRssiBuffer.h>
#include <algorithm>
#include <cmath>

#include "analysis/support/frequencyTable.h"

namespace rfu {

LevelCorrection::LevelCorrection(double offset, const QString& file)
    : offset_(offset), file_(file) {
    for (const FrequencyRow& row : readFrequencyTable(file, {"dB"})) {
        points_.push_back({row.frequency, *row.numbers.front()});
    }
}

double LevelCorrection::at(double frequency) const {
    if (points_.empty()) {
        return offset_;
    }
    const auto above = std::upper_bound(
        points_.begin(), points_.end(), frequency,
        [](double wanted, const Point& point) { return wanted < point.frequency; });
    if (above == points_.begin()) {
        return offset_ + above->decibels;
    }
    const Point& below = *(above - 1);
    if (above == points_.end()) {
        return offset_ + below.decibels;
    }
    const double part = (frequency - below.frequency) / (above->frequency - below.frequency);
    return offset_ + below.decibels + part * (above->decibels - below.decibels);
}

std::vector<double> LevelCorrection::ofPoints(const std::vector<double>& frequencies,
                                              std::size_t points) const {
    std::vector<double> corrections(points, offset_);
    std::transform(frequencies.begin(), frequencies.end(), corrections.begin(),
                   [this](double frequency) { return at(frequency); });
    return corrections;
}

void correct(std::vector<double>& levels, const std::vector<double>& corrections) {
    static const double kLowest = std::nextafter(traceRssiBuffer::kNoMeasurement, 0.0);
    static const double kHighest = std::nextafter(traceRssiBuffer::kPlaceholder, 0.0);
    for (std::size_t i = 0; i < levels.size(); ++i) {
        if (levels[i] != traceRssiBuffer::kNoMeasurement) {
            levels[i] = std::clamp(levels[i] + corrections[i], kLowest, kHighest);
        }
    }
}

}  // namespace rfu

#include "analysis/statistics/limitMask.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "analysis/recordings/bins.h"
#include "analysis/statistics/runs.h"
#include "analysis/support/frequencyTable.h"
#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"

namespace rfu {

namespace {

void addLimit(LimitLine& line, const FrequencyRow& row, std::size_t column, bool isLinear,
              const QString& file) {
    const std::optional<double>& level = row.numbers[column];
    if (!level) {
        return;
    }
    if (isLinear && *level <= 0.0) {
        throw InputError(file, row.line,
                         "a limit of " + std::string(ShortestText(*level).view()) +
                             " has no level, it is not above zero");
    }
    line.add({row.frequency, *level});
}

/// How far a level lies beyond a limit, in dB.
double excessOf(double level, double limit, bool isUpper, double decibelsPerDecade) {
    const double above =
        decibelsPerDecade > 0.0 ? decibelsPerDecade * std::log10(level / limit) : level - limit;
    return isUpper ? above : -above;
}

}  // namespace

std::optional<double> LimitLine::at(double frequency) const {
    const auto above = std::lower_bound(
        points_.begin(), points_.end(), frequency,
        [](const Point& point, double wanted) { return point.frequency < wanted; });
    if (above == points_.end()) {
        return std::nullopt;
    }
    if (above->frequency == frequency) {
        const auto second = above + 1;
        const bool isStep = second != points_.end() && second->frequency == frequency;
        const double other = isStep ? second->level : above->level;
        return isUpper_ ? std::min(above->level, other) : std::max(above->level, other);
    }
    if (above == points_.begin()) {
        return std::nullopt;
    }
    const Point& below = *(above - 1);
    const double part = (frequency - below.frequency) / (above->frequency - below.frequency);
    return below.level + part * (above->level - below.level);
}

LimitMask readLimitMask(const QString& file, bool isLinear) {
    LimitMask mask;
    for (const FrequencyRow& row : readFrequencyTable(file, {"upper", "lower"})) {
        addLimit(mask.upper, row, 0, isLinear, file);
        addLimit(mask.lower, row, 1, isLinear, file);
    }
    return mask;
}

MaskResult judge(const LimitMask& mask, const FrequencyAxis& axis,
                 const std::vector<double>& levels, double decibelsPerDecade) {
    const std::size_t points = levels.size();
    const std::vector<std::size_t> bands = firstPointsOf(axis);
    MaskResult result;
    std::vector<bool> isJudged(points);
    for (const LimitLine* line : {&mask.upper, &mask.lower}) {
        std::vector<double> excess(points, std::nan(""));
        for (std::size_t i = 0; i < points; ++i) {
            const auto limit = line->at(axis.points[i]);
            if (limit && std::isfinite(levels[i])) {
                excess[i] = excessOf(levels[i], *limit, line->isUpper(), decibelsPerDecade);
                isJudged[i] = true;
            }
        }
        for (const Run& run : runsAbove(excess, excess, bands)) {
            result.violations.push_back({run.first, run.last, run.strongest, line->isUpper(),
                                         *line->at(axis.points[run.strongest]),
                                         -excess[run.strongest]});
        }
    }
    std::stable_sort(result.violations.begin(), result.violations.end(),
                     [](const Violation& a, const Violation& b) { return a.first < b.first; });
    result.judged = static_cast<std::size_t>(std::count(isJudged.begin(), isJudged.end(), true));
    return result;
}

}  // namespace rfu

#include "analysis/statistics/comparison.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include "analysis/recordings/bins.h"
#include "analysis/support/numbers.h"

namespace rfu {

namespace {

constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();

std::string extentOf(const LevelTrace& trace) {
    const std::string points = std::to_string(trace.levels.size()) + " points";
    return trace.axis.bands.empty() ? points + " without frequencies"
                                    : points + " " + describe(trace.axis.bands);
}

/// Between two levels; at an end its own level, also where the other one is missing.
double interpolated(double from, double to, double part) {
    constexpr double kRounding = 1e-6;
    return part < kRounding ? from : part > 1.0 - kRounding ? to : from + part * (to - from);
}

}  // namespace

void PointLevels::add(const Sweep& sweep) {
    constexpr double kNoLimit = 0.0;  // nobody asks what was above it
    if (statistic_ == PointStatistic::Median) {
        history_.add(sweep);
        return;
    }
    tallies_.resize(sweep.levels.size());
    for (std::size_t i = 0; i < sweep.levels.size(); ++i) {
        tallies_[i].add(sweep.levels[i], kNoLimit);
    }
}

std::vector<double> PointLevels::levels() {
    if (statistic_ == PointStatistic::Median) {
        return history_.medians();
    }
    std::vector<double> levels;
    levels.reserve(tallies_.size());
    for (const PointTally& tally : tallies_) {
        const PointStatistics statistics = tally.statistics();
        const std::optional<double>& level =
            statistic_ == PointStatistic::Maximum   ? statistics.maximum
            : statistic_ == PointStatistic::Minimum ? statistics.minimum
                                                    : statistics.average;
        levels.push_back(level.value_or(kMissing));
    }
    return levels;
}

std::optional<std::string> whyApart(const LevelTrace& trace, const LevelTrace& other) {
    constexpr double kSamePlace = 0.01;  // of a bin
    const bool isSameKind = trace.axis.points.empty() == other.axis.points.empty();
    if (!isSameKind || trace.levels.size() != other.levels.size() ||
        firstPointsOf(trace.axis) != firstPointsOf(other.axis)) {
        return extentOf(trace) + ", not " + extentOf(other);
    }
    const std::vector<double> ends = binEnds(other.axis);
    for (std::size_t i = 0; i < trace.axis.points.size(); ++i) {
        const double place = other.axis.points[i];
        const double width = std::max(ends[i] - place, 0.0);
        if (std::abs(trace.axis.points[i] - place) > kSamePlace * width) {
            return "point " + std::to_string(i) + " lies at " +
                   megahertzText(trace.axis.points[i]) + ", not at " + megahertzText(place);
        }
    }
    return std::nullopt;
}

std::vector<double> resampled(const LevelTrace& trace, const FrequencyAxis& axis) {
    const std::vector<Bin> bins = filledBins(trace.axis);
    std::vector<double> levels(axis.points.size(), kMissing);
    for (const Bin& wanted : filledBins(axis)) {
        const double place = wanted.middle();
        const auto band = std::find_if(
            trace.axis.bands.begin(), trace.axis.bands.end(),
            [place](const FrequencyAxis::Band& candidate) { return place < candidate.high; });
        if (band == trace.axis.bands.end() || place < band->low) {
            continue;
        }
        const auto above = std::lower_bound(
            bins.begin(), bins.end(), place,
            [](const Bin& bin, double frequency) { return bin.middle() < frequency; });
        const auto isInBand = [&](const Bin& bin) {
            return bin.low >= band->low && bin.low < band->high;
        };
        const bool hasAbove = above != bins.end() && isInBand(*above);
        const bool hasBelow = above != bins.begin() && isInBand(*std::prev(above));
        if (!hasAbove && !hasBelow) {
            continue;
        }
        const Bin& low = hasBelow ? *std::prev(above) : *above;
        const Bin& high = hasAbove ? *above : low;
        const double span = high.middle() - low.middle();
        levels[wanted.point] = interpolated(trace.levels[low.point], trace.levels[high.point],
                                            span > 0.0 ? (place - low.middle()) / span : 0.0);
    }
    return levels;
}

std::vector<LevelChange> changesAbove(double threshold, const std::vector<double>& differences,
                                      const std::vector<std::size_t>& bands) {
    std::vector<LevelChange> changes;
    for (const double direction : {1.0, -1.0}) {
        std::vector<double> excesses;
        excesses.reserve(differences.size());
        for (const double difference : differences) {
            excesses.push_back(direction * difference - threshold);
        }
        for (const Run& run : runsAbove(excesses, excesses, bands)) {
            changes.push_back({run.first, run.last, run.strongest});
        }
    }
    std::sort(changes.begin(), changes.end(),
              [](const LevelChange& a, const LevelChange& b) { return a.first < b.first; });
    return changes;
}

}  // namespace rfu

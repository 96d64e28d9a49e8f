#include "analysis/statistics/noiseFloor.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "analysis/statistics/gammaNoise.h"
#include "analysis/statistics/levelHistory.h"

namespace rfu {

namespace {

constexpr double kUnmeasured = std::numeric_limits<double>::quiet_NaN();

struct Line {
    double level;  // where place is 0
    double slope;  // dB per point

    double at(double place) const { return level + slope * place; }
};

/// The measured medians of a window, ascending in their places.
struct Window {
    std::vector<double> places;
    std::vector<double> levels;
    std::vector<double> finer;

    std::size_t size() const { return places.size(); }
};

/// @param share of the levels that lies below
double percentile(std::vector<double> levels, double share) {
    const auto at =
        levels.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(levels.size()));
    std::nth_element(levels.begin(), at, levels.end());
    return *at;
}

/// The standard deviation of medians of noise around their line, estimated from the differences of
/// neighbours, on which neither slopes nor wide signals have an influence.
double scatterOf(const Window& window) {
    constexpr double kMedianOfDifferences = 0.954;  // of a normal distribution, in deviations
    if (window.size() < 2) {
        return 0.0;
    }
    std::vector<double> differences;
    differences.reserve(window.size());
    for (std::size_t i = 1; i < window.size(); ++i) {
        differences.push_back(std::abs(window.levels[i] - window.levels[i - 1]));
    }
    return percentile(std::move(differences), 0.5) / kMedianOfDifferences;
}

/// The same, estimated from the levels below a line of noise, where there are no signals.
double scatterBelow(const Window& window, const Line& line) {
    constexpr double kMedian = 0.674;
    std::vector<double> distances;
    for (std::size_t i = 0; i < window.size(); ++i) {
        const double residual = window.levels[i] - line.at(window.places[i]);
        if (residual < 0.0) {
            distances.push_back(-residual);
        }
    }
    return distances.empty() ? 0.0 : percentile(std::move(distances), 0.5) / kMedian;
}

/// How far from the line a quiet point may lie.
struct Reach {
    explicit Reach(double scatter)
        : above(std::max(3.0 * scatter, 1.0)), below(std::max(4.0 * scatter, 1.0)) {}

    bool holds(double residual) const { return -below <= residual && residual <= above; }

    double above;
    double below;
};

/// The misfit of a line in the window. All levels far from it count the same, so that the line through
/// most levels has the smallest misfit. Levels below it count more, because signals are above the noise.
double misfit(const Window& window, const Line& line, const Reach& reach) {
    constexpr double kBelow = 0.55;
    constexpr double kFar = 0.75;  // of the reach
    double sum = 0.0;
    for (std::size_t i = 0; i < window.size(); ++i) {
        const double residual = window.levels[i] - line.at(window.places[i]);
        const double distance = std::min(std::abs(residual), kFar * reach.above);
        sum += (residual < 0.0 ? kBelow : 1.0 - kBelow) * distance;
    }
    return sum;
}

/// The line with the smallest misfit among candidates: horizontal lines through the low level of a part
/// of the window, and lines through two such levels.
Line roughLine(const Window& window, const Reach& reach) {
    constexpr std::size_t kParts = 5;
    constexpr std::size_t kMinPart = 4;  // points
    constexpr double kLow = 0.3;
    const std::size_t parts = std::min(kParts, std::max<std::size_t>(window.size() / kMinPart, 1));
    std::vector<std::pair<double, double>> lows;  // place and level
    for (std::size_t part = 0; part < parts; ++part) {
        const auto first = static_cast<std::ptrdiff_t>(part * window.size() / parts);
        const auto last = static_cast<std::ptrdiff_t>((part + 1) * window.size() / parts);
        lows.emplace_back(
            (window.places[static_cast<std::size_t>(first)] +
             window.places[static_cast<std::size_t>(last - 1)]) /
                2.0,
            percentile({window.levels.begin() + first, window.levels.begin() + last}, kLow));
    }
    Line best = {lows.front().second, 0.0};
    double least = std::numeric_limits<double>::infinity();
    const auto consider = [&](const Line& line) {
        const double found = misfit(window, line, reach);
        if (found < least) {
            least = found;
            best = line;
        }
    };
    for (std::size_t i = 0; i < parts; ++i) {
        consider({lows[i].second, 0.0});
        for (std::size_t j = i + 1; j < parts; ++j) {
            const double slope =
                (lows[j].second - lows[i].second) / (lows[j].first - lows[i].first);
            consider({lows[i].second - slope * lows[i].first, slope});
        }
    }
    return best;
}

/// The least-squares line through the points near a line; the line itself if there are too few.
/// @param levelsOfPoints that it goes through
Line refined(const Window& window, const std::vector<double>& levelsOfPoints, const Line& line,
             const Reach& reach) {
    constexpr double kMinPoints = 3.0;
    double count = 0.0;
    double places = 0.0;
    double levels = 0.0;
    double squares = 0.0;
    double products = 0.0;
    for (std::size_t i = 0; i < window.size(); ++i) {
        const double place = window.places[i];
        if (reach.holds(window.levels[i] - line.at(place))) {
            const double residual = levelsOfPoints[i] - line.at(place);
            count += 1.0;
            places += place;
            levels += residual;
            squares += place * place;
            products += place * residual;
        }
    }
    const double spread = count * squares - places * places;
    if (count < kMinPoints || spread <= 0.0) {
        return line;
    }
    const double slope = (count * products - places * levels) / spread;
    return {line.level + (levels - slope * places) / count, line.slope + slope};
}

struct Fit {
    Line line;
    Line finer;
    double scatter;
};

Fit fitted(const Window& window) {
    constexpr int kRounds = 4;
    constexpr std::size_t kMinPoints = 8;  // for a slope
    // Many narrow signals increase the first estimate, dips of the noise the second.
    const double scatter = scatterOf(window);
    const Line rough = roughLine(window, Reach(scatter));
    Fit fit = {rough, rough, scatter};
    for (int i = 0; window.size() >= kMinPoints && i < kRounds; ++i) {
        fit.scatter = std::min(scatter, scatterBelow(window, fit.line));
        const Reach reach(fit.scatter);
        fit.finer = refined(window, window.finer, fit.line, reach);
        fit.line = refined(window, window.levels, fit.line, reach);
    }
    return fit;
}

/// The floor within a band: the lines of windows a few points apart, interpolated between them.
class BandFloor {
public:
    /// @param begin, end the points of the band
    BandFloor(const std::vector<double>& medians, const std::vector<double>& finer,
              std::size_t begin, std::size_t end, std::size_t window)
        : medians_(medians),
          finer_(finer),
          begin_(begin),
          end_(end),
          window_(std::min(window, end - begin)) {}

    void fill(NoiseFloor& floor) const {
        constexpr std::size_t kLinesOfWindow = 4;
        const std::size_t step = std::max<std::size_t>(window_ / kLinesOfWindow, 1);
        Fit left = fitAround(begin_);
        for (std::size_t first = begin_; first < end_; first += step) {
            const std::size_t next = std::min(first + step, end_ - 1);
            const Fit right = fitAround(next);
            for (std::size_t i = first; i < std::min(first + step, end_); ++i) {
                const double share = next == first ? 0.0
                                                   : static_cast<double>(i - first) /
                                                         static_cast<double>(next - first);
                const auto place = static_cast<double>(i);
                floor.levels[i] = blend(left.line.at(place), right.line.at(place), share);
                floor.finer[i] = blend(left.finer.at(place), right.finer.at(place), share);
                floor.isQuiet[i] = Reach(blend(left.scatter, right.scatter, share))
                                       .holds(medians_[i] - floor.levels[i]);
            }
            left = right;
        }
    }

private:
    /// One line where the other is missing.
    static double blend(double left, double right, double share) {
        return std::isnan(left) ? right : std::isnan(right) ? left : left + share * (right - left);
    }

    /// The line of the window around a point. At the ends of the band the window is moved, not cut.
    Fit fitAround(std::size_t point) const {
        const std::size_t half = window_ / 2;
        const std::size_t first = std::min(std::max(point, begin_ + half) - half, end_ - window_);
        Window window;
        for (std::size_t i = first; i < first + window_; ++i) {
            if (!std::isnan(medians_[i])) {
                window.places.push_back(static_cast<double>(i));
                window.levels.push_back(medians_[i]);
                window.finer.push_back(finer_[i]);
            }
        }
        return window.size() == 0 ? Fit{{kUnmeasured, 0.0}, {kUnmeasured, 0.0}, kUnmeasured}
                                  : fitted(window);
    }

    const std::vector<double>& medians_;
    const std::vector<double>& finer_;
    std::size_t begin_;
    std::size_t end_;
    std::size_t window_;
};

/// The medians of the quiet points beside the floor.
std::vector<double> quietResiduals(const std::vector<double>& levels,
                                   const std::vector<bool>& isQuiet,
                                   const std::vector<double>& medians) {
    std::vector<double> residuals;
    for (std::size_t i = 0; i < medians.size(); ++i) {
        if (isQuiet[i]) {
            residuals.push_back(medians[i] - levels[i]);
        }
    }
    return residuals;
}

void shift(std::vector<double>& levels, double by) {
    for (double& level : levels) {
        level += by;
    }
}

/// Of residuals whose mean is near 0.
double deviationOf(const std::vector<double>& residuals) {
    double squares = 0.0;
    for (const double residual : residuals) {
        squares += residual * residual;
    }
    return std::sqrt(squares / static_cast<double>(residuals.size()));
}

/// Levels beside their floor, counted by hundredths of a dB.
class Residuals {
public:
    void add(double residual, long long times) {
        const double bound = kBins / 2.0 - 1.0;
        const double bin = std::min(std::max(residual * kPackedPerDecibel, -bound), bound);
        const auto at = static_cast<std::size_t>(std::lround(bin + kBins / 2.0));
        counts_[at] += times;
        first_ = std::min(first_, at);
        last_ = std::max(last_, at);
        count_ += times;
    }

    long long count() const { return count_; }

    /// As noiseSpread() tells it.
    double spread() const { return percentile(kHighShare) - percentile(kLowShare); }

    void clear() {
        std::fill(counts_.begin() + static_cast<std::ptrdiff_t>(std::min(first_, last_)),
                  counts_.begin() + static_cast<std::ptrdiff_t>(last_) + 1, 0);
        first_ = kBins;
        last_ = 0;
        count_ = 0;
    }

private:
    static constexpr std::size_t kBins = 65536;

    /// The rank of a percentile in the sample, such that the estimate is too low as often as too high.
    double percentile(double share) const {
        const double place = share * (static_cast<double>(count_) + 1.0 / 3.0) + 1.0 / 3.0;
        const double rank = std::floor(place);
        return residualAt(rank) + (place - rank) * (residualAt(rank + 1.0) - residualAt(rank));
    }

    /// @param rank from 1, the lowest
    double residualAt(double rank) const {
        long long reached = 0;
        std::size_t bin = first_;
        for (; bin < last_; ++bin) {
            reached += counts_[bin];
            if (static_cast<double>(reached) >= rank) {
                break;
            }
        }
        return (static_cast<double>(bin) - kBins / 2.0) / kPackedPerDecibel;
    }

    std::vector<long long> counts_ = std::vector<long long>(kBins);
    std::size_t first_ = kBins;  // bins in use
    std::size_t last_ = 0;
    long long count_ = 0;
};

}  // namespace

NoiseFloor noiseFloor(const std::vector<double>& medians, const std::vector<double>& finer,
                      const std::vector<std::size_t>& bands, std::size_t window) {
    NoiseFloor floor = {std::vector<double>(medians.size(), kUnmeasured),
                        std::vector<double>(medians.size(), kUnmeasured),
                        std::vector<bool>(medians.size(), false), 0.0};
    for (std::size_t i = 0; i < bands.size(); ++i) {
        const std::size_t end = i + 1 < bands.size() ? bands[i + 1] : medians.size();
        BandFloor(medians, finer, bands[i], end, std::max(window, kMinWindow)).fill(floor);
    }
    const std::vector<double> residuals = quietResiduals(floor.levels, floor.isQuiet, medians);
    if (residuals.empty()) {
        return floor;
    }
    floor.uncertainty =
        deviationOf(residuals) / std::sqrt(static_cast<double>(std::min(window, residuals.size())));
    // A least-squares line follows the mean of the medians. With few sweeps that differs from the median
    // of noise, by the same amount everywhere.
    shift(floor.levels, percentile(residuals, 0.5));
    shift(floor.finer, percentile(quietResiduals(floor.finer, floor.isQuiet, finer), 0.5));
    return floor;
}

double noiseShape(LevelHistory& history, const NoiseFloor& floor) {
    constexpr std::size_t kGroup = 100;  // levels
    constexpr long long kMinGroup = 20;
    constexpr std::size_t kLevels = 200000;  // in all groups, spread evenly over the recording
    const std::size_t sweeps = std::max<std::size_t>(history.sweeps(), 1);
    const std::size_t groupPoints = (kGroup + sweeps - 1) / sweeps;
    const std::size_t stride =
        groupPoints * std::max<std::size_t>(history.points() * sweeps / kLevels, 1);
    std::vector<double> spreads;
    long long levels = 0;
    Residuals group;
    for (std::size_t first = 0; first < history.points(); first += stride) {
        std::size_t used = 0;
        for (std::size_t point = first;
             point < std::min(first + stride, history.points()) && used < groupPoints; ++point) {
            if (floor.isQuiet[point]) {
                ++used;
                history.forEachBin(point, [&](double level, long long times) {
                    group.add(level - floor.levels[point], times);
                });
            }
        }
        if (group.count() >= kMinGroup) {
            spreads.push_back(group.spread());
            levels += group.count();
        }
        group.clear();
    }
    if (spreads.empty()) {
        return kMinNoiseShape;
    }
    // The relative standard deviation of a shape estimated from so many levels.
    const double uncertainty = 4.0 / std::sqrt(static_cast<double>(levels));
    return std::max(noiseShape(percentile(std::move(spreads), 0.5)) / (1.0 + uncertainty),
                    kMinNoiseShape);
}

}  // namespace rfu

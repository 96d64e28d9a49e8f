#include "analysis/statistics/peaks.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "analysis/recordings/bins.h"
#include "analysis/statistics/gammaNoise.h"
#include "analysis/statistics/noiseFloor.h"
#include "analysis/statistics/runs.h"

namespace rfu {

namespace {

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
constexpr double kFalseAlarms = 0.01;  // expected in a recording of noise

/// The traces in which signals are sought: a recording without the points that are left out.
struct Traces {
    std::vector<std::size_t> points;  // of the recording
    std::vector<double> places;       // MHz
    std::vector<double> maxima;       // dBm, NaN where not measured
    std::vector<double> thresholds;   // dBm
    std::vector<std::size_t> bands;   // first point of each
};

/// Where the trace of maxima crosses a level beside the outermost point that reaches it.
class Edge {
public:
    /// @param level that the point reaches; the threshold counts where it is higher
    Edge(const Traces& traces, double level) : traces_(traces), level_(level) {}

    bool isReachedAt(std::size_t point) const { return distance(point) >= 0.0; }

    /// @param inside   a point that reaches the level
    /// @param outside  its neighbour, the same point where there is none
    double between(std::size_t inside, std::size_t outside) const {
        const double place = traces_.places[inside];
        const double above = distance(inside);
        const double below = distance(outside);
        return below < 0.0 ? place + (traces_.places[outside] - place) * above / (above - below)
                           : place;
    }

private:
    double distance(std::size_t point) const {
        return traces_.maxima[point] - std::max(level_, traces_.thresholds[point]);
    }

    const Traces& traces_;
    double level_;
};

struct Extent {
    double low;  // MHz
    double high;
};

/// @param widthAt dB below the maximum
Extent extentOf(const Traces& traces, const Run& run, double widthAt) {
    const Edge edge(traces, traces.maxima[run.strongest] - widthAt);
    std::size_t first = run.first;
    std::size_t last = run.last;
    while (!edge.isReachedAt(first)) {
        ++first;
    }
    while (!edge.isReachedAt(last)) {
        --last;
    }
    const auto band = std::upper_bound(traces.bands.begin(), traces.bands.end(), first);
    const std::size_t bandBegin = *std::prev(band);
    const std::size_t bandEnd = band == traces.bands.end() ? traces.points.size() : *band;
    return {edge.between(first, first > bandBegin ? first - 1 : first),
            edge.between(last, last + 1 < bandEnd ? last + 1 : last)};
}

}  // namespace

void PeakFinder::add(const Sweep& sweep) {
    constexpr double kNoLimit = 0.0;  // nobody asks what was above it
    tallies_.resize(sweep.levels.size());
    for (std::size_t i = 0; i < sweep.levels.size(); ++i) {
        tallies_[i].add(sweep.levels[i], kNoLimit);
    }
    history_.add(sweep);
}

void PeakFinder::write(StateWriter& writer) const {
    for (const PointTally& tally : tallies_) {
        tally.write(writer);
    }
    history_.write(writer);
}

void PeakFinder::merge(StatePart& part, std::size_t points) {
    part.statistics.require(!part.head.axis.points.empty());
    tallies_.resize(points);
    for (const std::size_t place : part.places) {
        tallies_[place].merge(part.statistics, part.head.sweeps);
    }
    history_.merge(part, points);
    for (const std::size_t place : part.places) {
        part.statistics.require(history_.agreesWith(tallies_[place].statistics(), place));
    }
}

std::vector<Signal> PeakFinder::find(const FrequencyAxis& axis, const std::vector<bool>& isLeftOut,
                                     const PeakOptions& options) {
    const std::vector<std::size_t> bands = firstPointsOf(axis);
    // What decides follows from bins, so that it does not depend on how the sweeps came.
    auto [finer, medians] = history_.mediansAndBins();
    std::vector<PointStatistics> statistics;
    long long cells = 0;
    for (std::size_t i = 0; i < medians.size(); ++i) {
        statistics.push_back(tallies_[i].statistics());
        medians[i] = isLeftOut[i] ? kUnknown : medians[i];
        cells += isLeftOut[i] ? 0 : statistics[i].count;
    }
    if (cells == 0) {
        return {};
    }
    const NoiseFloor floor = noiseFloor(medians, finer, bands, options.window);
    const double excess =
        options.above ? *options.above
                      : std::max(kMinExcess, noiseExcess(noiseShape(history_, floor),
                                                         kFalseAlarms / static_cast<double>(cells),
                                                         floor.uncertainty));

    Traces traces;
    auto band = bands.begin();
    for (std::size_t i = 0; i < medians.size(); ++i) {
        for (; band != bands.end() && *band <= i; ++band) {
            traces.bands.push_back(traces.points.size());
        }
        if (!isLeftOut[i]) {
            traces.points.push_back(i);
            traces.places.push_back(axis.points[i]);
            const std::optional<double>& maximum = statistics[i].maximum;
            traces.maxima.push_back(maximum ? LevelHistory::rounded(*maximum) : kUnknown);
            traces.thresholds.push_back(LevelHistory::onGrid(floor.levels[i] + excess));
        }
    }
    std::vector<double> excesses;
    for (std::size_t i = 0; i < traces.points.size(); ++i) {
        excesses.push_back(traces.maxima[i] - traces.thresholds[i]);
    }
    std::vector<Signal> signals;
    for (const Run& run : runsAbove(excesses, traces.maxima, traces.bands)) {
        const Extent extent = extentOf(traces, run, options.widthAt);
        const std::size_t point = traces.points[run.strongest];
        const PointStatistics& strongest = statistics[point];
        const auto above = history_.above(point, traces.thresholds[run.strongest]);
        signals.push_back({(extent.low + extent.high) / 2.0, extent.high - extent.low, point,
                           *strongest.maximum, *strongest.average, floor.finer[point],
                           static_cast<double>(above.count) / static_cast<double>(strongest.count),
                           above.first, above.last});
    }
    return signals;
}

}  // namespace rfu

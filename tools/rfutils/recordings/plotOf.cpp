#include "recordings/plotOf.h"

#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

#include "analysis/recordings/bins.h"
#include "support/units.h"

namespace rfu::command {

PlotPlaces::PlotPlaces(const FrequencyAxis& axis, std::size_t points)
    : name(axis.points.empty() ? "point" : "frequency in MHz"),
      places(axis.points),
      end(axis.points.empty() ? static_cast<double>(points) - 1.0 : axis.bands.back().high),
      areCounted(axis.points.empty()) {
    for (std::size_t i = places.size(); i < points; ++i) {
        places.push_back(static_cast<double>(i));
    }
}

std::vector<double> shownLevels(const std::vector<double>& levels, const FrequencyAxis& axis,
                                const LevelView& view) {
    std::vector<double> shown;
    shown.reserve(levels.size());
    std::optional<LevelPresenter> presenter;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        if (!presenter || view.isOfEachPoint()) {
            presenter.emplace(view.unit, view.antennaAt(axis, static_cast<int>(i)));
        }
        shown.push_back(std::isnan(levels[i]) ? levels[i] : presenter->value(levels[i]));
    }
    return shown;
}

TracePlot plotOf(const FrequencyAxis& axis, const std::vector<PointTally>& tallies,
                 const LevelView& view) {
    PlotPlaces places(axis, tallies.size());
    TracePlot plot;
    plot.placeName = places.name;
    plot.places = std::move(places.places);
    plot.end = places.end;
    plot.isCounted = places.areCounted;
    plot.levelUnit = nameOf(view.unit);
    plot.breaks = firstPointsOf(axis);
    const auto shown = [&](std::optional<double> PointStatistics::*level) {
        std::vector<double> levels;
        levels.reserve(tallies.size());
        for (const PointTally& tally : tallies) {
            levels.push_back((tally.statistics().*level).value_or(std::nan("")));
        }
        return shownLevels(levels, axis, view);
    };
    plot.maximum = shown(&PointStatistics::maximum);
    plot.average = shown(&PointStatistics::average);
    plot.minimum = shown(&PointStatistics::minimum);
    return plot;
}

TracePlot::Line limitLine(double dBm, const TracePlot& plot, const FrequencyAxis& axis,
                          const LevelView& view) {
    TracePlot::Line line = {plot.places, {}};
    if (!view.isOfEachPoint()) {
        line.places.resize(1);
    }
    for (std::size_t i = 0; i < line.places.size(); ++i) {
        const LevelPresenter presenter(view.unit, view.antennaAt(axis, static_cast<int>(i)));
        line.levels.push_back(presenter.value(dBm));
    }
    line.places.push_back(plot.end);
    line.levels.push_back(line.levels.back());
    return line;
}

std::vector<TracePlot::Line> linesOf(const LimitMask& mask) {
    std::vector<TracePlot::Line> lines;
    for (const LimitLine* limit : {&mask.upper, &mask.lower}) {
        TracePlot::Line line;
        for (const LimitLine::Point& point : limit->points()) {
            line.places.push_back(point.frequency);
            line.levels.push_back(point.level);
        }
        if (!line.places.empty()) {
            lines.push_back(line);
        }
    }
    return lines;
}

}  // namespace rfu::command

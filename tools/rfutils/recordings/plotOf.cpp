#include "recordings/plotOf.h"

#include <cmath>
#include <cstddef>
#include <optional>

#include "analysis/recordings/bins.h"
#include "support/units.h"

namespace rfu::command {

TracePlot plotOf(const FrequencyAxis& axis, const std::vector<PointTally>& tallies,
                 const LevelView& view) {
    TracePlot plot;
    const bool hasFrequencies = !axis.points.empty();
    const auto points = static_cast<int>(tallies.size());
    plot.placeName = hasFrequencies ? "frequency in MHz" : "point";
    plot.end = hasFrequencies ? axis.bands.back().high : points - 1;
    plot.isCounted = !hasFrequencies;
    plot.levelUnit = nameOf(view.unit);
    std::optional<LevelPresenter> presenter;
    for (int point = 0; point < points; ++point) {
        const auto index = static_cast<std::size_t>(point);
        const PointStatistics statistics = tallies[index].statistics();
        if (!presenter || view.isOfEachPoint()) {
            presenter.emplace(view.unit, view.antennaAt(axis, point));
        }
        const auto shown = [&](const std::optional<double>& level) {
            return level ? presenter->value(*level) : std::nan("");
        };
        plot.places.push_back(hasFrequencies ? axis.points[index] : point);
        plot.maximum.push_back(shown(statistics.maximum));
        plot.average.push_back(shown(statistics.average));
        plot.minimum.push_back(shown(statistics.minimum));
    }
    plot.breaks = firstPointsOf(axis);
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

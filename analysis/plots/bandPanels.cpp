#include "analysis/plots/bandPanels.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <iterator>

#include "analysis/plots/style.h"

namespace rfu {

namespace {

constexpr int kCut = 14;        // columns between two panels
constexpr int kNarrowest = 40;  // columns of a panel, where there is room
constexpr double kBetweenLabels = 14.0;
constexpr double kColumnRounding = 1e-6;  // of a column

Axis axisOf(const BandPanel& panel, bool isCounted, int wantedTicks) {
    return {panel.axis.low(),   panel.axis.high(),     Axis::Ends::Exact,
            Axis::kPlaceDigits, isCounted ? 1.0 : 0.0, wantedTicks};
}

/// As many ticks as possible whose labels do not touch; the low end of the axis if there is none.
std::vector<PlaceTick> ticksOf(const BandPanel& panel, bool isCounted,
                               const QFontMetricsF& metrics) {
    std::vector<PlaceTick> ticks;
    for (int wanted = Axis::kWantedTicks; wanted > 0; --wanted) {
        const Axis axis = axisOf(panel, isCounted, wanted);
        ticks.clear();
        double widest = 0.0;
        for (const double place : axis.ticks()) {
            if (isCounted && place >= axis.high()) {
                break;  // after the last point
            }
            ticks.push_back({panel.x(place), axis.label(place)});
            widest = std::max(widest, metrics.horizontalAdvance(ticks.back().label));
        }
        if (ticks.size() < 2 || ticks[1].at - ticks[0].at >= widest + kBetweenLabels) {
            break;
        }
    }
    if (ticks.empty()) {
        ticks.push_back({static_cast<double>(panel.left), panel.axis.label(panel.axis.low())});
    }
    return ticks;
}

/// Ticks whose labels do not touch, from left to right.
class PlacedTicks {
public:
    explicit PlacedTicks(const QFontMetricsF& metrics) : metrics_(metrics) {}

    /// Whether a label to the right of all others could begin left of x.
    bool hasRoomBefore(double x) const {
        return ticks_.empty() || x > ticks_.back().at + halfOf(ticks_.back()) + kBetweenLabels;
    }

    /// Adds a tick unless its label touches another.
    void add(const PlaceTick& tick) {
        const auto next = std::find_if(ticks_.begin(), ticks_.end(), [&](const PlaceTick& placed) {
            return placed.at > tick.at;
        });
        if ((next == ticks_.end() || !touch(tick, *next)) &&
            (next == ticks_.begin() || !touch(*std::prev(next), tick))) {
            ticks_.insert(next, tick);
        }
    }

    const std::vector<PlaceTick>& all() const { return ticks_; }

private:
    double halfOf(const PlaceTick& tick) const {
        return metrics_.horizontalAdvance(tick.label) / 2.0;
    }
    bool touch(const PlaceTick& left, const PlaceTick& right) const {
        return right.at - left.at < halfOf(left) + halfOf(right) + kBetweenLabels;
    }

    const QFontMetricsF& metrics_;
    std::vector<PlaceTick> ticks_;
};

}  // namespace

BandPanels::BandPanels(const FrequencyAxis& axis, std::size_t points, int left, int right)
    : areCounted_(axis.bands.empty()) {
    addPanels(axis, points, left, right);
    addColumns(axis, points);
}

void BandPanels::addPanels(const FrequencyAxis& axis, std::size_t points, int left, int right) {
    std::vector<FrequencyAxis::Band> bands = axis.bands;
    if (bands.empty()) {
        bands.push_back({0, 0.0, static_cast<double>(points)});
    }
    const auto count = static_cast<int>(bands.size());
    const int cut = std::min(kCut, (right - left) / (4 * count));
    const double columns = right - left - cut * (count - 1);
    const double narrowest = std::min<double>(kNarrowest, columns / count / 2);
    double span = 0.0;
    for (const FrequencyAxis::Band& band : bands) {
        span += band.high - band.low;
    }
    double at = left;
    for (const FrequencyAxis::Band& band : bands) {
        const double width =
            narrowest + (columns - narrowest * count) * (band.high - band.low) / span;
        panels_.push_back({static_cast<int>(std::lround(at)),
                           static_cast<int>(std::lround(at + width)),
                           {band.low, band.high, Axis::Ends::Exact, Axis::kPlaceDigits}});
        at += width + cut;
    }
}

void BandPanels::addColumns(const FrequencyAxis& axis, std::size_t points) {
    std::vector<double> places(points);
    std::vector<std::size_t> panelOf(points);
    std::size_t panel = 0;
    for (std::size_t i = 0; i < points; ++i) {
        while (panel + 1 < axis.bands.size() && axis.bands[panel + 1].firstPoint <= i) {
            ++panel;
        }
        const BandPanel& shown = panels_[panel];
        const double x = shown.x(axis.points.empty() ? static_cast<double>(i) : axis.points[i]);
        panelOf[i] = panel;
        const int last = std::min(std::max(shown.left, shown.right - 1), panels_.back().right - 1);
        places[i] = std::clamp<double>(x + kColumnRounding, std::min(shown.left, last), last);
        // The last bin of a hop may overlap the first of the next.
        places[i] = i > 0 ? std::max(places[i], places[i - 1]) : places[i];
    }
    columns_ = groupByColumn(places.data(), points);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const int end = panels_[panelOf[columns_[i].end - 1]].right;
        const int next = i + 1 < columns_.size() ? columns_[i + 1].column : end;
        ends_.push_back(std::max(std::min(end, next), columns_[i].column + 1));
    }
}

std::vector<PlaceTick> BandPanels::ticks() const {
    const QFontMetricsF metrics(fontOf(13));
    PlacedTicks placed(metrics);
    std::vector<PlaceTick> rest;
    // First one for each panel, the one nearest to its middle.
    for (const BandPanel& panel : panels_) {
        if (!placed.hasRoomBefore(panel.right)) {
            continue;
        }
        std::vector<PlaceTick> ticks = ticksOf(panel, areCounted_, metrics);
        const double middle = (panel.left + panel.right) / 2.0;
        std::stable_sort(ticks.begin(), ticks.end(), [&](const PlaceTick& a, const PlaceTick& b) {
            return std::abs(a.at - middle) < std::abs(b.at - middle);
        });
        placed.add(ticks.front());
        rest.insert(rest.end(), ticks.begin() + 1, ticks.end());
    }
    for (const PlaceTick& tick : rest) {
        placed.add(tick);
    }
    return placed.all();
}

}  // namespace rfu

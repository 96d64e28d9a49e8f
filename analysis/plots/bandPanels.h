#pragma once

#include <QString>
#include <cstddef>
#include <vector>

#include "analysis/plots/axis.h"
#include "analysis/plots/decimation.h"
#include "analysis/recordings/sweepReader.h"

namespace rfu {

struct PlaceTick {
    double at;  // pixel
    QString label;
};

/// The columns of a picture that show one band.
struct BandPanel {
    int left;
    int right;  // behind its last column
    Axis axis;

    double x(double place) const { return left + axis.position(place) * (right - left); }
};

/// The bands of a recording beside each other, with a cut between them. A recording without
/// frequencies is one band of its points.
class BandPanels {
public:
    /// @param points number of points, also of a recording without frequencies
    /// @param left, right columns for all panels, right behind the last
    BandPanels(const FrequencyAxis& axis, std::size_t points, int left, int right);

    const std::vector<BandPanel>& panels() const { return panels_; }

    /// The points of each column in which one begins. It shows them up to endOf().
    const std::vector<ColumnPoints>& columns() const { return columns_; }
    /// Where the next one begins, or its panel ends.
    int endOf(std::size_t column) const { return ends_[column]; }

    /// Of all panels; their labels do not touch. Needs a QGuiApplication.
    std::vector<PlaceTick> ticks() const;

private:
    void addPanels(const FrequencyAxis& axis, std::size_t points, int left, int right);
    void addColumns(const FrequencyAxis& axis, std::size_t points);

    std::vector<BandPanel> panels_;
    bool areCounted_;  // whether only whole places mean something
    std::vector<ColumnPoints> columns_;
    std::vector<int> ends_;  // of the columns
};

}  // namespace rfu

#pragma once

#include <QString>
#include <cstddef>
#include <vector>

#include "analysis/plots/axis.h"
#include "analysis/plots/decimation.h"
#include "analysis/recordings/sweepReader.h"

namespace rfu {

struct PlaceTick {
    double at;  // pixels from the left edge of the picture
    QString label;
};

/// The columns of a picture that show one band.
struct BandPanel {
    int left;
    int right;  // the column after its last one
    Axis axis;

    double x(double place) const { return left + axis.position(place) * (right - left); }
};

/// The bands of a recording beside each other, with a cut between them. A recording without
/// frequencies is one band of its points.
class BandPanels {
public:
    /// @param points number of points, also of a recording without frequencies
    /// @param left, right the first column of all panels, and the one after their last
    BandPanels(const FrequencyAxis& axis, std::size_t points, int left, int right);

    const std::vector<BandPanel>& panels() const { return panels_; }

    /// The columns in which a point begins, with their points. What such a column shows extends to
    /// endOf().
    const std::vector<ColumnPoints>& columns() const { return columns_; }
    /// The column at which the next of columns() begins, or the panel ends.
    int endOf(std::size_t column) const { return ends_[column]; }

    /// The ticks of all panels; their labels do not touch. Needs a QGuiApplication.
    std::vector<PlaceTick> ticks() const;

private:
    void addPanels(const FrequencyAxis& axis, std::size_t points, int left, int right);
    void addColumns(const FrequencyAxis& axis, std::size_t points);

    std::vector<BandPanel> panels_;
    bool areCounted_;  // whether the places are numbers of points
    std::vector<ColumnPoints> columns_;
    std::vector<int> ends_;  // of the columns
};

}  // namespace rfu

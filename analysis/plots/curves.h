#pragma once

#include <QColor>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <cstddef>
#include <vector>

#include "analysis/plots/decimation.h"
#include "analysis/plots/plotFrame.h"

namespace rfu {

/// Draws series of values over the same places, in time linear in the points: a pixel column of
/// many points shows their range. A value that is not finite was not measured and breaks a line.
/// What lies above or below the plotting area is left out.
class Curves {
public:
    /// @param places of the points, ascending, on the frame's axis
    /// @param breaks indexes of points that are not joined to the one before, ascending
    Curves(const std::vector<double>& places, std::vector<std::size_t> breaks,
           const PlotFrame& frame);

    /// A line. A point without neighbours is a dot.
    void drawLine(QPainter& painter, const std::vector<double>& values,
                  const CurveStyle& style) const;

    /// The area between two series, which are measured at the same points.
    void fillBetween(QPainter& painter, const std::vector<double>& upper,
                     const std::vector<double>& lower, const QColor& color) const;

private:
    double y(double value) const;
    double middleOf(std::size_t column) const { return columns_[column].column + 0.5; }
    void appendPoints(QPolygonF& line, const std::vector<double>& values, std::size_t column) const;
    void drawRun(QPainter& painter, QPainterPath& path, const std::vector<double>& values,
                 const std::vector<ColumnValues>& columns, std::size_t first,
                 std::size_t end) const;

    PlotFrame frame_;
    std::vector<double> x_;  // of each point
    std::vector<ColumnPoints> columns_;
    std::vector<std::size_t> breaks_;
};

}  // namespace rfu

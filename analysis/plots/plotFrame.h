#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>
#include <QSize>
#include <QString>
#include <vector>

#include "analysis/plots/axis.h"

namespace rfu {

/// How a curve is drawn, and its name in the legend.
struct CurveStyle {
    const char* name;
    QColor color;
    double width;
    Qt::PenStyle stroke = Qt::SolidLine;
};

/// What surrounds the curves of a plot: title, legend, grid and axes.
class PlotFrame {
public:
    static constexpr double kTop = 74.0;  // of the plotting area, unless room is left above it

    PlotFrame(QSize size, const Axis& across, const Axis& up);

    /// Leaves room between the legend and the plotting area.
    void leaveAbove(double height) { area_.setTop(kTop + height); }

    QSize size() const { return size_; }
    /// The plotting area.
    const QRectF& area() const { return area_; }
    double x(double place) const { return area_.left() + across_.position(place) * area_.width(); }
    double y(double value) const { return area_.bottom() - up_.position(value) * area_.height(); }

    void drawTitle(QPainter& painter, const QString& title) const;
    void drawLegend(QPainter& painter, const std::vector<CurveStyle>& styles) const;
    /// Fills the plotting area too.
    void drawAxes(QPainter& painter, const QString& acrossName, const QString& upName) const;

private:
    QSize size_;
    Axis across_;
    Axis up_;
    QRectF area_;
};

}  // namespace rfu

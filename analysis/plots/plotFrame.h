#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>
#include <QSize>
#include <QString>
#include <optional>
#include <vector>

#include "analysis/plots/axis.h"

namespace rfu {

/// How large a plot of curves is and what it shows of them.
struct PlotShape {
    static constexpr QSize kUsual = QSize(1280, 680);
    static constexpr QSize kSmallest = QSize(480, 360);  // has room for axes, legend and markers
    static constexpr QSize kLargest = QSize(10000, 10000);

    QSize size = kUsual;               // of the whole, in pixels
    std::optional<ValueRange> values;  // of the vertical axis; without, all values
};

/// What an axis has to show.
struct AxisRange {
    ValueRange values;
    int maxDigits;         // significant digits of a label
    double minStep = 0.0;  // from tick to tick
};

/// How a curve is drawn, and its name in the legend.
struct CurveStyle {
    const char* name;
    QColor color;
    double width;
    Qt::PenStyle stroke = Qt::SolidLine;
};

/// What surrounds the curves of a plot: title, legend, grid and axes. Needs a QGuiApplication for its
/// fonts.
class PlotFrame {
public:
    /// The horizontal axis spans exactly its values. So does the vertical one where the shape gives
    /// them; else it is extended to the next ticks.
    PlotFrame(const PlotShape& shape, const AxisRange& across, const AxisRange& up,
              std::vector<CurveStyle> legend);

    /// The lower edge of the legend, where the plotting area begins unless room is left above it.
    double top() const { return top_; }
    void leaveAbove(double height) { area_.setTop(top_ + height); }

    QSize size() const { return size_; }
    /// The plotting area.
    const QRectF& area() const { return area_; }
    double x(double place) const { return area_.left() + across_.position(place) * area_.width(); }
    double y(double value) const { return area_.bottom() - up_.position(value) * area_.height(); }
    /// The lowest value of the vertical axis.
    double lowest() const { return up_.low(); }
    /// Whether a value lies within the vertical axis.
    bool shows(double value) const { return value >= up_.low() && value <= up_.high(); }

    void drawTitle(QPainter& painter, const QString& title) const;
    void drawLegend(QPainter& painter) const;
    /// Also fills the plotting area.
    void drawAxes(QPainter& painter, const QString& acrossName, const QString& upName) const;

private:
    struct LegendEntry {
        CurveStyle style;
        double left;
        double middle;  // of its row
    };

    void arrangeLegend(const std::vector<CurveStyle>& legend);

    QSize size_;
    Axis across_;
    Axis up_;
    std::vector<LegendEntry> legend_;
    double top_;
    QRectF area_;
};

}  // namespace rfu

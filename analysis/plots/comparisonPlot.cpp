#include "analysis/plots/comparisonPlot.h"

#include <QColor>
#include <QPainter>
#include <QSize>
#include <cmath>
#include <utility>

#include "analysis/plots/axis.h"
#include "analysis/plots/curves.h"
#include "analysis/plots/style.h"

namespace rfu {

namespace {

constexpr double kLevelsShare = 0.6;  // of the height
constexpr int kTitle = 34;            // rows that the lower part does not need
const QColor kColorOfA(0x1f, 0x4e, 0x79);
const QColor kColorOfB(0xc8, 0x55, 0x3d);
const CurveStyle kDifference = {"difference", QColor(0x7a, 0x3e, 0x9d), 1.2};
const CurveStyle kThreshold = {"threshold", kInk, 1.6, Qt::DashLine};

AxisRange placesOf(const ComparisonPlot& plot) {
    return {{plot.places.front(), plot.end}, Axis::kPlaceDigits, plot.isCounted ? 1.0 : 0.0};
}

/// Draws one part from its legend down.
void drawPart(QPainter& painter, const ComparisonPlot& plot, const PlotFrame& frame,
              const QString& valueName,
              const std::vector<std::pair<const std::vector<double>*, CurveStyle>>& lines) {
    frame.drawLegend(painter);
    frame.drawAxes(painter, qtText(plot.placeName), valueName);
    const Curves curves(plot.places, plot.breaks, frame);
    for (const auto& [values, style] : lines) {
        curves.drawLine(painter, *values, style);
    }
}

void paint(QPainter& painter, const ComparisonPlot& plot) {
    const QSize size = plot.shape.size;
    const int upper = static_cast<int>(std::lround(kLevelsShare * size.height()));
    const CurveStyle styleOfA = {plot.nameOfA.c_str(), kColorOfA, 1.2};
    const CurveStyle styleOfB = {plot.nameOfB.c_str(), kColorOfB, 1.2};
    const PlotFrame levels({{size.width(), upper}, plot.shape.values}, placesOf(plot),
                           {rangeOf({&plot.a, &plot.b}), Axis::kLevelDigits}, {styleOfA, styleOfB});
    levels.drawTitle(painter, qtText(plot.title));
    drawPart(painter, plot, levels, QStringLiteral("level in ") + qtText(plot.levelUnit),
             {{&plot.a, styleOfA}, {&plot.b, styleOfB}});

    std::vector<double> thresholds;
    std::vector<CurveStyle> legend = {kDifference};
    if (plot.threshold) {
        thresholds = {*plot.threshold, -*plot.threshold};
        legend.push_back(kThreshold);
    }
    const PlotFrame below({{size.width(), size.height() - upper + kTitle}, std::nullopt},
                          placesOf(plot),
                          {rangeOf({&plot.differences, &thresholds}), Axis::kLevelDigits}, legend);
    painter.save();
    painter.translate(0.0, upper - kTitle);
    drawPart(painter, plot, below, QStringLiteral("b - a in dB"),
             {{&plot.differences, kDifference}});
    for (const double threshold : thresholds) {
        Curves({plot.places.front(), plot.end}, {}, below)
            .drawLine(painter, {threshold, threshold}, kThreshold);
    }
    painter.restore();
}

}  // namespace

Drawing drawingOf(ComparisonPlot plot) {
    Drawing drawing = {plot.shape.size, plot.title, {}};
    drawing.paint = [plot = std::move(plot)](QPainter& painter) { paint(painter, plot); };
    return drawing;
}

}  // namespace rfu

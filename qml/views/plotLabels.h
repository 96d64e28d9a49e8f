#pragma once

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QRectF>
#include <QSize>
#include <QString>

#include <vector>

#include "analysis/plots/axis.h"
#include "analysis/plots/levelScale.h"

namespace rfu::qml {

/// A round number on an axis, in logical pixels from the edge of the view.
struct AxisTick {
    double at;
    QString label;
};

/// As many ticks along a horizontal axis as there is room for between their labels.
/// @param shown     what the axis shows, not empty
/// @param isCounted whether the places are numbers of points, so that ticks are whole
/// @param left      the left end of the axis, in logical pixels
/// @param width     of the axis, above 0
std::vector<AxisTick> frequencyTicks(const ValueRange& shown, bool isCounted, double left,
                                     double width, const QFontMetricsF& metrics);

/// How a plot is drawn around its curves.
struct PlotLook {
    QFont font;
    QColor text;
    QColor grid;
    QColor background;
    double ratio = 1.0;  // device pixels of a logical one

    bool operator==(const PlotLook& other) const;
};

/// What the picture behind curves depends on.
struct PlotFace {
    PlotLook look;
    QSize size;          // of the view, in device pixels
    QRectF plot;         // in logical pixels
    ValueRange shown{};  // NaN without points
    bool isCounted = false;
    LevelRange levels{};
    LevelScale scale;

    bool operator==(const PlotFace& other) const;
};

/// Background, grid and labels, in device pixels. Opaque where the background is.
QImage pictureOf(const PlotFace& face);

}  // namespace rfu::qml

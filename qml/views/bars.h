#pragma once

#include <QImage>
#include <QPointF>
#include <QRgb>
#include <QSGGeometryNode>

#include <vector>

#include "analysis/plots/columnSpans.h"

namespace rfu::qml {

/// A rectangle of one colour in device pixels from the top left corner of a plot; the ends lie behind the last pixels.
struct Bar {
    int left;
    int right;
    int top;
    int bottom;
    QRgb color;  // premultiplied
};

/// Appends a span of each column. Neighbours that are alike become one bar.
void appendBars(std::vector<Bar>& bars, const std::vector<PixelSpan>& columns, QRgb color);

/// Draws bars over each other, in their order, on an image that is as large as the plot, ARGB32_Premultiplied.
void paintBars(QImage& image, const std::vector<Bar>& bars);

/// Makes bars the triangles of a node.
/// @param origin of the plot, in logical pixels
/// @param ratio  device pixels of a logical one
void setBars(QSGGeometryNode& node, const std::vector<Bar>& bars, const QPointF& origin,
             double ratio);

/// A node for setBars().
QSGGeometryNode* makeBarsNode();

}  // namespace rfu::qml

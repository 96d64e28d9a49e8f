#include "qml/views/bars.h"

#include <QSGGeometry>
#include <QSGVertexColorMaterial>

#include <algorithm>
#include <cstddef>

namespace rfu::qml {

namespace {

constexpr int kOpaque = 255;
constexpr int kCorners = 6;  // of two triangles

int blended(int above, int below, int alpha) {
    return above + (below * (kOpaque - alpha) + kOpaque / 2) / kOpaque;
}

QRgb blended(QRgb above, QRgb below) {
    const int alpha = qAlpha(above);
    return qRgba(blended(qRed(above), qRed(below), alpha),
                 blended(qGreen(above), qGreen(below), alpha),
                 blended(qBlue(above), qBlue(below), alpha), blended(alpha, qAlpha(below), alpha));
}

}  // namespace

void appendBars(std::vector<Bar>& bars, const std::vector<PixelSpan>& columns, QRgb color) {
    const std::size_t before = bars.size();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const PixelSpan& span = columns[i];
        const int column = static_cast<int>(i);
        if (span.isEmpty()) {
            continue;
        }
        if (bars.size() > before && bars.back().right == column && bars.back().top == span.first &&
            bars.back().bottom == span.end) {
            bars.back().right = column + 1;
        } else {
            bars.push_back({column, column + 1, span.first, span.end, color});
        }
    }
}

void paintBars(QImage& image, const std::vector<Bar>& bars) {
    const auto stride = static_cast<std::size_t>(image.bytesPerLine()) / sizeof(QRgb);
    QRgb* const pixels = reinterpret_cast<QRgb*>(image.bits());
    for (const Bar& bar : bars) {
        const bool isOpaque = qAlpha(bar.color) == kOpaque;
        for (int row = bar.top; row < bar.bottom; ++row) {
            QRgb* const line = pixels + stride * static_cast<std::size_t>(row);
            if (isOpaque) {
                std::fill(line + bar.left, line + bar.right, bar.color);
            } else {
                std::transform(line + bar.left, line + bar.right, line + bar.left,
                               [&](QRgb below) { return blended(bar.color, below); });
            }
        }
    }
}

QSGGeometryNode* makeBarsNode() {
    auto* const node = new QSGGeometryNode;
    auto* const geometry = new QSGGeometry(QSGGeometry::defaultAttributes_ColoredPoint2D(), 0);
    geometry->setDrawingMode(QSGGeometry::DrawTriangles);
    geometry->setVertexDataPattern(QSGGeometry::StreamPattern);
    node->setGeometry(geometry);
    node->setMaterial(new QSGVertexColorMaterial);
    node->setFlags(QSGNode::OwnsGeometry | QSGNode::OwnsMaterial);
    return node;
}

void setBars(QSGGeometryNode& node, const std::vector<Bar>& bars, const QPointF& origin,
             double ratio) {
    QSGGeometry& geometry = *node.geometry();
    geometry.allocate(static_cast<int>(bars.size()) * kCorners);
    QSGGeometry::ColoredPoint2D* corner = geometry.vertexDataAsColoredPoint2D();
    for (const Bar& bar : bars) {
        const auto set = [&](int x, int y) {
            const auto part = [](int channel) { return static_cast<uchar>(channel); };
            corner->set(static_cast<float>(origin.x() + x / ratio),
                        static_cast<float>(origin.y() + y / ratio), part(qRed(bar.color)),
                        part(qGreen(bar.color)), part(qBlue(bar.color)), part(qAlpha(bar.color)));
            ++corner;
        };
        set(bar.left, bar.top);
        set(bar.right, bar.top);
        set(bar.left, bar.bottom);
        set(bar.left, bar.bottom);
        set(bar.right, bar.top);
        set(bar.right, bar.bottom);
    }
    node.markDirty(QSGNode::DirtyGeometry);
}

}  // namespace rfu::qml

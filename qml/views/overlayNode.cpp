#include "qml/views/overlayNode.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPolygonF>
#include <QSGImageNode>
#include <QSGRectangleNode>

#include <algorithm>
#include <cmath>

namespace rfu::qml {

namespace {

constexpr int kSign = 0;         // number of the picture
constexpr int kMostFlags = 64;   // rows beyond have none
constexpr double kSignSize = 9;  // logical pixels
constexpr double kRound = 3.0;

/// Black or white, whichever can be read.
QColor inkOn(const QColor& color) {
    constexpr int kMiddle = 150;
    return qGray(color.rgb()) > kMiddle ? Qt::black : Qt::white;
}

QImage paintedPictures(const Overlay& overlay, int side, int count) {
    QImage pictures(side * count, side, QImage::Format_ARGB32_Premultiplied);
    pictures.fill(Qt::transparent);
    QPainter painter(&pictures);
    painter.scale(overlay.ratio, overlay.ratio);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(overlay.font);
    painter.setBrush(overlay.markerColor);
    const double cell = side / overlay.ratio;
    const double middle = cell / 2.0;
    const double half = kSignSize / 2.0;
    painter.setPen(inkOn(overlay.markerColor));
    painter.drawPolygon(QPolygonF({{middle, middle - half},
                                   {middle + half, middle},
                                   {middle, middle + half},
                                   {middle - half, middle}}));
    for (int row = 0; row + 1 < count; ++row) {
        const QRectF flag((row + 1) * cell, 0.0, cell, cell);
        painter.setPen(Qt::NoPen);
        painter.drawRoundedRect(flag.adjusted(1.0, 0.0, -1.0, 0.0), kRound, kRound);
        painter.setPen(inkOn(overlay.markerColor));
        painter.drawText(flag, Qt::AlignCenter, QString::number(row + 1));
    }
    return pictures;
}

}  // namespace

void OverlayNode::show(QQuickWindow& window, const Overlay& overlay) {
    while (QSGNode* const child = firstChild()) {
        removeChildNode(child);
        delete child;
    }
    const double pixel = 1.0 / overlay.ratio;
    const auto onPixel = [&](double x) {
        return std::min(std::floor(x * overlay.ratio) / overlay.ratio,
                        overlay.plot.right() - pixel);
    };
    if (!std::isnan(overlay.cursor)) {
        addBar(window, {onPixel(overlay.cursor), overlay.plot.top(), pixel, overlay.plot.height()},
               overlay.cursorColor);
    }
    if (overlay.markers.empty()) {
        return;
    }
    makePictures(window, overlay);
    for (const Overlay::Marker& marker : overlay.markers) {
        addBar(window, {onPixel(marker.x), overlay.plot.top(), pixel, overlay.plot.height()},
               overlay.markerColor);
        addMarker(window, marker, overlay);
    }
}

void OverlayNode::makePictures(QQuickWindow& window, const Overlay& overlay) {
    int flags = 0;
    for (const Overlay::Marker& marker : overlay.markers) {
        flags = std::clamp(marker.row + 1, flags, kMostFlags);
    }
    const bool isSame = pictures_ != nullptr && count_ > flags && color_ == overlay.markerColor &&
                        font_ == overlay.font && ratio_ == overlay.ratio;
    if (isSame) {
        return;
    }
    const double height = QFontMetricsF(overlay.font).height() + 2.0;
    side_ = static_cast<int>(std::ceil(std::clamp(height, 12.0, 256.0) * overlay.ratio));
    count_ = flags + 1;
    color_ = overlay.markerColor;
    font_ = overlay.font;
    ratio_ = overlay.ratio;
    pictures_.reset(window.createTextureFromImage(paintedPictures(overlay, side_, count_)));
}

void OverlayNode::addBar(QQuickWindow& window, const QRectF& bar, const QColor& color) {
    QSGRectangleNode* const node = window.createRectangleNode();
    node->setRect(bar);
    node->setColor(color);
    appendChildNode(node);
}

/// @param x, middle the middle of the picture, in logical pixels
void OverlayNode::addPicture(QQuickWindow& window, int number, double x, double middle,
                             const Overlay& overlay) {
    QSGImageNode* const node = window.createImageNode();
    const double cell = side_ / overlay.ratio;
    const auto onPixel = [&](double at) {
        return std::round((at - cell / 2.0) * overlay.ratio) / overlay.ratio;
    };
    node->setTexture(pictures_.get());
    node->setSourceRect(QRectF(number * side_, 0.0, side_, side_));
    node->setRect(QRectF(onPixel(x), onPixel(middle), cell, cell));
    node->setFiltering(QSGTexture::Nearest);
    appendChildNode(node);
}

void OverlayNode::addMarker(QQuickWindow& window, const Overlay::Marker& marker,
                            const Overlay& overlay) {
    const QRectF& plot = overlay.plot;
    if (marker.y >= plot.top() && marker.y <= plot.bottom()) {
        addPicture(window, kSign, marker.x, marker.y, overlay);
    }
    if (marker.row + 1 < count_) {
        addPicture(window, marker.row + 1, marker.x, plot.top() + side_ / overlay.ratio / 2.0,
                   overlay);
    }
}

}  // namespace rfu::qml

#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QQuickWindow>
#include <QRectF>
#include <QSGNode>
#include <QSGTexture>

#include <memory>
#include <vector>

namespace rfu::qml {

/// The cursor and the markers on a plot, in logical pixels from the top left corner of the view.
struct Overlay {
    struct Marker {
        int row;  // its flag shows the number of the row, from 1
        double x;
        double y;  // of its level; NaN for none
    };

    QRectF plot;
    double cursor = 0.0;  // NaN for none
    QColor cursorColor;
    std::vector<Marker> markers;
    QColor markerColor;
    QFont font;
    double ratio = 1.0;  // device pixels of a logical one
};

/// Draws an overlay with rectangles and small pictures, which every backend has. A transform that moves nothing:
/// the software backend forgets the place of what is added later below a plain QSGNode.
class OverlayNode : public QSGTransformNode {
public:
    void show(QQuickWindow& window, const Overlay& overlay);

private:
    void makePictures(QQuickWindow& window, const Overlay& overlay);
    void addBar(QQuickWindow& window, const QRectF& bar, const QColor& color);
    void addPicture(QQuickWindow& window, int number, double x, double middle,
                    const Overlay& overlay);
    void addMarker(QQuickWindow& window, const Overlay::Marker& marker, const Overlay& overlay);

    // Beside each other: the sign of a level, then the flags by row.
    std::unique_ptr<QSGTexture> pictures_;
    int side_ = 0;  // of a picture, in device pixels
    int count_ = 0;
    QColor color_;
    QFont font_;
    double ratio_ = 0.0;
};

}  // namespace rfu::qml

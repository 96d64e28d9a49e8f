#pragma once

#include <QColor>
#include <QImage>
#include <QRectF>
#include <QSGImageNode>
#include <QSGNode>
#include <QSGTexture>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <vector>

class QQuickWindow;

namespace rfu::qml {

/// What a waterfall draws, from back to front: the background, strips of rows, lines and labels. Made of
/// pictures and rectangles, which every backend of the scene graph draws. Lives on the thread that
/// renders.
///
/// All inner nodes are transforms, though nothing is moved: the software backend forgets the place of what is
/// added later below a plain QSGNode.
class WaterfallNode : public QSGTransformNode {
public:
    /// A part of a strip. Areas are in pixels of the view.
    struct Strip {
        std::uint64_t number;
        std::uint64_t revision;  // of its picture
        QRectF area;
        QRectF source;  // of the picture
    };
    struct Line {
        QRectF area;
        QColor color;

        bool operator==(const Line& other) const {
            return area == other.area && color == other.color;
        }
    };

    explicit WaterfallNode(QQuickWindow& window);

    void showBackground(const QRectF& area, const QColor& color);
    /// Uploads the pictures with another revision only.
    void showStrips(const std::vector<Strip>& strips,
                    const std::function<QImage(std::uint64_t number)>& picture);
    void showLines(const std::vector<Line>& lines);
    /// @param revision of the picture
    void showLabels(const QImage& picture, std::uint64_t revision);

private:
    /// A node in its layer, and the picture that it shows.
    struct Picture {
        QSGImageNode* node = nullptr;
        std::unique_ptr<QSGTexture> texture;
        std::uint64_t revision = 0;
    };

    void upload(Picture& picture, QSGNode& layer, const QImage& image, std::uint64_t revision);
    static void showLinesIn(QQuickWindow& window, QSGNode& layer, const std::vector<Line>& lines);

    QQuickWindow& window_;
    QSGNode* background_;
    QSGNode* strips_;
    QSGNode* lines_;
    QSGNode* labels_;
    Line shownBackground_;
    std::vector<Line> shownLines_;
    std::map<std::uint64_t, Picture> stripPictures_;  // by number
    Picture labelPicture_;
};

}  // namespace rfu::qml

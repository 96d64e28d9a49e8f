#include "qml/views/waterfallNode.h"

#include <QQuickWindow>
#include <QSGRectangleNode>

#include <algorithm>

namespace rfu::qml {

WaterfallNode::WaterfallNode(QQuickWindow& window)
    : window_(window),
      background_(new QSGTransformNode),
      strips_(new QSGTransformNode),
      lines_(new QSGTransformNode),
      labels_(new QSGTransformNode) {
    for (QSGNode* const layer : {background_, strips_, lines_, labels_}) {
        appendChildNode(layer);
    }
}

void WaterfallNode::showBackground(const QRectF& area, const QColor& color) {
    const Line background = {area, color};
    if (!(background == shownBackground_)) {
        shownBackground_ = background;
        showLinesIn(window_, *background_, {background});
    }
}

void WaterfallNode::showLines(const std::vector<Line>& lines) {
    if (lines != shownLines_) {
        shownLines_ = lines;
        showLinesIn(window_, *lines_, lines);
    }
}

void WaterfallNode::showLinesIn(QQuickWindow& window, QSGNode& layer,
                                const std::vector<Line>& lines) {
    while (QSGNode* const child = layer.firstChild()) {
        layer.removeChildNode(child);
        delete child;
    }
    for (const Line& line : lines) {
        if (line.color.alpha() > 0 && !line.area.isEmpty()) {
            QSGRectangleNode* const node = window.createRectangleNode();
            node->setRect(line.area);
            node->setColor(line.color);
            layer.appendChildNode(node);
        }
    }
}

/// Gives a node in a layer another picture.
void WaterfallNode::upload(Picture& picture, QSGNode& layer, const QImage& image,
                           std::uint64_t revision) {
    std::unique_ptr<QSGTexture> texture(window_.createTextureFromImage(image));
    if (picture.node == nullptr) {
        picture.node = window_.createImageNode();
        picture.node->setTexture(texture.get());
        picture.node->setFiltering(QSGTexture::Nearest);
        layer.appendChildNode(picture.node);
    } else {
        picture.node->setTexture(texture.get());
    }
    picture.texture = std::move(texture);
    picture.revision = revision;
}

void WaterfallNode::showStrips(const std::vector<Strip>& strips,
                               const std::function<QImage(std::uint64_t number)>& picture) {
    for (auto held = stripPictures_.begin(); held != stripPictures_.end();) {
        const bool isShown = std::any_of(strips.begin(), strips.end(), [&](const Strip& strip) {
            return strip.number == held->first;
        });
        if (!isShown) {
            delete held->second.node;
        }
        held = isShown ? std::next(held) : stripPictures_.erase(held);
    }
    for (const Strip& strip : strips) {
        Picture& shown = stripPictures_[strip.number];
        if (shown.revision != strip.revision) {
            upload(shown, *strips_, picture(strip.number), strip.revision);
        }
        shown.node->setRect(strip.area);
        shown.node->setSourceRect(strip.source);
    }
}

void WaterfallNode::showLabels(const QImage& picture, std::uint64_t revision) {
    if (picture.isNull()) {
        delete labelPicture_.node;
        labelPicture_ = {};
    } else if (labelPicture_.revision != revision) {
        upload(labelPicture_, *labels_, picture, revision);
        labelPicture_.node->setRect(
            QRectF({0.0, 0.0}, picture.size() / picture.devicePixelRatio()));
    }
}

}  // namespace rfu::qml

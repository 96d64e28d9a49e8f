#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QSizeF>
#include <QString>

#include <cstdint>
#include <vector>

namespace rfu::qml {

/// A label beside a row.
struct RowLabel {
    double y;  // pixels from the top, of its middle
    QString text;
    QString date;  // under it; may be empty

    bool operator==(const RowLabel& other) const {
        return y == other.y && text == other.text && date == other.date;
    }
};

/// The picture of the labels on the left of a waterfall, painted when they change only.
class RowLabels {
public:
    struct Style {
        QFont font;
        QColor color;
        QSizeF size;  // pixels
        double pixelRatio;

        bool operator==(const Style& other) const {
            return font == other.font && color == other.color && size == other.size &&
                   pixelRatio == other.pixelRatio;
        }
    };

    void show(const std::vector<RowLabel>& labels, const Style& style);

    /// Null without room.
    const QImage& picture() const { return picture_; }
    /// Another number whenever the picture is another.
    std::uint64_t revision() const { return revision_; }

private:
    void paint();

    std::vector<RowLabel> labels_;
    Style style_ = {};
    QImage picture_;
    std::uint64_t revision_ = 0;
};

}  // namespace rfu::qml

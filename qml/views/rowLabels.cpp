#include "qml/views/rowLabels.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace rfu::qml {

namespace {

constexpr double kTick = 4.0;  // pixels
constexpr double kBesideTick = 3.0;

/// A date, such as "2024-05-04", without the year where there is no room for it.
QString fitting(const QString& date, const QFontMetricsF& metrics, double room) {
    constexpr int kYear = 5;
    return metrics.horizontalAdvance(date) <= room ? date : date.mid(kYear);
}

}  // namespace

void RowLabels::show(const std::vector<RowLabel>& labels, const Style& style) {
    if (labels == labels_ && style == style_) {
        return;
    }
    labels_ = labels;
    style_ = style;
    ++revision_;
    paint();
}

void RowLabels::paint() {
    const QSize pixels = (style_.size * style_.pixelRatio).toSize();
    if (pixels.isEmpty() || labels_.empty()) {
        picture_ = {};
        return;
    }
    picture_ = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    picture_.setDevicePixelRatio(style_.pixelRatio);
    picture_.fill(Qt::transparent);
    QPainter painter(&picture_);
    painter.setFont(style_.font);
    painter.setPen(style_.color);
    const QFontMetricsF metrics(style_.font);
    const double right = style_.size.width();
    const double height = metrics.height();
    const auto write = [&](double middle, const QString& text) {
        painter.drawText(QRectF(0.0, middle - height / 2.0, right - kTick - kBesideTick, height),
                         Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip, text);
    };
    for (const RowLabel& label : labels_) {
        const double y = std::round(label.y);
        painter.fillRect(QRectF(right - kTick, y, kTick, 1.0), style_.color);
        // Near the edges the texts move so far inwards that they are whole.
        const double lines = label.date.isEmpty() ? 1.0 : 2.0;
        const double lowest = std::floor(style_.size.height() - (lines - 0.5) * height);
        const double middle = std::max(std::ceil(height / 2.0), std::min(y, lowest));
        write(middle, label.text);
        write(middle + height, fitting(label.date, metrics, right - kTick - kBesideTick));
    }
}

}  // namespace rfu::qml

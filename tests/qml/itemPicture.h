#pragma once

#include <QColor>
#include <QImage>
#include <QObject>
#include <QQuickItem>
#include <QQuickItemGrabResult>
#include <QSharedPointer>
#include <QSizeF>

/// A picture of an item, whose pixels tests read. What an item does not draw is black under the software backend: put a
/// coloured rectangle behind it.
class ItemPicture : public QObject {
    Q_OBJECT
    /// 0 until there is a picture.
    Q_PROPERTY(int width READ width NOTIFY taken)
    Q_PROPERTY(int height READ height NOTIFY taken)

public:
    int width() const { return picture_.width(); }
    int height() const { return picture_.height(); }

    /// The picture is there with the signal `taken`.
    /// @param ratio pixels of the picture for each of the item
    Q_INVOKABLE void take(QQuickItem* item, double ratio = 1.0) {
        picture_ = QImage();
        result_ = item->grabToImage((QSizeF(item->width(), item->height()) * ratio).toSize());
        if (result_ != nullptr) {
            connect(result_.data(), &QQuickItemGrabResult::ready, this, [this] {
                picture_ = result_->image();
                Q_EMIT taken();
            });
        }
    }
    /// The colour of a pixel, as "#rrggbb"; empty outside the picture.
    Q_INVOKABLE QString at(double x, double y) const {
        const QPoint pixel(static_cast<int>(x), static_cast<int>(y));
        return picture_.valid(pixel) ? picture_.pixelColor(pixel).name() : QString();
    }
    /// The number of pixels of a colour.
    Q_INVOKABLE int count(const QString& color) const {
        int count = 0;
        for (int y = 0; y < picture_.height(); ++y) {
            for (int x = 0; x < picture_.width(); ++x) {
                count += picture_.pixelColor(x, y).name() == color ? 1 : 0;
            }
        }
        return count;
    }
    Q_INVOKABLE bool save(const QString& file) const { return picture_.save(file); }

Q_SIGNALS:
    void taken();

private:
    QSharedPointer<QQuickItemGrabResult> result_;
    QImage picture_;
};

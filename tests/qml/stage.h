#pragma once

#include <QColor>
#include <QImage>
#include <QObject>
#include <QQuickItem>
#include <QQuickRenderControl>
#include <QQuickWindow>
#include <QString>

#include <memory>

/// A window without a display in which the processor draws an item frame by frame. Pictures of single items are
/// drawn anew instead, so that what changes from frame to frame is not seen there.
class Stage : public QObject {
    Q_OBJECT

public:
    Stage() : window_(std::make_unique<QQuickWindow>(&control_)) {}
    /// What was drawn ends before the window.
    ~Stage() override { control_.invalidate(); }

    /// Until the item or the stage ends. The processor must be what draws.
    Q_INVOKABLE void show(QQuickItem* item) {
        window_->setGeometry(0, 0, static_cast<int>(item->width()),
                             static_cast<int>(item->height()));
        item->setParentItem(window_->contentItem());
        control_.initialize(nullptr);
    }
    /// Draws the next frame.
    Q_INVOKABLE void draw() {
        control_.polishItems();
        control_.sync();
        picture_ = control_.grab();
    }
    /// The colour of a pixel, as "#rrggbb"; empty outside the picture.
    Q_INVOKABLE QString at(int x, int y) const {
        return picture_.valid(x, y) ? picture_.pixelColor(x, y).name() : QString();
    }

private:
    QQuickRenderControl control_;
    std::unique_ptr<QQuickWindow> window_;
    QImage picture_;
};

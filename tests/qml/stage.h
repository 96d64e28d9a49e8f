#pragma once

#include <QColor>
#include <QImage>
#include <QObject>
#include <QQuickItem>
#include <QQuickRenderControl>
#include <QQuickWindow>
#include <QString>

#include <rfUtils/detail/qtVersion.h>

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
        initialize(control_);
    }
    /// Draws the next frame.
    Q_INVOKABLE void draw() {
        control_.polishItems();
        control_.sync();
        picture_ = grab(control_, *window_);
    }
    /// The colour of a pixel, as "#rrggbb"; empty outside the picture.
    Q_INVOKABLE QString at(int x, int y) const {
        return picture_.valid(x, y) ? picture_.pixelColor(x, y).name() : QString();
    }

private:
    // Templates, because the statements of the other version do not compile.
    template <typename Control>
    static void initialize(Control& control) {
        if constexpr (!rfu::qt::kIsQt6) {  // there it is for GPUs alone
            control.initialize(nullptr);
        }
    }
    template <typename Control, typename Window>
    static QImage grab(Control& control, Window& window) {
        if constexpr (rfu::qt::kIsQt6) {
            return window.grabWindow();
        } else {
            return control.grab();
        }
    }

    QQuickRenderControl control_;
    std::unique_ptr<QQuickWindow> window_;
    QImage picture_;
};

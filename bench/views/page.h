// A page of QML that is drawn frame by frame by the processor, without a display.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QObject>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickRenderControl>
#include <QQuickWindow>
#include <QSize>

#include <memory>

namespace rfu::bench {

class Page {
public:
    static constexpr QSize kSize = QSize(1280, 720);

    /// Starts the application if there is none.
    /// @param qml of an item, which becomes as large as the window
    /// @throw std::runtime_error what is wrong with it
    explicit Page(const QByteArray& qml);

    QObject& root() { return *root_; }
    /// Handles the events that are due, and draws all of the window.
    QImage frame();

private:
    /// Whether the application runs; before all that needs it.
    const bool isStarted_;
    QQmlEngine engine_;
    QQuickRenderControl control_;
    QQuickWindow window_;
    std::unique_ptr<QQuickItem> root_;
};

}  // namespace rfu::bench

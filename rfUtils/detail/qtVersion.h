// Private to the library: not installed, may change in any release.
#pragma once

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QPointF>
#include <QRectF>
#include <QString>

/// What Qt 5 and Qt 6 call differently. No other file asks for the version; templates keep this one
/// free of headers beyond Qt's Core.
namespace rfu::qt {

inline constexpr bool kIsQt6 = QT_VERSION_MAJOR >= 6;

#if QT_VERSION_MAJOR >= 6

template <typename MouseEvent>
QPointF mousePoint(const MouseEvent& event) {
    return event.position();
}

template <typename HoverEvent>
QPointF hoverPoint(const HoverEvent& event) {
    return event.position();
}

template <typename TouchEvent>
const auto& touchPoints(const TouchEvent& event) {
    return event.points();
}

template <typename TouchPoint>
QPointF placeOf(const TouchPoint& point) {
    return point.position();
}

inline QString translationsFolder() {
    return QLibraryInfo::path(QLibraryInfo::TranslationsPath);
}

/// Qt 6 always does.
inline void scaleToScreen() {}

#else

template <typename MouseEvent>
QPointF mousePoint(const MouseEvent& event) {
    return event.localPos();
}

template <typename HoverEvent>
QPointF hoverPoint(const HoverEvent& event) {
    return event.posF();
}

template <typename TouchEvent>
const auto& touchPoints(const TouchEvent& event) {
    return event.touchPoints();
}

template <typename TouchPoint>
QPointF placeOf(const TouchPoint& point) {
    return point.pos();
}

inline QString translationsFolder() {
    return QLibraryInfo::location(QLibraryInfo::TranslationsPath);
}

inline void scaleToScreen() {
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
}

#endif

/// A QQuickItem that is told when its size has changed.
template <typename Item>
class Resized : public Item {
protected:
    virtual void resized() = 0;

#if QT_VERSION_MAJOR >= 6
    void geometryChange(const QRectF& now, const QRectF& before) override {
        Item::geometryChange(now, before);
        compare(now, before);
    }
#else
    void geometryChanged(const QRectF& now, const QRectF& before) override {
        Item::geometryChanged(now, before);
        compare(now, before);
    }
#endif

private:
    void compare(const QRectF& now, const QRectF& before) {
        if (now.size() != before.size()) {
            resized();
        }
    }
};

}  // namespace rfu::qt

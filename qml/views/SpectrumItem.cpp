#include "qml/views/SpectrumItem.h"

#include <rfUtils/detail/saturate.h>

#include <QGuiApplication>
#include <QLineF>
#include <QQuickWindow>
#include <QStyleHints>

#include <algorithm>
#include <cmath>

#include "qml/support/properties.h"

namespace rfu::qml {

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

constexpr double kZoomStep = 1.25;    // of one step of the wheel or a key
constexpr double kPanStep = 0.1;      // of what is shown
constexpr double kFaster = 3.0;       // steps instead of one, with Ctrl
constexpr double kWheelStep = 120.0;  // eighths of a degree, one step of a usual wheel

// Pixels from a marker at which it is gripped
constexpr double kMouseReach = 6.0;
constexpr double kFingerReach = 22.0;

double fasterWith(Qt::KeyboardModifiers modifiers) {
    return modifiers.testFlag(Qt::ControlModifier) ? kFaster : 1.0;
}

/// What a key does.
struct KeyAction {
    double zoomSteps;
    double panSteps;
    int key;
    bool resets;
};

constexpr KeyAction kKeys[] = {
    {0.0, -1.0, Qt::Key_Left, false}, {0.0, 1.0, Qt::Key_Right, false},
    {1.0, 0.0, Qt::Key_Up, false},    {-1.0, 0.0, Qt::Key_Down, false},
    {1.0, 0.0, Qt::Key_Plus, false},  {-1.0, 0.0, Qt::Key_Minus, false},
    {0.0, 0.0, Qt::Key_Home, true},
};

/// The points of a touch that are still on the screen.
QVector<QPointF> fingersOf(const QTouchEvent& event) {
    QVector<QPointF> fingers;
    for (const QTouchEvent::TouchPoint& point : qt::touchPoints(event)) {
        if (static_cast<Qt::TouchPointState>(point.state()) != Qt::TouchPointReleased) {
            fingers.append(qt::placeOf(point));
        }
    }
    return fingers;
}

/// The number of a role; NaN where there is none.
double numberOf(const QModelIndex& index, int role) {
    bool isNumber = false;
    const double number = role < 0 ? kNone : index.data(role).toDouble(&isNumber);
    return isNumber ? number : kNone;
}

double dragDistance() {
    return QGuiApplication::styleHints()->startDragDistance();
}

}  // namespace

SpectrumItem::SpectrumItem()
    : ownZoom_(new FrequencyZoom),
      zoom_(ownZoom_),
      textColor_(0x2b, 0x33, 0x3d),
      gridColor_(0xd5, 0xda, 0xdf),
      backgroundColor_(Qt::transparent),
      cursorColor_(0x6b, 0x75, 0x80),
      markerColor_(0xd9, 0x6a, 0x00) {
    constexpr double kImplicitWidth = 480.0;
    constexpr double kImplicitHeight = 320.0;
    setImplicitSize(kImplicitWidth, kImplicitHeight);
    setFlag(ItemHasContents);
    setAcceptHoverEvents(true);
    setAcceptTouchEvents(true);
    setAcceptedMouseButtons(Qt::LeftButton);
    ownZoom_->setParent(this);
    connectZoom(zoom_);
    for (const auto signal :
         {&SpectrumItem::leftMarginChanged, &SpectrumItem::rightMarginChanged,
          &SpectrumItem::topMarginChanged, &SpectrumItem::bottomMarginChanged,
          &SpectrumItem::fontChanged, &SpectrumItem::textColorChanged,
          &SpectrumItem::gridColorChanged, &SpectrumItem::backgroundColorChanged,
          &SpectrumItem::cursorColorChanged, &SpectrumItem::markerColorChanged}) {
        connect(this, signal, this, &SpectrumItem::refresh);
    }
}

void SpectrumItem::setTrace(TraceModel* trace) {
    if (trace_ == trace) {
        return;
    }
    if (trace_ != nullptr) {
        trace_->disconnect(this);
    }
    trace_ = trace;
    ownZoom_->setTrace(trace);
    if (trace != nullptr) {
        connect(trace, &TraceModel::updated, this, [this] { noteTraces(); });
        connect(trace, &TraceModel::cleared, this, [this] { noteCleared(); });
        connect(trace, &QObject::destroyed, this, [this] {
            noteCleared();
            Q_EMIT traceChanged();
        });
    }
    noteCleared();
    Q_EMIT traceChanged();
}

void SpectrumItem::setZoom(FrequencyZoom* zoom) {
    FrequencyZoom* const next = zoom == nullptr ? ownZoom_ : zoom;
    if (zoom_ == next) {
        return;
    }
    double cursor = zoom_->cursor();
    zoom_->disconnect(this);
    connectZoom(next);
    refresh();
    Q_EMIT zoomChanged();
    if (assign(cursor, next->cursor())) {
        Q_EMIT cursorFrequencyChanged();
    }
}

void SpectrumItem::connectZoom(FrequencyZoom* zoom) {
    zoom_ = zoom;
    connect(zoom, &FrequencyZoom::shownChanged, this, &SpectrumItem::refresh);
    connect(zoom, &FrequencyZoom::cursorChanged, this, [this] {
        noteOverlay();
        Q_EMIT cursorFrequencyChanged();
    });
    if (zoom != ownZoom_) {
        connect(zoom, &QObject::destroyed, this, [this] {
            connectZoom(ownZoom_);
            refresh();
            Q_EMIT zoomChanged();
        });
    }
}

void SpectrumItem::setMarkers(QAbstractItemModel* markers) {
    if (markers_ == markers) {
        return;
    }
    if (markers_ != nullptr) {
        markers_->disconnect(this);
    }
    markers_ = markers;
    if (markers != nullptr) {
        const QHash<int, QByteArray> names = markers->roleNames();
        frequencyRole_ = names.key("frequency", -1);
        placeRole_ = names.key("pointFrequency", -1);
        levelRole_ = names.key("level", -1);
        connect(markers, &QAbstractItemModel::dataChanged, this, [this] { noteOverlay(); });
        connect(markers, &QAbstractItemModel::modelReset, this, [this] { noteOverlay(); });
        connect(markers, &QObject::destroyed, this, [this] {
            noteOverlay();
            Q_EMIT markersChanged();
        });
    }
    noteOverlay();
    Q_EMIT markersChanged();
}

void SpectrumItem::setInteractive(bool isInteractive) {
    if (!assign(isInteractive_, isInteractive)) {
        return;
    }
    endGesture();
    setAcceptHoverEvents(isInteractive);
    setAcceptTouchEvents(isInteractive);
    setAcceptedMouseButtons(isInteractive ? Qt::LeftButton : Qt::NoButton);
    Q_EMIT interactiveChanged();
}

double SpectrumItem::pixelRatio() const {
    return window() == nullptr ? 1.0 : window()->effectiveDevicePixelRatio();
}

QRect SpectrumItem::devicePlot() const {
    constexpr double kLargest = 32768.0;
    const double ratio = pixelRatio();
    const auto edge = [=](double logical) {
        return detail::toInt32(std::clamp(std::round(logical * ratio), 0.0, kLargest));
    };
    const QPoint topLeft(edge(leftMargin_), edge(topMargin_));
    const QPoint end(edge(width() - rightMargin_), edge(height() - bottomMargin_));
    return end.x() > topLeft.x() && end.y() > topLeft.y() ? QRect(topLeft, end - QPoint(1, 1))
                                                          : QRect();
}

QRectF SpectrumItem::plot() const {
    const QRect device = devicePlot();
    const double ratio = pixelRatio();
    return {device.x() / ratio, device.y() / ratio, device.width() / ratio,
            device.height() / ratio};
}

double SpectrumItem::frequencyAlong(double x) const {
    const QRectF area = plot();
    const ValueRange& shown = zoom_->shown();
    return area.isEmpty() ? kNone
                          : shown.low + (x - area.left()) / area.width() * (shown.high - shown.low);
}

double SpectrumItem::frequencyAt(double x) const {
    const QRectF area = plot();
    return x >= area.left() && x <= area.right() ? frequencyAlong(x) : kNone;
}

double SpectrumItem::xOf(double frequency) const {
    const QRectF area = plot();
    const ValueRange& shown = zoom_->shown();
    return area.isEmpty()
               ? kNone
               : area.left() + (frequency - shown.low) / (shown.high - shown.low) * area.width();
}

std::vector<SpectrumItem::ShownMarker> SpectrumItem::shownMarkers() const {
    std::vector<ShownMarker> shown;
    const int rows = markers_ == nullptr ? 0 : markers_->rowCount();
    for (int row = 0; row < rows; ++row) {
        const QModelIndex index = markers_->index(row, 0);
        const double place = numberOf(index, placeRole_);
        const double frequency = std::isnan(place) ? numberOf(index, frequencyRole_) : place;
        const ValueRange& range = zoom_->shown();
        if (frequency >= range.low && frequency <= range.high) {
            shown.push_back({row, frequency, numberOf(index, levelRole_)});
        }
    }
    return shown;
}

void SpectrumItem::refresh() {
    drawSoon();
}

void SpectrumItem::drawSoon() {
    if (isComponentComplete()) {
        polish();
        update();
    }
}

void SpectrumItem::componentComplete() {
    QQuickItem::componentComplete();
    refresh();
}

void SpectrumItem::resized() {
    refresh();
}

void SpectrumItem::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged) {
        refresh();
    }
}

void SpectrumItem::wheelEvent(QWheelEvent* event) {
    const double faster = fasterWith(event->modifiers());
    const QPoint turned = event->angleDelta();
    const bool isShift = event->modifiers().testFlag(Qt::ShiftModifier);
    const double sideways = isShift ? turned.x() + turned.y() : turned.x();
    const double up = isShift ? 0.0 : turned.y();
    event->setAccepted(isInteractive_ && !std::isnan(zoom_->low()));
    if (!event->isAccepted()) {
        return;
    }
    if (up != 0.0) {
        zoomBy(up / kWheelStep * faster, frequencyAlong(event->position().x()));
    }
    if (sideways != 0.0) {
        moveBy(-sideways / kWheelStep * faster);
    }
    pointAt(event->position());
}

void SpectrumItem::mousePressEvent(QMouseEvent* event) {
    forceActiveFocus(Qt::MouseFocusReason);
    press(qt::mousePoint(*event), kMouseReach);
}

void SpectrumItem::mouseMoveEvent(QMouseEvent* event) {
    setKeepMouseGrab(drag(qt::mousePoint(*event)));
}

void SpectrumItem::mouseReleaseEvent(QMouseEvent* event) {
    setKeepMouseGrab(false);
    release(qt::mousePoint(*event));
}

void SpectrumItem::mouseDoubleClickEvent(QMouseEvent*) {
    endGesture();
    zoom_->reset();
}

void SpectrumItem::mouseUngrabEvent() {
    setKeepMouseGrab(false);
    endGesture();
}

void SpectrumItem::touchEvent(QTouchEvent* event) {
    const QVector<QPointF> fingers = fingersOf(*event);
    const auto& points = qt::touchPoints(*event);
    event->accept();
    if (event->type() == QEvent::TouchCancel) {
        touchUngrabEvent();
    } else if (fingers.size() >= 2) {
        if (gesture_.grip != Grip::Pinch) {
            beginPinch(fingers[0], fingers[1]);
        }
        pinch(fingers[0], fingers[1]);
    } else if (fingers.size() == 1 && event->type() == QEvent::TouchBegin) {
        forceActiveFocus(Qt::MouseFocusReason);
        press(fingers[0], kFingerReach);
    } else if (fingers.size() == 1 && gesture_.grip == Grip::Pinch) {
        // The other finger has left: this one drags.
        press(fingers[0], 0.0);
        beginDrag();
    } else if (fingers.size() == 1) {
        drag(fingers[0]);
    } else if (!points.isEmpty() && release(qt::placeOf(points[0]))) {
        tap(qt::placeOf(points[0]), event->timestamp());
    }
    setKeepTouchGrab(gesture_.grip != Grip::None && gesture_.grip != Grip::Pressed);
}

void SpectrumItem::touchUngrabEvent() {
    setKeepTouchGrab(false);
    endGesture();
}

void SpectrumItem::hoverEnterEvent(QHoverEvent* event) {
    hovered_ = qt::hoverPoint(*event);
    pointAt(hovered_);
}

void SpectrumItem::hoverMoveEvent(QHoverEvent* event) {
    // Qt also sends such events after frames, for items that have moved under the pointer.
    if (qt::hoverPoint(*event) != hovered_) {
        pointAt(qt::hoverPoint(*event));
    }
    hovered_ = qt::hoverPoint(*event);
}

void SpectrumItem::hoverLeaveEvent(QHoverEvent*) {
    zoom_->setCursor(kNone);
}

void SpectrumItem::keyPressEvent(QKeyEvent* event) {
    const auto* const action =
        std::find_if(std::begin(kKeys), std::end(kKeys),
                     [event](const KeyAction& known) { return known.key == event->key(); });
    event->setAccepted(isInteractive_ && action != std::end(kKeys));
    if (!event->isAccepted()) {
        return;
    }
    const double faster = fasterWith(event->modifiers());
    if (action->resets) {
        zoom_->reset();
    } else if (action->panSteps != 0.0) {
        moveBy(action->panSteps * faster);
    } else {
        const double cursor = zoom_->cursor();
        const ValueRange& shown = zoom_->shown();
        const bool isShown = cursor >= shown.low && cursor <= shown.high;
        zoomBy(action->zoomSteps * faster, isShown ? cursor : kNone);
    }
}

/// Moves the cursor to the pointer.
void SpectrumItem::pointAt(const QPointF& point) {
    zoom_->setCursor(plot().contains(point) ? frequencyAlong(point.x()) : kNone);
}

/// @param reach pixels to a marker that is gripped
void SpectrumItem::press(const QPointF& point, double reach) {
    gesture_ = {Grip::Pressed, point, zoom_->shown(), 0.0, markerNear(point.x(), reach)};
    pointAt(point);
}

/// @return whether a press has become a drag
bool SpectrumItem::drag(const QPointF& point) {
    if (gesture_.grip == Grip::Pressed &&
        QLineF(gesture_.start, point).length() >= dragDistance()) {
        beginDrag();
    }
    const double span = gesture_.shown.high - gesture_.shown.low;
    if (gesture_.grip == Grip::Marker) {
        moveMarker(gesture_.marker, point.x());
    } else if (gesture_.grip == Grip::Plot) {
        const double moved = (point.x() - gesture_.start.x()) / plot().width() * span;
        zoom_->showFrom(gesture_.shown.low - moved, span);
    }
    pointAt(point);
    return gesture_.grip == Grip::Marker || gesture_.grip == Grip::Plot;
}

void SpectrumItem::beginDrag() {
    gesture_.grip = gesture_.marker >= 0 ? Grip::Marker : Grip::Plot;
}

/// @return whether it was a click
bool SpectrumItem::release(const QPointF& point) {
    const bool isClick = gesture_.grip == Grip::Pressed && plot().contains(point);
    endGesture();
    if (isClick) {
        Q_EMIT clicked(frequencyAlong(point.x()), levelAtPoint(point));
    }
    return isClick;
}

void SpectrumItem::beginPinch(const QPointF& a, const QPointF& b) {
    gesture_ = {Grip::Pinch, (a + b) / 2.0, zoom_->shown(), QLineF(a, b).length(), -1};
}

/// What was between the fingers stays there, and gets as wide as they are apart.
void SpectrumItem::pinch(const QPointF& a, const QPointF& b) {
    const QRectF area = plot();
    if (area.isEmpty()) {
        return;
    }
    const double span = gesture_.shown.high - gesture_.shown.low;
    const double fixed =
        gesture_.shown.low + (gesture_.start.x() - area.left()) / area.width() * span;
    const double now =
        span * std::max(gesture_.distance, 1.0) / std::max(QLineF(a, b).length(), 1.0);
    const double place = ((a.x() + b.x()) / 2.0 - area.left()) / area.width();
    zoom_->showFrom(fixed - place * now, now);
}

void SpectrumItem::endGesture() {
    gesture_ = {};
}

/// A second tap soon after another, near to it, is a double tap.
void SpectrumItem::tap(const QPointF& point, ulong time) {
    constexpr double kNear = 4.0;  // times the distance of a drag
    const auto soon = static_cast<ulong>(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    const bool isDouble = lastTapTime_ != 0 && time - lastTapTime_ <= soon &&
                          QLineF(lastTap_, point).length() <= kNear * dragDistance();
    lastTap_ = point;
    lastTapTime_ = isDouble ? 0 : time;
    if (isDouble) {
        zoom_->reset();
    }
}

void SpectrumItem::moveBy(double steps) {
    zoom_->pan(steps * kPanStep * (zoom_->high() - zoom_->low()));
}

void SpectrumItem::zoomBy(double steps, double at) {
    zoom_->zoom(std::pow(kZoomStep, steps), at);
}

/// @return the row of the nearest marker within reach; below 0 for none
int SpectrumItem::markerNear(double x, double reach) const {
    int nearest = -1;
    for (const ShownMarker& marker : shownMarkers()) {
        const double distance = std::abs(xOf(marker.frequency) - x);
        if (distance <= reach) {
            reach = distance;
            nearest = marker.row;
        }
    }
    return nearest;
}

void SpectrumItem::moveMarker(int row, double x) {
    const QRectF area = plot();
    if (markers_ != nullptr) {
        markers_->setData(markers_->index(row, 0),
                          frequencyAlong(std::clamp(x, area.left(), area.right())), frequencyRole_);
    }
}

}  // namespace rfu::qml

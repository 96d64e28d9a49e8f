#include "qml/maps/MapView.h"

#include <QGuiApplication>
#include <QLineF>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QStyleHints>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <tuple>
#include <utility>
#include <vector>

#include "qml/support/properties.h"

namespace rfu::qml {

namespace {

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kMapZoomStep = 1.25;    // of one step of the wheel or a key
constexpr double kMapPanStep = 0.1;      // of the view
constexpr double kMapFaster = 3.0;       // steps at once, with Ctrl
constexpr double kMapWheelStep = 120.0;  // eighths of a degree, one step of a usual wheel

/// Pixels by which a key moves the map, in parts of the view.
struct MoveKey {
    int key;
    double x;
    double y;
};

constexpr MoveKey kMoveKeys[] = {{Qt::Key_Left, kMapPanStep, 0.0},
                                 {Qt::Key_Right, -kMapPanStep, 0.0},
                                 {Qt::Key_Up, 0.0, kMapPanStep},
                                 {Qt::Key_Down, 0.0, -kMapPanStep}};

struct ZoomKey {
    int key;
    double steps;
};

constexpr ZoomKey kZoomKeys[] = {{Qt::Key_Plus, 1.0}, {Qt::Key_Equal, 1.0}, {Qt::Key_Minus, -1.0}};

double fasterBy(Qt::KeyboardModifiers keys) {
    return keys.testFlag(Qt::ControlModifier) ? kMapFaster : 1.0;
}

/// A picture and where it is shown.
struct PlacedPicture {
    QImage picture;
    QRectF target;
    QRectF source;  // the part of the picture, in its pixels
    QSGTexture::Filtering filtering = QSGTexture::Nearest;
};

/// A picture on the scene, whose texture is made anew for another picture only.
class PictureNode {
public:
    void show(QSGNode* parent, QQuickWindow* window, const PlacedPicture& placed) {
        if (placed.picture.isNull()) {
            delete std::exchange(node_, nullptr);  // which takes it out of its parent
            key_ = 0;
            return;
        }
        const bool isNew = node_ == nullptr;
        if (isNew) {
            node_ = window->createImageNode();
            node_->setOwnsTexture(true);
        }
        if (key_ != placed.picture.cacheKey()) {
            key_ = placed.picture.cacheKey();
            node_->setTexture(window->createTextureFromImage(placed.picture,
                                                             QQuickWindow::TextureHasAlphaChannel));
        }
        node_->setRect(placed.target);
        node_->setSourceRect(placed.source);
        node_->setFiltering(placed.filtering);
        if (isNew) {
            parent->appendChildNode(node_);  // the software backend wants it complete
        }
    }

private:
    QSGImageNode* node_ = nullptr;
    qint64 key_ = 0;
};

struct MapNode : QSGTransformNode {
    PictureNode map;
    PictureNode marks;  // above it
};

QPointF meanOf(const Fingers& fingers) {
    QPointF sum;
    for (const auto& finger : fingers) {
        sum += finger.second;
    }
    return sum / static_cast<double>(fingers.size());
}

/// How far fingers lie from their middle, in sum.
double spreadOf(const Fingers& fingers) {
    const QPointF middle = meanOf(fingers);
    double spread = 0.0;
    for (const auto& finger : fingers) {
        spread += QLineF(middle, finger.second).length();
    }
    return spread;
}

bool areSame(const Fingers& a, const Fingers& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const auto& x, const auto& y) { return x.first == y.first; });
}

}  // namespace

MapView::MapView()
    : cursor_{kNoNumber, kNoNumber, kNoNumber},
      marks_([this] { redrawMarks(); }),
      style_(sheetStyle()) {
    setFlag(ItemHasContents);
    setAcceptHoverEvents(true);
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptTouchEvents(true);
}

void MapView::setMap(RasterMap* map) {
    if (map_ == map) {
        return;
    }
    if (map_ != nullptr) {
        map_->disconnect(this);
    }
    map_ = map;
    if (map != nullptr) {
        connect(map, &RasterMap::revisionChanged, this, &MapView::takeMap);
        connect(map, &QObject::destroyed, this, [this] {
            takeMap();
            Q_EMIT mapChanged();
        });
    }
    takeMap();
    Q_EMIT mapChanged();
}

void MapView::takeMap() {
    const auto before = std::exchange(
        shown_, map_ != nullptr ? map_->contents() : std::make_shared<const MapContents>());
    const auto placeOf = [](const MapContents& map) {
        return std::make_tuple(map.grid.columns, map.grid.rows, map.grid.cellSize, map.grid.west,
                               map.grid.south);
    };
    // What was chosen on another map means nothing on this one.
    const bool isOther = !before->cells.empty() && placeOf(*before) != placeOf(*shown_);
    redrawMarks();
    look(isOther ? WantedSight() : wanted_);
    update();
}

void MapView::look(const WantedSight& wanted) {
    wanted_ = wanted;
    const MapSight before =
        std::exchange(sight_, MapSight(shown_->grid, QSizeF(width(), height()), wanted));
    const auto tell = [this](auto was, auto is, void (MapView::*changed)()) {
        const bool isOther = assign(was, is);
        if (isOther) {
            Q_EMIT(this->*changed)();
        }
        return isOther;
    };
    bool isMoved = tell(before.pixelsPerCell(), pixelsPerCell(), &MapView::pixelsPerCellChanged);
    isMoved |= tell(before.center().x(), centerX(), &MapView::centerXChanged);
    isMoved |= tell(before.center().y(), centerY(), &MapView::centerYChanged);
    tell(before.isFitted(), isFitted(), &MapView::fittedChanged);
    if (isMoved) {
        redrawMarks();
        update();
    }
    updateCursor();
}

void MapView::fit() {
    look({});
}

void MapView::zoom(double factor, double x, double y) {
    if (!sight_.isEmpty() && factor > 0.0 && std::isfinite(factor) && std::isfinite(x) &&
        std::isfinite(y)) {
        look(sight_.dragged({x, y}, {x, y}, factor));
    }
}

void MapView::setPixelsPerCell(double pixels) {
    look({pixels, wanted_.x, wanted_.y});
}

void MapView::setCenterX(double x) {
    look({wanted_.pixelsPerCell, x, wanted_.y});
}

void MapView::setCenterY(double y) {
    look({wanted_.pixelsPerCell, wanted_.x, y});
}

QPointF MapView::pixelOf(double x, double y) const {
    return sight_.pixelOf({x, y});
}

QPointF MapView::coordinatesAt(double x, double y) const {
    const QPointF point = sight_.pointAt({x, y});
    return !sight_.isEmpty() && shown_->grid.cellAt(point) ? point : QPointF(kNoNumber, kNoNumber);
}

void MapView::pointTo(std::optional<QPointF> pixel) {
    pointer_ = pixel;
    updateCursor();
}

void MapView::updateCursor() {
    Cursor cursor{kNoNumber, kNoNumber, kNoNumber};
    if (pointer_ && !sight_.isEmpty()) {
        const QPointF point = sight_.pointAt(*pointer_);
        if (const auto cell = shown_->grid.cellAt(point)) {
            cursor = {point.x(), point.y(), shown_->value(*cell)};
        }
    }
    if (assign(cursor_.x, cursor.x)) {
        Q_EMIT cursorXChanged();
    }
    if (assign(cursor_.y, cursor.y)) {
        Q_EMIT cursorYChanged();
    }
    if (assign(cursor_.value, cursor.value)) {
        Q_EMIT cursorValueChanged();
    }
}

void MapView::setMarks(const QVariant& marks) {
    if (marks_.set(marks)) {
        redrawMarks();
        Q_EMIT marksChanged();
    }
}

void MapView::setMarkColor(const QColor& color) {
    if (assign(style_.color, color)) {
        redrawMarks();
        Q_EMIT markColorChanged();
    }
}

void MapView::setTextColor(const QColor& color) {
    if (assign(style_.ink, color)) {
        redrawMarks();
        Q_EMIT textColorChanged();
    }
}

void MapView::setLabelColor(const QColor& color) {
    if (assign(style_.plate, color)) {
        redrawMarks();
        Q_EMIT labelColorChanged();
    }
}

void MapView::setFont(const QFont& font) {
    if (assign(style_.placeFont, font)) {
        style_.nameFont = font;
        style_.nameFont.setBold(true);
        redrawMarks();
        Q_EMIT fontChanged();
    }
}

void MapView::setInteractive(bool interactive) {
    if (assign(isInteractive_, interactive)) {
        Q_EMIT interactiveChanged();
    }
}

void MapView::resized() {
    look(wanted_);
    redrawMarks();
}

void MapView::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange) {
        redrawMarks();
    }
}

void MapView::redrawMarks() {
    areMarksOld_ = true;
    polish();
}

void MapView::updatePolish() {
    if (std::exchange(areMarksOld_, false)) {
        markPicture_ = drawnMarks();
        update();
    }
}

QImage MapView::drawnMarks() const {
    if (sight_.isEmpty() || window() == nullptr) {
        return {};
    }
    const QRectF area(0.0, 0.0, width(), height());
    QImage picture;
    QPainter painter;
    for (const MapMarks::Mark& mark : marks_.on(*shown_)) {
        const QPointF at = sight_.pixelOf(mark.point);
        if (!shown_->grid.cellAt(mark.point) || !area.contains(at)) {
            continue;
        }
        if (picture.isNull()) {
            const double ratio = window()->effectiveDevicePixelRatio();
            picture = QImage((area.size() * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
            picture.fill(Qt::transparent);
            picture.setDevicePixelRatio(ratio);
            painter.begin(&picture);
            painter.setRenderHint(QPainter::Antialiasing);
        }
        drawMark(painter, at, mark.mark, style_, area.size());
    }
    return picture;
}

QSGNode* MapView::updatePaintNode(QSGNode* node, UpdatePaintNodeData*) {
    if (sight_.isEmpty()) {
        delete node;
        return nullptr;
    }
    auto* const scene = node != nullptr ? static_cast<MapNode*>(node) : new MapNode;
    const QRectF view(0.0, 0.0, width(), height());
    const QRectF map = sight_.mapArea();
    const QRectF visible = map & view;
    const double scale = sight_.pixelsPerCell();
    scene->map.show(scene, window(),
                    {shown_->picture, visible,
                     QRectF((visible.topLeft() - map.topLeft()) / scale, visible.size() / scale),
                     scale < 1.0 ? QSGTexture::Linear : QSGTexture::Nearest});
    scene->marks.show(scene, window(), {markPicture_, view, markPicture_.rect()});
    return scene;
}

void MapView::wheelEvent(QWheelEvent* event) {
    if (!isInteractive_ || sight_.isEmpty()) {
        event->ignore();
        return;
    }
    const double steps = event->angleDelta().y() / kMapWheelStep * fasterBy(event->modifiers());
    zoom(std::pow(kMapZoomStep, steps), event->position().x(), event->position().y());
    event->accept();
}

void MapView::press(QPointF at) {
    pressedAt_ = at;
    draggedTo_ = at;
    isPressed_ = true;
    forceActiveFocus(Qt::MouseFocusReason);
    pointTo(at);
}

/// A press becomes a drag once the pointer has moved far enough.
void MapView::drag(QPointF to) {
    const double distance = QGuiApplication::styleHints()->startDragDistance();
    if (isPressed_ && (to - pressedAt_).manhattanLength() < distance) {
        return;
    }
    isPressed_ = false;
    if (isInteractive_ && !sight_.isEmpty()) {
        setKeepMouseGrab(true);
        setKeepTouchGrab(true);
        look(sight_.dragged(draggedTo_, to));
    }
    draggedTo_ = to;
    pointTo(to);
}

void MapView::pinch(const Fingers& fingers) {
    isPressed_ = false;
    if (!isInteractive_ || sight_.isEmpty() || !areSame(fingers, fingers_)) {
        return;
    }
    setKeepTouchGrab(true);
    const double factor = spreadOf(fingers) / spreadOf(fingers_);
    if (factor > 0.0 && std::isfinite(factor)) {
        look(sight_.dragged(meanOf(fingers_), meanOf(fingers), factor));
    }
}

void MapView::release(QPointF at) {
    setKeepMouseGrab(false);
    setKeepTouchGrab(false);
    const QPointF point = coordinatesAt(at.x(), at.y());
    if (std::exchange(isPressed_, false) && !std::isnan(point.x())) {
        Q_EMIT clicked(point.x(), point.y());
    }
}

void MapView::mousePressEvent(QMouseEvent* event) {
    press(qt::mousePoint(*event));
}

void MapView::mouseMoveEvent(QMouseEvent* event) {
    drag(qt::mousePoint(*event));
}

void MapView::mouseReleaseEvent(QMouseEvent* event) {
    release(qt::mousePoint(*event));
}

void MapView::mouseDoubleClickEvent(QMouseEvent*) {
    isPressed_ = false;
    if (isInteractive_) {
        fit();
    }
}

void MapView::mouseUngrabEvent() {
    isPressed_ = false;
    setKeepMouseGrab(false);
}

void MapView::hoverEnterEvent(QHoverEvent* event) {
    pointTo(qt::hoverPoint(*event));
}

void MapView::hoverMoveEvent(QHoverEvent* event) {
    pointTo(qt::hoverPoint(*event));
}

void MapView::hoverLeaveEvent(QHoverEvent*) {
    pointTo(std::nullopt);
}

void MapView::touchEvent(QTouchEvent* event) {
    Fingers fingers;
    for (const QTouchEvent::TouchPoint& point : qt::touchPoints(*event)) {
        if (static_cast<Qt::TouchPointState>(point.state()) != Qt::TouchPointReleased) {
            fingers[point.id()] = qt::placeOf(point);
        }
    }
    event->accept();
    if (event->type() == QEvent::TouchCancel) {
        touchUngrabEvent();
    } else if (fingers.empty()) {
        release(qt::placeOf(qt::touchPoints(*event).constFirst()));
        pointTo(std::nullopt);
    } else if (event->type() == QEvent::TouchBegin) {
        press(meanOf(fingers));
    } else if (fingers.size() > 1) {
        pinch(fingers);
        draggedTo_ = fingers.begin()->second;
    } else {
        if (!areSame(fingers, fingers_)) {  // another finger has left
            draggedTo_ = fingers.begin()->second;
        }
        drag(fingers.begin()->second);
    }
    fingers_ = fingers;
}

void MapView::touchUngrabEvent() {
    isPressed_ = false;
    setKeepTouchGrab(false);
}

void MapView::keyPressEvent(QKeyEvent* event) {
    event->ignore();
    if (!isInteractive_ || sight_.isEmpty()) {
        return;
    }
    const double faster = fasterBy(event->modifiers());
    const auto* const move =
        std::find_if(std::begin(kMoveKeys), std::end(kMoveKeys),
                     [event](const MoveKey& known) { return known.key == event->key(); });
    const auto* const zoomed =
        std::find_if(std::begin(kZoomKeys), std::end(kZoomKeys),
                     [event](const ZoomKey& known) { return known.key == event->key(); });
    if (move != std::end(kMoveKeys)) {
        look(sight_.dragged({}, QPointF(move->x * width(), move->y * height()) * faster));
        event->accept();
    } else if (zoomed != std::end(kZoomKeys)) {
        zoom(std::pow(kMapZoomStep, zoomed->steps * faster), width() / 2.0, height() / 2.0);
        event->accept();
    } else if (event->key() == Qt::Key_Home) {
        fit();
        event->accept();
    }
}

}  // namespace rfu::qml

#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPointer>
#include <QQuickItem>
#include <QVariant>

#include <rfUtils/detail/qtVersion.h>

#include <map>
#include <optional>

#include "qml/maps/RasterMap.h"
#include "qml/maps/mapMarks.h"
#include "qml/maps/mapSight.h"

namespace rfu::qml {

/// The fingers on a view, by their numbers.
using Fingers = std::map<int, QPointF>;

/// A map with marks on it, north on top. What was not measured is transparent.
///
///     MapView {
///         map: RasterMap { source: "terrain.asc" }
///         marks: [{ latitude: 47.53, longitude: 8.2, label: "Receiver" }]
///     }
///
/// The whole map is shown at first, and small maps are enlarged with sharp cells.
///
/// | action                           | effect                                              |
/// |----------------------------------|-----------------------------------------------------|
/// | wheel                            | zooms at the pointer; with Ctrl faster, as the keys |
/// | drag; two fingers                | moves the map, never past its edges; zooms as well  |
/// | arrows, + and -, Home            | move, zoom, show the whole map                      |
/// | double click                     | shows the whole map                                 |
/// | click                            | `clicked`                                           |
///
/// A click gives the view the keyboard.
class MapView : public qt::Resized<QQuickItem> {
    Q_OBJECT
    /// The map.
    Q_PROPERTY(rfu::qml::RasterMap* map READ map WRITE setMap NOTIFY mapChanged)
    /// The scale: pixels of the view for a cell; NaN without a map. Writing it zooms at the middle, NaN shows
    /// the whole map. It is at least what the whole map needs, and at most 64 unless the whole map needs
    /// more.
    Q_PROPERTY(
        double pixelsPerCell READ pixelsPerCell WRITE setPixelsPerCell NOTIFY pixelsPerCellChanged)
    /// The map coordinate in the middle of the view; NaN without a map. Writing it moves the map, never past
    /// its edges.
    Q_PROPERTY(double centerX READ centerX WRITE setCenterX NOTIFY centerXChanged)
    /// See `centerX`.
    Q_PROPERTY(double centerY READ centerY WRITE setCenterY NOTIFY centerYChanged)
    /// Whether the whole map is shown, as it is after fit(); then it stays so when the view's size changes.
    Q_PROPERTY(bool fitted READ isFitted NOTIFY fittedChanged)
    /// The map coordinate under the pointer; NaN outside the map.
    Q_PROPERTY(double cursorX READ cursorX NOTIFY cursorXChanged)
    /// See `cursorX`.
    Q_PROPERTY(double cursorY READ cursorY NOTIFY cursorYChanged)
    /// The value of the cell under the pointer; NaN outside the map, and where it was not measured.
    Q_PROPERTY(double cursorValue READ cursorValue NOTIFY cursorValueChanged)
    /// The marks: a list of objects with `x` and `y` in map coordinates or `latitude` and `longitude` in
    /// degrees, and with `label` and `detail`, a second line, which may be left out. A list model has them as
    /// roles. A mark without a place on the map is not shown.
    Q_PROPERTY(QVariant marks READ marks WRITE setMarks NOTIFY marksChanged)
    /// The colour of the marks and of their labels.
    Q_PROPERTY(QColor markColor READ markColor WRITE setMarkColor NOTIFY markColorChanged)
    /// The colour of the second lines.
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor NOTIFY textColorChanged)
    /// The colour behind the labels.
    Q_PROPERTY(QColor labelColor READ labelColor WRITE setLabelColor NOTIFY labelColorChanged)
    /// The font of the second lines; labels have it in bold.
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged)
    /// Whether the operator may move and zoom the map; true at first. The cursor is there either way.
    Q_PROPERTY(bool interactive READ isInteractive WRITE setInteractive NOTIFY interactiveChanged)

public:
    /// A view without map.
    MapView();

    /// Shows the whole map.
    Q_INVOKABLE void fit();
    /// @param factor  by which cells become larger, above 0
    /// @param x       pixel of the view that keeps its place on the map
    /// @param y       likewise
    Q_INVOKABLE void zoom(double factor, double x, double y);
    /// @param x  map coordinate
    /// @param y  map coordinate
    /// @return the pixel of the view where a point is, which may be outside it; NaN without a map
    Q_INVOKABLE QPointF pixelOf(double x, double y) const;
    /// @param x  pixel of the view
    /// @param y  pixel of the view
    /// @return the map coordinates there; NaN outside the map
    Q_INVOKABLE QPointF coordinatesAt(double x, double y) const;

Q_SIGNALS:
    /// The map was clicked or tapped.
    /// @param x  map coordinate
    /// @param y  map coordinate
    void clicked(double x, double y);
    /// @cond notify signals
    void mapChanged();
    void pixelsPerCellChanged();
    void centerXChanged();
    void centerYChanged();
    void fittedChanged();
    void cursorXChanged();
    void cursorYChanged();
    void cursorValueChanged();
    void marksChanged();
    void markColorChanged();
    void textColorChanged();
    void labelColorChanged();
    void fontChanged();
    void interactiveChanged();
    /// @endcond

protected:
    /// @cond of the item
    void resized() override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void updatePolish() override;
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseUngrabEvent() override;
    void hoverEnterEvent(QHoverEvent* event) override;
    void hoverMoveEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;
    void touchEvent(QTouchEvent* event) override;
    void touchUngrabEvent() override;
    void keyPressEvent(QKeyEvent* event) override;
    /// @endcond

private:
    /// What the pointer is at.
    struct Cursor {
        double x;
        double y;
        double value;
    };

    RasterMap* map() const { return map_; }
    void setMap(RasterMap* map);
    double pixelsPerCell() const { return sight_.pixelsPerCell(); }
    void setPixelsPerCell(double pixels);
    double centerX() const { return sight_.center().x(); }
    void setCenterX(double x);
    double centerY() const { return sight_.center().y(); }
    void setCenterY(double y);
    bool isFitted() const { return sight_.isFitted(); }
    double cursorX() const { return cursor_.x; }
    double cursorY() const { return cursor_.y; }
    double cursorValue() const { return cursor_.value; }
    QVariant marks() const { return marks_.value(); }
    void setMarks(const QVariant& marks);
    QColor markColor() const { return style_.color; }
    void setMarkColor(const QColor& color);
    QColor textColor() const { return style_.ink; }
    void setTextColor(const QColor& color);
    QColor labelColor() const { return style_.plate; }
    void setLabelColor(const QColor& color);
    QFont font() const { return style_.placeFont; }
    void setFont(const QFont& font);
    bool isInteractive() const { return isInteractive_; }
    void setInteractive(bool interactive);

    void takeMap();
    void look(const WantedSight& wanted);
    void pointTo(std::optional<QPointF> pixel);
    void updateCursor();
    void redrawMarks();
    QImage drawnMarks() const;
    void press(QPointF at);
    void drag(QPointF to);
    void pinch(const Fingers& fingers);
    void release(QPointF at);

    QPointer<RasterMap> map_;
    std::shared_ptr<const MapContents> shown_ = std::make_shared<const MapContents>();
    WantedSight wanted_;
    MapSight sight_;
    std::optional<QPointF> pointer_;
    Cursor cursor_;
    MapMarks marks_;
    MarkStyle style_;
    bool areMarksOld_ = false;
    QImage markPicture_;  // as large as the view; null without marks on the map
    bool isInteractive_ = true;
    QPointF pressedAt_;
    QPointF draggedTo_;
    bool isPressed_ = false;  // by a click that has not become anything else
    Fingers fingers_;         // at the last event
};

}  // namespace rfu::qml

#pragma once

#include <QAbstractItemModel>
#include <QColor>
#include <QFont>
#include <QPointF>
#include <QPointer>
#include <QQuickItem>
#include <QRect>
#include <QRectF>

#include <rfUtils/detail/qtVersion.h>

#include <limits>
#include <vector>

#include "qml/traces/TraceModel.h"
#include "qml/views/FrequencyZoom.h"

namespace rfu::qml {

/// What TraceView and WaterfallView have in common: a plot over frequency, with room for labels around it, a
/// cursor at the pointer, and the gestures that choose what is shown.
///
/// | action                          | effect                                                         |
/// |---------------------------------|----------------------------------------------------------------|
/// | wheel, two fingers              | zoom; the frequency at the pointer stays where it is           |
/// | wheel with Shift, or sideways   | move by a tenth for each step                                  |
/// | drag                            | move                                                           |
/// | drag a marker                   | move the marker                                                |
/// | double click or tap             | show all frequencies                                           |
/// | Left, Right                     | move by a tenth                                                |
/// | Up, Down, +, -                  | zoom at the cursor, or in the middle where there is none       |
/// | Home                            | show all frequencies                                           |
///
/// With Ctrl, wheel and keys act three times as much. Keys need the active focus, which a click gives. Each view has its
/// own frequencies unless it is given a `zoom` that it shares with others.
class SpectrumItem : public qt::Resized<QQuickItem> {
    Q_OBJECT
    /// What is shown. Null at first, and again when that object ends.
    Q_PROPERTY(rfu::qml::TraceModel* trace READ trace WRITE setTrace NOTIFY traceChanged)
    /// The frequencies shown and the cursor. At first one of its own, which follows `trace`; null brings that
    /// back.
    Q_PROPERTY(rfu::qml::FrequencyZoom* zoom READ zoom WRITE setZoom NOTIFY zoomChanged)
    /// The markers shown, a MarkerModel. Null at first, and again when that object ends.
    Q_PROPERTY(QAbstractItemModel* markers READ markers WRITE setMarkers NOTIFY markersChanged)
    /// Whether the view takes the actions above. True at first.
    Q_PROPERTY(bool interactive READ isInteractive WRITE setInteractive NOTIFY interactiveChanged)
    /// Room between the left edge of the view and the plot; 76 at first.
    Q_PROPERTY(double leftMargin MEMBER leftMargin_ NOTIFY leftMarginChanged)
    /// Room on the right of the plot; 16 at first.
    Q_PROPERTY(double rightMargin MEMBER rightMargin_ NOTIFY rightMarginChanged)
    /// Room above the plot; 16 at first.
    Q_PROPERTY(double topMargin MEMBER topMargin_ NOTIFY topMarginChanged)
    /// Room below the plot; 28 at first.
    Q_PROPERTY(double bottomMargin MEMBER bottomMargin_ NOTIFY bottomMarginChanged)
    /// Of labels.
    Q_PROPERTY(QFont font MEMBER font_ NOTIFY fontChanged)
    /// Of labels; dark at first.
    Q_PROPERTY(QColor textColor MEMBER textColor_ NOTIFY textColorChanged)
    /// Of grid and ticks; light grey at first.
    Q_PROPERTY(QColor gridColor MEMBER gridColor_ NOTIFY gridColorChanged)
    /// Behind plot and labels; transparent at first.
    Q_PROPERTY(QColor backgroundColor MEMBER backgroundColor_ NOTIFY backgroundColorChanged)
    /// Of the line at the cursor; dark grey at first.
    Q_PROPERTY(QColor cursorColor MEMBER cursorColor_ NOTIFY cursorColorChanged)
    /// Of the markers and their numbers' flags; orange at first.
    Q_PROPERTY(QColor markerColor MEMBER markerColor_ NOTIFY markerColorChanged)
    /// The frequency at the pointer, in MHz, or the number of a point where frequencies are not known. NaN while
    /// the pointer is elsewhere. All views of a `zoom` have the same one.
    Q_PROPERTY(double cursorFrequency READ cursorFrequency WRITE setCursorFrequency NOTIFY
                   cursorFrequencyChanged)

public:
    /// @param x  from the left edge of the view
    /// @return the frequency there in MHz, or the number of a point; NaN beside the plot
    Q_INVOKABLE double frequencyAt(double x) const;
    /// @param frequency in MHz, or the number of a point
    /// @return its place from the left edge of the view, which may be beside the plot; NaN without points
    Q_INVOKABLE double xOf(double frequency) const;

Q_SIGNALS:
    /// A click or a tap on the plot that was no drag.
    /// @param frequency there, in MHz, or the number of a point
    /// @param level     there, in dBm; NaN for none
    void clicked(double frequency, double level);
    /// @cond notify signals
    void traceChanged();
    void zoomChanged();
    void markersChanged();
    void interactiveChanged();
    void leftMarginChanged();
    void rightMarginChanged();
    void topMarginChanged();
    void bottomMarginChanged();
    void fontChanged();
    void textColorChanged();
    void gridColorChanged();
    void backgroundColorChanged();
    void cursorColorChanged();
    void markerColorChanged();
    void cursorFrequencyChanged();
    /// @endcond

protected:
    /// @cond for the views
    SpectrumItem();

    TraceModel* trace() const { return trace_; }
    const QFont& font() const { return font_; }
    const QColor& textColor() const { return textColor_; }
    const QColor& gridColor() const { return gridColor_; }
    const QColor& backgroundColor() const { return backgroundColor_; }
    const QColor& cursorColor() const { return cursorColor_; }
    const QColor& markerColor() const { return markerColor_; }
    FrequencyZoom* zoom() const { return zoom_; }
    bool isInteractive() const { return isInteractive_; }

    /// Of a logical pixel, in device pixels.
    double pixelRatio() const;
    /// The plot in device pixels from the top left corner of the view; empty where there is no room.
    QRect devicePlot() const;
    /// The same in logical pixels.
    QRectF plot() const;
    /// Also beside the plot.
    double frequencyAlong(double x) const;

    /// A marker that is on the plot.
    struct ShownMarker {
        int row;
        double frequency;  // of its point, where that is known
        double level;      // dBm; NaN where it was not measured
    };
    std::vector<ShownMarker> shownMarkers() const;

    /// What is shown may be another.
    virtual void refresh();
    /// The traces have changed.
    virtual void noteTraces() { refresh(); }
    /// The traces up to now are gone, or there is another trace.
    virtual void noteCleared() { refresh(); }
    /// The cursor or the markers may be elsewhere.
    virtual void noteOverlay() { refresh(); }
    /// Lets updatePolish() and updatePaintNode() be called for the next frame.
    void drawSoon();
    /// @return the level at a place of the plot, in dBm; NaN for none
    virtual double levelAtPoint(const QPointF& point) const = 0;

    void componentComplete() override;
    void resized() override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseUngrabEvent() override;
    void touchEvent(QTouchEvent* event) override;
    void touchUngrabEvent() override;
    void hoverEnterEvent(QHoverEvent* event) override;
    void hoverMoveEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    /// @endcond

private:
    /// What a press has become.
    enum class Grip {
        None,
        Pressed,  // may become a click
        Plot,     // drags the plot
        Marker,   // drags a marker
        Pinch     // two fingers
    };
    struct Gesture {
        Grip grip = Grip::None;
        QPointF start;          // of the pointer, or the middle between the fingers
        ValueRange shown = {};  // at the start
        double distance = 0.0;  // of the fingers at the start
        int marker = -1;        // row of the one at the start; below 0 for none
    };

    void setTrace(TraceModel* trace);
    void setZoom(FrequencyZoom* zoom);
    void connectZoom(FrequencyZoom* zoom);
    QAbstractItemModel* markers() const { return markers_; }
    void setMarkers(QAbstractItemModel* markers);
    void setInteractive(bool isInteractive);
    double cursorFrequency() const { return zoom_->cursor(); }
    void setCursorFrequency(double frequency) { zoom_->setCursor(frequency); }

    void pointAt(const QPointF& point);
    void press(const QPointF& point, double reach);
    bool drag(const QPointF& point);
    void beginDrag();
    bool release(const QPointF& point);
    void beginPinch(const QPointF& a, const QPointF& b);
    void pinch(const QPointF& a, const QPointF& b);
    void endGesture();
    void tap(const QPointF& point, ulong time);
    void moveBy(double steps);
    void zoomBy(double steps, double at);
    int markerNear(double x, double reach) const;
    void moveMarker(int row, double x);

    QPointer<TraceModel> trace_;
    FrequencyZoom* ownZoom_;
    FrequencyZoom* zoom_;
    QPointer<QAbstractItemModel> markers_;
    int frequencyRole_ = -1;
    int placeRole_ = -1;  // frequency of the point
    int levelRole_ = -1;
    bool isInteractive_ = true;
    double leftMargin_ = 76.0;
    double rightMargin_ = 16.0;
    double topMargin_ = 16.0;
    double bottomMargin_ = 28.0;
    QFont font_;
    QColor textColor_;
    QColor gridColor_;
    QColor backgroundColor_;
    QColor cursorColor_;
    QColor markerColor_;
    Gesture gesture_;
    QPointF hovered_;  // where the pointer was last
    QPointF lastTap_;
    ulong lastTapTime_ = 0;  // ms; 0 for none
};

}  // namespace rfu::qml

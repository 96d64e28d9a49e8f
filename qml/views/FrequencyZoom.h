#pragma once

#include <QObject>
#include <QPointer>

#include <limits>

#include "analysis/plots/axis.h"
#include "qml/traces/TraceModel.h"

namespace rfu::qml {

/// Which frequencies views show, and where the pointer is on them. Views that share it stay aligned.
///
///     FrequencyZoom { id: shared; trace: sweeps }
///     TraceView { trace: sweeps; zoom: shared }
///     WaterfallView { trace: sweeps; zoom: shared }
///
/// The whole range reaches from the first bin of the trace to the end of its last one, in MHz. Where the
/// frequencies are not known, points are counted instead: from 0 to the number of points. All numbers are NaN while
/// the trace has no points.
class FrequencyZoom : public QObject {
    Q_OBJECT
    /// Whose frequencies these are. Null at first, and again when that object ends.
    Q_PROPERTY(rfu::qml::TraceModel* trace READ trace WRITE setTrace NOTIFY traceChanged)
    /// The lowest frequency shown. Written, it counts as far as it lies within the whole range, and at least five
    /// points remain to be seen; NaN stands for the lowest of all. It is kept while the trace has no points.
    Q_PROPERTY(double low READ low WRITE setLow NOTIFY lowChanged)
    /// The highest frequency shown, otherwise as `low`.
    Q_PROPERTY(double high READ high WRITE setHigh NOTIFY highChanged)
    /// Where the whole range begins.
    Q_PROPERTY(double wholeLow READ wholeLow NOTIFY wholeLowChanged)
    /// Where the whole range ends.
    Q_PROPERTY(double wholeHigh READ wholeHigh NOTIFY wholeHighChanged)
    /// Whether less than the whole range is shown.
    Q_PROPERTY(bool zoomed READ isZoomed NOTIFY zoomedChanged)
    /// Whether these are frequencies, and not numbers of points. False without points.
    Q_PROPERTY(bool hasFrequencies READ hasFrequencies NOTIFY hasFrequenciesChanged)
    /// The frequency at the pointer, which all views show. NaN, as at first, for none.
    Q_PROPERTY(double cursor READ cursor WRITE setCursor NOTIFY cursorChanged)

public:
    /// All of no trace.
    FrequencyZoom();

    /// Shows less, or more, while a frequency stays where it is, as far as the whole range allows.
    /// @param factor how many times as wide a point becomes, above 0; below 1 more is shown
    /// @param at     the frequency that stays; NaN for the middle
    Q_INVOKABLE void zoom(double factor, double at = std::numeric_limits<double>::quiet_NaN());
    /// Shows as much as before elsewhere; never beyond the whole range.
    /// @param distance to higher frequencies, in MHz or points; below 0 to lower ones
    Q_INVOKABLE void pan(double distance);
    /// Shows a range; see `low`.
    /// @param low, high its ends in either order
    Q_INVOKABLE void show(double low, double high);
    /// Shows the whole range, also when it becomes another.
    Q_INVOKABLE void reset();

    /// @return the ends of what is shown
    const ValueRange& shown() const { return now_.shown; }
    /// Shows as much as before from a frequency on, or as far from there as the whole range allows.
    /// @param low  the lowest frequency, finite
    /// @param span from there to the highest one, above 0
    void showFrom(double low, double span);

    /// @cond notify signals
Q_SIGNALS:
    void traceChanged();
    void lowChanged();
    void highChanged();
    void wholeLowChanged();
    void wholeHighChanged();
    void zoomedChanged();
    void hasFrequenciesChanged();
    void cursorChanged();
    /// @endcond
    /// What is shown has changed.
    void shownChanged();

public:
    /// @cond accessors
    TraceModel* trace() const { return trace_; }
    void setTrace(TraceModel* trace);
    double low() const { return now_.shown.low; }
    void setLow(double low);
    double high() const { return now_.shown.high; }
    void setHigh(double high);
    double wholeLow() const { return now_.whole.low; }
    double wholeHigh() const { return now_.whole.high; }
    bool isZoomed() const { return now_.isZoomed(); }
    bool hasFrequencies() const { return now_.hasFrequencies; }
    double cursor() const { return cursor_; }
    void setCursor(double cursor);
    /// @endcond

private:
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

    struct State {
        ValueRange whole = {kNone, kNone};
        ValueRange shown = {kNone, kNone};
        double narrowest = 0.0;  // that can be shown, in MHz or points
        bool hasFrequencies = false;

        bool isZoomed() const { return shown.low > whole.low || shown.high < whole.high; }
    };

    void readTrace();
    void want(const ValueRange& range);
    /// Fits what is wanted into the whole range of a state, and reports what has changed.
    void enter(State next);

    QPointer<TraceModel> trace_;
    ValueRange wanted_ = {kNone, kNone};  // NaN for an end of the whole range
    State now_;
    double cursor_ = kNone;
};

}  // namespace rfu::qml

#include "qml/views/FrequencyZoom.h"

#include <algorithm>
#include <cmath>
#include <mutex>

#include "qml/support/properties.h"

namespace rfu::qml {

namespace {

constexpr double kFewestPoints = 5.0;  // that can be shown

/// How much the bins of an axis cover, without the gaps between bands.
double measuredWidth(const FrequencyAxis& axis) {
    double width = 0.0;
    for (const FrequencyAxis::Band& band : axis.bands) {
        width += band.high - band.low;
    }
    return width;
}

/// Of two places; NaN is the same as NaN.
bool differs(double before, double now) {
    return assign(before, now);
}

/// What is wanted of a range, as far as it lies within the whole range; all where nothing of it does.
ValueRange fitted(const ValueRange& wanted, const ValueRange& whole, double narrowest) {
    double low = std::isnan(wanted.low) ? whole.low : wanted.low;
    double high = std::isnan(wanted.high) ? whole.high : wanted.high;
    if (!(low < whole.high && high > whole.low)) {
        return whole;
    }
    low = std::max(low, whole.low);
    high = std::min(std::max(high, low + narrowest), whole.high);
    return {std::max(std::min(low, high - narrowest), whole.low), high};
}

}  // namespace

FrequencyZoom::FrequencyZoom() = default;

void FrequencyZoom::setTrace(TraceModel* trace) {
    if (trace_ == trace) {
        return;
    }
    if (trace_ != nullptr) {
        trace_->disconnect(this);
    }
    trace_ = trace;
    if (trace != nullptr) {
        connect(trace, &TraceModel::updated, this, &FrequencyZoom::readTrace);
        connect(trace, &TraceModel::cleared, this, &FrequencyZoom::readTrace);
        connect(trace, &QObject::destroyed, this, [this] {
            readTrace();
            Q_EMIT traceChanged();
        });
    }
    readTrace();
    Q_EMIT traceChanged();
}

void FrequencyZoom::setLow(double low) {
    want({low, wanted_.high});
}

void FrequencyZoom::setHigh(double high) {
    want({wanted_.low, high});
}

void FrequencyZoom::setCursor(double cursor) {
    if (assign(cursor_, cursor)) {
        Q_EMIT cursorChanged();
    }
}

void FrequencyZoom::zoom(double factor, double at) {
    const ValueRange& shown = now_.shown;
    const double span = shown.high - shown.low;
    if (!(factor > 0.0) || std::isinf(factor) || !(span > 0.0)) {
        return;
    }
    const double fixed =
        std::isnan(at) ? (shown.low + shown.high) / 2.0 : std::clamp(at, shown.low, shown.high);
    const double wanted = std::max(span / factor, now_.narrowest);
    showFrom(fixed - (fixed - shown.low) / span * wanted, wanted);
}

void FrequencyZoom::pan(double distance) {
    showFrom(now_.shown.low + distance, now_.shown.high - now_.shown.low);
}

void FrequencyZoom::show(double low, double high) {
    want(low > high ? ValueRange{high, low} : ValueRange{low, high});
}

void FrequencyZoom::reset() {
    want({kNone, kNone});
}

void FrequencyZoom::showFrom(double low, double span) {
    const ValueRange& whole = now_.whole;
    if (span >= whole.high - whole.low) {
        reset();
    } else if (std::isfinite(low) && span > 0.0) {
        const double first = std::max(std::min(low, whole.high - span), whole.low);
        want({first, first + span});
    }
}

void FrequencyZoom::readTrace() {
    State next;
    if (trace_ != nullptr) {
        const auto shared = trace_->shared();
        const std::lock_guard<std::mutex> lock(shared->mutex);
        const FrequencyAxis& axis = shared->history.axis();
        const auto points = static_cast<double>(shared->history.points());
        if (!axis.bands.empty()) {
            next.whole = {axis.bands.front().low, axis.bands.back().high};
            next.narrowest = kFewestPoints * measuredWidth(axis) / points;
            next.hasFrequencies = true;
        } else if (points > 0.0) {
            next.whole = {0.0, points};
            next.narrowest = kFewestPoints;
        }
    }
    next.narrowest = std::min(next.narrowest, next.whole.high - next.whole.low);
    enter(next);
}

void FrequencyZoom::want(const ValueRange& range) {
    wanted_ = range;
    enter(now_);
}

void FrequencyZoom::enter(State next) {
    next.shown = fitted(wanted_, next.whole, next.narrowest);
    const State before = now_;
    now_ = next;
    const bool isOtherLow = differs(before.shown.low, next.shown.low);
    const bool isOtherHigh = differs(before.shown.high, next.shown.high);
    if (isOtherLow) {
        Q_EMIT lowChanged();
    }
    if (isOtherHigh) {
        Q_EMIT highChanged();
    }
    if (differs(before.whole.low, next.whole.low)) {
        Q_EMIT wholeLowChanged();
    }
    if (differs(before.whole.high, next.whole.high)) {
        Q_EMIT wholeHighChanged();
    }
    if (before.isZoomed() != next.isZoomed()) {
        Q_EMIT zoomedChanged();
    }
    if (before.hasFrequencies != next.hasFrequencies) {
        Q_EMIT hasFrequenciesChanged();
    }
    if (isOtherLow || isOtherHigh || before.hasFrequencies != next.hasFrequencies) {
        Q_EMIT shownChanged();
    }
}

}  // namespace rfu::qml

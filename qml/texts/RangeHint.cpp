#include "qml/texts/RangeHint.h"

#include <rfUtils/detail/saturate.h>
#include <rfUtils/presentation/rangeTypes.h>
#include <rfUtils/presentation/rfUtils.h>

#include <cmath>
#include <string>

#include "qml/support/properties.h"

namespace rfu::qml {

void RangeHint::setType(Type type) {
    if (assign(type_, type)) {
        report(&RangeHint::typeChanged);
    }
}

void RangeHint::setMin(double min) {
    if (assign(min_, min)) {
        report(&RangeHint::minChanged);
    }
}

void RangeHint::setMax(double max) {
    if (assign(max_, max)) {
        report(&RangeHint::maxChanged);
    }
}

void RangeHint::setInteger(bool isInteger) {
    if (assign(isInteger_, isInteger)) {
        report(&RangeHint::integerChanged);
    }
}

void RangeHint::setFrequency(double frequency) {
    if (assign(frequency_, frequency)) {
        report(&RangeHint::frequencyChanged);
    }
}

void RangeHint::setGain(double gain) {
    if (assign(gain_, gain)) {
        report(&RangeHint::gainChanged);
    }
}

QString RangeHint::textNow() const {
    if (std::isnan(min_) || std::isnan(max_)) {
        return {};
    }
    rfUtils presentation;
    std::string text;
    if (isInteger_) {
        text = presentation.makeBoundaryMsg(detail::toInt32(max_), detail::toInt32(min_), type_);
    } else {
        const Unit* const unit = rangeType(kDoubleRangeTypes, type_).convertedUnit();
        if (unit != nullptr && unit->needsAntenna() && !isFrequency(frequency_)) {
            return {};
        }
        presentation.fCenter = frequency_;
        presentation.fGain = gain_;
        text = presentation.makeBoundaryMsg(max_, min_, type_);
    }
    return QString::fromStdString(text).trimmed();
}

void RangeHint::report(void (RangeHint::*changed)()) {
    const bool isTextChanged = assign(text_, textNow());
    Q_EMIT(this->*changed)();
    if (isTextChanged) {
        Q_EMIT textChanged();
    }
}

}  // namespace rfu::qml

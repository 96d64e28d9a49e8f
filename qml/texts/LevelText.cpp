#include "qml/texts/LevelText.h"

#include <rfUtils/units/unitTable.h>

#include <cmath>
#include <string>

#include "analysis/units/levels.h"
#include "qml/support/properties.h"

namespace rfu::qml {

LevelText::LevelText() : shown_(shownNow()) {}

void LevelText::setLevel(double level) {
    if (assign(level_, level)) {
        report(&LevelText::levelChanged);
    }
}

void LevelText::setUnit(const QString& unit) {
    if (assign(unit_, unit)) {
        report(&LevelText::unitChanged);
    }
}

void LevelText::setFrequency(double frequency) {
    if (assign(frequency_, frequency)) {
        report(&LevelText::frequencyChanged);
    }
}

void LevelText::setGain(double gain) {
    if (assign(gain_, gain)) {
        report(&LevelText::gainChanged);
    }
}

void LevelText::setShowUnit(bool showsUnit) {
    if (assign(showsUnit_, showsUnit)) {
        report(&LevelText::showUnitChanged);
    }
}

LevelText::Shown LevelText::shownNow() const {
    Shown none = {missingText(), missingText(), {}, {}, false};
    const Unit* const unit = findUnit(unit_);
    if (!std::isfinite(level_) || unit == nullptr || !unit->canBeShown() ||
        (unit->needsAntenna() && !isFrequency(frequency_))) {
        return none;
    }
    LevelPresenter presenter(*unit, {frequency_, gain_});
    const std::string shown = presenter.text(level_);
    const QString text = QString::fromStdString(shown);
    const auto blank = text.indexOf(QLatin1Char(' '));
    if (blank <= 0) {
        return none;
    }
    const QString number = text.left(blank);
    return {showsUnit_ ? text : number, number, text.mid(blank + 1),
            QString::fromLatin1(presenter.prefixLeftOut(level_, shown)), true};
}

void LevelText::report(void (LevelText::*changed)()) {
    Shown now = shownNow();
    std::swap(shown_, now);
    const Shown& before = now;
    Q_EMIT(this->*changed)();
    if (shown_.text != before.text) {
        Q_EMIT textChanged();
    }
    if (shown_.number != before.number) {
        Q_EMIT numberChanged();
    }
    if (shown_.unit != before.unit) {
        Q_EMIT shownUnitChanged();
    }
    if (shown_.isValid != before.isValid) {
        Q_EMIT validChanged();
    }
    if (shown_.prefixLeftOut != before.prefixLeftOut) {
        if (isKilo() == before.prefixLeftOut.isEmpty()) {
            Q_EMIT kiloChanged();
        }
        Q_EMIT prefixLeftOutChanged();
    }
}

}  // namespace rfu::qml

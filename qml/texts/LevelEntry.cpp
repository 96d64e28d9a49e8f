#include "qml/texts/LevelEntry.h"

#include <rfUtils/units/HMath.h>
#include <rfUtils/units/unitTable.h>

#include <cmath>
#include <string>

#include "analysis/support/inputError.h"
#include "analysis/units/levels.h"
#include "analysis/units/unitNames.h"
#include "qml/support/properties.h"

namespace rfu::qml {

namespace {

/// The unit of an entry, or why there is none.
NamedUnit unitOf(const Entry& entry, const QString& chosen) {
    if (!entry.unit.empty()) {
        return unitToRead(entry.unit);
    }
    const Unit* const shown = findUnit(chosen);
    const Unit* const unit = shown == nullptr ? nullptr : readAs(*shown);
    return unit != nullptr ? NamedUnit{unit, {}} : unitToRead(chosen.toStdString());
}

}  // namespace

void LevelEntry::setText(const QString& text) {
    if (assign(text_, text)) {
        report(&LevelEntry::textChanged);
    }
}

void LevelEntry::setUnit(const QString& unit) {
    if (assign(unit_, unit)) {
        report(&LevelEntry::unitChanged);
    }
}

void LevelEntry::setFrequency(double frequency) {
    if (assign(frequency_, frequency)) {
        report(&LevelEntry::frequencyChanged);
    }
}

void LevelEntry::setGain(double gain) {
    if (assign(gain_, gain)) {
        report(&LevelEntry::gainChanged);
    }
}

void LevelEntry::setMin(double min) {
    if (assign(min_, min)) {
        report(&LevelEntry::minChanged);
    }
}

void LevelEntry::setMax(double max) {
    if (assign(max_, max)) {
        report(&LevelEntry::maxChanged);
    }
}

QValidator::State LevelEntry::validate(QString& input, int& /*position*/) const {
    return read(input).isAcceptable ? Acceptable : Intermediate;
}

LevelEntry::Result LevelEntry::read(const QString& text) const {
    Result result;
    const std::string typed = text.trimmed().toStdString();
    if (typed.empty()) {
        return result;
    }
    const auto refused = [&](const std::string& reason) {
        result.hint = QString::fromStdString(reason);
        return result;
    };
    const Entry entry = splitEntry(typed);
    if (!entry.refusal.empty()) {
        return refused(entry.refusal);
    }
    const NamedUnit named = unitOf(entry, unit_);
    if (named.unit == nullptr) {
        return refused(named.refusal);
    }
    const Unit& unit = *named.unit;
    if (const std::string reason = whyNoLevel(unit, entry.value); !reason.empty()) {
        return refused(reason);
    }
    if (unit.needsAntenna() && !isFrequency(frequency_)) {
        return refused(nameOf(unit) + " needs the centre frequency of the antenna");
    }
    HMath math;
    const double level = entryLevel(math, unit, entry.value, {frequency_, gain_});
    return std::isfinite(level) ? withinLimits(level)
                                : refused(rfu::quoted(typed) + " has no level, it is too small");
}

LevelEntry::Result LevelEntry::withinLimits(double level) const {
    if (level < min_) {
        const ShownLimit limit = shown(min_);
        return level >= limit.level
                   ? Result{min_, true, {}}
                   : Result{level, false, QStringLiteral("is below ") + limit.text};
    }
    if (level > max_) {
        const ShownLimit limit = shown(max_);
        return level <= limit.level
                   ? Result{max_, true, {}}
                   : Result{level, false, QStringLiteral("is above ") + limit.text};
    }
    return {level, true, {}};
}

LevelEntry::ShownLimit LevelEntry::shown(double limit) const {
    const Unit* unit = findUnit(unit_);
    if (unit == nullptr || !unit->canBeShown() ||
        (unit->needsAntenna() && !isFrequency(frequency_))) {
        unit = findUnit(u"dBm");
    }
    const Antenna antenna{frequency_, gain_};
    LevelPresenter presenter(*unit, antenna);
    std::string text = presenter.text(limit);
    const std::string prefix = presenter.prefixLeftOut(limit, text);
    if (!prefix.empty()) {
        text.insert(text.find(' ') + 1, prefix);
    }
    ShownLimit result{QString::fromStdString(text), limit};
    const Entry entry = splitEntry(text);
    const NamedUnit named = unitToRead(entry.unit);
    if (entry.refusal.empty() && named.unit != nullptr &&
        whyNoLevel(*named.unit, entry.value).empty()) {
        HMath math;
        result.level = entryLevel(math, *named.unit, entry.value, antenna);
    }
    return result;
}

void LevelEntry::report(void (LevelEntry::*reported)()) {
    Result now = read(text_);
    std::swap(result_, now);
    Result& before = now;
    Q_EMIT(this->*reported)();
    if (assign(before.level, result_.level)) {
        Q_EMIT levelChanged();
    }
    if (before.isAcceptable != result_.isAcceptable) {
        Q_EMIT acceptableChanged();
    }
    if (before.hint != result_.hint) {
        Q_EMIT hintChanged();
    }
    if (reported != &LevelEntry::textChanged) {
        Q_EMIT QValidator::changed();  // the field asks again
    }
}

}  // namespace rfu::qml

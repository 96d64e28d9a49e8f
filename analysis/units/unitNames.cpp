#include "analysis/units/unitNames.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <tuple>

#include "analysis/support/inputError.h"
#include "analysis/support/words.h"
#include "analysis/units/relatedUnits.h"

namespace rfu {

namespace {

constexpr std::size_t kSuggestions = 3;
constexpr int kMaxNameLength = 30;  // beyond it nothing is near any unit

/// "a, b or c"
std::string alternatives(const std::vector<std::string>& names) {
    std::string list;
    for (std::size_t i = 0; i < names.size(); ++i) {
        list += i == 0 ? "" : i + 1 == names.size() ? " or " : ", ";
        list += names[i];
    }
    return list;
}

constexpr QChar kMicroSign(0xB5);

QString withAsciiMicro(QString name) {
    constexpr QChar kGreekMu(0x3BC);
    return name.replace(kMicroSign, QLatin1Char('u')).replace(kGreekMu, QLatin1Char('u'));
}

/// A name as the vocabulary spells it: U+00B5, U+03BC and u are one micro sign to users.
QString inVocabulary(const QString& typed) {
    const QString ascii = withAsciiMicro(typed);
    QString micro = ascii;
    if (micro.startsWith(QLatin1Char('u'))) {
        micro[0] = kMicroSign;
    }
    return findUnit(micro) != nullptr ? micro : ascii;
}

bool isPrefixLetter(QChar letter) {
    return letter == kMicroSign ||
           std::any_of(std::begin(kPrefixes), std::end(kPrefixes), [letter](const Prefix& prefix) {
               return prefix.decades != 0 && letter == QLatin1Char(prefix.letter);
           });
}

/// The unit in front of which the instrument puts the prefix that opens a name: V of "mV", A/m of
/// "uA/m"; null where there is none.
const Unit* baseOfPrefixed(const QString& name) {
    if (name.isEmpty() || !isPrefixLetter(name[0])) {
        return nullptr;
    }
    const Unit* const base = findUnit(QStringView(name).mid(1));
    return base != nullptr && base->canBeShown() && base->isLinear() ? base : nullptr;
}

/// How a unit is to be used: one of the predicates.
using Direction = bool (Unit::*)() const;

/// In lower case and with one micro sign.
QString folded(const QString& name) {
    return withAsciiMicro(name).toLower();
}

/// How near a known name is to a wrong one; the smaller the nearer.
struct Nearness {
    int distance;  // of the folded names
    bool differentBeginning;
    int lengthDifference;
    int exactDistance;

    bool operator<(const Nearness& other) const {
        return std::tie(distance, differentBeginning, lengthDifference, exactDistance) <
               std::tie(other.distance, other.differentBeginning, other.lengthDifference,
                        other.exactDistance);
    }
};

Nearness nearness(const QString& wrong, const QString& known) {
    const QString from = folded(wrong);
    const QString to = folded(known);
    return {editDistance(from, to), !from.startsWith(to) && !to.startsWith(from),
            static_cast<int>(std::abs(from.size() - to.size())), editDistance(wrong, known)};
}

/// The nearest first. A unit that the instrument shows as a prefix of another is among them where
/// only its letter case is wrong.
std::string nearestNames(const QString& wrong, Direction usable) {
    struct Candidate {
        Nearness nearness;
        std::string text;
    };
    std::vector<Candidate> candidates;
    for (const ListedUnit& unit : allUnits()) {
        const QString known = QString::fromStdString(unit.name);
        const Nearness near = nearness(wrong, known);
        if (unit.row != nullptr && (unit.row->*usable)()) {
            candidates.push_back({near, unit.name});
        } else if (const Unit* const base = baseOfPrefixed(known);
                   near.distance == 0 && usable == &Unit::canBeShown && base != nullptr) {
            candidates.push_back({near, unit.name + " (ask for " + nameOf(*base) + ")"});
        }
    }
    std::stable_sort(
        candidates.begin(), candidates.end(),
        [](const Candidate& a, const Candidate& b) { return a.nearness < b.nearness; });
    std::vector<std::string> nearest;
    for (std::size_t i = 0; i < kSuggestions; ++i) {
        nearest.push_back(candidates[i].text);
    }
    return alternatives(nearest);
}

/// Letter case counts only between known and related units: "mw" is not MW.
const RelatedUnit* findRelated(const QString& name) {
    const auto find = [](auto matches) {
        const auto* const found =
            std::find_if(std::begin(kRelatedUnits), std::end(kRelatedUnits), matches);
        return found == std::end(kRelatedUnits) ? nullptr : found;
    };
    const QString exact = withAsciiMicro(name);
    if (const auto* const unit = find([&](const RelatedUnit& u) { return u.name == exact; })) {
        return unit;
    }
    const QString wanted = folded(name);
    const bool isKnown = std::any_of(std::begin(kUnits), std::end(kUnits), [&](const Unit& unit) {
        return folded(unit.name.toString()) == wanted;
    });
    return isKnown
               ? nullptr
               : find([&](const RelatedUnit& u) { return folded(u.name.toString()) == wanted; });
}

std::string unknownUnit(const QString& name, Direction usable) {
    const std::string unknown = "there is no unit " + rfu::quoted(name.toStdString()) + "; ";
    if (const RelatedUnit* const unit = findRelated(name)) {
        return unknown + "use " + unit->known.toString().toStdString() + ": " + unit->relation;
    }
    return unknown + "the nearest are " + nearestNames(name.left(kMaxNameLength), usable);
}

/// The spelling of a known unit in the direction that wants other letter case; null where there is
/// none.
const Unit* otherSpelling(const QString& name, Direction usable) {
    const auto found = std::find_if(std::begin(kUnits), std::end(kUnits), [&](const Unit& unit) {
        return (unit.*usable)() && name != unit.name &&
               name.compare(unit.name.toString(), Qt::CaseInsensitive) == 0;
    });
    return found == std::end(kUnits) ? nullptr : found;
}

std::string readableUnitsOf(Quantity quantity) {
    std::vector<std::string> names;
    for (const Unit& unit : kUnits) {
        if (unit.quantity == quantity && unit.canBeRead()) {
            names.push_back(nameOf(unit));
        }
    }
    return alternatives(names);
}

/// Why a unit that levels are shown in cannot be read, or that there is no such unit.
/// @param name as the vocabulary spells what was typed
std::string notReadable(const QString& typed, const QString& name) {
    const std::string asQuoted = rfu::quoted(typed.toStdString());
    const Unit* const known = findUnit(name);
    if (known != nullptr) {
        if (const Unit* const spelled = otherSpelling(name, &Unit::canBeRead)) {
            return asQuoted + " is only shown, never read; values are read in " + nameOf(*spelled);
        }
    }
    // Every prefix of a field unit may be shown, though the vocabulary lists those that are read.
    const Unit* const base = baseOfPrefixed(name);
    const bool fieldIsShown = base != nullptr && base->needsAntenna();
    if (const Unit* const shown = known != nullptr ? known : fieldIsShown ? base : nullptr) {
        return asQuoted + " is only shown, never read; values are read in " +
               readableUnitsOf(shown->quantity);
    }
    return unknownUnit(typed, &Unit::canBeRead);
}

/// Why a unit cannot be asked for, or that there is no such unit.
/// @param name as the vocabulary spells what was typed
std::string notShowable(const QString& typed, const QString& name) {
    const std::string asQuoted = rfu::quoted(typed.toStdString());
    if (const Unit* const base = baseOfPrefixed(name)) {
        return asQuoted + " cannot be asked for, the prefix follows from the level; ask for " +
               nameOf(*base);
    }
    if (findUnit(name) != nullptr) {
        if (const Unit* const spelled = otherSpelling(name, &Unit::canBeShown)) {
            return asQuoted + " is only read, never shown; ask for " + nameOf(*spelled);
        }
    }
    return unknownUnit(typed, &Unit::canBeShown);
}

/// @param refusal gives the reason from the name as typed and as the vocabulary spells it
NamedUnit usableUnit(std::string_view name, Direction usable,
                     std::string (*refusal)(const QString& typed, const QString& name)) {
    const QString typed = QString::fromUtf8(name.data(), static_cast<int>(name.size()));
    const QString spelled = inVocabulary(typed);
    const Unit* const unit = findUnit(spelled);
    if (unit == nullptr || !(unit->*usable)()) {
        return {nullptr, refusal(typed, spelled)};
    }
    return {unit, {}};
}

}  // namespace

NamedUnit unitToRead(std::string_view name) {
    return usableUnit(name, &Unit::canBeRead, notReadable);
}

NamedUnit unitToShow(std::string_view name) {
    return usableUnit(name, &Unit::canBeShown, notShowable);
}

const Unit* readAs(const Unit& unit) {
    return unit.canBeRead() ? &unit : otherSpelling(unit.name.toString(), &Unit::canBeRead);
}

const Unit* unitLike(const QString& name) {
    const Unit* const unit = findUnit(name);
    return unit != nullptr ? unit : baseOfPrefixed(name);
}

std::string nameOf(const Unit& unit) {
    return unit.name.toString().toStdString();
}

std::vector<ListedUnit> allUnits() {
    std::vector<ListedUnit> units;
    for (const Unit& unit : kUnits) {
        if (unit.isPrefixed() && unit.needsAntenna()) {
            continue;  // it is listed with its base unit
        }
        units.push_back({nameOf(unit), &unit, unit});
        if (!unit.takesEveryPrefix()) {
            continue;
        }
        for (const Prefix& prefix : kPrefixes) {
            if (prefix.decades != 0) {
                const std::string name = prefix.letter + nameOf(unit);
                const Unit* const row = findUnit(QString::fromStdString(name));
                units.push_back({name, row, unit});
            }
        }
    }
    return units;
}

}  // namespace rfu

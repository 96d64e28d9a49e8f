#include "analysis/catalogues/setupsCheck.h"

#include <rfUtils/catalogues/ResultSetup.h>
#include <QJsonValue>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

#include "analysis/catalogues/jsonCheck.h"
#include "analysis/catalogues/jsonRules.h"
#include "analysis/support/inputError.h"

namespace rfu {

namespace {

// clang-format off
constexpr Rule kGroupEmpty = {
    "group-empty", Severity::Note,
    "A group without setups leaves nothing on the instrument: groups are not kept, only their setups.",
    "{\"coverage\": []}",
    "Fill the list or delete it."};

constexpr Rule kGroupOrder = {
    "group-order", Severity::Note,
    "Groups are read in the ascending order of their keys, whatever their order in the file; the "
    "positions of setups, by which the instrument asks for them, follow that order.",
    "{\"spectrum\": [...], \"coverage\": [...]}",
    "Put the groups into the order of their keys, so that the file shows the order of the instrument."};

constexpr Rule kSetupRepeated = {
    "setup-repeated", Severity::Note,
    "Nothing compares the ids of setups: one that stands twice is offered twice.",
    "[{\"id\": \"obw\", \"label\": \"OBW\"}, {\"id\": \"obw\", \"label\": \"OBW\"}]",
    "Delete one of the two, or give it an id of its own."};
// clang-format on

constexpr Rule kRules[] = {kJsonEncoding,      kJsonSyntax,      kJsonTopLevel,   kJsonOddity,
                           kJsonByteOrderMark, kTextMarkDropped, kNothingLoaded,  kListIgnored,
                           kElementSkipped,    kMemberMissing,   kMemberMisspelt, kMemberUnknown,
                           kMemberRepeated,    kElementReplaced, kTextNotRead,    kGroupEmpty,
                           kGroupOrder,        kSetupRepeated};

enum Member : std::size_t { kLabel, kId };

class SetupsCheck : public JsonCheck {
public:
    explicit SetupsCheck(const QString& file)
        : JsonCheck(file, setupsRules(),
                    {"group", "setup", {QStringLiteral("label"), QStringLiteral("id")}}) {}

private:
    void takeList(const JsonList& list) override {
        if (list.elements == 0) {
            report(kGroupEmpty, list.place.begin,
                   "the group " + rfu::quoted(list.key.toStdString()) + " has no setup");
        }
        if (!groups_.empty() && list.key < groups_.rbegin()->first) {
            const auto& [key, line] = *groups_.upper_bound(list.key);
            report(kGroupOrder, list.place.begin,
                   "read before the group " + rfu::quoted(key.toStdString()) + " of line " +
                       std::to_string(line) + ": groups are read in the order of their keys");
        }
        groups_.emplace(list.key, lineOf(list.place.begin));
    }

    void checkValues(const JsonElement& element) override {
        checkText(element, kLabel);
        checkText(element, kId);
    }

    void takeElement(const JsonList&, const JsonElement& element) override {
        const QJsonValue id = element.object[QLatin1String("id")];
        if (!id.isString()) {
            return;
        }
        const auto [earlier, isNew] = ids_.emplace(id.toString(), element.place.begin);
        if (!isNew) {
            report(kSetupRepeated, element.values[kId].begin,
                   "offered beside the setup at line " + std::to_string(lineOf(earlier->second)) +
                       ", which has the same id");
        }
    }

    void finish() override {}

    std::map<QString, long long> groups_;  // with their lines
    std::map<QString, std::int64_t> ids_;
};

}  // namespace

RuleTable setupsRules() {
    return kRules;
}

Findings checkSetups(const QString& file) {
    return SetupsCheck(file).run([](const QString& name) { return ResultSetup().loadJson(name); });
}

}  // namespace rfu

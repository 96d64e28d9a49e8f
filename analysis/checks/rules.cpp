#include "analysis/checks/rules.h"

#include <algorithm>
#include <map>
#include <utility>

namespace rfu {

RuleTable fileRules() {
    static constexpr Rule kRules[] = {kFileUnreadable};
    return kRules;
}

std::vector<KnownRule> knownRules() {
    std::map<std::string_view, KnownRule> byName = {
        {kKindUnknown.name, KnownRule{kKindUnknown, {}}}};
    for (const KnownKind& kind : knownKinds()) {
        for (const Rule& rule : fileRules().with(kind.rules())) {
            KnownRule& known = byName.emplace(rule.name, KnownRule{rule, {}}).first->second;
            known.kinds.push_back(kind.kind);
        }
    }
    std::vector<KnownRule> rules;
    rules.reserve(byName.size());
    for (auto& [name, rule] : byName) {
        rules.push_back(std::move(rule));
    }
    return rules;
}

std::optional<KnownRule> findRule(std::string_view name) {
    for (const KnownRule& known : knownRules()) {
        if (known.rule.name == name) {
            return known;
        }
    }
    return std::nullopt;
}

}  // namespace rfu

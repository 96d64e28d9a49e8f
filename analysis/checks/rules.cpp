#include "analysis/checks/rules.h"

#include <map>
#include <utility>

namespace rfu {

namespace {

/// Of files of every kind.
constexpr Rule kFileRules[] = {kFileUnreadable};

}  // namespace

std::vector<KnownRule> knownRules() {
    std::map<std::string_view, KnownRule> byName;
    for (const KnownKind& kind : knownKinds()) {
        for (const RuleTable& table : {RuleTable(kFileRules), kind.rules()}) {
            for (const Rule& rule : table) {
                KnownRule& known = byName.emplace(rule.name, KnownRule{rule, {}}).first->second;
                known.kinds.push_back(kind.kind);
            }
        }
    }
    std::vector<KnownRule> rules;
    for (auto& [name, rule] : byName) {
        rules.push_back(std::move(rule));
    }
    return rules;
}

}  // namespace rfu

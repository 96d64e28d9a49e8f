#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "analysis/checks/fileKind.h"
#include "analysis/support/finding.h"

namespace rfu {

/// A rule, and the kinds of files that it is about.
struct KnownRule {
    Rule rule;
    std::vector<FileKind> kinds;  ///< none: about files of no known kind
};

/// All rules, by their names.
std::vector<KnownRule> knownRules();

std::optional<KnownRule> findRule(std::string_view name);

/// Of files of every kind.
RuleTable fileRules();

}  // namespace rfu

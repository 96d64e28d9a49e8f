#include "analysis/support/finding.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "analysis/support/inputError.h"

namespace rfu {

namespace {

bool isError(const Finding& finding) {
    return finding.severity == Severity::Error;
}

/// Whole-file findings come last.
bool isBefore(const Finding& a, const Finding& b) {
    return a.line != 0 && (b.line == 0 || a.line < b.line);
}

}  // namespace

const Rule* RuleTable::find(std::string_view name) const {
    const Rule* const found =
        std::find_if(begin_, end_, [name](const Rule& rule) { return rule.name == name; });
    return found == end_ ? nullptr : found;
}

void Findings::add(std::string_view rule, long long line, long long column, std::string text,
                   std::vector<Edit> mend) {
    const Rule* const found = rules_.find(rule);
    if (found == nullptr) {
        throw std::logic_error("no rule of this name: " + std::string(rule));
    }
    if (++counts_[found->name] <= kMaxKept) {
        kept_.push_back(
            {found->name, found->severity, file_, line, column, std::move(text), std::move(mend)});
    }
}

void Findings::sort() {
    std::stable_sort(kept_.begin(), kept_.end(), isBefore);
}

bool Findings::hasError() const {
    return std::any_of(kept_.begin(), kept_.end(), isError);
}

void Findings::throwFirstError() const {
    const auto found = std::find_if(kept_.begin(), kept_.end(), isError);
    if (found != kept_.end()) {
        throw InputError(file_, found->line, found->text);
    }
}

}  // namespace rfu

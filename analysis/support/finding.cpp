#include "analysis/support/finding.h"

#include <algorithm>
#include <stdexcept>
#include <tuple>
#include <utility>

#include "analysis/support/inputError.h"

namespace rfu {

namespace {

bool isError(const Finding& finding) {
    return finding.severity == Severity::Error;
}

bool isBefore(const Finding& a, const Finding& b) {
    const bool isOfFile = a.line == 0;
    const bool isOtherOfFile = b.line == 0;
    return std::tie(isOfFile, a.line, a.column) < std::tie(isOtherOfFile, b.line, b.column);
}

/// Without those that lie within what another one replaces, in their order.
std::vector<Edit> withoutInner(std::vector<Edit> edits) {
    std::stable_sort(edits.begin(), edits.end(), [](const Edit& a, const Edit& b) {
        return a.offset != b.offset ? a.offset < b.offset : a.length > b.length;
    });
    std::vector<Edit> outer;
    std::int64_t end = 0;
    for (Edit& edit : edits) {
        const std::int64_t editEnd = edit.offset + edit.length;
        if (edit.length == 0 || editEnd > end) {
            end = std::max(end, editEnd);
            outer.push_back(std::move(edit));
        }
    }
    return outer;
}

}  // namespace

const Rule* RuleTable::find(std::string_view name) const {
    const auto found = std::find_if(rules_.begin(), rules_.end(),
                                    [name](const Rule& rule) { return rule.name == name; });
    return found == rules_.end() ? nullptr : &*found;
}

RuleTable RuleTable::with(const RuleTable& others) const {
    RuleTable all = *this;
    all.rules_.insert(all.rules_.end(), others.begin(), others.end());
    return all;
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
    } else {
        std::vector<Edit>& edits = otherMends_[found->name];
        edits.insert(edits.end(), mend.begin(), mend.end());
    }
}

void Findings::add(const Findings& others) {
    kept_.insert(kept_.end(), others.kept_.begin(), others.kept_.end());
    for (const auto& [rule, count] : others.counts_) {
        counts_[rule] += count;
    }
    for (const auto& [rule, edits] : others.otherMends_) {
        std::vector<Edit>& known = otherMends_[rule];
        known.insert(known.end(), edits.begin(), edits.end());
    }
}

void Findings::remove(std::string_view rule) {
    kept_.erase(std::remove_if(kept_.begin(), kept_.end(),
                               [rule](const Finding& finding) { return finding.rule == rule; }),
                kept_.end());
    counts_.erase(rule);
    otherMends_.erase(rule);
}

std::vector<Edit> Findings::mends() const {
    std::vector<Edit> edits;
    for (const auto& [rule, others] : otherMends_) {
        edits.insert(edits.end(), others.begin(), others.end());
    }
    for (const Finding& finding : kept_) {
        edits.insert(edits.end(), finding.mend.begin(), finding.mend.end());
    }
    return withoutInner(std::move(edits));
}

void Findings::sort() {
    std::stable_sort(kept_.begin(), kept_.end(), isBefore);
}

long long Findings::count(Severity severity) const {
    long long result = 0;
    for (const auto& [rule, count] : counts_) {
        result += rules_.find(rule)->severity == severity ? count : 0;
    }
    return result;
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

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

void Findings::add(std::string_view rule, long long line, long long column, std::string text) {
    const auto found = std::find_if(rules_.begin(), rules_.end(),
                                    [rule](const Rule& known) { return known.name == rule; });
    if (found == rules_.end()) {
        throw std::logic_error("no rule of this name: " + std::string(rule));
    }
    const bool isFirstError = found->severity == Severity::Error && !hasError_;
    if (kept_.size() >= kMaxKept && !isFirstError) {
        ++dropped_;
        return;
    }
    hasError_ = hasError_ || isFirstError;
    kept_.push_back({found->name, found->severity, file_, line, column, std::move(text)});
}

void Findings::sort() {
    std::stable_sort(kept_.begin(), kept_.end(), isBefore);
}

void Findings::throwFirstError() const {
    const auto found = std::find_if(kept_.begin(), kept_.end(), isError);
    if (found != kept_.end()) {
        throw InputError(file_, found->line, found->text);
    }
}

}  // namespace rfu

#pragma once

#include <string>
#include <vector>

#include "analysis/support/finding.h"

namespace rfu::test {

/// "LINE:COLUMN severity rule: text" for each finding, without what is 0.
inline std::vector<std::string> listed(const Findings& findings) {
    std::vector<std::string> result;
    for (const Finding& finding : findings.kept()) {
        std::string place;
        if (finding.line > 0) {
            place = std::to_string(finding.line) + ':';
            place += finding.column > 0 ? std::to_string(finding.column) + ' ' : " ";
        }
        const char* const severity = finding.severity == Severity::Error     ? "error "
                                     : finding.severity == Severity::Warning ? "warning "
                                                                             : "note ";
        result.push_back(place + severity + std::string(finding.rule) + ": " + finding.text);
    }
    return result;
}

}  // namespace rfu::test

#pragma once

#include <memory>

#include "analysis/checks/checkFiles.h"

namespace rfu::command {

/// Writes findings to standardOutput() in one of the formats of check.
class FindingWriter {
public:
    virtual ~FindingWriter() = default;

    /// A checked file, with or without findings.
    virtual void add(const CheckedFile& file) = 0;
    virtual void finish() = 0;
};

/// A line per finding: "file:line:column: error: text [rule]", on a terminal in colour and with the source line.
std::unique_ptr<FindingWriter> textFindings();

/// An array with an object per finding.
std::unique_ptr<FindingWriter> jsonFindings();

/// A log in SARIF 2.1.0, with all rules.
std::unique_ptr<FindingWriter> sarifFindings();

}  // namespace rfu::command

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

/// A line per finding: "file:line:column: error: text [rule]".
std::unique_ptr<FindingWriter> textFindings();

}  // namespace rfu::command

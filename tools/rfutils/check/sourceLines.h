#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "analysis/support/lineReader.h"

namespace rfu::command {

/// The lines of a checked file, which are asked for in their order.
class SourceLines {
public:
    /// @param file none of whose lines is there where it does not open: a finding says so
    explicit SourceLines(const QString& file);

    /// Nothing where there is no such line, and from a line of more than LineReader::kMaxLine bytes on.
    std::optional<std::string> line(long long number);

private:
    std::unique_ptr<LineReader> lines_;
    std::string_view line_;
    bool hasMark_ = false;
};

}  // namespace rfu::command

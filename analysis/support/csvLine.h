#pragma once

#include <string_view>

#include "analysis/support/numbers.h"

namespace rfu {

// Lines of CSV files: recordings, masks.

/// Whether the line is blank or a comment, which begins with "#".
bool isBlankOrComment(std::string_view line);

/// Whether a field, which may be quoted, begins with a letter, as the name of a column does.
bool looksLikeName(std::string_view field);

/// The comma separated fields of a line, without the blanks around them.
class CsvFields {
public:
    explicit CsvFields(std::string_view line) : rest_(line) {}

    /// @return false behind the last field
    bool next(std::string_view& field) {
        if (atEnd_) {
            return false;
        }
        const std::size_t comma = rest_.find(',');
        field = trimmed(rest_.substr(0, comma));
        atEnd_ = comma == std::string_view::npos;
        rest_.remove_prefix(atEnd_ ? rest_.size() : comma + 1);
        return true;
    }

    std::string_view rest() const { return rest_; }
    bool atEnd() const { return atEnd_; }

private:
    std::string_view rest_;
    bool atEnd_ = false;
};

}  // namespace rfu

#pragma once

#include <string_view>

#include "support/format.h"
#include "support/output.h"
#include "support/text.h"

namespace rfu::command {

/// Several tables in one output: members of one object in JSON, separated by empty lines in the
/// other formats.
class Sections {
public:
    explicit Sections(Format format) : format_(format) {}

    /// To be called before each table.
    /// @param name its key in JSON
    void begin(std::string_view name) {
        if (format_ == Format::Json) {
            first_ ? output_.open("{", "}\n") : output_.write(", ");
            output_.write(jsonString(name) + ": ");
        } else if (!first_) {
            output_.write('\n');
        }
        first_ = false;
    }

    void finish() {
        if (format_ == Format::Json) {
            output_.close();
        }
    }

private:
    Output& output_ = standardOutput();
    Format format_;
    bool first_ = true;
};

}  // namespace rfu::command

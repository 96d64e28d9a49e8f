#include "check/sourceLines.h"

#include "analysis/support/files.h"
#include "analysis/support/inputError.h"
#include "analysis/support/plainText.h"

namespace rfu::command {

SourceLines::SourceLines(const QString& file) {
    try {
        hasMark_ = beginsWithUtf8Mark(file);
        lines_ = std::make_unique<LineReader>(file);
    } catch (const InputError&) {
        lines_.reset();
    }
}

std::optional<std::string> SourceLines::line(long long number) {
    try {
        while (lines_ != nullptr && lines_->number() < number) {
            if (!lines_->next(line_)) {
                lines_.reset();
            }
        }
    } catch (const InputError&) {
        lines_.reset();
    }
    if (lines_ == nullptr || lines_->number() != number) {
        return std::nullopt;
    }
    // LineReader leaves the mark out, which columns count.
    return (number == 1 && hasMark_ ? std::string(kUtf8Mark) : "") + std::string(line_);
}

}  // namespace rfu::command

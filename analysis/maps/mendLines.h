#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/maps/mapLines.h"
#include "analysis/support/edits.h"

namespace rfu {

/// A line of a text, its end included.
struct LineSpan {
    std::size_t begin;  // offsets in the text
    std::size_t end;
};

/// A map's text file whose lines are mended.
class MendLines {
public:
    /// @param ignored rules; what is about them stays. The names outlive this.
    MendLines(std::string_view file, const RuleNames& ignored);
    MendLines(std::string_view file, RuleNames&& ignored) = delete;

    /// Whether what is about a rule is mended.
    bool mends(std::string_view rule) const { return ignored_.find(rule) == ignored_.end(); }

    const std::vector<LineSpan>& lines() const { return lines_; }
    /// As the loader sees it: NUL-terminated. The places of tokens are in the same text for all lines.
    const char* text(const LineSpan& line) const { return text_.c_str() + line.begin; }
    /// As the file has it.
    std::string_view written(const LineSpan& line) const {
        return file_.substr(line.begin, line.end - line.begin);
    }

    void replace(const char* begin, const char* end, std::string text);
    void replace(const detail::RawToken& token, std::string text) {
        replace(token.begin, token.end, std::move(text));
    }
    void remove(const LineSpan& line) {
        replace(text(line), text(line) + (line.end - line.begin), "");
    }
    void insertBefore(const LineSpan& line, std::string text) {
        replace(this->text(line), this->text(line), std::move(text));
    }
    void doubt(const LineSpan& line, std::string text);

    Mend take() { return std::move(mend_); }

private:
    std::string_view file_;
    const RuleNames& ignored_;
    std::string text_;  // with a NUL at the end of each line
    std::vector<LineSpan> lines_;
    Mend mend_;
};

/// In fewer characters, a number of which the loader cuts a part that counts; nothing for any other token.
std::optional<std::string> shortened(const detail::RawToken& token);

/// Shortens the numbers of a line that the loader cuts, unless token-cut is ignored.
void shortenNumbers(MendLines& lines, const LineSpan& line);

}  // namespace rfu

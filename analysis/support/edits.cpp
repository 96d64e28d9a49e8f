#include "analysis/support/edits.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace rfu {

namespace {

std::size_t beginOf(const Edit& edit) {
    return static_cast<std::size_t>(edit.offset);
}

std::size_t endOf(const Edit& edit) {
    return static_cast<std::size_t>(edit.offset + edit.length);
}

/// In their order, without those that change nothing.
std::vector<Edit> ordered(std::string_view text, std::vector<Edit> edits) {
    std::stable_sort(edits.begin(), edits.end(), [](const Edit& a, const Edit& b) {
        return a.offset != b.offset ? a.offset < b.offset : a.length < b.length;
    });
    std::size_t at = 0;
    for (const Edit& edit : edits) {
        if (edit.offset < 0 || edit.length < 0 || beginOf(edit) < at || endOf(edit) > text.size()) {
            throw std::logic_error("edits overlap or lie outside of the text");
        }
        at = endOf(edit);
    }
    const auto changesNothing = [text](const Edit& edit) {
        return text.substr(beginOf(edit), static_cast<std::size_t>(edit.length)) ==
               edit.replacement;
    };
    edits.erase(std::remove_if(edits.begin(), edits.end(), changesNothing), edits.end());
    return edits;
}

/// Whole lines that take the place of others.
struct Change {
    std::size_t begin;  // of the old lines in the text
    std::size_t end;
    std::string lines;
};

bool endsLine(std::string_view text) {
    return text.empty() || text.back() == '\n';
}

std::size_t lineBegin(std::string_view text, std::size_t at) {
    return at == 0 ? 0 : text.rfind('\n', at - 1) + 1;  // npos + 1 is 0
}

/// The end of the line that holds the character before `at` or, if that ends a line, of the next one.
std::size_t lineEnd(std::string_view text, std::size_t at) {
    const std::size_t end = text.find('\n', at);
    return end == std::string_view::npos ? text.size() : end + 1;
}

/// The changes of lines that edits make, ascending and apart from each other.
std::vector<Change> changesOf(std::string_view text, const std::vector<Edit>& edits) {
    std::vector<Change> changes;
    for (auto edit = edits.begin(); edit != edits.end();) {
        Change change{lineBegin(text, beginOf(*edit)), 0, ""};
        change.end = change.begin;
        // Edits go into one change until it ends where lines end, before and after.
        for (;;) {
            change.lines += text.substr(change.end, beginOf(*edit) - change.end);
            change.lines += edit->replacement;
            change.end = endOf(*edit);
            ++edit;
            const bool isWhole = endsLine(text.substr(0, change.end)) && endsLine(change.lines);
            const std::size_t end = isWhole ? change.end : lineEnd(text, change.end);
            if (edit == edits.end() || beginOf(*edit) > end) {
                change.lines += text.substr(change.end, end - change.end);
                change.end = end;
                break;
            }
        }
        if (change.lines != text.substr(change.begin, change.end - change.begin)) {
            changes.push_back(std::move(change));
        }
    }
    return changes;
}

constexpr std::size_t kContext = 3;

std::size_t lineCount(std::string_view text) {
    const auto ends = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    return ends + (endsLine(text) ? 0 : 1);
}

std::size_t back(std::string_view text, std::size_t at, std::size_t lines, std::size_t least) {
    for (; lines > 0 && at > least; --lines) {
        at = lineBegin(text, at - 1);
    }
    return at;
}

std::size_t forth(std::string_view text, std::size_t at, std::size_t lines, std::size_t most) {
    for (; lines > 0 && at < most; --lines) {
        at = lineEnd(text, at);
    }
    return at;
}

/// Lines in a hunk, each behind a sign.
void addLines(std::string& hunk, char sign, std::string_view lines) {
    while (!lines.empty()) {
        const std::string_view line = lines.substr(0, lineEnd(lines, 0));
        hunk.append(1, sign).append(line);
        if (!endsLine(line)) {
            hunk += "\n\\ No newline at end of file\n";
        }
        lines.remove_prefix(line.size());
    }
}

/// "3,4"; the place of no lines is the line before them.
std::string rangeText(std::size_t first, std::size_t count) {
    return std::to_string(count == 0 ? first : first + 1) +
           (count == 1 ? "" : ',' + std::to_string(count));
}

/// Writes hunks one after the other, counting the lines between them.
class DiffWriter {
public:
    explicit DiffWriter(std::string_view text) : text_(text) {}

    /// @param first, last changes with too few lines between them for hunks of their own
    /// @param most where the text between the last one and the next change ends
    void add(const Change* first, const Change* last, std::size_t most) {
        const std::size_t begin = back(text_, first->begin, kContext, at_);
        oldLine_ += lineCount(text_.substr(at_, begin - at_));
        newLine_ += lineCount(text_.substr(at_, begin - at_));
        at_ = begin;
        std::string hunk;
        std::size_t newLines = 0;
        const auto keep = [&](std::size_t end) {
            const std::string_view lines = text_.substr(at_, end - at_);
            addLines(hunk, ' ', lines);
            newLines += lineCount(lines);
            at_ = end;
        };
        for (const Change* change = first; change <= last; ++change) {
            keep(change->begin);
            addLines(hunk, '-', text_.substr(change->begin, change->end - change->begin));
            addLines(hunk, '+', change->lines);
            newLines += lineCount(change->lines);
            at_ = change->end;
        }
        keep(forth(text_, at_, kContext, most));
        const std::size_t oldLines = lineCount(text_.substr(begin, at_ - begin));
        diff_ += "@@ -" + rangeText(oldLine_, oldLines) + " +" + rangeText(newLine_, newLines) +
                 " @@\n" + hunk;
        oldLine_ += oldLines;
        newLine_ += newLines;
    }

    const std::string& text() const { return diff_; }

private:
    std::string_view text_;
    std::string diff_;
    std::size_t at_ = 0;  // the end of the last hunk
    std::size_t oldLine_ = 0;
    std::size_t newLine_ = 0;
};

/// Whether two changes go into one hunk.
bool isNear(std::string_view text, const Change& a, const Change& b) {
    return forth(text, a.end, 2 * kContext, b.begin) == b.begin;
}

}  // namespace

std::string withEdits(std::string_view text, std::vector<Edit> edits) {
    std::string result;
    std::size_t at = 0;
    for (const Edit& edit : ordered(text, std::move(edits))) {
        result += text.substr(at, beginOf(edit) - at);
        result += edit.replacement;
        at = endOf(edit);
    }
    return result.append(text.substr(at));
}

std::string unifiedDiff(std::string_view name, std::string_view text, std::vector<Edit> edits) {
    const std::vector<Change> changes = changesOf(text, ordered(text, std::move(edits)));
    if (changes.empty()) {
        return "";
    }
    DiffWriter writer(text);
    const Change* const end = changes.data() + changes.size();
    for (const Change* first = changes.data(); first != end;) {
        const Change* last = first;
        while (last + 1 != end && isNear(text, *last, last[1])) {
            ++last;
        }
        writer.add(first, last, last + 1 != end ? last[1].begin : text.size());
        first = last + 1;
    }
    return "--- " + std::string(name) + "\n+++ " + std::string(name) + '\n' + writer.text();
}

}  // namespace rfu

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "check/findingWriter.h"
#include "check/sourceLines.h"
#include "support/output.h"
#include "support/text.h"

#include <unistd.h>

namespace rfu::command {

namespace {

constexpr std::size_t kBefore = 40;  // bytes of a line that are shown ahead of a place
constexpr std::size_t kBehind = 80;  // and behind it

/// As NO_COLOR, https://no-color.org, and terminals without colours want it.
bool wantsColor() {
    const char* const off = std::getenv("NO_COLOR");
    const char* const terminal = std::getenv("TERM");
    return (off == nullptr || *off == '\0') &&
           (terminal == nullptr || std::string_view(terminal) != "dumb");
}

const char* colorOf(Severity severity) {
    return severity == Severity::Error     ? "\x1b[1;31m"
           : severity == Severity::Warning ? "\x1b[1;35m"
                                           : "\x1b[1;36m";
}

bool isInsideCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// A part of a line as a terminal shows it.
std::string shown(std::string_view part) {
    std::string text(part);
    std::replace(text.begin(), text.end(), '\t', ' ');
    return printable(text);
}

/// The line around a column, and a caret below it.
std::string sourceOf(std::string_view line, long long column, const char* color,
                     const char* plain) {
    const std::size_t at = std::min(static_cast<std::size_t>(column - 1), line.size());
    std::size_t begin = at > kBefore ? at - kBefore : 0;
    while (begin < at && isInsideCharacter(line[begin])) {
        ++begin;
    }
    std::size_t end = std::min(at + kBehind, line.size());
    while (end < line.size() && isInsideCharacter(line[end])) {
        ++end;
    }
    const std::string before = (begin > 0 ? "..." : "") + shown(line.substr(begin, at - begin));
    return "  " + before + shown(line.substr(at, end - at)) + (end < line.size() ? "..." : "") +
           "\n  " + std::string(widthOf(before), ' ') + color + '^' + plain + '\n';
}

class TextFindings : public FindingWriter {
public:
    void add(const CheckedFile& file) override {
        std::optional<SourceLines> source;
        if (isTerminal_) {
            source.emplace(file.file);
        }
        for (const Finding& finding : listedFindings(file)) {
            output_.write(lineOf(finding));
            const auto line = source && finding.line > 0 && finding.column > 0
                                  ? source->line(finding.line)
                                  : std::nullopt;
            if (line) {
                output_.write(sourceOf(*line, finding.column, color("\x1b[1;32m"), plain()));
            }
        }
    }
    void finish() override {}

private:
    const char* color(const char* code) const { return hasColor_ ? code : ""; }
    const char* plain() const { return color("\x1b[0m"); }

    /// What has no place in a line stands at its begin, and of the file as a whole at that of the file.
    std::string lineOf(const Finding& finding) const {
        return printable(finding.file.toStdString()) + ':' +
               std::to_string(std::max(finding.line, 1LL)) + ':' +
               std::to_string(std::max(finding.column, 1LL)) + ": " +
               color(colorOf(finding.severity)) + nameOf(finding.severity) + plain() + ": " +
               printable(finding.text) + " [" + std::string(finding.rule) + "]\n";
    }

    Output& output_ = standardOutput();
    bool isTerminal_ = ::isatty(STDOUT_FILENO) == 1;
    bool hasColor_ = isTerminal_ && wantsColor();
};

}  // namespace

std::unique_ptr<FindingWriter> textFindings() {
    return std::make_unique<TextFindings>();
}

}  // namespace rfu::command

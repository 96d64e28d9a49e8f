#include "analysis/maps/mendLines.h"

#include <rfUtils/detail/saturate.h>
#include <algorithm>
#include <cstdint>
#include <utility>

#include "analysis/support/numbers.h"

namespace rfu {

MendLines::MendLines(std::string_view file, const RuleNames& ignored)
    : file_(file), ignored_(ignored), text_(file) {
    for (std::size_t begin = 0; begin < file.size();) {
        const std::size_t end = std::min(file.find('\n', begin), file.size() - 1) + 1;
        lines_.push_back({begin, end});
        begin = end;
    }
    std::replace(text_.begin(), text_.end(), '\n', '\0');
}

void MendLines::replace(const char* begin, const char* end, std::string text) {
    mend_.edits.push_back({begin - text_.c_str(), end - begin, std::move(text)});
}

void MendLines::doubt(const LineSpan& line, std::string text) {
    const auto found =
        std::lower_bound(lines_.begin(), lines_.end(), line.begin,
                         [](const LineSpan& known, std::size_t at) { return known.begin < at; });
    mend_.doubts.push_back({found - lines_.begin() + 1, std::move(text)});
}

std::optional<std::string> shortened(const detail::RawToken& token) {
    const auto value = token.isCut() ? parseNumber(writtenText(token)) : std::nullopt;
    const bool isMisread = value && (detail::toFloat(*value) < singleOf(token) ||
                                     detail::toFloat(*value) > singleOf(token));
    return isMisread ? std::optional(shortest(*value)) : std::nullopt;
}

void shortenNumbers(MendLines& lines, const LineSpan& line) {
    const char* cursor = lines.text(line);
    while (lines.mends("token-cut")) {
        const detail::RawToken token = detail::nextRawToken(cursor);
        if (token.atLineEnd()) {
            return;
        }
        if (auto fewer = shortened(token)) {
            lines.replace(token, std::move(*fewer));
        }
    }
}

}  // namespace rfu

#include "analysis/maps/mapMend.h"

#include <rfUtils/geo/detail/gridHeader.h>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "analysis/maps/ascMend.h"
#include "analysis/maps/mapLines.h"
#include "analysis/maps/mapRules.h"
#include "analysis/maps/mapWords.h"
#include "analysis/support/edits.h"
#include "analysis/support/numbers.h"
#include "analysis/support/plainText.h"
#include "analysis/support/words.h"

namespace rfu {

namespace {

/// Mends a text whatever its lines end in: a text that becomes another one as a whole is one edit.
Mend mendText(std::string_view bytes, const RuleNames& ignored,
              Mend (*mendPlain)(std::string_view, const RuleNames&)) {
    const auto plain = inPlainText(bytes, ignored);
    const std::string_view text = plain ? *plain : bytes;
    std::size_t mark = 0;
    while (text.substr(mark, kUtf8Mark.size()) == kUtf8Mark) {  // programs put one before another's
        mark += kUtf8Mark.size();
    }
    Mend mend = mendPlain(text.substr(mark), ignored);
    for (Edit& edit : mend.edits) {
        edit.offset += static_cast<std::int64_t>(mark);
    }
    if (mark > 0 && ignored.find(map_rules::kByteOrderMark.name) == ignored.end()) {
        mend.edits.push_back({0, static_cast<std::int64_t>(mark), ""});
    }
    if (plain) {
        mend.edits = {
            {0, static_cast<std::int64_t>(bytes.size()), withEdits(text, std::move(mend.edits))}};
    }
    return mend;
}

Mend mendNumbers(std::string_view text, const RuleNames& ignored) {
    MendLines lines(text, ignored);
    for (const LineSpan& line : lines.lines()) {
        shortenNumbers(lines, line);
    }
    return lines.take();
}

constexpr std::size_t kHeaderTokens = 2;

/// The keys that the loader reads, and those that it ignores for good, which are no others misspelt.
const std::vector<std::string_view> kHdrKeys = {
    "NCOLS",        "NROWS",  "ULXMAP", "ULYMAP",    "XDIM", "NODATA", detail::kPixelTypeKey,
    "BYTEORDER",    "LAYOUT", "NBANDS", "SKIPBYTES", "YDIM", "NBITS",  "BANDROWBYTES",
    "TOTALROWBYTES"};
constexpr std::size_t kHdrKeysRead = 7;

struct HdrLine {
    LineSpan line;
    MapToken key;
    MapToken value;
    MeantKey meant;
};

std::vector<HdrLine> hdrLinesOf(const MendLines& lines) {
    std::vector<HdrLine> header;
    for (const LineSpan& line : lines.lines()) {
        std::vector<MapToken> tokens = tokensOf(lines.text(line), kHeaderTokens + 1);
        const auto meant =
            tokens.size() == kHeaderTokens ? meantKey(tokens[0].text, kHdrKeys) : std::nullopt;
        if (meant && meant->index < kHdrKeysRead) {
            header.push_back({line, std::move(tokens[0]), std::move(tokens[1]), *meant});
        }
    }
    return header;
}

Mend mendHdr(std::string_view text, const RuleNames& ignored) {
    MendLines lines(text, ignored);
    const std::vector<HdrLine> header = hdrLinesOf(lines);
    std::map<std::size_t, int> counts;
    for (const HdrLine& line : header) {
        ++counts[line.meant.index];
    }
    for (const HdrLine& line : header) {
        const std::string key(kHdrKeys[line.meant.index]);
        const bool isPixelType = key == detail::kPixelTypeKey;
        const bool isAlone = counts[line.meant.index] == 1;
        const bool isSpelled = line.key.text == key;
        if (!isSpelled && !lines.mends(ruleOf(line.meant))) {
            continue;
        }
        if (!isSpelled && line.meant.isSameWord && !isAlone) {
            lines.doubt(line.line, line.key.text + " is meant to be " + key +
                                       ", which stands in another line too");
        } else if (!isSpelled && isAlone &&
                   (line.meant.isSameWord || parseNumber(line.value.text))) {
            lines.replace(line.key.raw, key);
        } else if (!isSpelled) {
            continue;
        }
        if (isPixelType && line.value.text != "FLOAT" && isSameWord(line.value.text, "FLOAT") &&
            lines.mends("value-case")) {
            lines.replace(line.value.raw, "FLOAT");
        }
        if (auto fewer = shortened(line.value.raw);
            fewer && lines.mends(map_rules::kTokenCut.name)) {
            lines.replace(line.value.raw, std::move(*fewer));
        }
    }
    return lines.take();
}

/// A key of a TAB file, and the only word for its value that is read, if there is one, with the rule of its spelling.
struct TabKey {
    std::string_view key;
    std::size_t tokens;
    std::string_view word;
    std::string_view rule;
};

// clang-format off
constexpr TabKey kTabKeys[] = {
    {"Type",     2,  "RASTER", "type-not-supported"},
    {"File",     2,  "",       ""},
    {"Units",    2,  "degree", "not-utm"},
    {"CoordSys", 11, "",       ""}};
// clang-format on

constexpr std::size_t kMaxTabTokens = 11;

/// Null for a line of another key, or with another number of values.
const TabKey* tabKey(const std::vector<MapToken>& tokens) {
    const auto* const found =
        std::find_if(std::begin(kTabKeys), std::end(kTabKeys), [&](const TabKey& known) {
            return tokens.size() == known.tokens && isSameWord(tokens[0].text, known.key);
        });
    return found != std::end(kTabKeys) ? found : nullptr;
}

/// The lines that are no comments, by what they are.
std::vector<std::pair<LineSpan, const TabKey*>> tabLinesOf(const MendLines& lines) {
    std::vector<std::pair<LineSpan, const TabKey*>> found;
    for (const LineSpan& line : lines.lines()) {
        if (lines.text(line)[0] != '!') {
            found.emplace_back(line, tabKey(tokensOf(lines.text(line), kMaxTabTokens + 1)));
        }
    }
    return found;
}

Mend mendTab(std::string_view text, const RuleNames& ignored) {
    MendLines lines(text, ignored);
    const auto tabLines = tabLinesOf(lines);
    std::map<const TabKey*, int> counts;
    for (const auto& [line, known] : tabLines) {
        ++counts[known];
    }
    for (const auto& [line, known] : tabLines) {
        shortenNumbers(lines, line);
        if (known == nullptr) {
            continue;
        }
        const std::vector<MapToken> tokens = tokensOf(lines.text(line), 2);
        const bool isSpelled = tokens[0].text == known->key;
        if (!isSpelled && !lines.mends(map_rules::kKeyCase.name)) {
            continue;
        }
        if (!isSpelled && counts[known] > 1) {
            lines.doubt(line, tokens[0].text + " is meant to be " + std::string(known->key) +
                                  ", which stands in another line too");
        } else if (!isSpelled) {
            lines.replace(tokens[0].raw, std::string(known->key));
        }
        if (tokens[1].text != known->word && isSameWord(tokens[1].text, known->word) &&
            lines.mends(known->rule)) {
            lines.replace(tokens[1].raw, '"' + std::string(known->word) + '"');
        }
    }
    return lines.take();
}

}  // namespace

Mend mendAscFile(std::string_view bytes, const RuleNames& ignored) {
    return mendText(bytes, ignored, mendAsc);
}

Mend mendHdrFile(std::string_view bytes, const RuleNames& ignored) {
    return mendText(bytes, ignored, mendHdr);
}

Mend mendClrFile(std::string_view bytes, const RuleNames& ignored) {
    return mendText(bytes, ignored, mendNumbers);
}

Mend mendTabFile(std::string_view bytes, const RuleNames& ignored) {
    return mendText(bytes, ignored, mendTab);
}

}  // namespace rfu

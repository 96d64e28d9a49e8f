#include "analysis/maps/bilCheck.h"

#include <rfUtils/detail/saturate.h>
#include <QFile>
#include <QTextCodec>
#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/maps/headerCheck.h"
#include "analysis/maps/mapLines.h"
#include "analysis/maps/mapRules.h"
#include "analysis/support/files.h"
#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "analysis/support/singles.h"
#include "analysis/support/words.h"

namespace rfu {

namespace {

constexpr Rule kHdrRules[] = {
    map_rules::kLineCut,
    map_rules::kTextAfterNul,
    map_rules::kTokenCut,
    map_rules::kNoNumber,
    map_rules::kNoWholeNumber,
    map_rules::kNumberInfinite,
    map_rules::kKeyCase,
    map_rules::kKeyNeedsOneValue,
    map_rules::kKeyUnknown,
    map_rules::kKeyRepeated,
    {"value-case", Severity::Error,
     "PIXELTYPE FLOAT makes the loader read the cells as floats, in capitals only. With any other "
     "value the grid counts "
     "as one of integers, and no cell is read.",
     "PIXELTYPE float", "Write PIXELTYPE FLOAT."},
    map_rules::kSizeRefused,
    map_rules::kSizeUnusable,
    map_rules::kCellSize,
    {"layout-not-read", Severity::Error,
     "The loader reads one band of rows of little-endian singles from the start of the file, in "
     "square cells, whatever "
     "the header says about bytes, bands and heights. A grid of another layout is garbled.",
     "BYTEORDER M",
     "Write the grid anew in this layout: gdal_translate -of EHdr -ot Float32, on a little-endian "
     "machine."},
    map_rules::kLineSkipped};

constexpr Rule kBilRules[] = {
    {"cells-missing", Severity::Error,
     "The file is shorter than its header says. The missing cells become no-data.",
     "a file of 12 bytes with a header of 2 columns and 2 rows",
     "Copy the file again, or correct NCOLS and NROWS."},
    {"cells-left-over", Severity::Warning,
     "The file is longer than its header says. The rest is not read.",
     "a file of 20 bytes with a header of 2 columns and 2 rows",
     "Correct NCOLS and NROWS if they are wrong: each cell takes 4 bytes."},
    {"unicode-mark", Severity::Error,
     "The loader decodes the cells as text. Where the first bytes are a mark of Unicode text (FF "
     "FE, FE FF, EF BB BF or "
     "00 00 FE FF) they are dropped and the cells are garbled.",
     "a first cell of the bytes FF FE 00 00",
     "Change the first cell, to the no-data value for example."}};

constexpr qint64 kCellBytes = 4;
constexpr std::size_t kHeaderTokens = 2;
constexpr char kFloatPixels[] = "FLOAT";

std::string rowBytes(const HeaderCheck& header) {
    return std::to_string(kCellBytes * header.columns());
}

std::string cellHeight(const HeaderCheck& header) {
    return textOf(header.cellSize());
}

/// A key that the loader ignores, for it reads grids of one layout only.
struct LayoutKey {
    std::string_view key;
    bool ofFloats;  // whether it matters for floats alone
    const char* wanted;
    std::string (*wantedOf)(const HeaderCheck&);  // where it depends on the header
};

// clang-format off
constexpr LayoutKey kLayout[] = {
    {"BYTEORDER",     false, "I",     nullptr},
    {"LAYOUT",        false, "BIL",   nullptr},
    {"NBANDS",        false, "1",     nullptr},
    {"SKIPBYTES",     false, "0",     nullptr},
    {"YDIM",          false, nullptr, cellHeight},
    {"NBITS",         true,  "32",    nullptr},
    {"BANDROWBYTES",  true,  nullptr, rowBytes},
    {"TOTALROWBYTES", true,  nullptr, rowBytes}};
// clang-format on

/// Null for other keys.
const LayoutKey* layoutKey(std::string_view word) {
    const auto* const found =
        std::find_if(std::begin(kLayout), std::end(kLayout),
                     [word](const LayoutKey& known) { return isSameWord(known.key, word); });
    return found != std::end(kLayout) ? found : nullptr;
}

bool isSameValue(std::string_view a, std::string_view b) {
    const auto x = parseNumberOfAnySize(a);
    const auto y = parseNumberOfAnySize(b);
    return x && y ? detail::toFloat(*x) == detail::toFloat(*y) : isSameWord(a, b);
}

/// The lines of a header, in the order in which the loader reads them.
class HdrWalk {
public:
    explicit HdrWalk(const QString& file)
        : findings_(file, kHdrRules),
          lines_(findings_, detail::kMaxHdrLine),
          header_(lines_, detail::kHdrHeader, "keys are in capitals") {}

    HdrCheck run() {
        const char* line = nullptr;
        while (!header_.isRefused() && (line = lines_.next()) != nullptr) {
            lines_.checkLength();
            lines_.checkNul();
            takeLine(tokensOf(line, kHeaderTokens + 1));
        }
        if (!header_.isRefused()) {
            header_.checkSize(findings_);
            checkLayout();
        }
        findings_.sort();
        return {std::move(findings_), header_.columns(),       header_.rows(), isFloat_,
                header_.hasNoData(),  header_.missingPlaces(), pixelTypeLine_};
    }

private:
    void takeLine(const std::vector<MapToken>& tokens) {
        if (tokens.size() == kHeaderTokens) {
            takeHeaderLine(tokens[0], tokens[1]);
        } else if (!tokens.empty() && (isMisspelt(tokens[0].text) || layoutKey(tokens[0].text))) {
            lines_.report("key-needs-one-value", tokens[0].raw.begin,
                          tokens[0].text + " is not read: a line is a key and a value" +
                              aboutDecimalComma(tokens));
        } else if (!tokens.empty()) {
            lines_.report("line-skipped", tokens[0].raw.begin,
                          "a line that is no key and value is not read");
        }
    }

    void takeHeaderLine(const MapToken& key, const MapToken& value) {
        if (key.text == detail::kPixelTypeKey) {
            header_.reportRepeated(detail::kPixelTypeKey, key.raw.begin);
            takePixelType(value);
        } else if (!header_.take(key, value) && layoutKey(key.text) == nullptr) {
            header_.reportIgnored(key, isMisspelt(key.text));
        }
    }

    void takePixelType(const MapToken& value) {
        isFloat_ = value.text == kFloatPixels;
        pixelTypeLine_ = lines_.number();
        if (!isFloat_ && isSameWord(value.text, kFloatPixels)) {
            lines_.report("value-case", value.raw.begin,
                          value.text + " is not read, only " + kFloatPixels);
        }
    }

    /// Whether a word is a key that the loader reads, in any case.
    bool isMisspelt(std::string_view word) const {
        return header_.isKey(word) || isSameWord(word, detail::kPixelTypeKey);
    }

    /// Goes through the lines once more, now that the header is known.
    void checkLayout() {
        Findings alreadyReported(findings_.file(), kHdrRules);
        MapLines lines(alreadyReported, detail::kMaxHdrLine);
        while (const char* const line = lines.next()) {
            const std::vector<MapToken> tokens = tokensOf(line, kHeaderTokens + 1);
            const LayoutKey* const layout =
                tokens.size() == kHeaderTokens ? layoutKey(tokens[0].text) : nullptr;
            if (layout == nullptr || (layout->ofFloats && !isFloat_)) {
                continue;
            }
            const std::string wanted =
                layout->wanted != nullptr ? layout->wanted : layout->wantedOf(header_);
            const std::string_view value = writtenText(tokens[1].raw);
            if (!isSameValue(value, wanted)) {
                findings_.add("layout-not-read", lines.number(), tokens[1].raw.begin - line + 1,
                              tokens[0].text + ' ' + std::string(value) +
                                  " is not read: the cells are read as with " + wanted);
            }
        }
    }

    Findings findings_;
    MapLines lines_;
    HeaderCheck header_;
    bool isFloat_ = false;
    long long pixelTypeLine_ = 0;
};

}  // namespace

RuleTable hdrRules() {
    return kHdrRules;
}

RuleTable bilRules() {
    return kBilRules;
}

HdrCheck checkHdr(const QString& file) {
    return HdrWalk(file).run();
}

Findings checkBil(const QString& file, const HdrCheck& header) {
    Findings findings(file, kBilRules);
    QFile cells;
    openRegular(cells, file);
    if (!header.isFloat) {
        return findings;
    }
    const qint64 needed = kCellBytes * header.columns * header.rows;
    const auto holds = [size = cells.size()](const char* unit) {
        return "holds " + std::to_string(size) + unit;
    };
    if (cells.size() < needed) {
        findings.add("cells-missing", holds(" bytes, while ") + std::to_string(header.columns) +
                                          " x " + std::to_string(header.rows) + " cells take " +
                                          std::to_string(needed));
    } else if (cells.size() > needed) {
        findings.add("cells-left-over",
                     holds(" bytes, of which ") + std::to_string(needed) + " are read");
    }
    // The loader takes a byte-order mark as the beginning of Unicode text and decodes it.
    if (QTextCodec::codecForUtfText(cells.peek(kCellBytes), nullptr) != nullptr) {
        findings.add("unicode-mark", "its first cell would be taken for the mark of Unicode text");
    }
    return findings;
}

}  // namespace rfu

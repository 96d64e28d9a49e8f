#include "analysis/support/plainText.h"

#include <QByteArray>
#include <QFile>
#include <algorithm>
#include <cstddef>

#include "analysis/support/compression.h"
#include "analysis/support/files.h"

namespace rfu {

namespace {

constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";

bool hasUtf16Mark(std::string_view bytes) {
    return bytes.substr(0, 2) == kLittleEndianMark || bytes.substr(0, 2) == kBigEndianMark;
}

constexpr std::size_t kSeen = 4096;

/// Whether a text is UTF-16: letters of ASCII have a NUL beside them, some behind a mark, without one all.
bool isUtf16(std::string_view bytes) {
    constexpr std::size_t kSeenWithoutMark = 64;
    if (hasUtf16Mark(bytes)) {
        return bytes.size() == 2 || bytes.substr(0, kSeen).find('\0') != std::string_view::npos;
    }
    const std::size_t characters = std::min(bytes.size(), kSeenWithoutMark) / 2;
    std::size_t nuls[2] = {};
    for (std::size_t i = 0; i < 2 * characters; ++i) {
        nuls[i % 2] += bytes[i] == '\0' ? 1 : 0;
    }
    const auto [few, many] = std::minmax(nuls[0], nuls[1]);
    return characters >= 2 && many == characters && few < many;
}

/// Whether every half of a surrogate pair has its other one, no character is a NUL, and most are of ASCII, as in files
/// of numbers: other bytes, taken for UTF-16, give characters of any kind.
bool isWholeText(const QString& text) {
    int beyondAscii = 0;
    for (int i = 0; i < text.size(); ++i) {
        if (text[i].isNull() || text[i].isLowSurrogate()) {
            return false;
        }
        beyondAscii += text[i].unicode() >= 0x80 ? 1 : 0;
        if (text[i].isHighSurrogate()) {
            ++i;
            if (i == text.size() || !text[i].isLowSurrogate()) {
                return false;
            }
        }
    }
    return 2 * beyondAscii <= text.size();
}

std::optional<std::string> fromUtf16(std::string_view bytes) {
    if (!hasUtf16Mark(bytes) || bytes.size() % 2 != 0) {
        return std::nullopt;
    }
    const bool isBigEndian = bytes.substr(0, 2) == kBigEndianMark;
    QString text;
    text.reserve(static_cast<int>(bytes.size() / 2));
    for (std::size_t i = 2; i < bytes.size(); i += 2) {
        const auto high = static_cast<unsigned char>(bytes[isBigEndian ? i : i + 1]);
        const auto low = static_cast<unsigned char>(bytes[isBigEndian ? i + 1 : i]);
        text += QChar(low, high);
    }
    return isWholeText(text) ? std::optional(text.toUtf8().toStdString()) : std::nullopt;
}

/// Looks, piece by piece, for lines that end in CR alone: no LF, and something behind a CR.
class LineEndSearch {
public:
    void add(std::string_view piece) {
        hasLf_ = hasLf_ || piece.find('\n') != std::string_view::npos;
        if (!hasCr_) {
            const std::size_t cr = piece.find('\r');
            hasCr_ = cr != std::string_view::npos;
            piece.remove_prefix(hasCr_ ? cr : piece.size());
        }
        hasTextBehind_ = hasTextBehind_ || piece.find_first_not_of('\r') != std::string_view::npos;
    }

    bool hasLf() const { return hasLf_; }
    bool isCr() const { return !hasLf_ && hasTextBehind_; }

private:
    bool hasLf_ = false;
    bool hasCr_ = false;
    bool hasTextBehind_ = false;
};

bool endsLinesInCr(std::string_view text) {
    LineEndSearch search;
    search.add(text);
    return search.isCr();
}

bool endsLinesInCr(QFile& file) {
    constexpr qint64 kPiece = 65536;
    LineEndSearch search;
    QByteArray piece;
    while (!search.hasLf() && !(piece = file.read(kPiece)).isEmpty()) {
        search.add(viewOf(piece));
    }
    return search.isCr();
}

bool has(const RuleNames& names, const Rule& rule) {
    return names.find(rule.name) != names.end();
}

}  // namespace

std::optional<Findings> notPlainText(const QString& file, const RuleTable& rules) {
    QFile text;
    openRegular(text, file);
    const QByteArray peeked = text.peek(static_cast<qint64>(kSeen));
    const std::string_view begin = viewOf(peeked);
    if (packingOf(begin) != nullptr) {
        return std::nullopt;
    }
    Findings findings(file, rules);
    if (isUtf16(begin)) {
        findings.add(kUtf16.name, 1, 1,
                     "UTF-16: the library reads bytes, and finds nothing in the file");
    } else if (endsLinesInCr(text)) {
        findings.add(kLineEnds.name, 1, 1,
                     "lines end in CR alone: the library reads the whole file as one line");
    } else {
        return std::nullopt;
    }
    return findings;
}

std::optional<std::string> inPlainText(std::string_view bytes, const RuleNames& ignored) {
    if (packingOf(bytes) != nullptr) {
        return std::nullopt;
    }
    std::optional<std::string> text;
    if (isUtf16(bytes)) {
        text = has(ignored, kUtf16) ? std::nullopt : fromUtf16(bytes);
        if (!text) {
            return std::nullopt;
        }
    }
    if (!has(ignored, kLineEnds) && endsLinesInCr(text ? *text : bytes)) {
        text = text ? text : std::string(bytes);
        std::replace(text->begin(), text->end(), '\r', '\n');
    }
    return text;
}

}  // namespace rfu

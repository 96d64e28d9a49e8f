#include "support/text.h"

#include <QString>
#include <QVector>

#include <cstddef>

#include "analysis/support/words.h"

namespace rfu::command {

namespace {

bool isPlainAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

/// QString::fromUtf8 drops a byte-order mark at the head, where it is a character of the text.
QString decoded(std::string_view text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    const bool isMarked = text.substr(0, kByteOrderMark.size()) == kByteOrderMark;
    return QString(isMarked ? 1 : 0, QChar(QChar::ByteOrderMark)) +
           QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

bool isControl(unsigned code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

/// Marks, embeddings, overrides and isolates of direction, the separators of lines and paragraphs,
/// and the byte-order mark, which nobody sees.
bool isLayoutControl(unsigned code) {
    return code == 0x061C || code == 0x200E || code == 0x200F ||
           (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069) ||
           code == QChar::ByteOrderMark;
}

/// "\n", "\t" or "\r", or the number in hexadecimal behind a lead.
std::string escapedCharacter(unsigned code, const char* lead, int digits) {
    switch (code) {
        case '\n':
            return "\\n";
        case '\t':
            return "\\t";
        case '\r':
            return "\\r";
        default:
            return lead +
                   QString::number(code, 16).rightJustified(digits, QLatin1Char('0')).toStdString();
    }
}

/// Valid UTF-8 in which whatever breaks a line or steers a terminal is escaped.
/// @param lead of control characters, whose numbers have so many digits
std::string withEscapes(std::string_view text, const char* lead, int digits) {
    std::string result;
    for (const unsigned code : decoded(text).toUcs4()) {
        if (isControl(code)) {
            result += escapedCharacter(code, lead, digits);
        } else if (isLayoutControl(code)) {
            result += escapedCharacter(code, "\\u", 4);
        } else {
            const auto character = static_cast<char32_t>(code);
            result += QString::fromUcs4(&character, 1).toStdString();
        }
    }
    return result;
}

}  // namespace

std::string shortened(std::string_view text, std::size_t width) {
    if (widthOf(text) <= width) {
        return std::string(text);
    }
    return decoded(text).left(static_cast<int>(width) - 1).toStdString() + "\u2026";
}

std::string validUtf8(std::string_view text) {
    return isPlainAscii(text) ? std::string(text) : decoded(text).toStdString();
}

std::string printable(std::string_view text) {
    return isPlainAscii(text) ? std::string(text) : withEscapes(text, "\\x", 2);
}

std::string jsonString(std::string_view text) {
    const std::string escaped = withEscapedQuotes(text);
    return '"' + (isPlainAscii(text) ? escaped : withEscapes(escaped, "\\u", 4)) + '"';
}

}  // namespace rfu::command

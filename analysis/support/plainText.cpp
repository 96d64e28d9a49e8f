#include "analysis/support/plainText.h"

#include <QByteArray>
#include <QString>
#include <algorithm>
#include <cstddef>

namespace rfu {

namespace {

constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";

/// Whether every half of a surrogate pair has its other one, and no character is a NUL.
bool isWholeText(const QString& text) {
    for (int i = 0; i < text.size(); ++i) {
        if (text[i].isNull() || text[i].isLowSurrogate()) {
            return false;
        }
        if (text[i].isHighSurrogate()) {
            ++i;
            if (i == text.size() || !text[i].isLowSurrogate()) {
                return false;
            }
        }
    }
    return true;
}

std::optional<std::string> fromUtf16(std::string_view bytes) {
    const bool isBigEndian = bytes.substr(0, 2) == kBigEndianMark;
    if ((!isBigEndian && bytes.substr(0, 2) != kLittleEndianMark) || bytes.size() % 2 != 0) {
        return std::nullopt;
    }
    QString text;
    text.reserve(static_cast<int>(bytes.size() / 2));
    for (std::size_t i = 2; i < bytes.size(); i += 2) {
        const auto high = static_cast<unsigned char>(bytes[isBigEndian ? i : i + 1]);
        const auto low = static_cast<unsigned char>(bytes[isBigEndian ? i + 1 : i]);
        text += QChar(low, high);
    }
    return isWholeText(text) ? std::optional(text.toUtf8().toStdString()) : std::nullopt;
}

bool endsLinesWithCr(std::string_view text) {
    return text.find('\r') != std::string_view::npos && text.find('\n') == std::string_view::npos;
}

}  // namespace

std::optional<std::string> inPlainText(std::string_view bytes) {
    std::optional<std::string> text = fromUtf16(bytes);
    if (endsLinesWithCr(text ? *text : bytes)) {
        text = text ? text : std::string(bytes);
        std::replace(text->begin(), text->end(), '\r', '\n');
    }
    return text;
}

}  // namespace rfu

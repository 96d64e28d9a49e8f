// Private to the catalogues: not installed, may change in any release.
#pragma once

#include <rfUtils/detail/regularFile.h>

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace rfu::detail {

/// The bytes of a file that may be plain; none where it cannot be read. Never of an external
/// platform's documents, whose format is that platform's affair, nor with an older Qt, which refuses
/// large ones.
inline QByteArray maybePlainBytes(const QString& path) {
#if defined(RFUTILS_EXTERNAL_PLATFORM) || QT_VERSION < QT_VERSION_CHECK(5, 15, 0)
    Q_UNUSED(path)
    return {};
#else
    RegularFile file(path);
    QByteArray bytes;
    return file.open() && file.readAll(bytes) ? bytes : QByteArray();
#endif
}

/// The length of the escape that begins here: of \" \\ \/ \b \f \n \r \t and of \u with a
/// character that is plain (see PlainJson); 0 where it is another. Looks no farther than the first
/// byte that does not fit.
int plainEscape(const char* at);

/// A text as it stands in plain JSON, with its escapes turned into what they stand for.
std::string unescaped(std::string_view text);

/// Steps through plain JSON, of which every reader makes the same, without a document in between: in
/// a third of the time and of the memory.
///
/// Plain are objects, arrays, texts, integers of at most nine digits, true, false and null. Texts
/// hold UTF-8 of at most three bytes a character without control characters and U+F000 to U+FFFF
/// (byte-order marks are among them), so that the order of their bytes is that of their characters;
/// keys hold no escapes. People and programs write such files; any other, well-formed or not, takes
/// a real JSON reader.
///
/// A step that does not find what it takes gives false, and the text is not plain. The NUL behind
/// the last byte is plain nowhere, so that no step leaves the text. A copy goes on from the same
/// place.
class PlainJson {
public:
    explicit PlainJson(const QByteArray& bytes)
        : at_(bytes.constData()), end_(bytes.constData() + bytes.size()) {}

    bool isAtEnd() {
        skipBlanks();
        return at_ == end_;
    }

    /// Takes an object, of which `takeValue(key)` takes the value of each member.
    template <typename TakeValue>
    bool takeObject(TakeValue takeValue) {
        return takeList('{', '}', [&] {
            std::string_view key;
            return takeQuoted(key, plainCharacter) && take(':') && takeValue(key);
        });
    }

    /// Takes an array, of which `takeElement()` takes each element.
    template <typename TakeElement>
    bool takeArray(TakeElement takeElement) {
        return takeList('[', ']', takeElement);
    }

    /// Takes a text as it stands between its quotes: see unescaped().
    bool takeText(std::string_view& text) {
        return takeQuoted(text, [](const char* at) {
            return *at == '\\' ? plainEscape(at) : plainCharacter(at);
        });
    }

    /// Takes nine digits at most. Where a number goes on behind them, in whatever way, the sign that
    /// ends a member is not found.
    bool takeInteger(std::int32_t& integer) {
        constexpr int kMostDigits = 9;  // any such number fits 32 bits
        const bool isNegative = take('-');
        if (!isNegative) {
            skipBlanks();
        }
        const char* const begin = at_;
        std::int32_t value = 0;
        while (isDigit(*at_) && at_ - begin < kMostDigits) {
            value = value * 10 + (*at_ - '0');
            ++at_;
        }
        const auto digits = at_ - begin;
        integer = isNegative ? -value : value;
        return digits > 0 && !(digits > 1 && *begin == '0');
    }

    /// Takes a text, or another value that is no object nor array, which gives a text without data.
    bool takeScalar(std::string_view& text) {
        skipBlanks();
        if (*at_ == '"') {
            return takeText(text);
        }
        text = std::string_view();
        std::int32_t integer = 0;
        return takeWord("true") || takeWord("false") || takeWord("null") || takeInteger(integer);
    }

private:
    static bool isDigit(char c) { return c >= '0' && c <= '9'; }

    static bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

    /// The length of the character of several bytes that begins here; 0 where it is not plain. Looks
    /// no farther than the first byte that does not fit, thus never behind a NUL.
    static int plainCharacter(const char* at) {
        const auto first = static_cast<unsigned char>(at[0]);
        if (first < 0xC2 || first > 0xEE || !isContinuation(at[1])) {
            return 0;
        }
        if (first < 0xE0) {
            return 2;
        }
        const auto second = static_cast<unsigned char>(at[1]);
        const bool isOverlong = first == 0xE0 && second < 0xA0;
        const bool isSurrogate = first == 0xED && second > 0x9F;
        return !isOverlong && !isSurrogate && isContinuation(at[2]) ? 3 : 0;
    }

    void skipBlanks() {
        while (*at_ == ' ' || *at_ == '\n' || *at_ == '\r' || *at_ == '\t') {
            ++at_;
        }
    }

    bool takeWord(std::string_view word) {
        if (std::string_view(at_, static_cast<std::size_t>(end_ - at_)).substr(0, word.size()) !=
            word) {
            return false;
        }
        at_ += word.size();
        return true;
    }

    /// @param length of a character that is not plain ASCII, or 0
    template <typename Length>
    bool takeQuoted(std::string_view& text, Length length) {
        if (!take('"')) {
            return false;
        }
        const char* const begin = at_;
        while (*at_ != '"') {
            const bool isAscii = *at_ >= ' ' && *at_ < 0x7F && *at_ != '\\';
            const int bytes = isAscii ? 1 : length(at_);
            if (bytes == 0) {
                return false;
            }
            at_ += bytes;
        }
        text = std::string_view(begin, static_cast<std::size_t>(at_ - begin));
        ++at_;
        return true;
    }

    bool take(char sign) {
        skipBlanks();
        if (*at_ != sign) {
            return false;
        }
        ++at_;
        return true;
    }

    template <typename TakeOne>
    bool takeList(char first, char last, TakeOne takeOne) {
        if (!take(first)) {
            return false;
        }
        if (take(last)) {
            return true;
        }
        do {
            if (!takeOne()) {
                return false;
            }
        } while (take(','));
        return take(last);
    }

    const char* at_;
    const char* end_;
};

}  // namespace rfu::detail

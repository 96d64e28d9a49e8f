// Private to the library: not installed, may change in any release.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace rfu::detail {

/// Characters that count in a token; the rest is cut.
inline constexpr std::size_t kMaxTokenLength = 63;

enum class CharClass : unsigned char { Separator, Token, Quote, End };

/// The class of each byte of a line; letters are the ASCII ones whatever the locale is.
inline constexpr std::array<CharClass, 256> kCharClasses = [] {
    std::array<CharClass, 256> classes{};
    for (const char c : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                         "0123456789+-._")) {
        classes[static_cast<unsigned char>(c)] = CharClass::Token;
    }
    classes['"'] = CharClass::Quote;
    classes['\0'] = CharClass::End;
    return classes;
}();

constexpr CharClass classOf(char c) noexcept {
    return kCharClasses[static_cast<unsigned char>(c)];
}

/// A token in its line, quote characters included, or the end of the line.
struct RawToken {
    const char* begin;
    const char* end;
    std::size_t length;  // of its text: without quote characters, before it is cut

    bool atLineEnd() const noexcept { return length == 0; }
    bool hasQuotes() const noexcept { return length != static_cast<std::size_t>(end - begin); }
    bool isCut() const noexcept { return length > kMaxTokenLength; }
};

inline const char* skipSeparators(const char* cursor) noexcept {
    while (classOf(*cursor) == CharClass::Separator) {
        ++cursor;
    }
    return cursor;
}

/// Finds the end of a token from its first quote character on and adds the length of that text.
inline const char* endOfQuotedToken(const char* cursor, std::size_t& length) noexcept {
    bool inQuotes = false;
    for (;; ++cursor) {
        const CharClass kind = classOf(*cursor);
        if (kind == CharClass::End || (kind == CharClass::Separator && !inQuotes)) {
            return cursor;
        }
        if (kind == CharClass::Quote) {
            inQuotes = !inQuotes;
        } else {
            ++length;
        }
    }
}

/// Takes the next token of a NUL-terminated line and moves the cursor behind it. A pair of quotes
/// without text makes no token.
inline RawToken nextRawToken(const char*& cursor) noexcept {
    for (;;) {
        const char* const begin = skipSeparators(cursor);
        cursor = begin;
        while (classOf(*cursor) == CharClass::Token) {
            ++cursor;
        }
        auto length = static_cast<std::size_t>(cursor - begin);
        const bool hasQuotes = classOf(*cursor) == CharClass::Quote;
        if (hasQuotes) {
            cursor = endOfQuotedToken(cursor, length);
        }
        if (!hasQuotes || length > 0) {
            return {begin, cursor, length};
        }
    }
}

/// Writes the token's text, cut to kMaxTokenLength, and returns its length. `out` may be the
/// token's own place in the line.
inline std::size_t copyTokenText(const RawToken& token, char* out) noexcept {
    std::size_t length = 0;
    for (const char* c = token.begin; c != token.end && length < kMaxTokenLength; ++c) {
        if (*c != '"') {
            out[length++] = *c;
        }
    }
    return length;
}

/// The token's text. `buffer` is written if the token has quotes, and holds kMaxTokenLength characters
/// or is the token's own place in the line.
inline std::string_view tokenText(const RawToken& token, char* buffer) noexcept {
    if (token.hasQuotes()) {
        return {buffer, copyTokenText(token, buffer)};
    }
    return {token.begin, std::min(token.length, kMaxTokenLength)};
}

/// Walks over the tokens of a NUL-terminated line without copying them: each is a view that begins
/// at its RawToken. Quoted tokens are compacted in place, which changes no other token.
class Tokenizer {
public:
    explicit Tokenizer(char* line) noexcept : line_(line), cursor_(line) {}

    /// The next token; empty at the end of the line (no token is empty).
    std::string_view next() noexcept {
        const RawToken token = nextRawToken(cursor_);
        return tokenText(token, line_ + (token.begin - line_));
    }

    /// The end of the last token.
    const char* cursor() const noexcept { return cursor_; }

    /// Fills the table with the next tokens and returns how many there were, at most its capacity.
    template <std::size_t Capacity>
    std::size_t take(std::array<std::string_view, Capacity>& tokens) noexcept {
        std::size_t count = 0;
        while (count < Capacity && !(tokens[count] = next()).empty()) {
            ++count;
        }
        return count;
    }

private:
    char* line_;
    const char* cursor_;
};

}  // namespace rfu::detail

// Private to the library: not installed, may change in any release.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace rfu::detail {

/// Longest text of a token; what is longer is cut.
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

/// One token where it stands in its line, quote characters included.
struct RawToken {
    const char* begin;
    const char* end;
    bool quoted;  // holds quote characters, which are no part of the token's text

    bool atLineEnd() const noexcept { return begin == end; }
};

/// The rest of a token from its first quote character on; `length` characters of its text came
/// before it and are counted on.
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

/// The next token of a NUL-terminated line and moves the cursor behind it; atLineEnd() where none
/// is left. Quotes with nothing in them make no token.
inline RawToken nextRawToken(const char*& cursor) noexcept {
    for (;;) {
        while (classOf(*cursor) == CharClass::Separator) {
            ++cursor;
        }
        const char* const begin = cursor;
        while (classOf(*cursor) == CharClass::Token) {
            ++cursor;
        }
        if (classOf(*cursor) != CharClass::Quote) {
            return {begin, cursor, false};
        }
        auto length = static_cast<std::size_t>(cursor - begin);
        cursor = endOfQuotedToken(cursor, length);
        if (length > 0) {
            return {begin, cursor, true};
        }
    }
}

/// Writes the token's text, cut to kMaxTokenLength, and gives its length. `out` may be the place
/// where the token stands.
inline std::size_t copyTokenText(const RawToken& token, char* out) noexcept {
    std::size_t length = 0;
    for (const char* c = token.begin; c != token.end && length < kMaxTokenLength; ++c) {
        if (*c != '"') {
            out[length++] = *c;
        }
    }
    return length;
}

/// Walks over the tokens of a NUL-terminated line without copying them. Quoted tokens are compacted
/// where they stand, so the line changes, but no other token's text does.
class Tokenizer {
public:
    explicit Tokenizer(char* line) noexcept : line_(line), cursor_(line) {}

    /// The next token; empty at the end of the line (no token is empty).
    std::string_view next() noexcept {
        const RawToken token = nextRawToken(cursor_);
        if (token.quoted) {
            char* const text = line_ + (token.begin - line_);
            return {text, copyTokenText(token, text)};
        }
        const auto length = static_cast<std::size_t>(token.end - token.begin);
        return {token.begin, std::min(length, kMaxTokenLength)};
    }

    /// Moves to where the next token begins, or to the end of the line.
    const char* skipSeparators() noexcept {
        while (classOf(*cursor_) == CharClass::Separator) {
            ++cursor_;
        }
        return cursor_;
    }

    /// Goes on behind a token that was read where it stands.
    void continueAt(const char* tokenEnd) noexcept { cursor_ = tokenEnd; }

    /// Fills the table with the next tokens; gives how many there were, at most its capacity.
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

#include <rfUtils/catalogues/detail/choiceKey.h>
#include <rfUtils/catalogues/detail/plainCatalogue.h>

#include <QByteArray>

#include <iterator>
#include <string_view>
#include <utility>

namespace rfu::detail {

namespace {

bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// The length of the character of several bytes that begins here; 0 where it is not plain. Looks no
/// farther than the first byte that does not fit, thus never behind a NUL.
int plainCharacter(const char* at) {
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

/// Steps through the text of a plain catalogue. The NUL behind the last byte is plain nowhere, so
/// that no step leaves the text.
class PlainText {
public:
    explicit PlainText(const QByteArray& bytes)
        : at_(bytes.constData()), end_(bytes.constData() + bytes.size()) {}

    bool take(char sign) {
        skipBlanks();
        if (*at_ != sign) {
            return false;
        }
        ++at_;
        return true;
    }

    bool isAtEnd() {
        skipBlanks();
        return at_ == end_;
    }

    bool isAtText() {
        skipBlanks();
        return *at_ == '"';
    }

    bool takeText(std::string_view& text) {
        if (!take('"')) {
            return false;
        }
        const char* const begin = at_;
        while (*at_ != '"') {
            const bool isAscii = *at_ >= ' ' && *at_ < 0x7F && *at_ != '\\';
            const int length = isAscii ? 1 : plainCharacter(at_);
            if (length == 0) {
                return false;
            }
            at_ += length;
        }
        text = std::string_view(begin, static_cast<std::size_t>(at_ - begin));
        ++at_;
        return true;
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

private:
    static bool isDigit(char c) { return c >= '0' && c <= '9'; }

    void skipBlanks() {
        while (*at_ == ' ' || *at_ == '\n' || *at_ == '\r' || *at_ == '\t') {
            ++at_;
        }
    }

    const char* at_;
    const char* end_;
};

/// A member of a choice, and whether it was there. The last of several counts.
template <typename Value>
struct Member {
    Value value{};
    bool isThere = false;
};

struct Choice {
    Member<std::string_view> label;
    Member<std::string_view> id;
    Member<std::int32_t> enumValue;
    Member<std::int32_t> dispSeq;
};

class PlainReader {
public:
    explicit PlainReader(const QByteArray& bytes) : text_(bytes) {}

    std::optional<PlainCatalogue> read() {
        if (!text_.take('{') || !takeItems() || !text_.isAtEnd()) {
            return std::nullopt;
        }
        return std::move(catalogue_);
    }

private:
    bool takeItems() {
        if (text_.take('}')) {
            return true;
        }
        do {
            if (!takeItem()) {
                return false;
            }
        } while (text_.take(','));
        return text_.take('}');
    }

    bool takeItem() {
        std::string_view id;
        if (!text_.takeText(id) || !text_.take(':') || !text_.take('[')) {
            return false;
        }
        const auto [item, isNew] = catalogue_.items.try_emplace(std::string(id));
        if (!isNew || !takeChoices(item->first, item->second)) {
            return false;
        }
        ++catalogue_.arrays;
        return true;
    }

    bool takeChoices(const std::string& itemId, PlainCatalogue::Choices& choices) {
        if (text_.take(']')) {
            return true;
        }
        do {
            Choice choice;
            if (!takeChoice(choice)) {
                return false;
            }
            store(itemId, choice, choices);
        } while (text_.take(','));
        return text_.take(']');
    }

    bool takeChoice(Choice& choice) {
        if (!text_.take('{')) {
            return false;
        }
        if (text_.take('}')) {
            return true;
        }
        do {
            std::string_view key;
            if (!text_.takeText(key) || !text_.take(':') || !takeMember(key, choice)) {
                return false;
            }
        } while (text_.take(','));
        return text_.take('}');
    }

    bool takeMember(std::string_view key, Choice& choice) {
        if (key == "label") {
            return take(choice.label);
        }
        if (key == "id") {
            return take(choice.id);
        }
        if (key == "enum") {
            return take(choice.enumValue);
        }
        if (key == "dispSeq") {
            return take(choice.dispSeq);
        }
        std::string_view text;
        std::int32_t integer = 0;
        return text_.isAtText() ? text_.takeText(text) : text_.takeInteger(integer);
    }

    bool take(Member<std::string_view>& member) {
        member.isThere = true;
        return text_.takeText(member.value);
    }

    bool take(Member<std::int32_t>& member) {
        member.isThere = true;
        return text_.takeInteger(member.value);
    }

    /// A choice that lacks a member is no choice.
    static void store(const std::string& itemId, const Choice& choice,
                      PlainCatalogue::Choices& choices) {
        if (choice.label.isThere && choice.id.isThere && choice.enumValue.isThere &&
            choice.dispSeq.isThere) {
            subItem& stored = choices[choiceKey(choice.id.value)];
            stored.itemId = itemId;
            stored.id = choice.id.value;
            stored.label = choice.label.value;
            stored.enumValue = choice.enumValue.value;
            stored.dispSeq = choice.dispSeq.value;
        }
    }

    PlainText text_;
    PlainCatalogue catalogue_;
};

}  // namespace

std::optional<PlainCatalogue> readPlainCatalogue(const QByteArray& bytes) {
    auto catalogue = PlainReader(bytes).read();
    if (catalogue) {
        for (auto item = catalogue->items.begin(); item != catalogue->items.end();) {
            item = item->second.empty() ? catalogue->items.erase(item) : std::next(item);
        }
    }
    return catalogue;
}  // GCOVR_EXCL_LINE: reached by exceptions alone, which destroy the catalogue here

}  // namespace rfu::detail

#include <rfUtils/catalogues/detail/plainJson.h>

#include <QChar>

#include <array>

namespace rfu::detail {

namespace {

struct Escape {
    char letter;
    char meaning;
};

constexpr std::array<Escape, 8> kEscapes = {{{'"', '"'},
                                             {'\\', '\\'},
                                             {'/', '/'},
                                             {'b', '\b'},
                                             {'f', '\f'},
                                             {'n', '\n'},
                                             {'r', '\r'},
                                             {'t', '\t'}}};
constexpr int kShortEscape = 2;                 // bytes of \n
constexpr int kLongEscape = 6;                  // bytes of \u00b5
constexpr char16_t kFirstNotPlain = u'\uF000';  // byte-order marks and other special characters

const Escape* shortEscape(char letter) {
    for (const Escape& escape : kEscapes) {
        if (escape.letter == letter) {
            return &escape;
        }
    }
    return nullptr;
}

/// The value of a hexadecimal digit; -1 where it is none.
int hexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// The character of four hexadecimal digits; kFirstNotPlain where one of them is none.
char16_t hexCharacter(const char* digits) {
    unsigned character = 0;
    for (int i = 0; i < 4; ++i) {
        const int digit = hexDigit(digits[i]);
        if (digit < 0) {
            return kFirstNotPlain;
        }
        character = character * 16 + static_cast<unsigned>(digit);
    }
    return static_cast<char16_t>(character);
}

}  // namespace

int plainEscape(const char* at) {
    if (at[1] != 'u') {
        return shortEscape(at[1]) != nullptr ? kShortEscape : 0;
    }
    const char16_t character = hexCharacter(at + 2);
    return character < kFirstNotPlain && !QChar::isSurrogate(character) ? kLongEscape : 0;
}

std::string unescaped(std::string_view text) {
    std::string result;
    for (std::size_t backslash = text.find('\\'); backslash != std::string_view::npos;
         backslash = text.find('\\')) {
        result += text.substr(0, backslash);
        const char* const at = text.data() + backslash;
        if (at[1] == 'u') {
            result += QString(QChar(hexCharacter(at + 2))).toStdString();
        } else {
            result += shortEscape(at[1])->meaning;
        }
        text.remove_prefix(backslash + static_cast<std::size_t>(plainEscape(at)));
    }
    return result += text;
}

}  // namespace rfu::detail

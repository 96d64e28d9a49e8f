#include "analysis/support/words.h"

#include <algorithm>

namespace rfu {

namespace {

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

bool isSameWord(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lowered(x) == lowered(y); });
}

std::string withEscapedQuotes(std::string_view text) {
    std::string result;
    for (const char c : text) {
        result.append(c == '"' || c == '\\' ? 1 : 0, '\\').append(1, c);
    }
    return result;
}

}  // namespace rfu

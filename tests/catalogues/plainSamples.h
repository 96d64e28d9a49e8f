#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// What stands for a number in JSON: around the bounds of what is read without Qt's parser, and what
/// is no number at all.
inline constexpr const char* kNumbers[] = {
    "0",           "-0",         "7",          "-7",         "999999999",
    "-999999999",  "1000000000", "2147483647", "2147483648", "-2147483648",
    "-2147483649", "9999999999", "00",         "01",         "-01",
    "-",           "--1",        "- 1",        "+1",         "1.0",
    "1.5",         "1.",         "1e2",        "1E2",        "0e1",
    "0x1",         "1 2",        "",           "true",       "null",
    "\"1\"",       "[1]",        "{\"a\":1}",  " 5 ",        "\t5\r\n"};

/// What stands between the quotes of a text: bounds of the lengths in UTF-8, of surrogates and of
/// what is left to Qt's parser.
inline constexpr const char* kTexts[] = {"",
                                         " ",
                                         "~",
                                         "\x7F",
                                         "\t",
                                         "\x1F",
                                         "\\\"",
                                         "\\\\",
                                         "\\u00b5",
                                         "\\x",
                                         "\xC2\x80",
                                         "\xDF\xBF",
                                         "\xC0\x80",
                                         "\xC1\xBF",
                                         "\xC2",
                                         "\xC2 ",
                                         "\x80",
                                         "\xE0\xA0\x80",
                                         "\xE0\x9F\xBF",
                                         "\xE1\x80\x80",
                                         "\xE1\x80",
                                         "\xE1\x80 ",
                                         "\xE1 \x80",
                                         "\xEC\xBF\xBF",
                                         "\xED\x9F\xBF",
                                         "\xED\xA0\x80",
                                         "\xED\xBF\xBF",
                                         "\xEE\x80\x80",
                                         "\xEE\xBF\xBF",
                                         "\xEF\x80\x80",
                                         "\xEF\xBB\xBF",
                                         "\xEF\xBF\xBE",
                                         "\xEF\xBF\xBF",
                                         "\xF0\x90\x80\x80",
                                         "\xF4\x8F\xBF\xBF",
                                         "\xF5\x80\x80\x80",
                                         "\xFE",
                                         "\xFF",
                                         "a\xC2\xB5z",
                                         "\xE2\x84\xA6"};

/// Calls `use` with the text cut before and behind each byte, and with each byte that decides
/// something inserted and put in place of another.
template <typename Use>
void forEachChange(const std::string& base, Use use) {
    constexpr char kBytes[] = "\0\t\r {}[]\":,-+.019eEIi\\/\x1F\x7F\x80\xB5\xC2\xED\xEF\xFF";
    for (std::size_t at = 0; at <= base.size(); ++at) {
        use(base.substr(0, at));
        use(base.substr(at));
        for (const char byte : std::string_view(kBytes, sizeof kBytes - 1)) {
            std::string inserted = base;
            inserted.insert(at, 1, byte);
            use(inserted);
            if (at < base.size()) {
                std::string replaced = base;
                replaced[at] = byte;
                use(replaced);
            }
        }
    }
}

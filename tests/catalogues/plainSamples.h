#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

// Values and texts around the bounds of what is read without Qt's parser. The plain ones are read so.

inline constexpr const char* kPlainNumbers[] = {"0",         "-0",         "7",   "-7",
                                                "999999999", "-999999999", " 5 ", "\t5\r\n"};

/// Also what is no number at all.
inline constexpr const char* kOtherNumbers[] = {
    "1000000000", "2147483647", "2147483648", "-2147483648", "-2147483649", "9999999999", "00",
    "01",         "-01",        "-",          "- 1",         "--1",         "+1",         "1.0",
    "1.5",        "1.",         "1e2",        "1E2",         "0e1",         "0x1",        "1 2",
    "",           "\"1\"",      "[1]",        "{\"a\":1}"};

inline constexpr const char* kPlainWords[] = {"true", "false", "null"};

inline constexpr const char* kOtherWords[] = {"True", "tru", "truee", "falsefalse",
                                              "nul",  "n",   "nulll"};

/// What stands between the quotes of a text.
inline constexpr const char* kPlainTexts[] = {"",
                                              " ",
                                              "~",
                                              "a\xC2\xB5z",
                                              "\xC2\x80",
                                              "\xDF\xBF",
                                              "\xE0\xA0\x80",
                                              "\xE2\x84\xA6",
                                              "\xEC\xBF\xBF",
                                              "\xED\x9F\xBF",
                                              "\xEE\x80\x80",
                                              "\xEE\xBF\xBF",
                                              "\\\"",
                                              "\\\\",
                                              "\\/",
                                              "\\b\\f\\n\\r\\t",
                                              "\\u0000",
                                              "\\u0039",
                                              "\\u003A",
                                              "\\u00b5",
                                              "\\u00B5",
                                              "\\u2126",
                                              "\\uaAfF",
                                              "\\uD7FF",
                                              "\\uE000",
                                              "\\uEFFF",
                                              "a\\u00b5z\\\\u00b5\\u00B5"};

inline constexpr const char* kOtherTexts[] = {"\x7F",
                                              "\t",
                                              "\x1F",
                                              "\xC0\x80",
                                              "\xC1\xBF",
                                              "\xC2",
                                              "\xC2 ",
                                              "\x80",
                                              "\xE0\x9F\xBF",
                                              "\xE1\x80\x80",
                                              "\xE1\x80",
                                              "\xE1\x80 ",
                                              "\xE1 \x80",
                                              "\xED\xA0\x80",
                                              "\xED\xBF\xBF",
                                              "\xEF\x80\x80",
                                              "\xEF\xBB\xBF",
                                              "\xEF\xBF\xBE",
                                              "\xEF\xBF\xBF",
                                              "\xF0\x90\x80\x80",
                                              "\xF4\x8F\xBF\xBF",
                                              "\xF5\x80\x80\x80",
                                              "\xFE",
                                              "\xFF",
                                              "\\x",
                                              "\\a",
                                              "\\0",
                                              "\\'",
                                              "\\U00b5",
                                              "\\u",
                                              "\\u00b",
                                              "\\u00g5",
                                              "\\u00`5",
                                              "\\u00/5",
                                              "\\u00:5",
                                              "\\u00@5",
                                              "\\u00G5",
                                              "\\ug000",
                                              "\\u000",
                                              "\\uD800",
                                              "\\uDBFF",
                                              "\\uDC00",
                                              "\\uDFFF",
                                              "\\uD83D\\uDE00",
                                              "\\uF000",
                                              "\\uFEFF",
                                              "\\uFFFF",
                                              "\\"};

/// A list of samples of any length.
struct Samples {
    template <std::size_t Count>
    constexpr Samples(const char* const (&list)[Count]) : first(list), last(list + Count) {}

    const char* const* first;
    const char* const* last;
};

template <typename Use>
void forEachOf(std::initializer_list<Samples> lists, Use use) {
    for (const Samples& list : lists) {
        std::for_each(list.first, list.last, use);
    }
}

/// The same element so many times, with commas between.
inline std::string listOf(std::size_t count, const std::string& element) {
    std::string list = element;
    for (std::size_t i = 1; i < count; ++i) {
        list += ',' + element;
    }
    return list;
}

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

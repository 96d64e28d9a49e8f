// Catalogues and setups against a second JSON parser: the same bytes, read by nlohmann-json, and the
// rules of loading told again over its tree.
#include <support/messageLog.h>
#include <support/samples.h>
#include <support/tempFiles.h>

#include <rfUtils/catalogues/ResultSetup.h>
#include <rfUtils/catalogues/subItemList.h>

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

using nlohmann::json;
using rfu::test::Samples;

constexpr int kDocuments = 5000;

// ---------------------------------------------------------------- documents

/// Where a text or a key begins with a byte-order mark that is not escaped, Qt leaves the mark out.
bool beginsATextWithAMark(const std::string& document) {
    return document.find("\"\xEF\xBB\xBF") != std::string::npos;
}

/// Writes JSON as text, so that each value appears in every spelling that JSON has for it.
class Writer {
public:
    explicit Writer(Samples& samples) : samples_(samples) {}

    std::string document() {
        std::string text = samples_.below(50) == 0 ? "\xEF\xBB\xBF" : "";
        text += blanks() + object(samples_.below(5), [this] { return member(); }) + blanks();
        return text;
    }

private:
    std::string blanks() { return samples_.text(" \t\r\n", samples_.below(8) == 0 ? 3 : 0); }

    template <typename Part>
    std::string list(char open, std::uint64_t count, char close, Part part) {
        std::string text(1, open);
        for (std::uint64_t i = 0; i < count; ++i) {
            text += (i == 0 ? "" : ",") + blanks() + part() + blanks();
        }
        return text + close;
    }

    template <typename Part>
    std::string object(std::uint64_t count, Part part) {
        return list('{', count, '}', part);
    }

    template <typename Part>
    std::string array(std::uint64_t count, Part part) {
        return list('[', count, ']', part);
    }

    std::string member() {
        const std::string value = samples_.below(4) == 0
                                      ? anyValue(2)
                                      : array(samples_.below(6), [this] { return element(); });
        return key() + blanks() + ":" + blanks() + value;
    }

    /// A choice or a setup: most have all they need, in any order, and more.
    std::string element() {
        if (samples_.below(10) == 0) {
            return anyValue(2);
        }
        std::vector<std::string> members;
        for (const char* name : {"label", "id", "enum", "dispSeq"}) {
            if (samples_.below(12) == 0) {
                continue;
            }
            if (samples_.below(12) == 0) {  // stands twice: the last one counts
                members.push_back(quoted(name) + ":" + scalar());
            }
            const bool number = name[0] == 'e' || name[0] == 'd';
            const std::string usual = number ? this->number() : text();
            members.push_back(quoted(name) + blanks() + ":" +
                              (samples_.below(10) == 0 ? anyValue(2) : usual));
        }
        for (std::uint64_t extra = samples_.below(3); extra > 0; --extra) {
            members.push_back(key() + ":" + scalar());
        }
        std::rotate(
            members.begin(),
            members.begin() + static_cast<std::ptrdiff_t>(samples_.below(members.size() + 1)),
            members.end());
        std::size_t next = 0;
        return object(members.size(), [&] { return members[next++]; });
    }

    std::string anyValue(int depth) {
        switch (depth > 0 ? samples_.below(6) : 5) {
            case 0:
                return object(samples_.below(4),
                              [&] { return text() + ":" + anyValue(depth - 1); });
            case 1:
                return array(samples_.below(4), [&] { return anyValue(depth - 1); });
            case 2:
                return nested();
            default:
                return scalar();
        }
    }

    std::string nested() {
        const std::uint64_t depth = samples_.below(200);
        return std::string(depth, '[') + scalar() + std::string(depth, ']');
    }

    std::string scalar() {
        static const std::vector<std::string> kWords = {"true", "false", "null"};
        switch (samples_.below(3)) {
            case 0:
                return samples_.oneOf(kWords);
            case 1:
                return number();
            default:
                return text();
        }
    }

    std::string number() {
        static const std::vector<std::string> kNumbers = {"0",
                                                          "-0",
                                                          "1",
                                                          "-1",
                                                          "2.0",
                                                          "2e0",
                                                          "2.5",
                                                          "-2.5",
                                                          "1E3",
                                                          "12e-1",
                                                          "20e-1",
                                                          "1e+2",
                                                          "2147483647",
                                                          "2147483648",
                                                          "-2147483648",
                                                          "-2147483649",
                                                          "4294967296",
                                                          "2147483646.5",
                                                          "1e9",
                                                          "1e10",
                                                          "9007199254740993",
                                                          "18446744073709551616",

                                                          "1e308",
                                                          "-0.0",
                                                          "0.1e1",
                                                          "214748364.7e1",
                                                          "3.0000000000000001"};
        return samples_.below(2) == 0
                   ? samples_.oneOf(kNumbers)
                   : std::to_string(static_cast<int>(samples_.below(2000)) - 1000);
    }

    /// Some stand twice: the last one counts to both parsers. Between U+E000 to U+FFFF and the characters of pairs Qt's order depends on
    /// how they are spelled, so the former are in no key.
    std::string key() {
        if (samples_.below(3) == 0) {
            return quoted("item" + std::to_string(keys_++));
        }
        below_ = 0xE000;
        std::string result = text();
        below_ = 0x110000;
        return result;
    }

    /// A name with some of its ASCII letters escaped.
    std::string quoted(const std::string& name) {
        std::string text = "\"";
        for (const char c : name) {
            const auto unit = static_cast<unsigned char>(c);
            text += unit < 0x80 && samples_.below(20) == 0 ? escaped(unit) : std::string(1, c);
        }
        return text + '"';
    }

    std::string escaped(unsigned unit) {
        static const char* const kDigits[] = {"0123456789abcdef", "0123456789ABCDEF"};
        std::string text = "\\u";
        for (int shift = 12; shift >= 0; shift -= 4) {
            text += kDigits[samples_.below(2)][(unit >> shift) & 15U];
        }
        return text;
    }

    static std::string utf8(unsigned point) {
        const auto rest = [&](int shift) {
            return static_cast<char>(0x80U | ((point >> shift) & 63U));
        };
        if (point < 0x80) {
            return {static_cast<char>(point)};
        }
        if (point < 0x800) {
            return {static_cast<char>(0xC0U | point >> 6), rest(0)};
        }
        if (point < 0x10000) {
            return {static_cast<char>(0xE0U | point >> 12), rest(6), rest(0)};
        }
        return {static_cast<char>(0xF0U | point >> 18), rest(12), rest(6), rest(0)};
    }

    unsigned usable(unsigned p) const {
        return (p >= 0xD800 && p < 0xE000) || (p >= below_ && p < 0x10000) ? 'k' : p;
    }

    /// Any character but the halves of pairs.
    unsigned point() {
        static constexpr unsigned kSpecial[] = {
            0x00,  0x1F,   0x22,   0x2F,   0x5C,   0x7F,   0x80,   0x7FF,   0x800,   0xB5,
            0x131, 0xD7FF, 0xE000, 0xFEFF, 0xFFFD, 0xFFFE, 0xFFFF, 0x10000, 0x1F600, 0x10FFFF};
        switch (samples_.below(4)) {
            case 0:
                return usable(samples_.oneOf(kSpecial));
            case 1:
                return usable(static_cast<unsigned>(samples_.below(0x110000)));
            default:
                return static_cast<unsigned>(0x61 + samples_.below(26));
        }
    }

    std::string character() {
        static const std::vector<std::string> kShort = {"\\\"", "\\\\", "\\/", "\\b",
                                                        "\\f",  "\\n",  "\\r", "\\t"};
        const unsigned p = point();
        if (samples_.below(8) == 0) {
            return samples_.oneOf(kShort);
        }
        const bool plain = p >= 0x20 && p != '"' && p != '\\';
        if (plain && samples_.below(4) != 0) {
            return utf8(p);
        }
        if (p < 0x10000) {
            return escaped(p);
        }
        return escaped(0xD800 + ((p - 0x10000) >> 10)) + escaped(0xDC00 + ((p - 0x10000) & 0x3FFU));
    }

    /// Some ids are the same but for their capitals.
    std::string text() {
        static const std::vector<std::string> kIds = {"auto", "AUTO",     "Auto",     "man",
                                                      "Man",  "\xC3\xA4", "\xC3\x84", ""};
        if (samples_.below(3) == 0) {
            return quoted(samples_.oneOf(kIds));
        }
        std::string text = "\"";
        for (std::uint64_t length = samples_.below(6); length > 0; --length) {
            text += character();
        }
        return beginsATextWithAMark(text) ? "\"\"" : text + '"';
    }

    Samples& samples_;
    int keys_ = 0;
    unsigned below_ = 0x110000;
};

/// The text with a byte changed, left out or put in.
std::string damaged(Samples& samples, std::string text) {
    static const std::string kBytes = "{}[]\",:\\u0eE+-.1 \n\x01\x7F\xC3\xED\xF4";
    const std::size_t at = samples.below(text.size());
    switch (samples.below(3)) {
        case 0:
            text[at] = samples.oneOf(kBytes);
            break;
        case 1:
            text.erase(at, 1 + samples.below(3));
            break;
        default:
            text.insert(at, 1, samples.oneOf(kBytes));
    }
    return text;
}

// ---------------------------------------------------------------- the rules over the second tree

using Choices = std::unordered_map<std::string, subItem>;

std::string textOf(const json& value) {
    return value.is_string() ? value.get<std::string>() : std::string();
}

int codeOf(const json& value) {
    const double number = value.is_number() ? value.get<double>() : 0.0;
    const bool whole =
        number >= -2147483648.0 && number <= 2147483647.0 && std::trunc(number) == number;
    return whole ? static_cast<int>(number) : 0;
}

std::string upper(std::string text) {
    for (char& c : text) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return text;
}

bool hasAll(const json& element, std::initializer_list<const char*> names) {
    return element.is_object() && std::all_of(names.begin(), names.end(), [&](const char* name) {
               return element.contains(name);
           });
}

std::map<std::string, Choices> cataloguesOf(const json& document) {
    std::map<std::string, Choices> items;
    if (!document.is_object()) {
        return items;
    }
    for (const auto& [key, value] : document.items()) {
        if (!value.is_array()) {
            continue;
        }
        for (const json& element : value) {
            if (hasAll(element, {"label", "id", "enum", "dispSeq"})) {
                const std::string id = textOf(element["id"]);
                items[key][upper(id)] = {key, id, textOf(element["label"]), codeOf(element["enum"]),
                                         codeOf(element["dispSeq"])};
            }
        }
    }
    return items;
}

struct Setups {
    std::vector<std::pair<std::string, std::string>> list;  ///< ids and labels
    std::size_t messages = 0;
};

/// Groups go by their keys in ascending order, as the second tree has them.
Setups setupsOf(const json& document) {
    Setups setups;
    if (!document.is_object()) {
        return setups;
    }
    for (const auto& [key, value] : document.items()) {
        setups.messages += value.is_structured() ? 1 : 2;  // the key, and what is neither
        if (!value.is_array()) {
            continue;
        }
        for (const json& element : value) {
            if (hasAll(element, {"label", "id"})) {
                setups.list.emplace_back(textOf(element["id"]), textOf(element["label"]));
            } else {
                ++setups.messages;
            }
        }
    }
    return setups;
}

bool sameChoice(const subItem& a, const subItem& b) {
    return a.itemId == b.itemId && a.id == b.id && a.label == b.label &&
           a.enumValue == b.enumValue && a.dispSeq == b.dispSeq;
}

void expectCatalogue(const subItemList& list, const json& document) {
    const std::map<std::string, Choices> expected = cataloguesOf(document);
    for (const auto& [item, choices] : expected) {
        Choices got;
        ASSERT_TRUE(list.getSubItemsById(item, got)) << item;
        ASSERT_EQ(got.size(), choices.size()) << item;
        for (const auto& [key, choice] : choices) {
            ASSERT_EQ(got.count(key), 1U) << item << ", " << key;
            ASSERT_TRUE(sameChoice(got[key], choice)) << item << ", " << key;
        }
    }
    for (const auto& [key, value] : document.items()) {
        Choices none;
        ASSERT_EQ(list.getSubItemsById(key, none), expected.count(key) == 1) << key;
    }
}

void expectSetups(const ResultSetup& setups, const json& document) {
    const Setups expected = setupsOf(document);
    EXPECT_EQ(MessageLog::take().size(), expected.messages);
    const int count = static_cast<int>(expected.list.size());
    for (int i = 0; i < count; ++i) {
        const auto& [id, label] = expected.list[static_cast<std::size_t>(i)];
        ASSERT_EQ(setups.setupId(i).toStdString(), id) << i;
        ASSERT_EQ(setups.setupLabel(i).toStdString(), label) << i;
    }
    ASSERT_TRUE(setups.setupId(count).isNull());
}

class CrossJson : public testing::Test {
protected:
    /// Loads a text as catalogue and as setups and holds both against the second parser.
    void expectLoadedAlike(const std::string& text) {
        const std::string path = files.write("document.json", text);
        const json document = json::parse(text, nullptr, false);
        ASSERT_FALSE(document.is_discarded()) << text;
        expectFileLoadedAlike(path, document);
    }

    void expectFileLoadedAlike(const std::string& path, const json& document) {
        const MessageLog log;
        subItemList list;
        ASSERT_TRUE(list.loadJson(path));
        expectCatalogue(list, document);
        ResultSetup setups;
        ASSERT_TRUE(setups.loadJson(QString::fromStdString(path)));
        expectSetups(setups, document);
    }

    TempFiles files;
};

TEST_F(CrossJson, RandomDocuments) {
    Samples samples(20241210);
    Writer writer(samples);
    for (int i = 0; i < kDocuments && !HasFailure(); ++i) {
        const std::string text = writer.document();
        SCOPED_TRACE(text);
        expectLoadedAlike(text);
    }
}

// What the second parser takes, the library takes. The other way round it does not hold: Qt takes
// lone halves of pairs, for instance.
TEST_F(CrossJson, DamagedDocuments) {
    Samples samples(20241211);
    Writer writer(samples);
    int taken = 0;
    for (int i = 0; i < kDocuments && !HasFailure(); ++i) {
        const std::string text = damaged(samples, writer.document());
        SCOPED_TRACE(text);
        const json document = json::parse(text, nullptr, false);
        if (document.is_structured() && !beginsATextWithAMark(text)) {
            ++taken;
            expectLoadedAlike(text);
        }
    }
    EXPECT_GT(taken, kDocuments / 10);
    RecordProperty("taken", taken);
}

TEST_F(CrossJson, WhereTheParsersDiffer) {
    const auto refused = [](const std::string& text) {
        return json::parse(text, nullptr, false).is_discarded();
    };
    const auto load = [&](const std::string& text) {
        subItemList list;
        return list.loadJson(files.write("document.json", text));
    };
    const std::string half = R"({"a": ["\ud83d"]})";
    EXPECT_TRUE(refused(half));
    EXPECT_TRUE(load(half));
    const std::string tiny = R"({"a": [1e-400]})";
    EXPECT_FALSE(refused(tiny));
    EXPECT_FALSE(load(tiny));
    const std::string deep = std::string(1100, '[') + std::string(1100, ']');
    EXPECT_FALSE(refused(deep));
    EXPECT_FALSE(load(deep));

    const std::string marked = "{\"a\": [{\"id\": \"\xEF\xBB\xBFx\", \"label\": \"\\ufeffy\"}]}";
    const MessageLog log;
    ResultSetup setups;
    ASSERT_TRUE(setups.loadJson(QString::fromStdString(files.write("marked.json", marked))));
    EXPECT_EQ(setups.setupId(0).toStdString(), "x");
    EXPECT_EQ(setups.setupLabel(0).toStdString(), "\xEF\xBB\xBFy");
    EXPECT_EQ(json::parse(marked)["a"][0]["id"], "\xEF\xBB\xBFx");
}

TEST_F(CrossJson, SampleFiles) {
    for (const char* name : {"catalogue.json", "setups.json"}) {
        const std::string path = std::string(RFUTILS_SAMPLES "/") + name;
        std::ifstream file(path, std::ios::binary);
        const json document = json::parse(file, nullptr, false);
        ASSERT_TRUE(document.is_object()) << path;
        SCOPED_TRACE(path);
        expectFileLoadedAlike(path, document);
    }
}

}  // namespace

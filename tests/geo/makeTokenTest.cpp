#include <rfUtils/geo/veltaGEO.h>

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

/// A record between guard bytes, not cleared.
class MakeToken : public testing::Test {
protected:
    struct Guarded {
        unsigned char before[256];
        stPaser record;
        unsigned char after[256];
    };

    static constexpr unsigned char kGuard = 0xA5;

    MakeToken() { std::memset(static_cast<void*>(guarded.get()), kGuard, sizeof(Guarded)); }

    void TearDown() override {
        for (std::size_t i = 0; i < sizeof(Guarded::before); ++i) {
            ASSERT_EQ(guarded->before[i], kGuard);
            ASSERT_EQ(guarded->after[i], kGuard);
        }
    }

    std::vector<std::string> tokens(const std::string& line) {
        map->makeToken(&record(), line.c_str());
        std::vector<std::string> result;
        for (int i = 0; i < record().count; ++i) {
            result.emplace_back(record().token[i]);
        }
        return result;
    }

    stPaser& record() { return guarded->record; }

    std::unique_ptr<Guarded> guarded = std::make_unique<Guarded>();
    std::unique_ptr<veltaGEO> map = std::make_unique<veltaGEO>();
};

using Texts = std::vector<std::string>;

TEST_F(MakeToken, SplitsLines) {
    const struct {
        const char* why;
        const char* line;
        Texts expected;
    } kCases[] = {
        {"empty", "", {}},
        {"separators only", " \t,;=/\r\n", {}},
        {"key and value", "ncols 20", {"ncols", "20"}},
        {"runs of separators make no empty tokens", "  a ,, b  ", {"a", "b"}},
        {"tab, comma, equals and slash separate", "a\tb,c=d/e", {"a", "b", "c", "d", "e"}},
        {"signs, point and underscore belong to tokens",
         "-1.5 +2 NODATA_value . _",
         {"-1.5", "+2", "NODATA_value", ".", "_"}},
        {"exponents are one token", "1e-05 2E+3", {"1e-05", "2E+3"}},
        {"a decimal comma separates", "1,5", {"1", "5"}},
        {"case is kept", "aB Ab", {"aB", "Ab"}},
        {"a carriage return separates", "a\rb\r", {"a", "b"}},
        {"no letters beyond ASCII",
         "a\xE4"
         "b \xC3\xA4",
         {"a", "b"}},
        {"a mark at the start of a file separates", "\xEF\xBB\xBFncols 3", {"ncols", "3"}},
        {"quotes keep separators", "\"a b\"x", {"a bx"}},
        {"quotes open within a token", "a\"b c\"d", {"ab cd"}},
        {"two quoted stretches in one token", "\"a b\"\"c d\" e", {"a bc d", "e"}},
        {"every character but the quote belongs to it", "\"(1,\t=\xE4)\"", {"(1,\t=\xE4)"}},
        {"open quotes run to the end", "a \"b c", {"a", "b c"}},
        {"open quotes keep a last separator", "\"b ", {"b "}},
        {"quotes with nothing in them make no token", "\"\" a \"\" b \"\"", {"a", "b"}},
        {"a lone quote makes no token", "a \"", {"a"}},
        {"empty quotes do not end a token", "a\"\"b \"\"c", {"ab", "c"}},
        {"quotes with a blank make a token", "\" \"", {" "}},
        {"a point of a georeference",
         "(-69.5,10) (0,512) Label \"Pt 1\",",
         {"-69.5", "10", "0", "512", "Label", "Pt 1"}},
        {"a coordinate system",
         "CoordSys Earth Projection 8, 104, \"m\", -69, 0, 0.9996, 500000, 0",
         {"CoordSys", "Earth", "Projection", "8", "104", "m", "-69", "0", "0.9996", "500000", "0"}},
    };
    for (const auto& row : kCases) {
        EXPECT_EQ(tokens(row.line), row.expected) << row.why;
    }
}

TEST_F(MakeToken, KnowsTheClassOfEachCharacter) {
    const std::string members =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+-._";
    for (int code = 1; code < 256; ++code) {
        const char c = static_cast<char>(code);
        const bool member = members.find(c) != std::string::npos;
        EXPECT_EQ(tokens(std::string(1, c)), member ? Texts{std::string(1, c)} : Texts{}) << code;
        // in quotes every character but the quote is kept
        EXPECT_EQ(tokens("\"" + std::string(1, c)), c == '"' ? Texts{} : Texts{std::string(1, c)})
            << code;
    }
}

TEST_F(MakeToken, CutsTokensTo63Characters) {
    for (const std::size_t length : {62U, 63U, 64U, 65U, 128U, 5000U}) {
        const std::string text = std::string(length - 1, 'a') + 'b';
        const Texts expected = {text.substr(0, 63), "next"};
        EXPECT_EQ(tokens(text + " next"), expected) << length;
        EXPECT_EQ(tokens("\"" + text + "\" next"), expected) << length << " in quotes";
        EXPECT_EQ(tokens("next " + text), (Texts{"next", text.substr(0, 63)})) << length;
    }
    const std::string half(40, 'x');
    EXPECT_EQ(tokens(half + "\" \"" + half), Texts{half + " " + half.substr(0, 22)});
}

TEST_F(MakeToken, KeepsAtMost1024Tokens) {
    for (const int written : {1023, 1024, 1025, 1026, 5000}) {
        std::string line;
        for (int i = 0; i < written; ++i) {
            line += std::to_string(i) + ' ';
        }
        for (const std::string& text : {line, line.substr(0, line.size() - 1)}) {
            const Texts found = tokens(text);
            const int kept = written < 1024 ? written : 1024;
            ASSERT_EQ(record().count, kept) << written;
            EXPECT_EQ(found.front(), "0");
            EXPECT_EQ(found.back(), std::to_string(kept - 1));
        }
    }
}

TEST_F(MakeToken, FillsTheWholeRecordAndNothingBehindIt) {
    const std::string longToken(100, 'z');
    std::string line;
    for (int i = 0; i < 1100; ++i) {
        line += longToken + ' ';
    }
    const Texts found = tokens(line);
    ASSERT_EQ(found.size(), 1024U);
    for (const std::string& text : found) {
        EXPECT_EQ(text, std::string(63, 'z'));
    }
}

TEST_F(MakeToken, NeedsNoClearedRecord) {
    EXPECT_EQ(tokens("long words first"), (Texts{"long", "words", "first"}));
    EXPECT_EQ(tokens("a b"), (Texts{"a", "b"}));
    EXPECT_EQ(tokens(""), Texts{});
    EXPECT_EQ(record().count, 0);
}

TEST_F(MakeToken, LeavesUnusedEntriesAlone) {
    std::memset(static_cast<void*>(&record()), 0, sizeof(stPaser));
    tokens("a b");
    const std::string rest(reinterpret_cast<const char*>(record().token[2]), 1022 * 64);
    EXPECT_EQ(rest, std::string(1022 * 64, '\0'));
}

TEST_F(MakeToken, AnswersNullPointersByDoingNothing) {
    record().count = 7;
    map->makeToken(&record(), nullptr);
    EXPECT_EQ(record().count, 7);
    map->makeToken(nullptr, "a b");
    map->makeToken(nullptr, nullptr);
}

TEST_F(MakeToken, LeavesTheLineAsItIs) {
    std::string line = "a \"b c\"d \"\" \"e";
    const std::string before = line;
    map->makeToken(&record(), line.data());
    EXPECT_EQ(line, before);
}

}  // namespace

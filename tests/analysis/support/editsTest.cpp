#include "analysis/support/edits.h"

#include <gtest/gtest.h>
#include <support/samples.h>

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace rfu::test {
namespace {

std::string lines(int from, int to) {
    std::string text;
    for (int line = from; line <= to; ++line) {
        text += std::to_string(line) + '\n';
    }
    return text;
}

TEST(Edits, AreMadeInAnyOrder) {
    EXPECT_EQ(withEdits("abcdef", {}), "abcdef");
    EXPECT_EQ(withEdits("abcdef", {{4, 1, "EE"}, {0, 1, ""}, {6, 0, "!"}}), "bcdEEf!");
    EXPECT_EQ(withEdits("abcdef", {{2, 0, "x"}, {2, 2, ""}, {4, 0, "y"}}), "abxyef");
    EXPECT_EQ(withEdits("ab", {{1, 0, "1"}, {1, 0, "2"}}), "a12b");
    EXPECT_EQ(withEdits("", {{0, 0, "x"}}), "x");
}

TEST(Edits, ThatCannotAllBeMadeAreRefused) {
    const std::vector<Edit> kRefused[] = {{{0, 2, ""}, {1, 1, ""}},
                                          {{3, 1, ""}},
                                          {{-1, 1, ""}},
                                          {{0, -1, ""}},
                                          {{0, 3, ""}, {1, 0, ""}}};
    for (const std::vector<Edit>& edits : kRefused) {
        EXPECT_THROW(withEdits("abc", edits), std::logic_error);
        EXPECT_THROW(unifiedDiff("f", "abc", edits), std::logic_error);
    }
}

// As GNU diff -u writes them.
TEST(Edits, AreShownAsADiff) {
    const std::string text = lines(1, 20);
    const struct {
        const char* name;
        std::string text;
        std::vector<Edit> edits;
        std::string diff;
    } kRows[] = {
        {"none", text, {}, ""},
        {"one that changes nothing", text, {{0, 2, "1\n"}}, ""},
        {"two that change nothing together", "a\n", {{0, 1, ""}, {1, 0, "a"}}, ""},
        {"within a line", lines(1, 3), {{2, 1, "two"}}, "@@ -1,3 +1,3 @@\n 1\n-2\n+two\n 3\n"},
        {"twice in a line", "a b c\n", {{0, 1, "x"}, {4, 1, "y"}}, "@@ -1 +1 @@\n-a b c\n+x b y\n"},
        {"a line less", lines(1, 3), {{2, 2, ""}}, "@@ -1,3 +1,2 @@\n 1\n-2\n 3\n"},
        {"a line more", lines(1, 2), {{2, 0, "x\n"}}, "@@ -1,2 +1,3 @@\n 1\n+x\n 2\n"},
        {"two lines made one", lines(1, 3), {{1, 1, ""}}, "@@ -1,3 +1,2 @@\n-1\n-2\n+12\n 3\n"},
        {"one line made two", lines(1, 2), {{0, 0, "0\n0"}}, "@@ -1,2 +1,3 @@\n-1\n+0\n+01\n 2\n"},
        {"a first line", "", {{0, 0, "x\n"}}, "@@ -0,0 +1 @@\n+x\n"},
        {"no line left", "x\n", {{0, 2, ""}}, "@@ -1 +0,0 @@\n-x\n"},
        {"no line end",
         "a\nb",
         {{2, 1, "c"}},
         "@@ -1,2 +1,2 @@\n a\n-b\n\\ No newline at end of file\n+c\n\\ No newline at end of "
         "file\n"},
        {"a line end more",
         "a",
         {{1, 0, "\n"}},
         "@@ -1 +1 @@\n-a\n\\ No newline at end of file\n+a\n"},
        {"no line end behind the change",
         "a\nb",
         {{0, 1, "c"}},
         "@@ -1,2 +1,2 @@\n-a\n+c\n b\n\\ No newline at end of file\n"},
        {"three lines around",
         text,
         {{21, 2, "x"}},
         "@@ -8,7 +8,7 @@\n 8\n 9\n 10\n-11\n+x\n 12\n 13\n 14\n"},
        {"six lines between",
         text,
         {{2, 1, "x"}, {16, 1, "y"}},
         "@@ -1,12 +1,12 @@\n 1\n-2\n+x\n 3\n 4\n 5\n 6\n 7\n 8\n-9\n+y\n 10\n 11\n 12\n"},
        {"seven lines between",
         text,
         {{2, 2, ""}, {18, 2, "y"}},
         "@@ -1,5 +1,4 @@\n 1\n-2\n 3\n 4\n 5\n@@ -7,7 +6,7 @@\n 7\n 8\n 9\n-10\n+y\n 11\n 12\n "
         "13\n"},
        {"a line moved",
         lines(1, 4),
         {{0, 2, ""}, {6, 0, "1\n"}},
         "@@ -1,4 +1,4 @@\n-1\n 2\n 3\n+1\n 4\n"}};
    for (const auto& row : kRows) {
        EXPECT_EQ(unifiedDiff("f", row.text, row.edits),
                  row.diff.empty() ? "" : "--- f\n+++ f\n" + row.diff)
            << row.name;
    }
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> result;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size() - 1) + 1;
        result.push_back(text.substr(begin, end - begin));
        begin = end;
    }
    return result;
}

/// Applies a diff as `patch` does, but for places that do not fit: those fail.
std::string patched(const std::string& text, const std::string& diff) {
    const std::vector<std::string> old = linesOf(text);
    const std::vector<std::string> changes = linesOf(diff);
    std::size_t at = 0;
    std::vector<std::string> result;
    for (std::size_t i = 2; i < changes.size(); ++i) {
        const std::string& line = changes[i];
        if (line[0] == '@') {
            std::size_t first = 0;
            std::size_t count = 1;
            const bool hasCount = std::sscanf(line.c_str(), "@@ -%zu,%zu", &first, &count) == 2;
            const std::size_t begin = hasCount && count == 0 ? first : first - 1;
            EXPECT_GE(begin, at);
            for (; at < begin; ++at) {
                result.push_back(old.at(at));
            }
            continue;
        }
        std::string content = line.substr(1);
        if (i + 1 < changes.size() && changes[i + 1][0] == '\\') {
            content.pop_back();
        }
        if (line[0] == ' ' || line[0] == '-') {
            EXPECT_EQ(old.at(at), content);
            ++at;
        }
        if (line[0] == ' ' || line[0] == '+') {
            result.push_back(content);
        }
    }
    std::string patchedText;
    for (const std::string& line : result) {
        patchedText += line;
    }
    for (; at < old.size(); ++at) {
        patchedText += old[at];
    }
    return patchedText;
}

TEST(Edits, AreMadeByTheirDiff) {
    Samples samples(20261121);
    for (int i = caseCount() / 20; i > 0; --i) {
        const std::string text = samples.text("ab\n\n\n", 60);
        std::vector<Edit> edits;
        for (std::size_t at = 0; at <= text.size();) {
            const std::size_t length = std::min<std::size_t>(samples.below(3), text.size() - at);
            edits.push_back({static_cast<std::int64_t>(at), static_cast<std::int64_t>(length),
                             samples.text("ac\n", 3)});
            at += length + 1 + samples.below(30);
        }
        const std::string diff = unifiedDiff("f", text, edits);
        ASSERT_EQ(patched(text, diff), withEdits(text, edits))
            << testing::PrintToString(text) << '\n'
            << diff;
    }
}

}  // namespace
}  // namespace rfu::test

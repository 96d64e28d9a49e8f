#include "analysis/support/plainText.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace rfu {
namespace {

using namespace std::string_literals;

TEST(PlainText, ReadsUtf16WithAMark) {
    EXPECT_EQ(inPlainText("\xFF\xFE"s), "");
    EXPECT_EQ(inPlainText("\xFF\xFEn\0\n\0"s), "n\n");
    EXPECT_EQ(inPlainText("\xFE\xFF\0n\0\n"s), "n\n");
    EXPECT_EQ(inPlainText("\xFF\xFE\xE9\0\n\0"s), "\xC3\xA9\n");
    EXPECT_EQ(inPlainText("\xFE\xFF\xD8\x34\xDD\x1E"s), "\xF0\x9D\x84\x9E");
    EXPECT_EQ(inPlainText("\xFF\xFE"
                          "a\0\r\0b\0"s),
              "a\nb");
    EXPECT_EQ(inPlainText("\xFF\xFE"
                          "a\0\r\0\n\0"s),
              "a\r\n");
}

TEST(PlainText, LeavesWhatIsNotCertainlyUtf16) {
    EXPECT_EQ(inPlainText("n\0\n\0"s), std::nullopt) << "no mark";
    EXPECT_EQ(inPlainText("\xFF\xFEn\0\n"s), std::nullopt) << "half a character";
    EXPECT_EQ(inPlainText("\xFF\xFE\0\0n\0\0\0"s), std::nullopt) << "UTF-32";
    EXPECT_EQ(inPlainText("\xFF\xFEn\0\0\0"s), std::nullopt) << "a NUL";
    EXPECT_EQ(inPlainText("\xFE\xFF\xD8\x34\0n"s), std::nullopt) << "half a pair";
    EXPECT_EQ(inPlainText("\xFE\xFF\xDD\x1E"s), std::nullopt) << "the other half";
    EXPECT_EQ(inPlainText("\xFE\xFF\xD8\x34"s), std::nullopt) << "a pair cut in two";
}

TEST(PlainText, EndsLinesInLf) {
    EXPECT_EQ(inPlainText("a\rb\r"), "a\nb\n");
    EXPECT_EQ(inPlainText("a\r\rb"), "a\n\nb");
}

TEST(PlainText, LeavesOtherTexts) {
    for (const char* const text : {"", "a", "a\nb\n", "a\r\nb\r\n", "a\rb\n",
                                   "\xEF\xBB\xBF"
                                   "a"}) {
        EXPECT_EQ(inPlainText(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace rfu

#include "analysis/support/plainText.h"

#include <gtest/gtest.h>
#include <support/tempFiles.h>

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
    EXPECT_EQ(inPlainText("\xFE\xFF\xD8\x34\xDD\x1E\0ab"s.substr(0, 8)),
              "\xF0\x9D\x84\x9E"
              "a");
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
    EXPECT_EQ(inPlainText("\xFE\xFF\0n\xDD\x1E"s), std::nullopt) << "the other half";
    EXPECT_EQ(inPlainText("\xFE\xFF\0n\xD8\x34"s), std::nullopt) << "a pair cut in two";
    EXPECT_EQ(inPlainText("\xFF\xFEncols 4\r5 6 7\r"), "\xFF\xFEncols 4\n5 6 7\n") << "bytes";
    EXPECT_EQ(inPlainText("\xFF\xFE" + std::string(6, 'x') + "n\0"s), std::nullopt)
        << "hardly a letter of ASCII";
}

TEST(PlainText, LeavesWhatIsIgnored) {
    const std::string both =
        "\xFF\xFE"
        "a\0\r\0b\0"s;
    EXPECT_EQ(inPlainText(both, {"utf-16"}), std::nullopt);
    EXPECT_EQ(inPlainText(both, {"line-ends"}), "a\rb");
    EXPECT_EQ(inPlainText("a\rb", {"line-ends"}), std::nullopt);
    EXPECT_EQ(inPlainText("a\rb", {"utf-16"}), "a\nb");
}

TEST(PlainText, IsSaidToBeMissing) {
    constexpr Rule kRules[] = {kUtf16, kLineEnds};
    const TempFiles files;
    const auto found = [&](const std::string& bytes) -> std::string {
        const auto findings =
            notPlainText(QString::fromStdString(files.write("a.txt", bytes)), kRules);
        return findings ? std::string(findings->kept().at(0).rule) : "";
    };
    EXPECT_EQ(found("\xFF\xFE"), "utf-16");
    EXPECT_EQ(found("\xFF\xFE" + std::string(4000, 'x') + "n\0"s), "utf-16");
    EXPECT_EQ(found("n\0\r\0"s), "utf-16") << "no mark";
    EXPECT_EQ(found("\0n\0\n"s), "utf-16") << "no mark";
    EXPECT_EQ(found("n\0\rxy"s), "line-ends") << "one NUL";
    EXPECT_EQ(found("\xFF\xFEncols 4\n"), "") << "bytes";
    EXPECT_EQ(found(std::string(100, '\0')), "");
    EXPECT_EQ(found("a\rb"), "line-ends");
    EXPECT_EQ(found(std::string(65535, 'a') + "\rb"), "line-ends");
    EXPECT_EQ(found(std::string(65535, 'a') + "\r\n"), "");
    EXPECT_EQ(found("a\r\rb\n"), "");
    EXPECT_EQ(found("a\r\r"), "") << "nothing behind them";
    EXPECT_EQ(found(""), "");
    EXPECT_EQ(found("\x1F\x8B\rb"), "") << "compressed";
}

TEST(PlainText, EndsLinesInLf) {
    EXPECT_EQ(inPlainText("a\rb\r"), "a\nb\n");
    EXPECT_EQ(inPlainText("a\r\rb"), "a\n\nb");
}

TEST(PlainText, LeavesOtherTexts) {
    for (const char* const text :
         {"", "a", "a\r\r", "a\nb\n", "a\r\nb\r\n", "a\rb\n", "\xEF\xBB\xBFx"}) {
        EXPECT_EQ(inPlainText(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace rfu

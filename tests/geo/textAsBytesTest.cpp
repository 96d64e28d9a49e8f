#include <rfUtils/geo/detail/textAsBytes.h>

#include <support/codecStream.h>
#include <support/samples.h>

#include <gtest/gtest.h>

#include <QBuffer>
#include <QTextCodec>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

using rfu::detail::TextAsBytes;
using rfu::detail::utf8AsBytes;

namespace {

using namespace rfu::test;

constexpr std::size_t kBlock = 16384;  // that QTextStream decodes at once

/// Decodes between two buffers of exactly the text's size.
std::string decoded(const std::string& text) {
    const auto from = std::make_unique<char[]>(text.size());
    const auto to = std::make_unique<char[]>(text.size());
    std::copy(text.begin(), text.end(), from.get());
    const char* const end = utf8AsBytes(from.get(), from.get() + text.size(), to.get());
    return {static_cast<const char*>(to.get()), end};
}

TEST(Utf8AsBytes, DecodesWholeCharacters) {
    const struct {
        const char* why;
        std::string text;
        std::string expected;
    } kCases[] = {
        {"nothing", "", ""},
        {"ASCII", std::string("a\0\x7F", 3), std::string("a\0\x7F", 3)},
        {"the first and last character of ISO 8859-1", "\xC2\x80\xC3\xBF", "\x80\xFF"},
        {"the last of the first half, the first of the second", "\xC2\xBF\xC3\x80", "\xBF\xC0"},
        {"the first beyond it", "\xC4\x80", "?"},
        {"the last of two bytes", "\xDF\xBF", "?"},
        {"the first and last of three bytes", "\xE0\xA0\x80\xEF\xBF\xBF", "??"},
        {"the characters about the surrogates", "\xED\x9F\xBF\xEE\x80\x80", "??"},
        {"a byte-order mark within the text", "a\xEF\xBB\xBF", "a?"},
        {"the first and last of four bytes, halves of pairs", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF",
         "????"},
        {"characters behind each other", "x\xC3\xA9y\xE2\x82\xACz", "x\xE9y?z"},
    };
    for (const auto& row : kCases) {
        EXPECT_EQ(decoded(row.text), row.expected) << row.why;
    }
}

TEST(Utf8AsBytes, TakesInvalidBytesAlone) {
    const struct {
        const char* why;
        std::string text;
        std::string expected;
    } kCases[] = {
        {"a continuation alone", "\x80\xBF", "??"},
        {"leads of overlong sequences", "\xC0\x80\xC1\xBF", "????"},
        {"overlong with three bytes", "\xE0\x9F\xBF", "???"},
        {"overlong with four bytes", "\xF0\x8F\xBF\xBF", "????"},
        {"surrogates", "\xED\xA0\x80\xED\xBF\xBF", "??????"},
        {"beyond the last character", "\xF4\x90\x80\x80", "????"},
        {"leads that there are not", "\xF5\x80\x80\x80\xFF\xFE", "??????"},
        {"a lead without continuation",
         "\xC3"
         "a\xE2"
         "b\xF0"
         "c",
         "?a?b?c"},
        {"cut behind the second byte",
         "\xE2\x82"
         "a\xF0\x9F"
         "b",
         "??a??b"},
        {"cut behind the third byte",
         "\xF0\x9F\x98"
         "a",
         "???a"},
        {"cut by the end", "\xC3", "?"},
        {"cut by the end behind two", "\xE2\x82", "??"},
        {"cut by the end behind three", "\xF0\x9F\x98", "???"},
        {"leads in a row", "\xC3\xC3\xA9", "?\xE9"},
    };
    for (const auto& row : kCases) {
        EXPECT_EQ(decoded(row.text), row.expected) << row.why;
    }
}

/// Bytes of cells or of valid or invalid text.
std::string anyBytes(Samples& samples, std::size_t size) {
    static const std::vector<std::string> kPieces = {"a",
                                                     "0",
                                                     "\x7F",
                                                     "\xC2\x80",
                                                     "\xC3\xBF",
                                                     "\xC4\x80",
                                                     "\xE2\x82\xAC",
                                                     "\xEF\xBB\xBF",
                                                     "\xF0\x9F\x98\x80",
                                                     "\xC3",
                                                     "\xE2\x82",
                                                     "\xF0\x9F\x98",
                                                     "\xED\xA0\x80",
                                                     "\x80",
                                                     "\xFF"};
    const std::uint64_t style = samples.below(4);
    std::string bytes;
    while (bytes.size() < size) {
        const auto byte = static_cast<char>(samples.below(256));
        switch (style) {
            case 0:
                bytes += byte;
                break;
            case 1:  // no ASCII in a whole block
                bytes += static_cast<char>(static_cast<unsigned char>(byte) | 0x80U);
                break;
            case 2:
                bytes += samples.oneOf(kPieces);
                break;
            default:  // heights
                bytes += byte;
                bytes += static_cast<char>(samples.below(256));
                bytes += static_cast<char>(samples.below(64) + 0x60);
                bytes += samples.coin() ? 'D' : 'E';
                break;
        }
    }
    bytes.resize(size);
    return bytes;
}

class TextAsBytesOf : public testing::TestWithParam<const char*> {};

TEST_P(TextAsBytesOf, AreThoseOfTheTextStream) {
    QTextCodec* const codec = QTextCodec::codecForName(GetParam());
    ASSERT_NE(codec, nullptr);
    Samples samples(20241002);
    const std::size_t kSizes[] = {
        0,      1,          5,          100,        kBlock - 2,     kBlock - 1,
        kBlock, kBlock + 1, kBlock + 3, 2 * kBlock, 3 * kBlock + 2, 5 * kBlock + 77};
    const std::string kMarks[] = {"", "\xEF\xBB\xBF", "\xEF\xBB", "a\xEF\xBB\xBF",
                                  std::string(40, 'a') + "\xEF\xBB\xBF"};
    for (int round = caseCount() / 1000; round > 0; --round) {
        for (const std::size_t size : kSizes) {
            const std::string bytes = samples.oneOf(kMarks) + anyBytes(samples, size);
            QByteArray data(bytes.data(), static_cast<int>(bytes.size()));
            QBuffer first(&data);
            QBuffer second(&data);
            ASSERT_TRUE(first.open(QIODevice::ReadOnly) && second.open(QIODevice::ReadOnly));
            TextStream stream(&first);
            decodeBy(stream, codec);
            TextAsBytes text(second, *codec);
            const std::size_t most = samples.coin() ? 50 : 40000;
            for (bool ended = false; !ended;) {
                const auto wanted = static_cast<qint64>(samples.below(most) + 1);
                const QByteArray expected = stream.read(wanted).toLatin1();
                QByteArray got(static_cast<int>(wanted), '\0');
                got.resize(static_cast<int>(text.read(got.data(), wanted)));
                ASSERT_EQ(got, expected) << size << ' ' << round;
                ended = expected.size() < wanted;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Codecs, TextAsBytesOf,
                         testing::Values("UTF-8", "UTF-16", "windows-1252", "Shift_JIS",
                                         "GB18030"));

}  // namespace

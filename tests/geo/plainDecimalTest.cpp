#include <rfUtils/geo/detail/plainDecimal.h>

#include <support/cText.h>
#include <support/samples.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <memory>
#include <string>

using rfu::detail::PlainDecimal;
using rfu::detail::plainDecimal;

namespace {

using namespace rfu::test;

constexpr int kNotRead = -1;

struct Reading {
    double value;
    int length;  // of the number, or kNotRead
};

/// Reads at the start of a line in a buffer of exactly its size.
Reading read(const std::string& line) {
    const auto copy = std::make_unique<char[]>(line.size() + 1);
    std::copy(line.begin(), line.end(), copy.get());
    const PlainDecimal number = plainDecimal(copy.get(), copy.get() + line.size());
    return {number.value,
            number.end == nullptr ? kNotRead : static_cast<int>(number.end - copy.get())};
}

/// Texts behind a token: none, short ones, and one longer than the eight characters read at once.
const std::string kTails[] = {
    "", " ", "\r", ",7", " 123456789 987654321", std::string("\0007.5", 4)};

void expectReadAsByStrtod(const std::string& text) {
    for (const std::string& tail : kTails) {
        const Reading reading = read(text + tail);
        EXPECT_EQ(reading.length, static_cast<int>(text.size())) << text << '|' << tail;
        EXPECT_TRUE(same(reading.value, decimalOf(text)))
            << text << '|' << tail << std::hexfloat << ": " << reading.value;
    }
}

void expectNotRead(const std::string& text) {
    for (const std::string& tail : kTails) {
        EXPECT_EQ(read(text + tail).length, kNotRead) << text << '|' << tail;
    }
}

TEST(PlainDecimal, ReadsWhatStrtodReads) {
    const char* const kTexts[] = {
        // up to seven digits, with the point at every place
        "0", "7", "12", "123", "1234", "12345", "123456", "1234567", ".5", "5.", "1.5", "12.34",
        "123.456", "1234.56", "12345.6", "123456.", ".123456", "0.1", "0.2", "0.3", "0.7", "1.1",
        "2.675", "9.995", "4123.45", "00012", "000.010", "0.00000",
        // longer than the eight characters read at once
        "12345678", "1234567.", "1234567.8", "123456.78", ".1234567", "12345678.12345678",
        "000000001", "0000.00001", "999999999999999",
        // signs
        "-0", "-0.0", "-7", "-12.34", "-1234567", "-12345678", "-.5", "-5.", "-0e5",
        // exponents
        "1e0", "1E0", "1e5", "1e+5", "1e-5", "1.5e3", "1.e3", ".5e3", "-1.234567e-07",
        "1.234567E+07", "1e0005", "0e22", "0e-22",
        // the maximum of digits, and the largest exact mantissa
        "0000000000000000001", "9007199254740992", "9007199254740991", "-9007199254740992",
        "0.9007199254740992", "900719925474099.2", "9007199254740991e22", "9007199254740991e-22",
        "1e22", "1e-22", "1.5e-21", "9007199254740992e-22", "123456789012345e7",
        // halves between two singles, and their neighbours
        "16777217", "16777219", "33554434", "16777217.000001", "16777216.999999",
        "0.500000029802322", "0.500000029802323"};
    for (const char* const text : kTexts) {
        expectReadAsByStrtod(text);
    }
}

TEST(PlainDecimal, LeavesOtherTokensToDecimalPrefix) {
    const char* const kTexts[] = {
        // no digits
        "", "-", ".", "-.", "e5", "-e5", ".e5", "--7", "-+7",
        // a plus sign, words, hexadecimal
        "+7", "inf", "nan", "-inf", "0x1F", "0x1p3",
        // other characters behind the number in the same token
        "1_000", "1.2.3", "1.234567.8", "1.2345678.9", "12345678.1.2", "12a", "1234567a", "1-2",
        "12.3-", "12.34567-", "5\"6\"", "1.5\"", "12345678.5_", "1e5_", "1e5.5", "1e", "1e+", "1e-",
        "1.5ex",
        // more digits than 64 bits can hold in every case
        "00000000000000000001", "12345678901234567890", "0.0000000000000000001",
        // a mantissa or a power of ten that is not an exact double
        "9007199254740993", "-9007199254740993", "9007199254740992.5", "1e23", "1e-23", "0.1e-22",
        "10000000000e23", "0e23", "18446744073709551616e0",
        // exponents that may be cut with their token
        "1e00005", "1e-00005", "1e99999999999999999999",
        "1e00000000000000000000000000000000000000000000000000000000000007"};
    for (const char* const text : kTexts) {
        expectNotRead(text);
    }
}

TEST(PlainDecimal, ReadsAnyNumberAsStrtodOrNotAtAll) {
    Samples samples(20240930);
    const std::string kDigits = "0123456789";
    int taken = 0;
    for (int i = caseCount(); i > 0; --i) {
        const std::string text =
            (samples.coin() ? "-" : "") + samples.text(kDigits, samples.below(12)) +
            (samples.coin() ? "." : "") + samples.text(kDigits, samples.below(9)) +
            (samples.below(3) == 0
                 ? (samples.coin() ? "e" : "E") + samples.text("+-", 1) + samples.text(kDigits, 2)
                 : "");
        const Reading reading = read(text + (samples.coin() ? " 5" : ""));
        if (reading.length != kNotRead) {
            ++taken;
            ASSERT_EQ(reading.length, static_cast<int>(text.size())) << text;
            ASSERT_TRUE(same(reading.value, decimalOf(text))) << text;
        }
    }
    EXPECT_GT(taken, caseCount() / 2);
}

/// Neighbouring doubles differ in their last digits only.
TEST(PlainDecimal, TellsNeighboursApart) {
    Samples samples(20241001);
    for (int i = caseCount() / 10; i > 0; --i) {
        const double value = samples.beside(samples.between(-8e6, 8e6));
        for (const int decimals : {2, 6, 8}) {
            const std::string text = printed(value, decimals);
            const Reading reading = read(text);
            ASSERT_EQ(reading.length, static_cast<int>(text.size())) << text;
            ASSERT_TRUE(same(reading.value, decimalOf(text))) << text;
        }
    }
}

/// Each byte behind a digit either ends the token or prevents the fast path.
TEST(PlainDecimal, EndsWhereTheTokenDoes) {
    for (int byte = 0; byte < 256; ++byte) {
        const auto c = static_cast<char>(byte);
        const bool inToken = std::isalnum(byte) != 0 && byte < 128;
        const bool ends = !inToken && c != '+' && c != '-' && c != '.' && c != '_' && c != '"';
        for (const std::string& tail : {std::string(), std::string("        ")}) {
            EXPECT_EQ(read("12" + std::string(1, c) + 'x' + tail).length, ends ? 2 : kNotRead)
                << byte;
            EXPECT_EQ(read("1.2" + std::string(1, c) + 'x' + tail).length, ends ? 3 : kNotRead)
                << byte;
            if (ends) {
                EXPECT_EQ(read("12" + std::string(1, c) + ' ' + tail).length, 2) << byte;
            }
        }
    }
}

}  // namespace

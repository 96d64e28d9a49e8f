#include <rfUtils/presentation/rfUtils.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

TEST(GetOddtoStr, ReadsTheTwoCharactersBeforeTheLast) {
    const struct {
        std::string text;
        int expected;
    } kCases[] = {
        {"ab12c", 12}, {"ch12x", 12},  {"x05y", 5},
        {"A-3z", -3},  {"12a", 12},                  // exactly three characters
        {"a 7b", 7},                                 // a leading blank
        {"a\t7b", 7},  {"a+9b", 9},    {"a1bc", 1},  // stops at the first other character
        {"a1.5", 1},   {"123456", 45},               // only two characters, the last is ignored
        {"00x", 0},    {"99\xff", 99}, {std::string("4\0x", 3), 4},
        {"-0x", 0},    {"x09y", 9},  // a leading zero makes no octal number
    };
    const rfUtils utils;
    for (const auto& row : kCases) {
        EXPECT_EQ(utils.getOddtoStr(row.text), row.expected) << row.text;
    }
}

TEST(GetOddtoStr, ThrowsOutOfRangeForAShortText) {
    const rfUtils utils;
    for (const char* const text : {"", "1", "12"}) {
        EXPECT_THROW(utils.getOddtoStr(text), std::out_of_range) << text;
    }
}

TEST(GetOddtoStr, ThrowsInvalidArgumentWithoutANumber) {
    const rfUtils utils;
    for (const char* const text : {"abcd", "ab7c", "a- c", "a+-c", "  x", "a--1", "x\xb9\xb9y"}) {
        try {
            utils.getOddtoStr(text);
            ADD_FAILURE() << text;
        } catch (const std::invalid_argument& error) {
            EXPECT_STREQ(error.what(), "stoi") << text;
        }
    }
}

}  // namespace

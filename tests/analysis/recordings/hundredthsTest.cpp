#include "analysis/recordings/hundredths.h"

#include <gtest/gtest.h>
#include <support/cText.h>

#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <string>

using namespace rfu;

namespace {

std::string twoDigits(int number) {
    return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

TEST(Hundredths, ReadsEveryLevelAsStrtodDoes) {
    for (int hundredths = 0; hundredths < 60000; ++hundredths) {
        const std::string text =
            '-' + std::to_string(hundredths / 100) + '.' + twoDigits(hundredths % 100);
        const std::string line = text + ", -1.00";
        double level = 1.0;
        ASSERT_EQ(readHundredths(line.data(), level), line.data() + text.size()) << text;
        ASSERT_EQ(level, test::decimalOf(text)) << text;
        ASSERT_TRUE(std::signbit(level)) << text;
    }
}

TEST(Hundredths, IgnoresWhatIsBehindTheComma) {
    for (int behind = 0; behind < 256; ++behind) {
        const std::string line = "-1.25," + std::string(2, static_cast<char>(behind));
        double level = 1.0;
        EXPECT_EQ(readHundredths(line.data(), level), line.data() + 5) << behind;
        EXPECT_EQ(level, -1.25) << behind;
    }
}

TEST(Hundredths, LeavesOtherTextsToOthers) {
    const char* const kOthers[] = {"51.23,  ", "+51.23, ", "-51.2,  ",   "-51.234,",  "-51,    ",
                                   "-,      ", ",       ", "-5123,  ",   "-600.00,",  "-999.99,",
                                   "-51.23  ", "-51,23, ", "--1.23, ",   "-5-.23, ",  "-51.-3, ",
                                   "-51..3, ", "-1e.23, ", "- 1.23, ",   "-51.23\r,", "-nan,   ",
                                   "-51.:0, ", "-51./0, ", "-5\xB1.23, "};
    for (const char* const other : kOthers) {
        double level = 1.0;
        EXPECT_EQ(readHundredths(other, level), nullptr) << other;
        EXPECT_EQ(level, 1.0) << other;
    }
}

/// Each character at each place makes another text, or one that strtod reads as the same level.
TEST(Hundredths, ReadsNoTextThatStrtodDoesNot) {
    const test::CLocale scope;
    const std::string whole = "-116.04,";
    for (std::size_t place = 0; place < whole.size(); ++place) {
        for (int character = 1; character < 256; ++character) {
            std::string line = whole;
            line[place] = static_cast<char>(character);
            double level = 1.0;
            const char* const comma = readHundredths(line.data(), level);
            if (comma != nullptr) {
                char* end = nullptr;
                EXPECT_EQ(level, std::strtod(line.c_str(), &end)) << line;
                EXPECT_EQ(comma, end) << line;
            }
        }
    }
}

}  // namespace

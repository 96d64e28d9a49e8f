#include <rfUtils/geo/detail/tokenizer.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace rfu::detail;

struct Place {
    std::ptrdiff_t begin;
    std::ptrdiff_t end;
    std::size_t length;
    bool isCut;
};

bool operator==(const Place& a, const Place& b) {
    return a.begin == b.begin && a.end == b.end && a.length == b.length && a.isCut == b.isCut;
}

std::vector<Place> placesOf(const std::string& line) {
    std::vector<Place> places;
    const char* cursor = line.c_str();
    for (RawToken token = nextRawToken(cursor); !token.atLineEnd(); token = nextRawToken(cursor)) {
        places.push_back(
            {token.begin - line.c_str(), token.end - line.c_str(), token.length, token.isCut()});
        EXPECT_EQ(cursor, token.end);
    }
    return places;
}

TEST(Tokenizer, TellsTheColumnsOfATokenAndWhetherItIsCut) {
    const std::string text63(63, 'x');
    const struct {
        std::string line;
        std::vector<Place> places;
    } kCases[] = {
        {"", {}},
        {" ,; ", {}},
        {"ab  cd", {{0, 2, 2, false}, {4, 6, 2, false}}},
        {"\t\"a b\"c,", {{1, 7, 4, false}}},
        {"\"\" a \"\"", {{3, 4, 1, false}}},
        {text63, {{0, 63, 63, false}}},
        {text63 + "x y", {{0, 64, 64, true}, {65, 66, 1, false}}},
        {'"' + text63 + '"', {{0, 65, 63, false}}},
        {'"' + text63 + " \"", {{0, 66, 64, true}}},
    };
    for (const auto& row : kCases) {
        EXPECT_EQ(placesOf(row.line), row.places) << row.line;
    }
}

TEST(Tokenizer, GivesViewsThatBeginAtTheColumnOfTheirToken) {
    std::string line = "ab \"c d\"e \"f\"";
    Tokenizer tokenizer(line.data());
    const struct {
        std::string_view text;
        std::ptrdiff_t column;
    } kTokens[] = {{"ab", 0}, {"c de", 3}, {"f", 10}};
    for (const auto& row : kTokens) {
        const std::string_view token = tokenizer.next();
        EXPECT_EQ(token, row.text);
        EXPECT_EQ(token.data() - line.data(), row.column);
    }
    EXPECT_TRUE(tokenizer.next().empty());
}

}  // namespace

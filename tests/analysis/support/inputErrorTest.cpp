#include "analysis/support/inputError.h"

#include <gtest/gtest.h>

using rfu::InputError;

TEST(InputError, NamesFileAndLine) {
    const QString file = QStringLiteral("band.csv");
    EXPECT_STREQ(InputError(file, "is empty").what(), "band.csv: is empty");
    const InputError error(file, 7, "no level");
    EXPECT_EQ(error.message(), "band.csv:7: no level");
    EXPECT_EQ(error.problem(), "no level");
}

TEST(InputError, KeepsQuotesInPairs) {
    EXPECT_EQ(rfu::quoted(R"(a"b)"), R"("a\"b")");
    EXPECT_EQ(rfu::quoted(R"(a\)"), R"("a\\")");
    const std::string quotes(61, '"');
    std::string shown;
    for (int i = 0; i < 60; ++i) {
        shown += R"(\")";
    }
    EXPECT_EQ(rfu::quoted(quotes), '"' + shown + R"(...")");
}

TEST(InputError, ShortensQuotesBetweenCharacters) {
    const std::string sixty(60, 'a');
    EXPECT_EQ(rfu::quoted(""), "\"\"");
    EXPECT_EQ(rfu::quoted(sixty), '"' + sixty + '"');
    EXPECT_EQ(rfu::quoted(sixty + "b"), '"' + sixty + "...\"");
    // The 60th byte is the second of three of a euro sign.
    const std::string euro = "\xE2\x82\xAC";
    EXPECT_EQ(rfu::quoted(std::string(58, 'a') + euro), '"' + std::string(58, 'a') + "...\"");
}

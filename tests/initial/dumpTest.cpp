#include <limits>
#include <memory>
#include <string>

#include "storeFixture.h"

namespace {

TEST_F(Store, DumpOfAnEmptyTableIsTheTotalLine) {
    EXPECT_EQ(dumpOf(*table), "***** Total Num: 0 \n");
    EXPECT_EQ(dumpOf(*std::make_unique<itemInitial>()), "***** Total Num: 0 \n");
    table->delInitialVal("");
    EXPECT_EQ(dumpOf(*table), "***** Total Num: -1 \n");
}

TEST_F(Store, DumpShowsEveryEntryInUseWithAllItsFields) {
    table->setInitialVal("span", -12);
    table->addInitialVal({"full", 9, 11, 2.5, "a text %d"});
    table->setInitialVal("", std::string());
    table->fillInitialVal(3, kFull);
    EXPECT_EQ(dumpOf(*table),
              "***** Total Num: 3 \n"
              "***** ID: span \n"
              "***** Type: 1 \n"
              "***** integer: -12 \n"
              "***** double: 0.000000 \n"
              "***** String:  \n"
              "***** ID: full \n"
              "***** Type: 9 \n"
              "***** integer: 11 \n"
              "***** double: 2.500000 \n"
              "***** String: a text %d \n"
              "***** ID:  \n"
              "***** Type: 3 \n"
              "***** integer: 0 \n"
              "***** double: 0.000000 \n"
              "***** String:  \n");
}

TEST_F(Store, DumpPrintsDoublesAsCDoesWithAPoint) {
    const double inf = std::numeric_limits<double>::infinity();
    const struct {
        double value;
        const char* text;
    } kCases[] = {
        {0.0078125, "0.007812"},  // an exact tie goes to even
        {0.0234375, "0.023438"},
        {-1.0 / 3.0, "-0.333333"},
        {1234567.0, "1234567.000000"},
        {1e22, "10000000000000000000000.000000"},
        {-0.0, "-0.000000"},
        {inf, "inf"},
        {-inf, "-inf"},
        {std::numeric_limits<double>::quiet_NaN(), "nan"},
    };
    for (const auto& row : kCases) {
        table->setInitialVal("d", row.value);
        EXPECT_NE(dumpOf(*table).find(std::string("double: ") + row.text + " \n"),
                  std::string::npos)
            << row.text;
        table->delInitialVal("d");
    }
}

TEST_F(Store, DumpCutsATextAtANul) {
    table->addInitialVal({std::string("i\0d", 3), 3, 0, 0.0, std::string("a\0b", 3)});
    EXPECT_EQ(dumpOf(*table),
              "***** Total Num: 1 \n"
              "***** ID: i \n"
              "***** Type: 3 \n"
              "***** integer: 0 \n"
              "***** double: 0.000000 \n"
              "***** String: a \n");
}

TEST_F(Store, DumpOfAFullTableEndsWithTheLastEntry) {
    fillUp();
    const std::string dump = dumpOf(*table);
    const std::string end =
        "***** ID: 5119 \n***** Type: 1 \n***** integer: 5119 \n***** double: 0.000000 \n"
        "***** String:  \n";
    EXPECT_EQ(dump.substr(dump.size() - end.size()), end);
}

}  // namespace

#include <support/allocations.h>

#include <cstddef>
#include <string>

#include "storeFixture.h"

namespace {

TEST_F(Store, DeletesTheFirstMatchAndClosesTheGap) {
    const struct {
        const char* name;
        Ids before;
        const char* id;
        Ids after;
    } kCases[] = {
        {"first", {"a", "b", "c"}, "a", {"b", "c"}},
        {"middle", {"a", "b", "c"}, "b", {"a", "c"}},
        {"last", {"a", "b", "c"}, "c", {"a", "b"}},
        {"only one", {"a"}, "a", {}},
        {"first of two with the same id", {"a", "b", "a", "c"}, "a", {"b", "a", "c"}},
    };
    for (const auto& row : kCases) {
        append(row.before);
        const std::size_t count = row.before.size();
        EXPECT_TRUE(table->delInitialVal(row.id)) << row.name;
        EXPECT_EQ(idsInUse(), row.after) << row.name;
        EXPECT_EQ(stored[count - 1], kEmpty) << row.name;
        for (std::size_t index = 0; index < row.after.size(); ++index) {
            EXPECT_EQ(stored[index].iValue, row.after[index][0]) << row.name;
        }
        for (const std::string& id : row.after) {
            table->delInitialVal(id);
        }
    }
}

TEST_F(Store, DeletingMovesAllFieldsOfTheLaterEntries) {
    append({"a"});
    table->addInitialVal(kFull);
    table->addInitialVal({"last", 8, 7, 6.5, "end"});
    EXPECT_TRUE(table->delInitialVal("a"));
    EXPECT_EQ(stored[0], kFull);
    EXPECT_EQ(stored[1], (initialValue_t{"last", 8, 7, 6.5, "end"}));
    EXPECT_EQ(stored[2], kEmpty);
}

TEST_F(Store, DeletingMovesTextsWithoutCopyingThem) {
    append({"a"});
    const std::string longText(1000, 'x');
    table->addInitialVal({longText, 3, 0, 0.0, longText});
    const char* const id = stored[1].id.data();
    const char* const text = stored[1].sValue.data();
    table->delInitialVal("a");
    EXPECT_EQ(stored[0].id.data(), id);
    EXPECT_EQ(stored[0].sValue.data(), text);
}

TEST_F(Store, DeletingFromAFullTableAllocatesNothing) {
    // Each string is longer than the one it replaces: copying it would allocate.
    for (int index = 0; index < 5120; ++index) {
        const std::string text(static_cast<std::size_t>(20 + index), 'x');
        table->addInitialVal({std::to_string(index), 3, 0, 0.0, text});
    }
    const std::string first = "0";
    const std::string middle = "2500";
    std::size_t count = 0;
    {
        const Allocations allocations;
        table->delInitialVal(first);
        table->delInitialVal(middle);
        count = allocations.count();
    }
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(stored[0].id, "1");
    EXPECT_EQ(stored[5117].sValue.size(), 20U + 5119U);
}

TEST_F(Store, DeletingAnAbsentIdDropsTheLastEntryUncleared) {
    append({"a", "b"});
    EXPECT_TRUE(table->delInitialVal("x"));
    EXPECT_EQ(idsInUse(), Ids{"a"});
    EXPECT_EQ(stored[1], (initialValue_t{"b", 1, 'b', 0.0, ""}));
    EXPECT_EQ(table->findInitialVal("b"), nullptr);
    // "b" is not in use any more, so this drops "a".
    EXPECT_TRUE(table->delInitialVal("b"));
    EXPECT_EQ(idsInUse(), Ids{});
    EXPECT_EQ(stored[0].id, "a");
}

TEST_F(Store, DeletingFromAnEmptyTableLeavesACountOfMinusOne) {
    EXPECT_TRUE(table->delInitialVal("a"));
    EXPECT_EQ(countOf(*table), -1);
    for (int repeat = 0; repeat < 3; ++repeat) {
        EXPECT_FALSE(table->delInitialVal("a"));
        EXPECT_FALSE(table->delInitialVal(""));
    }
    EXPECT_EQ(countOf(*table), -1);
    EXPECT_EQ(table->findInitialVal(""), nullptr);
    EXPECT_FALSE(table->modifyInitialVal("", 1));
    EXPECT_EQ(stored[0], kEmpty);
}

TEST_F(Store, DeletesFromAFullTable) {
    fillUp();
    EXPECT_TRUE(table->delInitialVal("0"));
    EXPECT_EQ(countOf(*table), 5119);
    for (int index = 0; index < 5119; ++index) {
        ASSERT_EQ(stored[index].iValue, index + 1);
    }
    EXPECT_EQ(stored[5119], kEmpty);
    EXPECT_TRUE(table->setInitialVal("x", 1));
    EXPECT_TRUE(table->delInitialVal("absent"));
    EXPECT_EQ(countOf(*table), 5119);
    EXPECT_EQ(stored[5119].id, "x");
}

TEST_F(Store, DeletingComparesIdsByteForByte) {
    const std::string nulInside("a\0b", 3);
    table->setInitialVal(nulInside, 1);
    append({"A", "a", "z"});
    EXPECT_TRUE(table->delInitialVal("a"));
    EXPECT_EQ(idsInUse(), (Ids{nulInside, "A", "z"}));
    EXPECT_TRUE(table->delInitialVal(nulInside));
    EXPECT_EQ(idsInUse(), (Ids{"A", "z"}));
}

TEST_F(Store, DeletesByTheIdOfAnEntryItself) {
    append({"a", "b", "c"});
    EXPECT_TRUE(table->delInitialVal(stored[1].id));
    EXPECT_EQ(idsInUse(), (Ids{"a", "c"}));
}

}  // namespace

#include <limits>

#include "storeFixture.h"

namespace {

constexpr int kBadIndexes[] = {-1, 5120, -5120, std::numeric_limits<int>::max(),
                               std::numeric_limits<int>::min()};

TEST_F(Store, FillOverwritesAnyEntryAndNotTheCount) {
    append({"a", "b"});
    for (const int index : {0, 1, 2, 5119}) {
        EXPECT_TRUE(table->fillInitialVal(index, kFull)) << index;
        EXPECT_EQ(stored[index], kFull) << index;
    }
    EXPECT_EQ(countOf(*table), 2);
    EXPECT_EQ(stored[3], kEmpty);
}

TEST_F(Store, EmptyClearsAnyEntryAndNotTheCount) {
    append({"a", "b", "c"});
    for (const int index : {0, 1, 5119}) {
        table->fillInitialVal(index, kFull);
        EXPECT_TRUE(table->emptyInitialVal(index)) << index;
        EXPECT_EQ(stored[index], kEmpty) << index;
    }
    EXPECT_EQ(idsInUse(), (Ids{"", "", "c"}));
}

TEST_F(Store, CopyCopiesAllFieldsFromOneEntryToTheOther) {
    append({"a", "b"});
    table->fillInitialVal(1, kFull);
    const struct {
        int from;
        int to;
    } kCases[] = {{1, 0}, {0, 5119}, {5119, 2}, {1, 1}};
    for (const auto& row : kCases) {
        EXPECT_TRUE(table->copyInitialVal(row.from, row.to));
        EXPECT_EQ(stored[row.from], kFull);
        EXPECT_EQ(stored[row.to], kFull);
    }
    EXPECT_EQ(countOf(*table), 2);
}

TEST_F(Store, RefusesIndexesOutsideTheTable) {
    fillUp();
    for (const int index : kBadIndexes) {
        EXPECT_FALSE(table->fillInitialVal(index, kFull)) << index;
        EXPECT_FALSE(table->emptyInitialVal(index)) << index;
        EXPECT_FALSE(table->copyInitialVal(index, 0)) << index;
        EXPECT_FALSE(table->copyInitialVal(0, index)) << index;
        EXPECT_FALSE(table->copyInitialVal(index, index)) << index;
    }
    EXPECT_EQ(stored[-1], kEmpty);
    expectFilledUp();
}

}  // namespace

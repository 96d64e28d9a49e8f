#include <cstddef>
#include <memory>
#include <string>

#include "storeFixture.h"

namespace {

TEST_F(Store, LookupYieldsTheFirstEntryWhicheverMatches) {
    append({"a", "b", "c"});
    EXPECT_EQ(table->findInitialVal("a"), stored);
    EXPECT_EQ(table->findInitialVal("b"), stored);
    EXPECT_EQ(table->findInitialVal("c"), stored);
    EXPECT_EQ(table->findInitialVal("c")->id, "a");
}

TEST_F(Store, LookupComparesIdsByteForByte) {
    append({"span", "\u00e4", std::string("a\0b", 3)});
    const struct {
        const char* name;
        std::string id;
        bool found;
    } kCases[] = {
        {"equal", "span", true},
        {"shorter", "spa", false},
        {"longer", "spans", false},
        {"other case", "Span", false},
        {"blank before", " span", false},
        {"same bytes of UTF-8", "\xc3\xa4", true},
        {"other spelling of the letter", "a\xcc\x88", false},
        {"NUL inside", std::string("a\0b", 3), true},
        {"cut at the NUL", "a", false},
        {"other byte after the NUL", std::string("a\0c", 3), false},
        {"empty", "", false},
    };
    for (const auto& row : kCases) {
        EXPECT_EQ(table->findInitialVal(row.id) != nullptr, row.found) << row.name;
    }
}

TEST_F(Store, LookupTellsIdsApartByAnyByte) {
    std::string id;
    for (char c = '!'; id.size() < 40; ++c) {
        EXPECT_EQ(table->findInitialVal(id), nullptr) << id;
        table->setInitialVal(id, 1);
        EXPECT_NE(table->findInitialVal(id), nullptr) << id;
        for (std::size_t place = 0; place < id.size(); ++place) {
            std::string other = id;
            other[place] = static_cast<char>(other[place] ^ 0x80);
            EXPECT_EQ(table->findInitialVal(other), nullptr) << id << ' ' << place;
        }
        id += c;
    }
}

TEST_F(Store, LookupOfAnEmptyIdFindsAnEmptyId) {
    append({"a"});
    EXPECT_EQ(table->findInitialVal(""), nullptr);  // slots not in use do not count
    table->setInitialVal("", 1);
    EXPECT_EQ(table->findInitialVal(""), stored);
}

TEST_F(Store, LookupReachesTheLastPlace) {
    fillUp();
    EXPECT_EQ(table->findInitialVal("5119"), stored);
    EXPECT_EQ(table->findInitialVal("5120"), nullptr);
}

TEST_F(Store, LookupIgnoresSlotsNotInUse) {
    table->fillInitialVal(0, kFull);
    EXPECT_EQ(table->findInitialVal("old"), nullptr);
    append({"a"});
    table->fillInitialVal(1, kFull);
    EXPECT_EQ(table->findInitialVal("old"), nullptr);
}

TEST_F(Store, ModifyAlwaysWritesTheFirstEntry) {
    append({"a"});
    table->addInitialVal(kFull);
    EXPECT_TRUE(table->modifyInitialVal("old", 7));
    EXPECT_EQ(stored[0], (initialValue_t{"a", 1, 7, 0.0, ""}));
    EXPECT_TRUE(table->modifyInitialVal("old", 7.5));  // the type stays
    EXPECT_EQ(stored[0], (initialValue_t{"a", 1, 7, 7.5, ""}));
    EXPECT_TRUE(table->modifyInitialVal("old", std::string("seven")));
    EXPECT_EQ(stored[0], (initialValue_t{"a", 1, 7, 7.5, "seven"}));
    EXPECT_EQ(stored[1], kFull);
    EXPECT_TRUE(table->modifyInitialVal("a", 8));
    EXPECT_EQ(stored[0].iValue, 8);
    EXPECT_EQ(countOf(*table), 2);
}

TEST_F(Store, ModifyLeavesAnyTypeOfTheFirstEntryAlone) {
    for (const int type : {0, 1, 2, 3, 9, -1}) {
        const auto store = std::make_unique<itemInitial>();
        store->addInitialVal({"first", type, 11, 2.5, "text"});
        const initialValue_t& first = *store->findInitialVal("first");
        EXPECT_TRUE(store->modifyInitialVal("first", 7));
        EXPECT_EQ(first, (initialValue_t{"first", type, 7, 2.5, "text"}));
        EXPECT_TRUE(store->modifyInitialVal("first", 7.5));
        EXPECT_EQ(first, (initialValue_t{"first", type, 7, 7.5, "text"}));
        EXPECT_TRUE(store->modifyInitialVal("first", std::string("seven")));
        EXPECT_EQ(first, (initialValue_t{"first", type, 7, 7.5, "seven"}));
    }
}

TEST_F(Store, ModifyOfAnAbsentIdChangesNothing) {
    table->addInitialVal(kFull);
    EXPECT_FALSE(table->modifyInitialVal("x", 7));
    EXPECT_FALSE(table->modifyInitialVal("x", 7.5));
    EXPECT_FALSE(table->modifyInitialVal("x", std::string("seven")));
    EXPECT_EQ(stored[0], kFull);
    EXPECT_EQ(countOf(*table), 1);
}

TEST_F(Store, ModifyOfAnEmptyTableChangesNothing) {
    EXPECT_FALSE(table->modifyInitialVal("", 7));
    EXPECT_EQ(stored[0], kEmpty);
}

}  // namespace

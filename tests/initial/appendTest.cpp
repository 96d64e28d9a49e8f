#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <typeinfo>

#include "storeFixture.h"

namespace {

const struct {
    const char* name;
    std::function<bool(itemInitial&)> append;
} kAppends[] = {
    {"int", [](itemInitial& table) { return table.setInitialVal("new", 5); }},
    {"double", [](itemInitial& table) { return table.setInitialVal("new", 5.5); }},
    {"text", [](itemInitial& table) { return table.setInitialVal("new", std::string("five")); }},
    {"entry",
     [](itemInitial& table) {
         return table.addInitialVal({"new", 1, 2, 3.0, "4"});
     }},
};

TEST(InitialValue, IsEmptyByDefault) {
    const initialValue_t entry;
    EXPECT_EQ(entry.id, "");
    EXPECT_EQ(entry.type, 0);
    EXPECT_EQ(entry.iValue, 0);
    EXPECT_EQ(entry.dValue, 0.0);
    EXPECT_EQ(entry.sValue, "");
}

TEST_F(Store, EmbedsTheGuardSlotItsEntriesAndTheCountInThisOrder) {
    struct Layout {
        initialValue_t guardAndEntries[1 + 5120];
        std::int32_t count;
    };
    static_assert(sizeof(itemInitial) == sizeof(Layout));
    static_assert(itemInitial::kCapacity == 5120);
    EXPECT_EQ(static_cast<const void*>(stored - 1), table.get());
}

TEST(InitialValue, HoldsItsFieldsInTheirOrderAndNothingElse) {
    struct Layout {
        std::string id;
        std::int32_t type;
        std::int32_t iValue;
        double dValue;
        std::string sValue;
    };
    static_assert(sizeof(initialValue_t) == sizeof(Layout));
    static_assert(offsetof(initialValue_t, id) == 0);
    static_assert(offsetof(initialValue_t, type) == offsetof(Layout, type));
    static_assert(offsetof(initialValue_t, iValue) == offsetof(Layout, iValue));
    static_assert(offsetof(initialValue_t, dValue) == offsetof(Layout, dValue));
    static_assert(offsetof(initialValue_t, sValue) == offsetof(Layout, sValue));
}

TEST_F(Store, StartsWithEmptyEntriesNoneInUse) {
    const auto fresh = std::make_unique<itemInitial>();
    EXPECT_EQ(countOf(*fresh), 0);
    EXPECT_EQ(fresh->findInitialVal("a"), nullptr);
    EXPECT_EQ(fresh->findInitialVal(""), nullptr);
    fresh->setInitialVal("", 0);
    stored = fresh->findInitialVal("");
    fresh->emptyInitialVal(0);
    expectAllEmpty();
}

TEST_F(Store, AppendsInOrderWithTheTypeOfTheValue) {
    const int integer = -7;
    const double number = 2.25;
    const std::string text = "seven";
    EXPECT_TRUE(table->setInitialVal("i", integer));
    EXPECT_TRUE(table->setInitialVal("d", number));
    EXPECT_TRUE(table->setInitialVal("s", text));
    EXPECT_TRUE(table->addInitialVal({"all", 42, 1, 2.0, "3"}));
    EXPECT_EQ(countOf(*table), 4);
    EXPECT_EQ(stored[0], (initialValue_t{"i", 1, -7, 0.0, ""}));
    EXPECT_EQ(stored[1], (initialValue_t{"d", 2, 0, 2.25, ""}));
    EXPECT_EQ(stored[2], (initialValue_t{"s", 3, 0, 0.0, "seven"}));
    EXPECT_EQ(stored[3], (initialValue_t{"all", 42, 1, 2.0, "3"}));
    EXPECT_EQ(stored[4], kEmpty);
}

TEST_F(Store, AppendLeavesTheOtherFieldsOfTheSlotAsTheyWere) {
    for (int index = 0; index < 4; ++index) {
        table->fillInitialVal(index, kFull);
    }
    table->setInitialVal("i", 1);
    table->setInitialVal("d", 1.5);
    table->setInitialVal("s", std::string("new"));
    table->addInitialVal({"all", 0, 0, 0.0, ""});
    EXPECT_EQ(stored[0], (initialValue_t{"i", 1, 1, 2.5, "text"}));
    EXPECT_EQ(stored[1], (initialValue_t{"d", 2, 11, 1.5, "text"}));
    EXPECT_EQ(stored[2], (initialValue_t{"s", 3, 11, 2.5, "new"}));
    EXPECT_EQ(stored[3], (initialValue_t{"all", 0, 0, 0.0, ""}));  // all five are overwritten
}

TEST_F(Store, AcceptsEmptyAndRepeatedIds) {
    append({"a", "a"});
    EXPECT_TRUE(table->setInitialVal("", 1));
    EXPECT_EQ(idsInUse(), (Ids{"a", "a", ""}));
}

TEST_F(Store, RefusesAnAppendWhenFull) {
    fillUp();
    for (const auto& row : kAppends) {
        EXPECT_FALSE(row.append(*table)) << row.name;
    }
    EXPECT_FALSE(table->setTypeId(typeid(int)));
    EXPECT_FALSE(table->setTypeId(typeid(double)));
    expectFilledUp();
    table->delInitialVal("5119");
    EXPECT_TRUE(table->setInitialVal("again", 1));
    EXPECT_EQ(stored[5119].id, "again");
    EXPECT_EQ(countOf(*table), 5120);
}

TEST_F(Store, AppendAfterACountOfMinusOneIsLost) {
    for (const auto& row : kAppends) {
        table->delInitialVal("");  // on an empty table: the count becomes -1
        ASSERT_EQ(countOf(*table), -1);
        EXPECT_TRUE(row.append(*table)) << row.name;
        EXPECT_EQ(countOf(*table), 0) << row.name;
        EXPECT_EQ(table->findInitialVal("new"), nullptr) << row.name;
        expectAllEmpty();
    }
    table->setInitialVal("kept", 1);
    EXPECT_EQ(table->findInitialVal("kept"), stored);
    EXPECT_EQ(stored[0].id, "kept");
}

TEST_F(Store, AppendAtACountOfMinusOneWritesItsFieldsOfTheGuardSlot) {
    EXPECT_EQ(stored[-1], kEmpty);
    const struct {
        const char* name;
        std::function<bool(itemInitial&)> append;
        initialValue_t guard;
    } kCases[] = {
        // the first row fills every field for the rows that follow
        {"entry", [this](itemInitial& store) { return store.addInitialVal(kFull); }, kFull},
        {"int",
         [](itemInitial& store) { return store.setInitialVal("i", -7); },
         {"i", 1, -7, 2.5, "text"}},
        {"double",
         [](itemInitial& store) { return store.setInitialVal("d", 0.25); },
         {"d", 2, -7, 0.25, "text"}},
        {"text",
         [](itemInitial& store) { return store.setInitialVal("s", std::string("new")); },
         {"s", 3, -7, 0.25, "new"}},
        {"empty text",
         [](itemInitial& store) { return store.setInitialVal("", std::string()); },
         {"", 3, -7, 0.25, ""}},
        {"empty entry", [](itemInitial& store) { return store.addInitialVal({}); }, {}},
    };
    for (const auto& row : kCases) {
        table->delInitialVal("");  // on an empty table: the count becomes -1
        EXPECT_TRUE(row.append(*table)) << row.name;
        EXPECT_EQ(stored[-1], row.guard) << row.name;
        EXPECT_EQ(stored[0], kEmpty) << row.name;
        EXPECT_EQ(countOf(*table), 0) << row.name;
    }
    table->setInitialVal("kept", 1);
    EXPECT_EQ(table->findInitialVal("kept")[-1], kEmpty);  // only a count of -1 leads there
}

TEST_F(Store, CopiesAreIndependent) {
    append({"a"});
    const auto copy = std::make_unique<itemInitial>(*table);
    copy->setInitialVal("b", 2);
    copy->modifyInitialVal("a", 7);
    EXPECT_EQ(idsInUse(), Ids{"a"});
    EXPECT_EQ(stored[0].iValue, 'a');
    EXPECT_EQ(copy->findInitialVal("b")[0].iValue, 7);
}

TEST(TypeId, KnowsIntAndDouble) {
    const auto table = std::make_unique<itemInitial>();
    EXPECT_EQ(table->getTypeId(typeid(int)), 1);
    EXPECT_EQ(table->getTypeId(typeid(const int&)), 1);  // the same std::type_info
    EXPECT_EQ(table->getTypeId(typeid(double)), 2);
    EXPECT_EQ(table->getTypeId(typeid(std::string)), 0);
    EXPECT_EQ(table->getTypeId(typeid(float)), 0);
    EXPECT_EQ(table->getTypeId(typeid(unsigned)), 0);
    EXPECT_EQ(table->getTypeId(typeid(long)), 0);
    EXPECT_EQ(table->getTypeId(typeid(bool)), 0);
}

TEST_F(Store, SetTypeIdMarksTheNextFreeSlot) {
    append({"a"});
    EXPECT_TRUE(table->setTypeId(typeid(double)));
    EXPECT_EQ(stored[0].type, 1);
    EXPECT_EQ(stored[1], (initialValue_t{"", 2, 0, 0.0, ""}));
    EXPECT_EQ(stored[2], kEmpty);
    EXPECT_EQ(countOf(*table), 1);
    EXPECT_TRUE(table->setTypeId(typeid(int)));
    EXPECT_EQ(stored[1].type, 1);
    for (const std::type_info* const other : {&typeid(std::string), &typeid(float)}) {
        EXPECT_FALSE(table->setTypeId(*other));
        EXPECT_EQ(stored[1].type, 1);
    }
    table->setInitialVal("b", 0.5);
    EXPECT_EQ(stored[1].type, 2);
}

TEST_F(Store, SetTypeIdMarksTheLastSlotToo) {
    fillUp();
    table->delInitialVal("5119");
    EXPECT_TRUE(table->setTypeId(typeid(double)));
    EXPECT_EQ(stored[5119].type, 2);
}

TEST_F(Store, SetTypeIdAtACountOfMinusOneMarksTheGuardSlotOnly) {
    table->delInitialVal("");
    table->addInitialVal(kFull);
    table->delInitialVal("");
    EXPECT_TRUE(table->setTypeId(typeid(int)));
    EXPECT_EQ(stored[-1], (initialValue_t{"old", 1, 11, 2.5, "text"}));
    EXPECT_TRUE(table->setTypeId(typeid(double)));
    EXPECT_EQ(stored[-1], (initialValue_t{"old", 2, 11, 2.5, "text"}));
    EXPECT_FALSE(table->setTypeId(typeid(std::string)));
    EXPECT_EQ(stored[-1], (initialValue_t{"old", 2, 11, 2.5, "text"}));
    EXPECT_EQ(countOf(*table), -1);
    expectAllEmpty();
}

}  // namespace

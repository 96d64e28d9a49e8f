#include <rfUtils/initial/itemInitial.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

TEST(ItemInitial, ModifyAlwaysWritesTheFirstEntry) {
    const auto store = std::make_unique<itemInitial>();
    store->setInitialVal("a", 1);
    store->setInitialVal("b", 2);
    EXPECT_TRUE(store->modifyInitialVal("b", 7));
    const initialValue_t* const entries = store->findInitialVal("b");
    ASSERT_NE(entries, nullptr);
    EXPECT_EQ(entries[0].id, "a");
    EXPECT_EQ(entries[0].iValue, 7);
    EXPECT_EQ(entries[1].iValue, 2);
}

}  // namespace

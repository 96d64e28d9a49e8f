#include <rfUtils/presentation/rfUtils.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <type_traits>

namespace {

TEST(RfUtils, StartsEmpty) {
    rfUtils utils;
    EXPECT_EQ(utils.toastCount, 0);
    EXPECT_EQ(utils.getNoOfToast(), 0);
    ASSERT_EQ(utils.toastMessages.size(), 10U);
    for (std::size_t slot = 0; slot < 10; ++slot) {
        EXPECT_EQ(utils.toastMessages[slot], "") << slot;
    }
    EXPECT_TRUE(utils.stringList.empty());
    EXPECT_EQ(utils.hMath.unit(), QString());
    EXPECT_EQ(utils.hMath.parent(), nullptr);
    EXPECT_EQ(utils.fCenter, 0.0);
    EXPECT_EQ(utils.fGain, 0.0);
}

TEST(RfUtils, DeclaresItsMembersInTheOrderOfTheirTable) {
    const rfUtils utils;
    const void* const members[] = {&utils.toastCount, &utils.toastMessages, &utils.stringList,
                                   &utils.hMath,      &utils.fCenter,       &utils.fGain};
    EXPECT_TRUE(std::is_sorted(std::begin(members), std::end(members), std::less<const void*>()));
}

TEST(RfUtils, IsAPlainClassThatIsNotCopied) {
    static_assert(!std::is_polymorphic_v<rfUtils>);
    static_assert(!std::is_base_of_v<QObject, rfUtils>);
    static_assert(!std::is_copy_constructible_v<rfUtils>);
    static_assert(!std::is_copy_assignable_v<rfUtils>);
}

}  // namespace

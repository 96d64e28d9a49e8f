#include <rfUtils/presentation/rfUtils.h>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <string>
#include <type_traits>
#include <vector>

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

// What applications that embed the object are compiled against.
struct Layout {
    int toastCount;
    std::array<std::string, 10> toastMessages;
    std::vector<std::string> stringList;
    HMath hMath;
    double fCenter;
    double fGain;
};

/// Places of the members in the object; offsetof is not for classes with a QObject inside.
template <typename Object>
std::array<std::ptrdiff_t, 6> offsetsOf(const Object& object) {
    const auto offsetOf = [&object](const auto& member) {
        return reinterpret_cast<const std::byte*>(&member) -
               reinterpret_cast<const std::byte*>(&object);
    };
    return {offsetOf(object.toastCount), offsetOf(object.toastMessages),
            offsetOf(object.stringList), offsetOf(object.hMath),
            offsetOf(object.fCenter),    offsetOf(object.fGain)};
}

TEST(RfUtils, HoldsItsMembersInTheirOrderAndNothingElse) {
    static_assert(sizeof(rfUtils) == sizeof(Layout));
    static_assert(std::is_same_v<decltype(rfUtils::toastCount), decltype(Layout::toastCount)>);
    static_assert(
        std::is_same_v<decltype(rfUtils::toastMessages), decltype(Layout::toastMessages)>);
    static_assert(std::is_same_v<decltype(rfUtils::stringList), decltype(Layout::stringList)>);
    static_assert(std::is_same_v<decltype(rfUtils::hMath), decltype(Layout::hMath)>);
    static_assert(std::is_same_v<decltype(rfUtils::fCenter), decltype(Layout::fCenter)>);
    static_assert(std::is_same_v<decltype(rfUtils::fGain), decltype(Layout::fGain)>);
    const rfUtils utils;
    EXPECT_EQ(offsetsOf(utils), offsetsOf(Layout()));
    // Compiles for six members only: none hides in the padding.
    const auto& [toastCount, toastMessages, stringList, hMath, fCenter, fGain] = utils;
    EXPECT_EQ(&toastCount, &utils.toastCount);
    EXPECT_EQ(&fGain, &utils.fGain);
}

TEST(RfUtils, OperationsLeaveTheMembersOfTheApplicationAlone) {
    rfUtils utils;
    utils.stringList = {"one", "", "three"};
    utils.fCenter = 433.92;
    utils.fGain = -2.15;
    const auto expectKept = [&utils](const char* operation) {
        EXPECT_EQ(utils.stringList, (std::vector<std::string>{"one", "", "three"})) << operation;
        EXPECT_EQ(utils.fCenter, 433.92) << operation;
        EXPECT_EQ(utils.fGain, -2.15) << operation;
    };
    for (int stored = 0; stored < 11; ++stored) {
        utils.setToastMessage("toast");
        expectKept("setToastMessage");
    }
    EXPECT_EQ(utils.getNoOfToast(), 10);
    expectKept("getNoOfToast");
    for (int type = -1; type <= 24; ++type) {
        utils.makeBoundaryMsg(-10.0, -30.0, type);
        expectKept("makeBoundaryMsg(double)");
        utils.makeBoundaryMsg(10, -5, type);
        expectKept("makeBoundaryMsg(int)");
    }
    utils.makeFrequencyUnit(88.1);
    expectKept("makeFrequencyUnit");
    utils.convertFreqWidthUnit(0.2);
    expectKept("convertFreqWidthUnit");
    utils.getOddtoStr("ch12x");
    expectKept("getOddtoStr");
    for (const std::string& message : utils.toastMessages) {
        EXPECT_EQ(message, "toast");
    }
    EXPECT_EQ(utils.toastCount, 10);
    const QString unit = utils.hMath.unit();
    EXPECT_EQ(unit, QStringLiteral("dBm/m^2"));  // of type 21, the last that is converted
    utils.clearToastMessage();
    expectKept("clearToastMessage");
    EXPECT_EQ(utils.hMath.unit(), unit);
}

TEST(RfUtils, IsAPlainClassThatIsNotCopied) {
    static_assert(!std::is_polymorphic_v<rfUtils>);
    static_assert(!std::is_base_of_v<QObject, rfUtils>);
    static_assert(!std::is_copy_constructible_v<rfUtils>);
    static_assert(!std::is_copy_assignable_v<rfUtils>);
}

}  // namespace

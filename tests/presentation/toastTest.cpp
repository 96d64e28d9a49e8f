#include <rfUtils/presentation/rfUtils.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

using Slots = std::vector<std::string>;

Slots slotsOf(const rfUtils& utils) {
    return {utils.toastMessages.begin(), utils.toastMessages.end()};
}

TEST(Toast, StoresTextsInOrder) {
    rfUtils utils;
    const std::string text = "one";
    EXPECT_TRUE(utils.setToastMessage(text));
    EXPECT_TRUE(utils.setToastMessage(""));
    EXPECT_TRUE(utils.setToastMessage("\u00b5 three"));
    EXPECT_EQ(text, "one");
    EXPECT_EQ(utils.getNoOfToast(), 3);
    EXPECT_EQ(utils.toastCount, 3);
    EXPECT_EQ(slotsOf(utils), (Slots{"one", "", "\u00b5 three", "", "", "", "", "", "", ""}));
}

TEST(Toast, ClearedSlotsReadNone) {
    rfUtils utils;
    utils.setToastMessage("one");
    utils.clearToastMessage();
    EXPECT_EQ(utils.getNoOfToast(), 0);
    EXPECT_EQ(slotsOf(utils), Slots(10, "None"));
    EXPECT_TRUE(utils.setToastMessage("first slot again"));
    EXPECT_EQ(utils.getNoOfToast(), 1);
    EXPECT_EQ(slotsOf(utils), (Slots{"first slot again", "None", "None", "None", "None", "None",
                                     "None", "None", "None", "None"}));
}

TEST(Toast, IgnoresTheEleventhTextUntilCleared) {
    rfUtils utils;
    Slots stored;
    for (int number = 1; number <= 10; ++number) {
        stored.push_back(std::to_string(number));
        EXPECT_TRUE(utils.setToastMessage(stored.back()));
        EXPECT_EQ(utils.getNoOfToast(), number);
    }
    for (int repeat = 0; repeat < 3; ++repeat) {
        EXPECT_TRUE(utils.setToastMessage("one too many"));
        EXPECT_EQ(utils.getNoOfToast(), 10);
        EXPECT_EQ(slotsOf(utils), stored);
    }
    EXPECT_TRUE(utils.stringList.empty());
    utils.clearToastMessage();
    utils.setToastMessage("again");
    EXPECT_EQ(utils.toastMessages[0], "again");
}

TEST(Toast, StaysInsideItsSlotsWhateverTheCountIsSetTo) {
    for (const int count :
         {-1, 10, 11, 1 << 20, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        rfUtils utils;
        utils.toastCount = count;
        EXPECT_TRUE(utils.setToastMessage("nowhere"));
        EXPECT_EQ(utils.getNoOfToast(), count);
        EXPECT_EQ(slotsOf(utils), Slots(10)) << count;
    }
    rfUtils utils;
    utils.toastCount = 9;
    EXPECT_TRUE(utils.setToastMessage("last"));
    EXPECT_EQ(utils.toastMessages[9], "last");
    EXPECT_EQ(utils.getNoOfToast(), 10);
}

}  // namespace

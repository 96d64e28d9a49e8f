// Long random use of the toast slots against an array that follows the same rules.
#include <support/samples.h>

#include <rfUtils/presentation/rfUtils.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

using rfu::test::Samples;

struct Model {
    int count = 0;
    std::array<std::string, 10> texts;

    void store(const std::string& text) {
        if (count >= 0 && count <= 9) {
            texts[static_cast<std::size_t>(count)] = text;
            count = count + 1;
        }
    }

    void clear() {
        for (std::string& slot : texts) {
            slot = "None";
        }
        count = 0;
    }
};

TEST(ToastModel, HoldsWhatAPlainArrayHolds) {
    using Limits = std::numeric_limits<int>;
    Samples samples(20241002);
    rfUtils utils;
    Model model;
    for (int i = 0; i < 50000; ++i) {
        switch (samples.below(40)) {
            case 0:
            case 1:
                utils.clearToastMessage();
                model.clear();
                break;
            case 2:  // the application may write both
                model.count =
                    samples.oneOf(std::array<int, 6>{-1, 3, 9, 10, Limits::max(), Limits::min()});
                utils.toastCount = model.count;
                break;
            case 3:
                model.texts[static_cast<std::size_t>(i) % 10] = "written";
                utils.toastMessages[static_cast<std::size_t>(i) % 10] = "written";
                break;
            default: {
                const std::string text = samples.text(std::string("ab\0\xC2\xB5", 5), 40);
                ASSERT_TRUE(utils.setToastMessage(text));
                model.store(text);
                break;
            }
        }
        ASSERT_EQ(utils.getNoOfToast(), model.count) << i;
        ASSERT_EQ(utils.toastMessages, model.texts) << i;
    }
}

}  // namespace

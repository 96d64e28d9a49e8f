// A sequence of operations on the toasts of rfUtils, whose count the application may set to
// anything. After each one the count and all ten texts are those of a model.
#include <rfUtils/presentation/rfUtils.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "support/input.h"
#include "support/require.h"

using namespace rfu::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static rfUtils utils;
    std::vector<std::string> texts(10);
    int count = 0;
    utils.toastCount = 0;
    utils.toastMessages.fill("");

    Input input(data, size);
    while (!input.atEnd()) {
        switch (input.below(8)) {
            case 0:
                utils.clearToastMessage();
                texts.assign(10, "None");
                count = 0;
                break;
            case 1:
                count = utils.toastCount = input.integer();
                break;
            default: {
                const std::string text = input.text();
                if (count >= 0 && count < 10) {
                    texts[static_cast<std::size_t>(count++)] = text;
                }
                REQUIRE(utils.setToastMessage(text));
            }
        }
        REQUIRE(utils.getNoOfToast() == count && utils.toastCount == count);
        REQUIRE(std::equal(texts.begin(), texts.end(), utils.toastMessages.begin(),
                           utils.toastMessages.end()));
    }
    return 0;
}

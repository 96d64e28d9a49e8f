#include <rfUtils/presentation/rfUtils.h>

#include <cstddef>
#include <string>
#include <utility>

bool rfUtils::setToastMessage(std::string message) {
    // toastCount is public: whatever it was set to must not lead out of the slots.
    const auto slot = static_cast<std::size_t>(toastCount);
    if (slot < toastMessages.size()) {
        toastMessages[slot] = std::move(message);
        ++toastCount;
    }
    return true;
}

void rfUtils::clearToastMessage() {
    toastMessages.fill("None");
    toastCount = 0;
}

int rfUtils::getNoOfToast() const {
    return toastCount;
}

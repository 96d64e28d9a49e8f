// What an application does with its parameters while it starts: initial values by name, a formatter
// for each published item, the range shown beside a wrong entry, and notices for the operator.
#include <rfUtils/initial/itemInitial.h>
#include <rfUtils/platform/ServerItem.h>
#include <rfUtils/presentation/rfUtils.h>

#include <cstdio>
#include <memory>
#include <string>

namespace {

void storeInitialValues(itemInitial& values) {
    values.setInitialVal("points", 1001);
    values.setInitialVal("centre", 98.0);
    values.setInitialVal("unit", std::string("dBuV/m"));
    values.checkInitialVal();
}

void printItem(const char* name, const ServerItem& server) {
    std::printf("%s: inputType %d, formatter %s, precision %s\n", name,
                server.property(QStringLiteral("inputType")).toInt(),
                qPrintable(server.formatter()),
                qPrintable(server.property(QStringLiteral("precision")).toString()));
}

void bindItems() {
    ServerItem level;
    ServerItem attenuation;
    rfUtils::setPropertyDBM(std::make_shared<DoubleElfItem>(&level));
    rfUtils::setPropertyDB(std::make_shared<IntElfItem>(&attenuation));
    printItem("level", level);
    printItem("attenuation", attenuation);
}

void showRange(rfUtils& view) {
    constexpr int kFieldStrength = 16;  // dBuV/m
    view.fCenter = 100.0;
    view.fGain = 0.0;
    std::printf("range:%s\n", view.makeBoundaryMsg(-10.0, -30.0, kFieldStrength).c_str());
}

void collectNotices(rfUtils& view) {
    view.setToastMessage("Input overload");
    view.setToastMessage("Reference unlocked");
    for (int i = 0; i < view.getNoOfToast(); ++i) {
        std::printf("notice %d: %s\n", i + 1,
                    view.toastMessages[static_cast<std::size_t>(i)].c_str());
    }
    view.clearToastMessage();
}

}  // namespace

int main() {
    // The store embeds 5120 entries: too large for the stack of a thread.
    const auto values = std::make_unique<itemInitial>();
    storeInitialValues(*values);
    bindItems();
    rfUtils view;
    showRange(view);
    collectNotices(view);
    return 0;
}

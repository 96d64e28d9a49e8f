#include <rfUtils/presentation/rfUtils.h>

#include <rfUtils/platform/ServerItem.h>

#include <QString>
#include <QVariant>

#include <memory>
#include <optional>

namespace {

// Ways of entering a value, as the item service numbers them.
constexpr int kIntegerInput = 9;
constexpr int kRatioInput = 11;
constexpr int kDoubleInput = 12;

constexpr int kRatioDecimals = 2;

template <typename Item>
void bindItem(const std::shared_ptr<Item>& item, int inputType, const QString& formatter,
              std::optional<int> precision = std::nullopt) {
    ServerItem* const server = item ? item->serverItem() : nullptr;
    if (server == nullptr) {
        return;
    }
    server->setProperty(QStringLiteral("inputType"), QVariant(inputType));
    server->setFormatter(formatter);
    if (precision) {
        server->setProperty(QStringLiteral("precision"), QVariant(*precision));
    }
}

void bindRatio(const std::shared_ptr<DoubleElfItem>& item, const QString& formatter) {
    bindItem(item, kRatioInput, formatter, kRatioDecimals);
}

}  // namespace

void rfUtils::setPropertyFreq(std::shared_ptr<DoubleElfItem> item, const QString& formatter,
                              int precision) {
    bindItem(item, kDoubleInput, formatter, precision);
}

void rfUtils::setPropertyFreq(std::shared_ptr<DoubleElfItem> item) {
    bindItem(item, kDoubleInput, QStringLiteral("FreqFormatter"));
}

void rfUtils::setPropertyMHz(std::shared_ptr<DoubleElfItem> item, int precision) {
    bindItem(item, kDoubleInput, QStringLiteral("MhzFormatter"), precision);
}

void rfUtils::setPropertyDB(std::shared_ptr<DoubleElfItem> item) {
    bindRatio(item, QStringLiteral("DbFormatter"));
}

void rfUtils::setPropertyDB(std::shared_ptr<IntElfItem> item) {
    // The two numbers are parameters that the formatter takes from its name.
    bindItem(item, kIntegerInput, QStringLiteral("DbFormatter_0_0"));
}

void rfUtils::setPropertyDBM(std::shared_ptr<DoubleElfItem> item) {
    bindRatio(item, QStringLiteral("DbmFormatter"));
}

void rfUtils::setPropertyPPM(std::shared_ptr<DoubleElfItem> item) {
    bindRatio(item, QStringLiteral("PpmFormatter"));
}

void rfUtils::setPropertyDBC(std::shared_ptr<DoubleElfItem> item) {
    bindRatio(item, QStringLiteral("DbcFormatter"));
}

void rfUtils::setPropertyDBI(std::shared_ptr<DoubleElfItem> item) {
    bindRatio(item, QStringLiteral("DbiFormatter"));
}

void rfUtils::setPropertyUS(std::shared_ptr<IntElfItem> item) {
    bindItem(item, kIntegerInput, QStringLiteral("MicrosecondsFormatter"));
}

void rfUtils::setPropertyMS(std::shared_ptr<IntElfItem> item) {
    bindItem(item, kIntegerInput, QStringLiteral("MillisecondsFormatter"), 0);
}

void rfUtils::setPropertyNS(std::shared_ptr<IntElfItem> item) {
    bindItem(item, kIntegerInput, QStringLiteral("NanosecondsFormatter"), 0);
}

void rfUtils::setPropertySEC(std::shared_ptr<IntElfItem> item) {
    bindItem(item, kIntegerInput, QStringLiteral("SecondsFormatter"));
}

void rfUtils::setPropertyUS(std::shared_ptr<DoubleElfItem> item, int precision) {
    bindItem(item, kDoubleInput, QStringLiteral("MicrosecondsFormatter"), precision);
}

void rfUtils::setPropertyMS(std::shared_ptr<DoubleElfItem> item, int precision) {
    bindItem(item, kDoubleInput, QStringLiteral("MillisecondsFormatter"), precision);
}

void rfUtils::setPropertyNS(std::shared_ptr<DoubleElfItem> item, int precision) {
    bindItem(item, kDoubleInput, QStringLiteral("NanosecondsFormatter"), precision);
}

void rfUtils::setPropertySEC(std::shared_ptr<DoubleElfItem> item, int precision) {
    bindItem(item, kDoubleInput, QStringLiteral("SecondsFormatter"), precision);
}

void rfUtils::setPropertyPer(std::shared_ptr<DoubleElfItem> item, int precision) {
    bindItem(item, kDoubleInput, QStringLiteral("PercentFormatter"), precision);
}

#include <rfUtils/presentation/rfUtils.h>
#include <support/limits.h>

#include <QVariant>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using rfu::test::kIntMin;

namespace {

using Calls = std::vector<std::string>;
using DoublePtr = std::shared_ptr<DoubleElfItem>;
using IntPtr = std::shared_ptr<IntElfItem>;

/// Writes down every call, in order, with the type of the value.
class RecordingServer : public ServerItem {
public:
    void setProperty(const QString& name, const QVariant& value) override {
        calls.push_back(name.toStdString() + " = " + value.typeName() + " " +
                        value.toString().toStdString());
    }

    void setFormatter(const QString& name) override {
        calls.push_back("formatter " + name.toStdString());
    }

    Calls calls;
};

const struct DoubleCase {
    const char* name;
    void (*bindItem)(DoublePtr item);
    Calls expected;
} kDoubleCases[] = {
    {"Freq, three arguments",
     [](DoublePtr item) { rfUtils::setPropertyFreq(item, "SomeFormatter", 6); },
     {"inputType = int 12", "formatter SomeFormatter", "precision = int 6"}},
    {"Freq, no formatter name",
     [](DoublePtr item) { rfUtils::setPropertyFreq(item, QString(), 0); },
     {"inputType = int 12", "formatter ", "precision = int 0"}},
    {"Freq, negative precision",
     [](DoublePtr item) { rfUtils::setPropertyFreq(item, "F", -1); },
     {"inputType = int 12", "formatter F", "precision = int -1"}},
    {"Freq, item only",
     [](DoublePtr item) { rfUtils::setPropertyFreq(item); },
     {"inputType = int 12", "formatter FreqFormatter"}},
    {"MHz",
     [](DoublePtr item) { rfUtils::setPropertyMHz(item, 3); },
     {"inputType = int 12", "formatter MhzFormatter", "precision = int 3"}},
    {"MHz, negative precision",
     [](DoublePtr item) { rfUtils::setPropertyMHz(item, kIntMin); },
     {"inputType = int 12", "formatter MhzFormatter", "precision = int -2147483648"}},
    {"DB",
     [](DoublePtr item) { rfUtils::setPropertyDB(item); },
     {"inputType = int 11", "formatter DbFormatter", "precision = int 2"}},
    {"DBM",
     [](DoublePtr item) { rfUtils::setPropertyDBM(item); },
     {"inputType = int 11", "formatter DbmFormatter", "precision = int 2"}},
    {"PPM",
     [](DoublePtr item) { rfUtils::setPropertyPPM(item); },
     {"inputType = int 11", "formatter PpmFormatter", "precision = int 2"}},
    {"DBC",
     [](DoublePtr item) { rfUtils::setPropertyDBC(item); },
     {"inputType = int 11", "formatter DbcFormatter", "precision = int 2"}},
    {"DBI",
     [](DoublePtr item) { rfUtils::setPropertyDBI(item); },
     {"inputType = int 11", "formatter DbiFormatter", "precision = int 2"}},
    {"US",
     [](DoublePtr item) { rfUtils::setPropertyUS(item, 1); },
     {"inputType = int 12", "formatter MicrosecondsFormatter", "precision = int 1"}},
    {"MS",
     [](DoublePtr item) { rfUtils::setPropertyMS(item, 4); },
     {"inputType = int 12", "formatter MillisecondsFormatter", "precision = int 4"}},
    {"NS",
     [](DoublePtr item) { rfUtils::setPropertyNS(item, 5); },
     {"inputType = int 12", "formatter NanosecondsFormatter", "precision = int 5"}},
    {"SEC",
     [](DoublePtr item) { rfUtils::setPropertySEC(item, 7); },
     {"inputType = int 12", "formatter SecondsFormatter", "precision = int 7"}},
    {"Per",
     [](DoublePtr item) { rfUtils::setPropertyPer(item, -8); },
     {"inputType = int 12", "formatter PercentFormatter", "precision = int -8"}},
};

const struct IntCase {
    const char* name;
    void (*bindItem)(IntPtr item);
    Calls expected;
} kIntCases[] = {
    {"DB",
     [](IntPtr item) { rfUtils::setPropertyDB(item); },
     {"inputType = int 9", "formatter DbFormatter_0_0"}},
    {"US",
     [](IntPtr item) { rfUtils::setPropertyUS(item); },
     {"inputType = int 9", "formatter MicrosecondsFormatter"}},
    {"MS",
     [](IntPtr item) { rfUtils::setPropertyMS(item); },
     {"inputType = int 9", "formatter MillisecondsFormatter", "precision = int 0"}},
    {"NS",
     [](IntPtr item) { rfUtils::setPropertyNS(item); },
     {"inputType = int 9", "formatter NanosecondsFormatter", "precision = int 0"}},
    {"SEC",
     [](IntPtr item) { rfUtils::setPropertySEC(item); },
     {"inputType = int 9", "formatter SecondsFormatter"}},
};

template <typename Item, typename Cases>
void expectCalls(const Cases& cases) {
    for (const auto& row : cases) {
        RecordingServer server;
        row.bindItem(std::make_shared<Item>(&server));
        EXPECT_EQ(server.calls, row.expected) << row.name;
    }
}

TEST(ItemBinding, OfDoubleItemsMakesTheseCallsInThisOrder) {
    expectCalls<DoubleElfItem>(kDoubleCases);
}

TEST(ItemBinding, OfIntegerItemsMakesTheseCallsInThisOrder) {
    expectCalls<IntElfItem>(kIntCases);
}

TEST(ItemBinding, LeavesNullItemsAndItemsWithoutServerAlone) {
    for (const auto& row : kDoubleCases) {
        row.bindItem(nullptr);
        row.bindItem(std::make_shared<DoubleElfItem>(nullptr));
    }
    for (const auto& row : kIntCases) {
        row.bindItem(nullptr);
        row.bindItem(std::make_shared<IntElfItem>(nullptr));
    }
}

}  // namespace

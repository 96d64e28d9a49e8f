// The library built against an external platform reads and binds through that platform only.
#include <rfUtils/catalogues/ResultSetup.h>
#include <rfUtils/catalogues/subItemList.h>
#include <rfUtils/platform/ElfItem.h>
#include <rfUtils/platform/ServerItem.h>
#include <rfUtils/platform/VemoJsonDocument.h>
#include <rfUtils/presentation/rfUtils.h>
#include <support/messageLog.h>
#include <support/tempFiles.h>

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QString>
#include <QStringList>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

static_assert(!std::is_polymorphic<ServerItem>::value, "this is the embedded item service");
static_assert(std::is_base_of<QJsonDocument, VemoJsonDocument>::value,
              "this is the embedded reader");

namespace {

using Calls = std::vector<std::string>;

class StandinTest : public testing::Test {
protected:
    void SetUp() override {
        VemoJsonDocument::content.clear();
        VemoJsonDocument::error.clear();
        VemoJsonDocument::pathsRead.clear();
    }

    TempFiles files;
    const std::string path = files.write("no.json", "not JSON at all");
    const QString qtPath = QString::fromStdString(path);
};

TEST_F(StandinTest, CatalogueReadsThroughTheStandin) {
    VemoJsonDocument::content = R"({"item": [{"label":"L","id":"x","enum":7,"dispSeq":1}]})";
    subItemList list;
    EXPECT_TRUE(list.loadJson(path));
    EXPECT_EQ(list.getOrderFromSubItemId("item", "X"), 7);
    EXPECT_EQ(VemoJsonDocument::pathsRead, QStringList{qtPath});

    VemoJsonDocument::content = R"({"item": [{"label":"L","id":"x","enum":8,"dispSeq":1}]})";
    VemoJsonDocument::error = QStringLiteral("broken");
    EXPECT_FALSE(list.loadJson(path));
    EXPECT_EQ(list.getOrderFromSubItemId("item", "X"), 7);
}

TEST_F(StandinTest, ResultSetupsReadThroughTheStandin) {
    VemoJsonDocument::content = R"({"group": [{"id": "x", "label": "X"}]})";
    const MessageLog log;
    ResultSetup list;
    EXPECT_TRUE(list.loadJson(qtPath));
    EXPECT_EQ(list.setupId(0), QStringLiteral("x"));
    EXPECT_EQ(MessageLog::take(),
              (std::vector<LoggedMessage>{{QtDebugMsg, R"("group")", "default"}}));

    VemoJsonDocument::error = QStringLiteral("broken");
    EXPECT_FALSE(list.loadJson(qtPath));
    EXPECT_EQ(MessageLog::take(),
              (std::vector<LoggedMessage>{{QtDebugMsg, R"("broken")", "default"}}));
    EXPECT_TRUE(list.setupId(1).isNull());
}

TEST_F(StandinTest, MissingFilesDoNotReachTheStandin) {
    VemoJsonDocument::content = "{}";
    subItemList list;
    EXPECT_FALSE(list.loadJson(path + ".none"));
    EXPECT_TRUE(VemoJsonDocument::pathsRead.isEmpty());
}

TEST_F(StandinTest, BindingsReachTheStandin) {
    ServerItem item;
    rfUtils::setPropertyDB(std::make_shared<DoubleElfItem>(&item));
    EXPECT_EQ(item.calls, (Calls{"inputType=11", "formatter DbFormatter", "precision=2"}));
    item.calls.clear();
    rfUtils::setPropertyDB(std::make_shared<IntElfItem>(&item));
    EXPECT_EQ(item.calls, (Calls{"inputType=9", "formatter DbFormatter_0_0"}));
}

}  // namespace

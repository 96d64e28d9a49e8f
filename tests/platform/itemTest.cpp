#include <rfUtils/platform/ElfItem.h>
#include <rfUtils/platform/ServerItem.h>

#include <gtest/gtest.h>

#include <QString>
#include <QVariant>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace {

QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

TEST(ServerItem, StartsWithoutPropertiesAndFormatter) {
    const ServerItem item;
    EXPECT_FALSE(item.property(text("inputType")).isValid());
    EXPECT_FALSE(item.property(QString()).isValid());
    EXPECT_TRUE(item.formatter().isNull());
}

TEST(ServerItem, KeepsTheLastValueOfEachProperty) {
    ServerItem item;
    item.setProperty(text("inputType"), QVariant(12));
    item.setProperty(text("precision"), QVariant(-3));
    item.setProperty(text("inputType"), QVariant(9));
    EXPECT_EQ(item.property(text("inputType")), QVariant(9));
    EXPECT_EQ(item.property(text("inputType")).userType(), QMetaType::Int);
    EXPECT_EQ(item.property(text("precision")), QVariant(-3));
    EXPECT_TRUE(item.formatter().isNull());
}

TEST(ServerItem, ComparesPropertyNamesExactly) {
    ServerItem item;
    item.setProperty(text("precision"), QVariant(2));
    item.setProperty(QString(), text("empty name"));
    EXPECT_FALSE(item.property(text("Precision")).isValid());
    EXPECT_FALSE(item.property(text("precision ")).isValid());
    EXPECT_EQ(item.property(text("")), QVariant(text("empty name")));
}

TEST(ServerItem, RemovesAPropertyByAnInvalidValue) {
    ServerItem item;
    item.setProperty(text("precision"), QVariant(2));
    item.setProperty(text("precision"), QVariant());
    EXPECT_FALSE(item.property(text("precision")).isValid());
}

TEST(ServerItem, KeepsTheLastFormatter) {
    ServerItem item;
    item.setFormatter(text("DbFormatter"));
    item.setFormatter(text("MhzFormatter"));
    EXPECT_EQ(item.formatter(), text("MhzFormatter"));
    EXPECT_FALSE(item.property(text("formatter")).isValid());
}

/// An item service of an application, derived from the embedded one.
class RecordingItem : public ServerItem {
public:
    RecordingItem(std::vector<std::string>& calls, bool& alive) : calls_(calls), alive_(alive) {
        alive_ = true;
    }
    ~RecordingItem() override { alive_ = false; }
    void setProperty(const QString& name, const QVariant& value) override {
        calls_.push_back(name.toStdString() + '=' + value.toString().toStdString());
    }
    void setFormatter(const QString& name) override { calls_.push_back(name.toStdString()); }

private:
    std::vector<std::string>& calls_;
    bool& alive_;
};

TEST(ServerItem, CanBeReplacedThroughItsVirtualOperations) {
    std::vector<std::string> calls;
    bool alive = false;
    std::unique_ptr<ServerItem> item = std::make_unique<RecordingItem>(calls, alive);
    const DoubleElfItem parameter(item.get());
    parameter.serverItem()->setProperty(text("precision"), QVariant(2));
    parameter.serverItem()->setFormatter(text("DbFormatter"));
    EXPECT_EQ(calls, (std::vector<std::string>{"precision=2", "DbFormatter"}));
    EXPECT_FALSE(item->property(text("precision")).isValid());
    EXPECT_TRUE(alive);
    item.reset();
    EXPECT_FALSE(alive);
}

template <typename Item>
class ElfItemTest : public testing::Test {};
using ItemTypes = testing::Types<DoubleElfItem, IntElfItem>;
TYPED_TEST_SUITE(ElfItemTest, ItemTypes, );

TYPED_TEST(ElfItemTest, HoldsThePointerWithoutOwningIt) {
    std::vector<std::string> calls;
    bool alive = false;
    {
        RecordingItem server(calls, alive);
        {
            const auto item = std::make_shared<TypeParam>(&server);
            EXPECT_EQ(item->serverItem(), &server);
            const TypeParam copy = *item;
            EXPECT_EQ(copy.serverItem(), &server);
        }
        EXPECT_TRUE(alive);
    }
    EXPECT_FALSE(alive);
    EXPECT_TRUE(calls.empty());
}

TYPED_TEST(ElfItemTest, MayHoldNoServerItem) {
    EXPECT_EQ(TypeParam(nullptr).serverItem(), nullptr);
}

// Its functions are inline: the layout is compiled into programs.
TYPED_TEST(ElfItemTest, IsOnePointer) {
    EXPECT_EQ(sizeof(TypeParam), sizeof(ServerItem*));
    EXPECT_TRUE(std::is_standard_layout<TypeParam>::value);
    EXPECT_TRUE(std::is_trivially_copyable<TypeParam>::value);
}

TYPED_TEST(ElfItemTest, HasAnExplicitConstructor) {
    EXPECT_TRUE((std::is_constructible<TypeParam, ServerItem*>::value));
    EXPECT_FALSE((std::is_convertible<ServerItem*, TypeParam>::value));
    EXPECT_FALSE((std::is_base_of<ServerItem, TypeParam>::value));
    EXPECT_FALSE(std::is_default_constructible<TypeParam>::value);
}

}  // namespace

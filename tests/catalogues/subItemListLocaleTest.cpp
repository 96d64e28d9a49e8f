#include <rfUtils/catalogues/subItemList.h>
#include <support/tempFiles.h>

#include <gtest/gtest.h>

#include <locale>
#include <stdexcept>
#include <string>

#include "catalogueContent.h"

namespace {

/// Sets the global locale and restores the earlier one.
class GlobalLocale {
public:
    explicit GlobalLocale(const std::locale& locale) : before_(std::locale::global(locale)) {}
    ~GlobalLocale() { std::locale::global(before_); }
    GlobalLocale(const GlobalLocale&) = delete;
    GlobalLocale& operator=(const GlobalLocale&) = delete;

private:
    std::locale before_;
};

/// Upper-cases as ISO 8859-1 does, so that no 8-bit locale needs to be installed.
class Latin1 : public std::ctype<char> {
    using std::ctype<char>::do_toupper;
    char do_toupper(char c) const override {
        const auto byte = static_cast<unsigned char>(c);
        const bool small = (c >= 'a' && c <= 'z') || (byte >= 0xE0 && byte != 0xF7 && byte != 0xFF);
        return small ? static_cast<char>(byte - 0x20) : c;
    }
};

std::string keyOf(const std::string& id) {
    subItemList list;
    list.addSubItem("item", "Label", id, 1, 1);
    return contentOf(list, "item").begin()->first;
}

TEST(SubItemListLocale, ClassicChangesOnlyTheLettersAToZ) {
    const GlobalLocale classic(std::locale::classic());
    for (int code = 0; code < 256; ++code) {
        const char byte = static_cast<char>(code);
        const char upper = code >= 'a' && code <= 'z' ? static_cast<char>(code - 'a' + 'A') : byte;
        EXPECT_EQ(keyOf(std::string(1, byte)), std::string(1, upper)) << code;
    }
    EXPECT_EQ(keyOf("größe µ i"), "GRößE µ I");
}

TEST(SubItemListLocale, Utf8LocalesChangeOnlyAsciiLetters) {
    for (const char* name : {"C.UTF-8", "de_DE.UTF-8", "tr_TR.UTF-8"}) {
        try {
            const GlobalLocale locale{std::locale(name)};
            EXPECT_EQ(keyOf("abcdefgh jklmnopqrstuvwxyz"), "ABCDEFGH JKLMNOPQRSTUVWXYZ") << name;
            for (int code = 128; code < 256; ++code) {
                const std::string byte(1, static_cast<char>(code));
                EXPECT_EQ(keyOf(byte), byte) << name << ' ' << code;
            }
            EXPECT_EQ(keyOf("ıİşğ"), "ıİşğ") << name;
        } catch (const std::runtime_error&) {
            GTEST_LOG_(INFO) << "the locale " << name << " is not installed";
        }
    }
}

TEST(SubItemListLocale, TurkishLeavesTheLetterIAsItIs) {
    const TempFiles files;
    const std::string path =
        files.write("dist.json", R"({"item": [{"label":"Distance","id":"dist","enum":1,"dispSeq":1},
                                  {"label":"Auto","id":"auto","enum":2,"dispSeq":1}]})");
    std::locale turkish;
    try {
        turkish = std::locale("tr_TR.UTF-8");
    } catch (const std::runtime_error&) {
        GTEST_SKIP() << "the locale tr_TR.UTF-8 is not installed";
    }
    subItemList list;
    {
        const GlobalLocale locale(turkish);
        ASSERT_TRUE(list.loadJson(path));
        EXPECT_EQ(list.getOrderFromSubItemId("item", "dist"), 1);
        EXPECT_EQ(list.getOrderFromSubItemId("item", "DiST"), 1);
        EXPECT_EQ(list.getOrderFromSubItemId("item", "DIST"), -999);
        EXPECT_EQ(list.getOrderFromSubItemId("item", "AUTO"), 2);
        list.addSubItem("item", "Another", "DIST", 3, 1);
        EXPECT_EQ(contentOf(list, "item").size(), 3U);
    }
    const GlobalLocale classic(std::locale::classic());
    EXPECT_EQ(list.getOrderFromSubItemId("item", "dist"), 3);  // finds the key DIST, the other one
    EXPECT_EQ(list.getOrderFromSubItemId("item", "DiST"), 3);
    EXPECT_TRUE(list.deleteSubItemById("item", "dist"));
    EXPECT_FALSE(list.deleteSubItemById("item", "dist"));
    EXPECT_EQ(list.getOrderFromSubItemId("item", "auto"), 2);
    EXPECT_EQ(contentOf(list, "item").size(), 2U);  // the key DiST cannot be reached
}

TEST(SubItemListLocale, FollowsTheLocaleAtTheTimeOfTheCall) {
    // an id in ISO 8859-1 and its upper case in ASCII only and in full
    const std::string id = "gr\xF6n";
    const std::string asciiUpper = "GR\xF6N";
    const std::string latin1Upper = "GR\xD6N";
    const GlobalLocale classic(std::locale::classic());
    subItemList list;
    list.addSubItem("item", "Green", id, 1, 1);
    EXPECT_EQ(list.getOrderFromSubItemId("item", asciiUpper), 1);
    EXPECT_EQ(list.getOrderFromSubItemId("item", latin1Upper), -999);
    {
        const GlobalLocale latin1(std::locale(std::locale::classic(), new Latin1));
        EXPECT_EQ(list.getOrderFromSubItemId("item", id), -999);
        list.addSubItem("item", "Green", id, 2, 1);
        EXPECT_EQ(list.getOrderFromSubItemId("item", latin1Upper), 2);
        EXPECT_EQ(list.getOrderFromSubItemId("item", asciiUpper), 2);
        EXPECT_TRUE(list.deleteSubItemById("item", "gR\xD6n"));
        std::string found;
        int code = 0;
        EXPECT_FALSE(list.getSubItemEnumDataFromId("item", id, found, code));
        EXPECT_EQ(list.getLabelFromSubItemId("item", id), "");
    }
    EXPECT_EQ(list.getOrderFromSubItemId("item", id), 1);
}

TEST(SubItemListLocale, ItemIdsAndLabelsKeepTheirLetterCase) {
    for (const std::locale& locale :
         {std::locale::classic(), std::locale(std::locale::classic(), new Latin1)}) {
        const GlobalLocale global(locale);
        subItemList list;
        list.addSubItem("item", "Label", "id", 1, 1);
        EXPECT_FALSE(list.deleteItemById("ITEM"));
        EXPECT_EQ(list.getSubItemIdFromLabel("item", "LABEL"), "");
        EXPECT_EQ(list.getSubItemIdFromLabel("item", "Label"), "id");
    }
}

}  // namespace

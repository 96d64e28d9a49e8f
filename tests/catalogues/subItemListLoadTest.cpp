#include <rfUtils/catalogues/subItemList.h>
#include <rfUtils/detail/qtVersion.h>
#include <support/allocations.h>
#include <support/deadline.h>
#include <support/messageLog.h>
#include <support/tempFiles.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "catalogueContent.h"

// The number of processed arrays is private and nothing reads it; an explicit instantiation may
// name it all the same.
std::int32_t& arrayCount(subItemList& list);
template <std::int32_t subItemList::*Count>
struct Reach {
    friend std::int32_t& arrayCount(subItemList& list) { return list.*Count; }
};
template struct Reach<&subItemList::itemListCount>;

namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

constexpr char kAtten[] = R"({"atten": [
    {"label": "Auto", "id": "auto", "enum": 0, "dispSeq": 1},
    {"label": "Manual", "id": "manual", "enum": 1, "dispSeq": 2}]})";

/// A file with one item "item" of one choice.
std::string choiceFile(const std::string& members) {
    return "{\"item\": [{" + members + "}]}";
}

class SubItemListLoad : public testing::Test {
protected:
    bool load(std::string_view json) { return list_.loadJson(files_.write("items.json", json)); }

    /// Each file is refused silently and leaves what was loaded before.
    void expectRefused(const std::vector<std::string>& paths) {
        ASSERT_TRUE(load(kAtten));
        const Lines before = dumpOf(list_);
        for (const std::string& path : paths) {
            EXPECT_FALSE(list_.loadJson(path)) << path;
        }
        EXPECT_EQ(dumpOf(list_), before);
        EXPECT_EQ(arrayCount(list_), 1);
        EXPECT_TRUE(MessageLog::take().empty());
    }

    subItemList list_;
    TempFiles files_;

private:
    MessageLog log_;
};

TEST(SubItem, IsAnAggregateInFieldOrder) {
    const subItem record{"item", "id", "label", 3, 4};
    EXPECT_EQ(record.itemId, "item");
    EXPECT_EQ(record.id, "id");
    EXPECT_EQ(record.label, "label");
    EXPECT_EQ(record.enumValue, 3);
    EXPECT_EQ(record.dispSeq, 4);
    EXPECT_TRUE(std::is_aggregate_v<subItem>);
    EXPECT_TRUE((std::is_same_v<decltype(subItem::enumValue), std::int32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(subItem::dispSeq), std::int32_t>));
    const subItem empty;
    EXPECT_EQ(empty.enumValue, 0);
    EXPECT_EQ(empty.dispSeq, 0);
}

TEST_F(SubItemListLoad, StartsEmpty) {
    EXPECT_EQ(arrayCount(list_), 0);
    EXPECT_EQ(dumpOf(list_), Lines());
}

TEST_F(SubItemListLoad, ReadsAnItemWithItsChoices) {
    EXPECT_TRUE(load(kAtten));
    EXPECT_EQ(contentOf(list_, "atten"),
              (Content{{"AUTO", {"atten", "auto", "Auto", 0, 1}},
                       {"MANUAL", {"atten", "manual", "Manual", 1, 2}}}));
    EXPECT_EQ(arrayCount(list_), 1);
}

TEST_F(SubItemListLoad, RefusesAMissingFileAndChangesNothing) {
    const std::string none = files_.path("none.json");
    expectRefused({none, files_.path("none/none.json"), "", files_.path("items.json/none"),
                   files_.makeLink("dangling", none),
                   files_.path("items.json") + std::string("\0", 1), "\xFF\xFE"});
}

TEST_F(SubItemListLoad, RefusesWhatCannotBeParsedAndChangesNothing) {
    const Deadline deadline;
    const std::string good = choiceFile(R"("label":"L","id":"x","enum":1,"dispSeq":1)");
    const std::string deep = std::string(1024, '[') + std::string(1024, ']');
    std::vector<std::string> paths = {files_.makeFolder("folder"),
                                      files_.makeFifo("fifo"),
                                      "/dev/zero",
                                      "/dev/null",
                                      files_.write("empty", ""),
                                      files_.write("bom", "\xEF\xBB\xBF"),
                                      files_.write("number", "5"),
                                      files_.write("garbage", good + "x"),
                                      files_.write("deep", "{\"item\":" + deep + "}"),
                                      files_.write("nul", good + std::string("\0", 1))};
    for (std::size_t size = 0; size < good.size(); ++size) {
        paths.push_back(files_.write("cut" + std::to_string(size), good.substr(0, size)));
    }
    expectRefused(paths);
}

TEST_F(SubItemListLoad, AcceptsFilesWithoutAnythingUsable) {
    const struct {
        const char* json;
        int arrays;
    } kCases[] = {
        {"{}", 0},
        {R"([{"label":"L","id":"x","enum":1,"dispSeq":1}])", 0},
        {R"([[{"label":"L","id":"x","enum":1,"dispSeq":1}]])", 0},
        {R"({"item": []})", 1},
        {R"({"item": [1, "x", null, true, [], [{}]]})", 1},
        {R"({"item": [{}, {"label": "L"}]})", 1},
        {R"({"a": {}, "b": "x", "c": 1, "d": true, "e": null})", 0},
        {R"({"a": {"label":"L","id":"x","enum":1,"dispSeq":1}})", 0},
        {R"({"a": [], "b": 1, "c": []})", 2},
    };
    for (const auto& row : kCases) {
        subItemList list;
        EXPECT_TRUE(list.loadJson(files_.write("unusable.json", row.json))) << row.json;
        EXPECT_EQ(dumpOf(list), Lines()) << row.json;
        EXPECT_EQ(arrayCount(list), row.arrays) << row.json;
        for (const char* item : {"item", "a", "b", "c"}) {
            EXPECT_FALSE(list.deleteItemById(item)) << row.json;
        }
    }
    EXPECT_TRUE(MessageLog::take().empty());
}

TEST_F(SubItemListLoad, NeedsAllFourMembersOfAChoice) {
    const char* const kMembers[] = {R"("label": "L")", R"("id": "x")", R"("enum": 7)",
                                    R"("dispSeq": 8)"};
    for (unsigned present = 0; present < 16; ++present) {
        std::string members = R"("other": 1)";
        for (unsigned member = 0; member < 4; ++member) {
            if ((present >> member & 1U) != 0) {
                members += std::string(", ") + kMembers[member];
            }
        }
        subItemList list;
        EXPECT_TRUE(list.loadJson(files_.write("members.json", choiceFile(members))));
        const Lines expected = present == 15 ? Lines{R"(1 "X" "item" "L" "x" 7 8 )"} : Lines();
        EXPECT_EQ(dumpOf(list), expected) << members;
        EXPECT_EQ(arrayCount(list), 1) << members;
    }
}

TEST_F(SubItemListLoad, ComparesMemberNamesExactly) {
    EXPECT_TRUE(load(choiceFile(R"("Label":"L","ID":"x","Enum":7,"dispseq":8)")));
    EXPECT_EQ(dumpOf(list_), Lines());
}

TEST_F(SubItemListLoad, KeepsGoodChoicesAmongBadOnes) {
    EXPECT_TRUE(load(R"({"item": [
        null, {"label":"A","id":"a","enum":1,"dispSeq":1}, 5, {"label":"B","id":"b","enum":2},
        [{"label":"C","id":"c","enum":3,"dispSeq":3}],
        {"label":"D","id":"d","enum":4,"dispSeq":4,"more":{"id":"e"}}]})"));
    EXPECT_EQ(contentOf(list_, "item"),
              (Content{{"A", {"item", "a", "A", 1, 1}}, {"D", {"item", "d", "D", 4, 4}}}));
    EXPECT_EQ(arrayCount(list_), 1);
}

TEST_F(SubItemListLoad, ReadsIntegersOnlyFromWholeNumbersOf32Bits) {
    const struct {
        const char* json;
        std::int32_t expected;
    } kCases[] = {
        {"7", 7},
        {"-7", -7},
        {"0", 0},
        {"-0", 0},
        {"2.0", 2},
        {"2e0", 2},
        {"1e2", 100},
        {"20e-1", 2},
        {"2.5", 0},
        {"0.9999", 0},
        {"-0.5", 0},
        {"2147483647", 2147483647},
        {"2147483647.0", 2147483647},
        {"2147483647.5", 0},
        {"2147483648", 0},
        {"2147483648.0", 0},
        {"-2147483648", std::numeric_limits<std::int32_t>::min()},
        {"-2147483648.0", std::numeric_limits<std::int32_t>::min()},
        {"-2147483649", 0},
        {"4294967297", 0},
        {"9223372036854775808", 0},
        {"1e300", 0},
        {"-1e300", 0},
        {"\"12\"", 0},
        {"\"\"", 0},
        {"true", 0},
        {"false", 0},
        {"null", 0},
        {"[12]", 0},
        {"{\"a\": 12}", 0},
    };
    for (const auto& row : kCases) {
        const std::string json = row.json;
        ASSERT_TRUE(load(choiceFile(R"("label":"L","id":"x","dispSeq":5,"enum":)" + json)));
        EXPECT_EQ(contentOf(list_, "item"), (Content{{"X", {"item", "x", "L", row.expected, 5}}}))
            << "enum " << json;
        ASSERT_TRUE(load(choiceFile(R"("label":"L","id":"x","enum":5,"dispSeq":)" + json)));
        EXPECT_EQ(contentOf(list_, "item"), (Content{{"X", {"item", "x", "L", 5, row.expected}}}))
            << "dispSeq " << json;
    }
}

TEST_F(SubItemListLoad, ReadsTextsAsUtf8AndOtherTypesAsEmpty) {
    const struct {
        const char* json;
        std::string_view expected;
    } kCases[] = {
        {R"("Auto")", "Auto"},
        {R"("")", ""},
        {R"("Größe µ 中 😀")", "Größe µ 中 😀"},
        {R"("\u00b5\ud83d\ude00")", "µ😀"},
        {R"("a\u0000b")", "a\0b"sv},
        {R"("\ud800x")", "?x"},
        {R"("x\udc00")", "x?"},
        {R"("\"\\\/\n")", "\"\\/\n"},
        {R"(" padded ")", " padded "},
        {"12", ""},
        {"true", ""},
        {"null", ""},
        {R"(["x"])", ""},
        {R"({"x": "y"})", ""},
    };
    for (const auto& row : kCases) {
        const std::string json = row.json;
        const std::string expected(row.expected);
        ASSERT_TRUE(load(choiceFile(R"("id":"x","enum":1,"dispSeq":2,"label":)" + json)));
        EXPECT_EQ(contentOf(list_, "item"), (Content{{"X", {"item", "x", expected, 1, 2}}}))
            << json;
        list_.deleteItemById("item");
        ASSERT_TRUE(load(choiceFile(R"("label":"L","enum":1,"dispSeq":2,"id":)" + json)));
        EXPECT_EQ(list_.getSubItemIdFromOrder("item", 1), expected) << json;
        EXPECT_EQ(list_.getLabelFromSubItemId("item", expected), "L") << json;
        list_.deleteItemById("item");
    }
}

TEST_F(SubItemListLoad, TakesItemIdsFromTheKeysExactly) {
    std::string json;
    for (const char* key : {"", "Item", "item", "a\\u0000b", "Größe", "\\ud800"}) {
        json += (json.empty() ? "{\"" : ",\"") + std::string(key) +
                R"(":[{"label":"L","id":"x","enum":1,"dispSeq":2}])";
    }
    ASSERT_TRUE(load(json + "}"));
    EXPECT_EQ(arrayCount(list_), 6);
    for (const auto& itemId : {""s, "Item"s, "item"s, "a\0b"s, "Größe"s, "?"s}) {
        EXPECT_EQ(contentOf(list_, itemId), (Content{{"X", {itemId, "x", "L", 1, 2}}})) << itemId;
    }
    EXPECT_EQ(list_.getLabelFromSubItemId("ITEM", "x"), "");
    EXPECT_EQ(list_.getLabelFromSubItemId("a", "x"), "");
}

TEST_F(SubItemListLoad, KeepsTheLaterOfChoicesWithTheSameId) {
    ASSERT_TRUE(load(R"({"item": [
        {"label":"First","id":"Auto","enum":1,"dispSeq":1},
        {"label":"Second","id":"AUTO","enum":2,"dispSeq":2},
        {"label":"Not counted","id":"auto","enum":3}]})"));
    EXPECT_EQ(contentOf(list_, "item"), (Content{{"AUTO", {"item", "AUTO", "Second", 2, 2}}}));
}

TEST_F(SubItemListLoad, KeepsTheLastOfMembersWithTheSameKey) {
    ASSERT_TRUE(load(R"({
        "item": "no array",
        "item": [{"label":"B","id":"x","id":"b","enum":1,"enum":2,"dispSeq":2}]})"));
    EXPECT_EQ(contentOf(list_, "item"), (Content{{"B", {"item", "b", "B", 2, 2}}}));
    EXPECT_EQ(arrayCount(list_), 1);
}

TEST_F(SubItemListLoad, MergesFiles) {
    ASSERT_TRUE(load(R"({
        "only first": [{"label":"A","id":"a","enum":1,"dispSeq":1}],
        "both": [{"label":"A","id":"a","enum":1,"dispSeq":1},
                 {"label":"B","id":"b","enum":2,"dispSeq":2}]})"));
    ASSERT_TRUE(load(R"({
        "both": [{"label":"B again","id":"B","enum":20,"dispSeq":0},
                 {"label":"C","id":"c","enum":3,"dispSeq":3}],
        "only second": [{"label":"D","id":"d","enum":4,"dispSeq":4}]})"));
    EXPECT_EQ(contentOf(list_, "only first"), (Content{{"A", {"only first", "a", "A", 1, 1}}}));
    EXPECT_EQ(contentOf(list_, "both"), (Content{{"A", {"both", "a", "A", 1, 1}},
                                                 {"B", {"both", "B", "B again", 20, 0}},
                                                 {"C", {"both", "c", "C", 3, 3}}}));
    EXPECT_EQ(contentOf(list_, "only second"), (Content{{"D", {"only second", "d", "D", 4, 4}}}));
    EXPECT_EQ(arrayCount(list_), 4);
}

TEST_F(SubItemListLoad, LoadingTwiceChangesOnlyTheArrayCount) {
    ASSERT_TRUE(load(kAtten));
    const Content once = contentOf(list_, "atten");
    EXPECT_EQ(arrayCount(list_), 1);
    ASSERT_TRUE(load(kAtten));
    EXPECT_EQ(contentOf(list_, "atten"), once);
    EXPECT_EQ(arrayCount(list_), 2);
    EXPECT_TRUE(list_.deleteItemById("atten"));
    EXPECT_EQ(arrayCount(list_), 2);
    arrayCount(list_) = std::numeric_limits<std::int32_t>::max();
    EXPECT_TRUE(load(kAtten));
    EXPECT_EQ(arrayCount(list_), std::numeric_limits<std::int32_t>::max());
}

TEST_F(SubItemListLoad, TakesMemoryInProportionToTheFile) {
    const Deadline deadline;
    // Within Qt's parser, for each item: two blocks of 24 bytes on Qt 5, three of 64 on Qt 6.
    constexpr std::size_t kMaxBytesPerByte = rfu::qt::kIsQt6 ? 12 : 10;
    const std::string longText(100000, 'x');
    const auto choices = [](int count, const std::string& id) {
        std::string text;
        for (int i = 0; i < count; ++i) {
            text += (i == 0 ? "" : ",") + (R"({"label":"","id":")" + id) +
                    (id.empty() ? std::to_string(i) : "") + R"(","enum":0,"dispSeq":0})";
        }
        return text;
    };
    std::string items;
    for (int i = 0; i < 2000; ++i) {
        items += ",\"" + std::to_string(i) + "\":[" + choices(1, "") + ']';
    }
    const struct {
        const char* name;
        std::string json;
    } kCases[] = {
        {"many choices of a long item id", "{\"" + longText + "\":[" + choices(2000, "") + "]}"},
        {"many choices of one id", "{\"item\":[" + choices(2000, "x") + "]}"},
        {"many items", '{' + items.substr(1) + '}'},
        {"a long id", "{\"item\":[" + choices(1, longText) + "]}"},
    };
    for (const auto& row : kCases) {
        const std::string path = files_.write("items.json", row.json);
        subItemList list;
        const Allocations allocations;
        const bool isLoaded = list.loadJson(path);
        const std::size_t bytes = allocations.bytes();
        EXPECT_TRUE(isLoaded) << row.name;
        EXPECT_LE(bytes, kMaxBytesPerByte * row.json.size()) << row.name;
    }
}

TEST_F(SubItemListLoad, ReadsPathsInUtf8) {
    const std::string path = files_.write("größe µ 😀.json", kAtten);
    EXPECT_TRUE(list_.loadJson(path));
    EXPECT_TRUE(list_.loadJson(files_.makeLink("link", path)));
    EXPECT_TRUE(load(std::string("\xEF\xBB\xBF") + kAtten));
    EXPECT_EQ(arrayCount(list_), 3);
}

TEST(SubItemListAdd, TakesTheLabelBeforeTheId) {
    subItemList list;
    EXPECT_TRUE(list.addSubItem("freq", "Manual", "man", 1, 2));
    EXPECT_EQ(contentOf(list, "freq"), (Content{{"MAN", {"freq", "man", "Manual", 1, 2}}}));
    EXPECT_EQ(arrayCount(list), 0);
}

TEST(SubItemListAdd, ReplacesTheRecordOfTheSameId) {
    subItemList list;
    EXPECT_TRUE(list.addSubItem("freq", "Manual", "man", 1, 2));
    EXPECT_TRUE(list.addSubItem("freq", "By hand", "Man", -3, -4));
    EXPECT_TRUE(list.addSubItem("Freq", "Other item", "man", 5, 6));
    EXPECT_EQ(contentOf(list, "freq"), (Content{{"MAN", {"freq", "Man", "By hand", -3, -4}}}));
    EXPECT_EQ(contentOf(list, "Freq"), (Content{{"MAN", {"Freq", "man", "Other item", 5, 6}}}));
}

TEST(SubItemListAdd, CopiesAllFieldsOfARecord) {
    subItemList list;
    subItem record{"freq", "man", "Manual", 1, 2};
    EXPECT_TRUE(list.addFromSubItem(record));
    record = {"changed", "changed", "changed", 9, 9};
    EXPECT_EQ(contentOf(list, "freq"), (Content{{"MAN", {"freq", "man", "Manual", 1, 2}}}));
    EXPECT_TRUE(list.addFromSubItem({"freq", "MAN", "Again", 3, 4}));
    EXPECT_EQ(contentOf(list, "freq"), (Content{{"MAN", {"freq", "MAN", "Again", 3, 4}}}));
    EXPECT_TRUE(list.addFromSubItem({}));
    EXPECT_EQ(contentOf(list, ""), (Content{{"", {"", "", "", 0, 0}}}));
}

TEST(SubItemListAdd, CopiesOfACatalogueAreIndependent) {
    subItemList list;
    list.addSubItem("freq", "Manual", "man", 1, 2);
    subItemList copy = list;
    copy.deleteItemById("freq");
    EXPECT_EQ(list.getOrderFromSubItemId("freq", "man"), 1);
    EXPECT_EQ(copy.getOrderFromSubItemId("freq", "man"), -999);
}

}  // namespace

#include <rfUtils/catalogues/subItemList.h>
#include <support/deadline.h>
#include <support/messageLog.h>
#include <support/tempFiles.h>

#include "catalogueContent.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>

// The number of arrays worked through is private and read by nothing; an explicit instantiation
// may name it all the same.
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

TEST(SubItemListLoad, StartsEmpty) {
    subItemList list;
    EXPECT_EQ(arrayCount(list), 0);
    EXPECT_EQ(dumpOf(list), Lines());
}

TEST(SubItemListLoad, ReadsAnItemWithItsChoices) {
    const TempFiles files;
    subItemList list;
    EXPECT_TRUE(list.loadJson(files.write("atten.json", kAtten)));
    EXPECT_EQ(contentOf(list, "atten"), (Content{{"AUTO", {"atten", "auto", "Auto", 0, 1}},
                                                 {"MANUAL", {"atten", "manual", "Manual", 1, 2}}}));
    EXPECT_EQ(arrayCount(list), 1);
}

TEST(SubItemListLoad, RefusesAMissingFileAndChangesNothing) {
    const TempFiles files;
    subItemList list;
    ASSERT_TRUE(list.loadJson(files.write("atten.json", kAtten)));
    const Lines before = dumpOf(list);
    const MessageLog log;
    for (const std::string& path :
         {files.path("none.json"), files.path("none/none.json"), std::string(),
          files.path("atten.json/none"), files.makeLink("dangling", files.path("none.json")),
          files.path("atten.json") + std::string("\0", 1), std::string("\xFF\xFE")}) {
        EXPECT_FALSE(list.loadJson(path)) << path;
    }
    EXPECT_EQ(dumpOf(list), before);
    EXPECT_EQ(arrayCount(list), 1);
    EXPECT_TRUE(MessageLog::take().empty());
}

TEST(SubItemListLoad, RefusesWhatCannotBeParsedAndChangesNothing) {
    const Deadline deadline;
    const TempFiles files;
    subItemList list;
    ASSERT_TRUE(list.loadJson(files.write("atten.json", kAtten)));
    const Lines before = dumpOf(list);
    const std::string good = choiceFile(R"("label":"L","id":"x","enum":1,"dispSeq":1)");
    const MessageLog log;
    for (const std::string& path :
         {files.makeFolder("folder"), files.makeFifo("fifo"), std::string("/dev/zero"),
          std::string("/dev/null"), files.write("empty", ""), files.write("bom", "\xEF\xBB\xBF"),
          files.write("number", "5"), files.write("garbage", good + "x"),
          files.write("deep", "{\"item\":" + std::string(1024, '[') + std::string(1024, ']') + "}"),
          files.write("nul", good + std::string("\0", 1))}) {
        EXPECT_FALSE(list.loadJson(path)) << path;
    }
    for (std::size_t size = 0; size < good.size(); ++size) {
        EXPECT_FALSE(list.loadJson(files.write("cut", good.substr(0, size)))) << size;
    }
    EXPECT_EQ(dumpOf(list), before);
    EXPECT_EQ(arrayCount(list), 1);
    EXPECT_TRUE(MessageLog::take().empty());
}

TEST(SubItemListLoad, AcceptsFilesWithoutAnythingUsable) {
    const struct {
        const char* name;
        const char* bytes;
        int arrays;
    } kCases[] = {
        {"empty object", "{}", 0},
        {"array at the top", R"([{"label":"L","id":"x","enum":1,"dispSeq":1}])", 0},
        {"array of items at the top", R"([[{"label":"L","id":"x","enum":1,"dispSeq":1}]])", 0},
        {"empty array", R"({"item": []})", 1},
        {"no objects in the array", R"({"item": [1, "x", null, true, [], [{}]]})", 1},
        {"only unusable choices", R"({"item": [{}, {"label": "L"}]})", 1},
        {"members that are no arrays", R"({"a": {}, "b": "x", "c": 1, "d": true, "e": null})", 0},
        {"choice outside an array", R"({"a": {"label":"L","id":"x","enum":1,"dispSeq":1}})", 0},
        {"two empty arrays and a number", R"({"a": [], "b": 1, "c": []})", 2},
    };
    const TempFiles files;
    const MessageLog log;
    for (const auto& row : kCases) {
        subItemList list;
        EXPECT_TRUE(list.loadJson(files.write("unusable.json", row.bytes))) << row.name;
        EXPECT_EQ(dumpOf(list), Lines()) << row.name;
        EXPECT_EQ(arrayCount(list), row.arrays) << row.name;
        for (const char* item : {"item", "a", "b", "c"}) {
            EXPECT_FALSE(list.deleteItemById(item)) << row.name;
        }
    }
    EXPECT_TRUE(MessageLog::take().empty());
}

TEST(SubItemListLoad, NeedsAllFourMembersOfAChoice) {
    const char* const kMembers[] = {R"("label": "L")", R"("id": "x")", R"("enum": 7)",
                                    R"("dispSeq": 8)"};
    const TempFiles files;
    for (unsigned present = 0; present < 16; ++present) {
        std::string members = R"("other": 1)";
        for (unsigned member = 0; member < 4; ++member) {
            if ((present >> member & 1U) != 0) {
                members += std::string(", ") + kMembers[member];
            }
        }
        subItemList list;
        EXPECT_TRUE(list.loadJson(files.write("members.json", choiceFile(members))));
        const Lines expected = present == 15 ? Lines{R"(1 "X" "item" "L" "x" 7 8 )"} : Lines();
        EXPECT_EQ(dumpOf(list), expected) << members;
        EXPECT_EQ(arrayCount(list), 1) << members;
    }
}

TEST(SubItemListLoad, ComparesMemberNamesExactly) {
    const TempFiles files;
    subItemList list;
    EXPECT_TRUE(list.loadJson(
        files.write("names.json", choiceFile(R"("Label":"L","ID":"x","Enum":7,"dispseq":8)"))));
    EXPECT_EQ(dumpOf(list), Lines());
}

TEST(SubItemListLoad, KeepsGoodChoicesAmongBadOnes) {
    const TempFiles files;
    subItemList list;
    EXPECT_TRUE(list.loadJson(files.write("mixed.json", R"({"item": [
        null, {"label":"A","id":"a","enum":1,"dispSeq":1}, 5, {"label":"B","id":"b","enum":2},
        [{"label":"C","id":"c","enum":3,"dispSeq":3}],
        {"label":"D","id":"d","enum":4,"dispSeq":4,"more":{"id":"e"}}]})")));
    EXPECT_EQ(contentOf(list, "item"),
              (Content{{"A", {"item", "a", "A", 1, 1}}, {"D", {"item", "d", "D", 4, 4}}}));
    EXPECT_EQ(arrayCount(list), 1);
}

TEST(SubItemListLoad, ReadsIntegersOnlyFromWholeNumbersOf32Bits) {
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
    const TempFiles files;
    for (const auto& row : kCases) {
        const std::string json = row.json;
        subItemList list;
        ASSERT_TRUE(list.loadJson(files.write(
            "enum.json", choiceFile(R"("label":"L","id":"x","dispSeq":5,"enum":)" + json))));
        EXPECT_EQ(contentOf(list, "item"), (Content{{"X", {"item", "x", "L", row.expected, 5}}}))
            << "enum " << json;
        ASSERT_TRUE(list.loadJson(files.write(
            "dispSeq.json", choiceFile(R"("label":"L","id":"x","enum":5,"dispSeq":)" + json))));
        EXPECT_EQ(contentOf(list, "item"), (Content{{"X", {"item", "x", "L", 5, row.expected}}}))
            << "dispSeq " << json;
    }
}

TEST(SubItemListLoad, ReadsTextsAsUtf8AndOtherTypesAsEmpty) {
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
    const TempFiles files;
    for (const auto& row : kCases) {
        const std::string json = row.json;
        const std::string expected(row.expected);
        subItemList list;
        ASSERT_TRUE(list.loadJson(files.write(
            "label.json", choiceFile(R"("id":"x","enum":1,"dispSeq":2,"label":)" + json))));
        EXPECT_EQ(contentOf(list, "item"), (Content{{"X", {"item", "x", expected, 1, 2}}})) << json;

        subItemList ids;
        ASSERT_TRUE(ids.loadJson(files.write(
            "id.json", choiceFile(R"("label":"L","enum":1,"dispSeq":2,"id":)" + json))));
        EXPECT_EQ(ids.getSubItemIdFromOrder("item", 1), expected) << json;
        EXPECT_EQ(ids.getLabelFromSubItemId("item", expected), "L") << json;
    }
}

TEST(SubItemListLoad, TakesItemIdsFromTheKeysExactly) {
    const std::string choice = R"([{"label":"L","id":"x","enum":1,"dispSeq":2}])";
    const TempFiles files;
    subItemList list;
    ASSERT_TRUE(list.loadJson(
        files.write("keys.json", "{\"\":" + choice + ",\"Item\":" + choice + ",\"item\":" + choice +
                                     ",\"a\\u0000b\":" + choice + ",\"Größe\":" + choice +
                                     ",\"\\ud800\":" + choice + "}")));
    EXPECT_EQ(arrayCount(list), 6);
    for (const auto& itemId : {""s, "Item"s, "item"s, std::string("a\0b", 3), "Größe"s, "?"s}) {
        EXPECT_EQ(contentOf(list, itemId), (Content{{"X", {itemId, "x", "L", 1, 2}}})) << itemId;
    }
    EXPECT_EQ(list.getLabelFromSubItemId("ITEM", "x"), "");
    EXPECT_EQ(list.getLabelFromSubItemId("a", "x"), "");
}

TEST(SubItemListLoad, KeepsTheLaterOfChoicesWithTheSameId) {
    const TempFiles files;
    subItemList list;
    ASSERT_TRUE(list.loadJson(files.write("same.json", R"({"item": [
        {"label":"First","id":"Auto","enum":1,"dispSeq":1},
        {"label":"Second","id":"AUTO","enum":2,"dispSeq":2},
        {"label":"Not counted","id":"auto","enum":3}]})")));
    EXPECT_EQ(contentOf(list, "item"), (Content{{"AUTO", {"item", "AUTO", "Second", 2, 2}}}));
}

TEST(SubItemListLoad, KeepsTheLastOfMembersWithTheSameKey) {
    const TempFiles files;
    subItemList list;
    ASSERT_TRUE(list.loadJson(files.write("twice.json", R"({
        "item": "no array",
        "item": [{"label":"B","id":"x","id":"b","enum":1,"enum":2,"dispSeq":2}]})")));
    EXPECT_EQ(contentOf(list, "item"), (Content{{"B", {"item", "b", "B", 2, 2}}}));
    EXPECT_EQ(arrayCount(list), 1);
}

TEST(SubItemListLoad, MergesFiles) {
    const TempFiles files;
    subItemList list;
    ASSERT_TRUE(list.loadJson(files.write("first.json", R"({
        "only first": [{"label":"A","id":"a","enum":1,"dispSeq":1}],
        "both": [{"label":"A","id":"a","enum":1,"dispSeq":1},
                 {"label":"B","id":"b","enum":2,"dispSeq":2}]})")));
    ASSERT_TRUE(list.loadJson(files.write("second.json", R"({
        "both": [{"label":"B again","id":"B","enum":20,"dispSeq":0},
                 {"label":"C","id":"c","enum":3,"dispSeq":3}],
        "only second": [{"label":"D","id":"d","enum":4,"dispSeq":4}]})")));
    EXPECT_EQ(contentOf(list, "only first"), (Content{{"A", {"only first", "a", "A", 1, 1}}}));
    EXPECT_EQ(contentOf(list, "both"), (Content{{"A", {"both", "a", "A", 1, 1}},
                                                {"B", {"both", "B", "B again", 20, 0}},
                                                {"C", {"both", "c", "C", 3, 3}}}));
    EXPECT_EQ(contentOf(list, "only second"), (Content{{"D", {"only second", "d", "D", 4, 4}}}));
    EXPECT_EQ(arrayCount(list), 4);
}

TEST(SubItemListLoad, LoadingTwiceChangesOnlyTheArrayCount) {
    const TempFiles files;
    const std::string path = files.write("atten.json", kAtten);
    subItemList list;
    ASSERT_TRUE(list.loadJson(path));
    const Content once = contentOf(list, "atten");
    EXPECT_EQ(arrayCount(list), 1);
    ASSERT_TRUE(list.loadJson(path));
    EXPECT_EQ(contentOf(list, "atten"), once);
    EXPECT_EQ(arrayCount(list), 2);
    EXPECT_TRUE(list.deleteItemById("atten"));
    EXPECT_EQ(arrayCount(list), 2);
    arrayCount(list) = std::numeric_limits<std::int32_t>::max();
    EXPECT_TRUE(list.loadJson(path));
    EXPECT_EQ(arrayCount(list), std::numeric_limits<std::int32_t>::max());
}

TEST(SubItemListLoad, ReadsPathsInUtf8) {
    const TempFiles files;
    subItemList list;
    EXPECT_TRUE(list.loadJson(files.write("größe µ 😀.json", kAtten)));
    EXPECT_TRUE(list.loadJson(files.makeLink("link", files.path("größe µ 😀.json"))));
    EXPECT_EQ(arrayCount(list), 2);
    EXPECT_TRUE(list.loadJson(files.write("bom.json", std::string("\xEF\xBB\xBF") + kAtten)));
}

TEST(SubItemListLoad, ReadsManyItems) {
    std::string json = "{";
    for (int item = 0; item < 200; ++item) {
        json += (item == 0 ? "\"" : ",\"") + std::to_string(item) + "\":[";
        for (int choice = 0; choice < 50; ++choice) {
            json += (choice == 0 ? "" : ",") +
                    (R"({"label":"L)" + std::to_string(choice) + R"(","id":"id )") +
                    std::to_string(choice) + R"(","enum":)" + std::to_string(item * choice) +
                    R"(,"dispSeq":)" + std::to_string(choice) + "}";
        }
        json += "]";
    }
    const TempFiles files;
    subItemList list;
    ASSERT_TRUE(list.loadJson(files.write("many.json", json + "}")));
    EXPECT_EQ(arrayCount(list), 200);
    EXPECT_EQ(dumpOf(list).size(), 10000U);
    EXPECT_EQ(list.getOrderFromSubItemId("199", "ID 49"), 199 * 49);
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

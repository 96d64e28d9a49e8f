#include <rfUtils/catalogues/subItemList.h>
#include <support/allocations.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <unordered_map>

#include "catalogueContent.h"

namespace {

using Choices = std::unordered_map<std::string, subItem>;

/// Two items that share ids, codes and labels with different answers.
subItemList filled() {
    subItemList list;
    list.addSubItem("freq", "Automatic", "Auto", 0, 1);
    list.addSubItem("freq", "By hand", "Manual", 1, 5);
    list.addSubItem("freq", "Hidden", "Off", 2, 0);
    list.addSubItem("freq", "No code", "Lost", -999, 7);
    list.addSubItem("atten", "Automatic", "auto", 10, 1);
    list.addSubItem("atten", "Fixed", "fix", 1, -1);
    return list;
}

TEST(SubItemListQuery, FindsTheCodeByIdInAnyLetterCase) {
    const subItemList list = filled();
    const struct {
        const char* itemId;
        const char* subItemId;
        int expected;
    } kCases[] = {
        {"freq", "manual", 1},   {"freq", "MANUAL", 1},     {"freq", "Manual", 1},
        {"freq", "mANUAl", 1},   {"freq", "auto", 0},       {"atten", "AUTO", 10},
        {"freq", "off", 2},      {"freq", "lost", -999},    {"freq", "none", -999},
        {"freq", "", -999},      {"freq", "fix", -999},     {"freq", "manual ", -999},
        {"freq", "manua", -999}, {"FREQ", "manual", -999},  {"none", "manual", -999},
        {"", "manual", -999},    {"freq", "By hand", -999}, {"freq", "1", -999},
    };
    for (const auto& row : kCases) {
        EXPECT_EQ(list.getOrderFromSubItemId(row.itemId, row.subItemId), row.expected)
            << row.itemId << ' ' << row.subItemId;
    }
}

TEST(SubItemListQuery, FindsTheLabelByIdInAnyLetterCase) {
    const subItemList list = filled();
    const struct {
        const char* itemId;
        const char* subItemId;
        const char* expected;
    } kCases[] = {
        {"freq", "manual", "By hand"},  {"freq", "MANUAL", "By hand"}, {"freq", "OFF", "Hidden"},
        {"atten", "Auto", "Automatic"}, {"freq", "none", ""},          {"none", "manual", ""},
        {"Freq", "manual", ""},         {"freq", "By hand", ""},       {"atten", "manual", ""},
    };
    for (const auto& row : kCases) {
        EXPECT_EQ(list.getLabelFromSubItemId(row.itemId, row.subItemId), row.expected)
            << row.itemId << ' ' << row.subItemId;
    }
}

TEST(SubItemListQuery, FindsTheIdByCodeAsStored) {
    const subItemList list = filled();
    const struct {
        const char* itemId;
        int order;
        const char* expected;
    } kCases[] = {
        {"freq", 0, "Auto"},  {"freq", 1, "Manual"}, {"freq", 2, "Off"},    {"freq", -999, "Lost"},
        {"freq", 5, "None"},  {"freq", 10, "None"},  {"atten", 10, "auto"}, {"atten", 1, "fix"},
        {"atten", 0, "None"}, {"atten", -1, "None"}, {"none", 1, "None"},   {"FREQ", 1, "None"},
    };
    for (const auto& row : kCases) {
        EXPECT_EQ(list.getSubItemIdFromOrder(row.itemId, row.order), row.expected)
            << row.itemId << ' ' << row.order;
    }
}

TEST(SubItemListQuery, FindsTheIdByExactLabel) {
    const subItemList list = filled();
    const struct {
        const char* itemId;
        const char* label;
        const char* expected;
    } kCases[] = {
        {"freq", "By hand", "Manual"}, {"freq", "Hidden", "Off"}, {"atten", "Automatic", "auto"},
        {"freq", "Automatic", "Auto"}, {"freq", "by hand", ""},   {"freq", "BY HAND", ""},
        {"freq", "By han", ""},        {"freq", "Manual", ""},    {"freq", "", ""},
        {"none", "By hand", ""},       {"Freq", "By hand", ""},   {"atten", "By hand", ""},
    };
    for (const auto& row : kCases) {
        EXPECT_EQ(list.getSubItemIdFromLabel(row.itemId, row.label), row.expected)
            << row.itemId << ' ' << row.label;
    }
}

TEST(SubItemListQuery, ComparesTextsBehindANulToo) {
    const std::string label("a\0b", 3);
    const std::string id("x\0y", 3);
    subItemList list;
    list.addSubItem("item", label, id, 1, 1);
    EXPECT_EQ(list.getSubItemIdFromLabel("item", label), id);
    EXPECT_EQ(list.getSubItemIdFromLabel("item", "a"), "");
    EXPECT_EQ(list.getOrderFromSubItemId("item", std::string("X\0Y", 3)), 1);
    EXPECT_EQ(list.getOrderFromSubItemId("item", "X"), -999);
}

TEST(SubItemListQuery, ReturnsOneOfSeveralMatches) {
    subItemList list;
    std::set<std::string> ids;
    for (const char* id : {"a", "b", "c", "d"}) {
        list.addSubItem("item", "Same", id, 4, 1);
        ids.insert(id);
    }
    EXPECT_EQ(ids.count(list.getSubItemIdFromOrder("item", 4)), 1U);
    EXPECT_EQ(ids.count(list.getSubItemIdFromLabel("item", "Same")), 1U);
}

TEST(SubItemListQuery, AnswersAnEmptyIdAsFound) {
    subItemList list;
    list.addSubItem("item", "Label", "", 4, 1);
    EXPECT_EQ(list.getSubItemIdFromOrder("item", 4), "");
    EXPECT_EQ(list.getOrderFromSubItemId("item", ""), 4);
}

TEST(SubItemListQuery, GivesIdAndCodeOfOfferedChoices) {
    const subItemList list = filled();
    const struct {
        const char* name;
        const char* itemId;
        const char* subItemId;
        bool found;
        const char* id;
        int code;
    } kCases[] = {
        {"offered", "freq", "manual", true, "Manual", 1},
        {"negative sequence is offered", "atten", "FIX", true, "fix", 1},
        {"sequence 0 counts as absent", "freq", "Off", false, "untouched", 77},
        {"unknown choice", "freq", "none", false, "untouched", 77},
        {"unknown item", "none", "manual", false, "untouched", 77},
        {"item in other letter case", "Freq", "manual", false, "untouched", 77},
    };
    for (const auto& row : kCases) {
        std::string id = "untouched";
        int code = 77;
        EXPECT_EQ(list.getSubItemEnumDataFromId(row.itemId, row.subItemId, id, code), row.found)
            << row.name;
        EXPECT_EQ(id, row.id) << row.name;
        EXPECT_EQ(code, row.code) << row.name;
    }
    EXPECT_EQ(list.getOrderFromSubItemId("freq", "off"), 2);
    EXPECT_EQ(list.getLabelFromSubItemId("freq", "off"), "Hidden");
}

TEST(SubItemListQuery, TakesTheSameTextAsQuestionAndAnswer) {
    const subItemList list = filled();
    std::string id = "manual";
    int code = 0;
    EXPECT_TRUE(list.getSubItemEnumDataFromId("freq", id, id, code));
    EXPECT_EQ(id, "Manual");
    EXPECT_EQ(code, 1);
}

TEST(SubItemListQuery, CopiesTheChoicesOfAnItem) {
    subItemList list = filled();
    Choices out{{"LEFT OVER", {"x", "x", "x", 1, 1}}};
    EXPECT_TRUE(list.getSubItemsById("atten", out));
    EXPECT_EQ(Content(out.begin(), out.end()),
              (Content{{"AUTO", {"atten", "auto", "Automatic", 10, 1}},
                       {"FIX", {"atten", "fix", "Fixed", 1, -1}}}));
    out.at("AUTO").label = "changed";
    out.erase("FIX");
    EXPECT_EQ(list.getLabelFromSubItemId("atten", "auto"), "Automatic");
    EXPECT_EQ(list.getLabelFromSubItemId("atten", "fix"), "Fixed");
    list.deleteItemById("atten");
    EXPECT_EQ(out.size(), 1U);

    const Choices before = out;
    for (const char* itemId : {"atten", "none", "FREQ", ""}) {
        EXPECT_FALSE(list.getSubItemsById(itemId, out)) << itemId;
        EXPECT_EQ(out, before) << itemId;
    }
}

TEST(SubItemListQuery, TakesAnItemIdOutOfTheResultItself) {
    const subItemList list = filled();
    Choices out{{"A", {"an item id long enough to live on the heap", "", "", 0, 0}}};
    EXPECT_FALSE(list.getSubItemsById(out.at("A").itemId, out));
    out.at("A").itemId = "atten";
    EXPECT_TRUE(list.getSubItemsById(out.at("A").itemId, out));
    EXPECT_EQ(out.size(), 2U);
}

TEST(SubItemListQuery, AllocatesNothingForIdsOf15Bytes) {
    subItemList list;
    const std::string itemId = "item";
    const std::string id = "Fifteen bytes..";
    const std::string unknown = "fifteen bytes!!";
    ASSERT_EQ(id.size(), 15U);
    list.addSubItem(itemId, "Short label", id, 4, 1);
    std::string foundId(20, ' ');
    int code = 0;

    const Allocations allocations;
    int sum = list.getOrderFromSubItemId(itemId, id) + list.getOrderFromSubItemId(itemId, unknown);
    sum += static_cast<int>(list.getLabelFromSubItemId(itemId, id).size());
    const bool found = list.getSubItemEnumDataFromId(itemId, id, foundId, code);
    const bool deleted = list.deleteSubItemById(itemId, unknown);
    sum += static_cast<int>(list.getSubItemIdFromOrder(itemId, 4).size());
    const std::size_t count = allocations.count();

    EXPECT_EQ(count, 0U);
    EXPECT_EQ(sum, 4 - 999 + 11 + 15);
    EXPECT_TRUE(found);
    EXPECT_FALSE(deleted);
}

TEST(SubItemListEdit, DeletesItems) {
    subItemList list = filled();
    EXPECT_FALSE(list.deleteItemById("none"));
    EXPECT_FALSE(list.deleteItemById("FREQ"));
    EXPECT_FALSE(list.deleteItemById(""));
    EXPECT_EQ(dumpOf(list).size(), 6U);
    EXPECT_TRUE(list.deleteItemById("freq"));
    EXPECT_FALSE(list.deleteItemById("freq"));
    EXPECT_EQ(list.getOrderFromSubItemId("freq", "manual"), -999);
    EXPECT_EQ(list.getSubItemIdFromOrder("freq", 1), "None");
    EXPECT_EQ(contentOf(list, "atten").size(), 2U);
    Choices out;
    EXPECT_FALSE(list.getSubItemsById("freq", out));
}

TEST(SubItemListEdit, DeletesChoicesInAnyLetterCaseAndKeepsTheItem) {
    subItemList list = filled();
    EXPECT_FALSE(list.deleteSubItemById("atten", "none"));
    EXPECT_FALSE(list.deleteSubItemById("atten", "Manual"));
    EXPECT_FALSE(list.deleteSubItemById("none", "auto"));
    EXPECT_FALSE(list.deleteSubItemById("ATTEN", "auto"));
    EXPECT_EQ(dumpOf(list).size(), 6U);

    EXPECT_TRUE(list.deleteSubItemById("atten", "AUTO"));
    EXPECT_FALSE(list.deleteSubItemById("atten", "auto"));
    EXPECT_EQ(contentOf(list, "atten"), (Content{{"FIX", {"atten", "fix", "Fixed", 1, -1}}}));
    EXPECT_EQ(list.getOrderFromSubItemId("freq", "auto"), 0);

    EXPECT_TRUE(list.deleteSubItemById("atten", "Fix"));
    Choices out{{"LEFT OVER", {}}};
    EXPECT_TRUE(list.getSubItemsById("atten", out));
    EXPECT_TRUE(out.empty());
    EXPECT_EQ(list.getSubItemIdFromOrder("atten", 1), "None");
    EXPECT_EQ(list.getSubItemIdFromLabel("atten", "Fixed"), "");
    EXPECT_FALSE(list.deleteSubItemById("atten", "Fix"));
    EXPECT_TRUE(list.deleteItemById("atten"));
    EXPECT_FALSE(list.deleteItemById("atten"));
}

TEST(SubItemListEdit, DeletesAChoiceThatIsNotOffered) {
    subItemList list = filled();
    EXPECT_TRUE(list.deleteSubItemById("freq", "off"));
    EXPECT_EQ(list.getOrderFromSubItemId("freq", "off"), -999);
}

TEST(SubItemListDump, PrintsNothingForAnEmptyCatalogue) {
    subItemList list;
    EXPECT_EQ(dumpOf(list), Lines());
    list.addSubItem("item", "Label", "id", 1, 1);
    list.deleteSubItemById("item", "id");
    EXPECT_EQ(dumpOf(list), Lines());
}

TEST(SubItemListDump, PrintsARecordToTheByte) {
    subItemList list;
    list.addSubItem("freq", "By hand", "Manual", -1, 2);
    testing::internal::CaptureStdout();
    EXPECT_TRUE(list.checkAllSubitem());
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "1 \"MANUAL\" \"freq\" \"By hand\" \"Manual\" -1 2 \n");
}

TEST(SubItemListDump, NumbersRecordsAcrossItems) {
    subItemList list;
    list.addSubItem("freq", "By hand", "Manual", 1, 2);
    list.addSubItem("atten", "Automatic", "auto", 3000000, 0);
    const std::string freq = R"("MANUAL" "freq" "By hand" "Manual" 1 2 )";
    const std::string atten = R"("AUTO" "atten" "Automatic" "auto" 3000000 0 )";
    const Lines lines = dumpOf(list);
    EXPECT_TRUE(lines == (Lines{"1 " + freq, "2 " + atten}) ||
                lines == (Lines{"1 " + atten, "2 " + freq}))
        << testing::PrintToString(lines);
}

TEST(SubItemListDump, PrintsEveryRecordOnceWithConsecutiveNumbers) {
    subItemList list = filled();
    const Lines lines = dumpOf(list);
    EXPECT_EQ(dumpOf(list), lines);
    std::multiset<std::string> records;
    for (std::size_t line = 0; line < lines.size(); ++line) {
        const std::string number = std::to_string(line + 1) + ' ';
        ASSERT_EQ(lines[line].substr(0, number.size()), number);
        records.insert(lines[line].substr(number.size()));
    }
    EXPECT_EQ(records, (std::multiset<std::string>{R"("AUTO" "freq" "Automatic" "Auto" 0 1 )",
                                                   R"("MANUAL" "freq" "By hand" "Manual" 1 5 )",
                                                   R"("OFF" "freq" "Hidden" "Off" 2 0 )",
                                                   R"("LOST" "freq" "No code" "Lost" -999 7 )",
                                                   R"("AUTO" "atten" "Automatic" "auto" 10 1 )",
                                                   R"("FIX" "atten" "Fixed" "fix" 1 -1 )"}));
    // the choices of an item stand together
    const auto ofFreq = [](const std::string& line) {
        return line.find("\" \"freq\" \"") != std::string::npos;
    };
    EXPECT_TRUE(std::is_partitioned(lines.begin(), lines.end(), ofFreq) ||
                std::is_partitioned(lines.rbegin(), lines.rend(), ofFreq));
}

TEST(SubItemListDump, CutsTextsAtANulAndLeavesQuotesAndPercentSigns) {
    subItemList list;
    list.addSubItem("it%sem", std::string("la\0bel", 6), "i\"d%d", 1, 2);
    EXPECT_EQ(dumpOf(list), Lines{R"(1 "I"D%D" "it%sem" "la" "i"d%d" 1 2 )"});
}

}  // namespace

// Long random use of the catalogue against a map of maps that follows the same rules.
#include "catalogueContent.h"

#include <support/samples.h>
#include <support/tempFiles.h>

#include <algorithm>
#include <cstdio>
#include <locale>
#include <set>

namespace {

using rfu::test::Samples;

using Model = std::map<std::string, Content>;

const std::vector<std::string> kItems = {"atten", "Atten", "",
                                         "gr\xC3\xB6\xC3\x9F"
                                         "e",
                                         "x y"};
const std::vector<std::string> kIds = {"auto",
                                       "Auto",
                                       "AUTO",
                                       "man",
                                       "mAn",
                                       "",
                                       "\xC2\xB5m",
                                       "\xC2\xB5M",
                                       "a rather long id of a choice",
                                       "a rather long ID of a choice"};
const std::vector<std::string> kLabels = {"Auto", "auto", "Manual", "", "\xC2\xB5"};

/// The upper case of the process's locale, byte by byte.
std::string keyOf(std::string id) {
    const std::locale locale;
    const auto& letters = std::use_facet<std::ctype<char>>(locale);
    for (char& c : id) {
        c = letters.toupper(c);
    }
    return id;
}

class SubItemListModel : public testing::Test {
protected:
    subItem randomRecord() {
        return {samples.oneOf(kItems), samples.oneOf(kIds), samples.oneOf(kLabels), randomCode(),
                static_cast<int>(samples.below(3))};
    }

    int randomCode() { return samples.below(10) == 0 ? -999 : static_cast<int>(samples.below(5)); }

    void store(const subItem& record) {
        model[record.itemId].insert_or_assign(keyOf(record.id), record);
    }

    static std::string quoted(const std::string& text) { return '"' + text + '"'; }

    /// A file of some items, each of which stands in it once; members may be missing.
    void load() {
        std::string json;
        for (const std::string& itemId : kItems) {
            std::string choices;
            for (std::uint64_t i = samples.below(4); i > 0; --i) {
                subItem record = randomRecord();
                record.itemId = itemId;
                const bool complete = samples.below(4) != 0;
                choices += (choices.empty() ? "{" : ",{") + quoted("label") + ":" +
                           quoted(record.label) + ",\"id\":" + quoted(record.id) +
                           (complete ? ",\"enum\":" + std::to_string(record.enumValue) : "") +
                           ",\"dispSeq\":" + std::to_string(record.dispSeq) + "}";
                if (complete) {
                    store(record);
                }
            }
            json += (json.empty() ? "" : ",") + quoted(itemId) + ":[" + choices + "]";
        }
        std::remove(files.path("items.json").c_str());
        ASSERT_TRUE(list.loadJson(files.write("items.json", "{" + json + "}")));
        ASSERT_FALSE(list.loadJson(files.path("none.json")));
    }

    void step() {
        const subItem record = randomRecord();
        switch (samples.below(12)) {
            case 0:
            case 1:
            case 2:
                ASSERT_TRUE(list.addSubItem(record.itemId, record.label, record.id,
                                            record.enumValue, record.dispSeq));
                store(record);
                break;
            case 3:
            case 4:
            case 5:
                ASSERT_TRUE(list.addFromSubItem(record));
                store(record);
                break;
            case 6:
                ASSERT_EQ(list.deleteItemById(record.itemId), model.erase(record.itemId) == 1);
                break;
            case 7:
                load();
                break;
            default: {
                const auto item = model.find(record.itemId);
                const bool removed =
                    item != model.end() && item->second.erase(keyOf(record.id)) == 1;
                ASSERT_EQ(list.deleteSubItemById(record.itemId, record.id), removed);
                break;
            }
        }
    }

    /// The ids that a search among an item's records may give: of all that match, or the answer
    /// for nothing found.
    template <typename Predicate>
    std::set<std::string> matches(const std::string& itemId, Predicate predicate,
                                  const char* none) const {
        std::set<std::string> ids;
        if (const auto item = model.find(itemId); item != model.end()) {
            for (const auto& [key, record] : item->second) {
                if (predicate(record)) {
                    ids.insert(record.id);
                }
            }
        }
        return ids.empty() ? std::set<std::string>{none} : ids;
    }

    void expectSearches(const std::string& itemId) {
        const int code = randomCode();
        ASSERT_EQ(matches(
                      itemId, [&](const subItem& r) { return r.enumValue == code; }, "None")
                      .count(list.getSubItemIdFromOrder(itemId, code)),
                  1U)
            << itemId << ' ' << code;
        const std::string& label = samples.oneOf(kLabels);
        ASSERT_EQ(matches(
                      itemId, [&](const subItem& r) { return r.label == label; }, "")
                      .count(list.getSubItemIdFromLabel(itemId, label)),
                  1U)
            << itemId << ' ' << label;
    }

    void expectLookups(const std::string& itemId, const std::string& id) {
        const subItem* record = nullptr;
        if (const auto item = model.find(itemId); item != model.end()) {
            const auto found = item->second.find(keyOf(id));
            record = found == item->second.end() ? nullptr : &found->second;
        }
        ASSERT_EQ(list.getOrderFromSubItemId(itemId, id), record ? record->enumValue : -999);
        ASSERT_EQ(list.getLabelFromSubItemId(itemId, id), record ? record->label : "");
        std::string idOut = "kept";
        int codeOut = 77;
        const bool offered = record != nullptr && record->dispSeq != 0;
        ASSERT_EQ(list.getSubItemEnumDataFromId(itemId, id, idOut, codeOut), offered);
        ASSERT_EQ(idOut, offered ? record->id : "kept");
        ASSERT_EQ(codeOut, offered ? record->enumValue : 77);
    }

    void expectContent(const std::string& itemId) {
        std::unordered_map<std::string, subItem> out{{"KEPT", subItem()}};
        const auto item = model.find(itemId);
        ASSERT_EQ(list.getSubItemsById(itemId, out), item != model.end()) << itemId;
        const Content given(out.begin(), out.end());
        ASSERT_EQ(given, item != model.end() ? item->second : (Content{{"KEPT", subItem()}}))
            << itemId;
    }

    /// Each record once, numbered from 1, in whatever order.
    void expectDump() {
        std::multiset<std::string> expected;
        for (const auto& [itemId, content] : model) {
            for (const auto& [key, record] : content) {
                expected.insert(quoted(key) + " " + quoted(itemId) + " " + quoted(record.label) +
                                " " + quoted(record.id) + " " + std::to_string(record.enumValue) +
                                " " + std::to_string(record.dispSeq) + " ");
            }
        }
        std::multiset<std::string> given;
        int number = 0;
        for (const std::string& line : dumpOf(list)) {
            const std::string begin = std::to_string(++number) + " ";
            ASSERT_EQ(line.substr(0, begin.size()), begin);
            given.insert(line.substr(begin.size()));
        }
        ASSERT_EQ(given, expected);
    }

    TempFiles files;
    subItemList list;
    Model model;
    Samples samples{20241004};
};

TEST_F(SubItemListModel, HoldsWhatAMapOfMapsHolds) {
    for (int i = 0; i < 10000 && !HasFatalFailure(); ++i) {
        step();
        expectSearches(samples.oneOf(kItems));
        expectLookups(samples.oneOf(kItems), samples.oneOf(kIds));
        expectContent(samples.oneOf(kItems));
        if (i % 200 == 0) {
            expectDump();
            const subItemList copy = list;
            list = copy;
        }
    }
    for (const std::string& itemId : kItems) {
        expectContent(itemId);
    }
}

}  // namespace

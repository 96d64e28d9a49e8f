// A sequence of operations on subItemList against a model of ordered maps. Each operation answers
// like the model (with one of the matches where several choices match) and leaves untouched what it
// should; at the end of the sequence the choices of every item are the model's.
#include <rfUtils/catalogues/subItemList.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>

#include "support/choiceModel.h"
#include "support/input.h"
#include "support/require.h"

using namespace rfu::fuzz;

namespace {

/// A few texts that occur again and again, some in different letter case.
std::string textOf(Input& input) {
    static const std::array<std::string, 12> kTexts = {
        "",         "man",      "MAN", "Man", "auto", "aUtO",
        "\xC3\xA4", "\xC3\x84", "i",   "I",   "None", std::string("a\0b", 3)};
    const int kind = input.below(24);
    return kind < 12 ? kTexts[static_cast<std::size_t>(kind)] : input.text();
}

class Session {
public:
    void step(Input& input) {
        const int operation = input.below(12);
        const std::string item = textOf(input);
        switch (operation) {
            case 0:
            case 1:
                return add(item, input, false);
            case 2:
                return add(item, input, true);
            case 3:
                return requireItem(item);
            case 4:
                return requireIdByCode(item, input.integer());
            case 5:
                return requireIdByLabel(item, textOf(input));
            case 6:
            case 7:
                return requireChoice(item, textOf(input));
            case 8:
                return removeItem(item);
            case 9:
            case 10:
                return remove(item, textOf(input));
            default:
                return takeCopy(item);
        }
    }

    void requireAll() const { requireSameChoices(list_, model_); }

private:
    void add(const std::string& item, Input& input, bool asRecord) {
        subItem choice;
        choice.itemId = item;
        choice.id = textOf(input);
        choice.label = textOf(input);
        choice.enumValue = input.integer();
        choice.dispSeq = input.integer();
        model_[choice.itemId][upper(choice.id)] = choice;
        REQUIRE(asRecord ? list_.addFromSubItem(choice)
                         : list_.addSubItem(choice.itemId, choice.label, choice.id,
                                            choice.enumValue, choice.dispSeq));
    }

    const ItemModel* itemOf(const std::string& item) const {
        const auto found = model_.find(item);
        return found == model_.end() ? nullptr : &found->second;
    }

    void requireItem(const std::string& item) const {
        const ItemModel* const expected = itemOf(item);
        std::unordered_map<std::string, subItem> choices = {{"before", {}}};
        REQUIRE(list_.getSubItemsById(item, choices) == (expected != nullptr));
        if (expected == nullptr) {
            REQUIRE(choices.size() == 1 && choices.count("before") == 1);
        } else {
            REQUIRE(sameChoices(choices, *expected));
        }
    }

    /// The answer is the id of a choice that fits, or `none` if no choice does.
    template <typename Fits>
    void requireOneOf(const std::string& item, const std::string& answer, const char* none,
                      Fits fits) const {
        bool any = false;
        bool given = false;
        if (const ItemModel* const choices = itemOf(item)) {
            for (const auto& [key, choice] : *choices) {
                any = any || fits(choice);
                given = given || (fits(choice) && choice.id == answer);
            }
        }
        REQUIRE(any ? given : answer == none);
    }

    void requireIdByCode(const std::string& item, int code) const {
        requireOneOf(item, list_.getSubItemIdFromOrder(item, code), "None",
                     [code](const subItem& choice) { return choice.enumValue == code; });
    }

    void requireIdByLabel(const std::string& item, const std::string& label) const {
        requireOneOf(item, list_.getSubItemIdFromLabel(item, label), "",
                     [&label](const subItem& choice) { return choice.label == label; });
    }

    void requireChoice(const std::string& item, const std::string& id) const {
        const ItemModel* const choices = itemOf(item);
        const subItem* expected = nullptr;
        if (choices != nullptr && choices->count(upper(id)) > 0) {
            expected = &choices->at(upper(id));
        }
        const bool offered = expected != nullptr && expected->dispSeq != 0;
        REQUIRE(list_.getOrderFromSubItemId(item, id) == (expected ? expected->enumValue : -999));
        REQUIRE(list_.getLabelFromSubItemId(item, id) == (expected ? expected->label : ""));
        std::string foundId = "before";
        int code = -77;
        REQUIRE(list_.getSubItemEnumDataFromId(item, id, foundId, code) == offered);
        REQUIRE(foundId == (offered ? expected->id : "before"));
        REQUIRE(code == (offered ? expected->enumValue : -77));
    }

    void removeItem(const std::string& item) {
        REQUIRE(list_.deleteItemById(item) == (model_.erase(item) > 0));
    }

    /// Deletes an item from the original and goes on with a copy made before.
    void takeCopy(const std::string& item) {
        const subItemList copy = list_;
        list_.deleteItemById(item);
        list_ = copy;
    }

    void remove(const std::string& item, const std::string& id) {
        const auto found = model_.find(item);
        const bool removed = found != model_.end() && found->second.erase(upper(id)) > 0;
        REQUIRE(list_.deleteSubItemById(item, id) == removed);
    }

    subItemList list_;
    CatalogueModel model_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    Session session;
    while (!input.atEnd()) {
        session.step(input);
    }
    session.requireAll();
    return 0;
}

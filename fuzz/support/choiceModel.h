#pragma once

#include <rfUtils/catalogues/subItemList.h>

#include <algorithm>
#include <map>
#include <string>
#include <unordered_map>

#include "support/require.h"

namespace rfu::fuzz {

/// The choices of an item, by upper-case id; the items by id.
using ItemModel = std::map<std::string, subItem>;
using CatalogueModel = std::map<std::string, ItemModel>;

/// As in the classic locale, under which all targets run.
inline std::string upper(std::string text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return text;
}

inline bool sameChoice(const subItem& a, const subItem& b) {
    return a.itemId == b.itemId && a.id == b.id && a.label == b.label &&
           a.enumValue == b.enumValue && a.dispSeq == b.dispSeq;
}

inline bool sameChoices(const std::unordered_map<std::string, subItem>& choices,
                        const ItemModel& expected) {
    return choices.size() == expected.size() &&
           std::all_of(expected.begin(), expected.end(), [&choices](const auto& entry) {
               const auto found = choices.find(entry.first);
               return found != choices.end() && sameChoice(found->second, entry.second);
           });
}

/// Requires every item of the model to have exactly the model's choices.
inline void requireSameChoices(const subItemList& list, const CatalogueModel& expected) {
    for (const auto& [item, choices] : expected) {
        std::unordered_map<std::string, subItem> found;
        REQUIRE(list.getSubItemsById(item, found));
        REQUIRE(sameChoices(found, choices));
    }
}

}  // namespace rfu::fuzz

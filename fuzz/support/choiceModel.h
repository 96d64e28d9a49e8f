#pragma once

#include "support/require.h"

#include <rfUtils/catalogues/subItemList.h>

#include <algorithm>
#include <map>
#include <string>
#include <unordered_map>

namespace rfu::fuzz {

/// The choices of an item, by upper-cased id; the items by id.
using ItemModel = std::map<std::string, subItem>;
using CatalogueModel = std::map<std::string, ItemModel>;

/// As the classic locale does it, which is the one that no target leaves.
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

/// Requires every item of the model, with its choices and no others.
inline void requireSameChoices(const subItemList& list, const CatalogueModel& expected) {
    for (const auto& [item, choices] : expected) {
        std::unordered_map<std::string, subItem> found;
        REQUIRE(list.getSubItemsById(item, found));
        REQUIRE(sameChoices(found, choices));
    }
}

}  // namespace rfu::fuzz

#pragma once

#include <rfUtils/catalogues/subItemList.h>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

/// The choices of an item that are offered, in the order in which they are shown.
inline std::vector<subItem> offeredChoices(const subItemList& catalogue, const std::string& item) {
    std::unordered_map<std::string, subItem> choices;
    catalogue.getSubItemsById(item, choices);  // an unknown item leaves the map empty
    std::vector<subItem> offered;
    for (const auto& entry : choices) {
        if (entry.second.dispSeq > 0) {
            offered.push_back(entry.second);
        }
    }
    std::sort(offered.begin(), offered.end(),
              [](const subItem& a, const subItem& b) { return a.dispSeq < b.dispSeq; });
    return offered;
}

/// The code of the unit that the operator names. Without a known name, what may be chosen.
inline std::optional<int> chosenUnit(int count, char** arguments) {
    subItemList catalogue;
    if (!catalogue.loadJson("catalogue.json")) {
        std::printf("catalogue.json cannot be read\n");
        return std::nullopt;
    }
    std::string id;
    int code = 0;
    if (count == 2 && catalogue.getSubItemEnumDataFromId("levelUnit", arguments[1], id, code)) {
        return code;
    }
    std::printf("choose a unit:\n");
    for (const subItem& choice : offeredChoices(catalogue, "levelUnit")) {
        std::printf("  %-6s %s\n", choice.id.c_str(), choice.label.c_str());
    }
    return std::nullopt;
}

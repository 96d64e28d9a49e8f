#pragma once

#include <rfUtils/catalogues/subItemList.h>

#include <gtest/gtest.h>

#include <map>
#include <ostream>
#include <sstream>
#include <string>
#include <unordered_map>
#include <vector>

inline bool operator==(const subItem& a, const subItem& b) {
    return a.itemId == b.itemId && a.id == b.id && a.label == b.label &&
           a.enumValue == b.enumValue && a.dispSeq == b.dispSeq;
}

inline std::ostream& operator<<(std::ostream& out, const subItem& item) {
    return out << '{' << item.itemId << ", " << item.id << ", " << item.label << ", "
               << item.enumValue << ", " << item.dispSeq << '}';
}

using Content = std::map<std::string, subItem>;  // by upper-case id
using Lines = std::vector<std::string>;

/// The choices of an item; empty for an unknown item too.
inline Content contentOf(const subItemList& list, const std::string& itemId) {
    std::unordered_map<std::string, subItem> choices;
    list.getSubItemsById(itemId, choices);
    return {choices.begin(), choices.end()};
}

/// What checkAllSubitem() prints, by line.
inline Lines dumpOf(subItemList& list) {
    testing::internal::CaptureStdout();
    EXPECT_TRUE(list.checkAllSubitem());
    std::istringstream text(testing::internal::GetCapturedStdout());
    Lines lines;
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    return lines;
}

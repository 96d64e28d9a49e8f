#pragma once

#include <rfUtils/catalogues/subItemList.h>

#include <QString>
#include <QStringList>
#include <vector>

namespace rfu {

/// The choices of catalogue files and the items that they belong to, which subItemList cannot list.
struct ItemChoices {
    subItemList choices;
    QStringList items;  ///< that have choices, by character code
};

/// Merges a file into the choices of earlier ones, as subItemList::loadJson() does.
/// @throw InputError for a file that cannot be read, that changes meanwhile, or that has a choice in
///        none of its items
void addChoices(ItemChoices& choices, const QString& file);

/// The choices of items by item, display sequence, code and id.
std::vector<subItem> sortedChoices(const subItemList& choices, const QStringList& items);

}  // namespace rfu

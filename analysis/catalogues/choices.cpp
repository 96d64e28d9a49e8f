#include "analysis/catalogues/choices.h"

#include <QJsonObject>
#include <algorithm>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "analysis/catalogues/jsonFile.h"

namespace rfu {

void addChoices(ItemChoices& choices, const QString& file) {
    const QJsonObject object =
        loadJsonObject(file, [&] { return choices.choices.loadJson(file.toStdString()); });
    QStringList items;
    std::unordered_map<std::string, subItem> found;
    for (const QString& key : object.keys()) {
        if (choices.choices.getSubItemsById(key.toStdString(), found)) {
            items.append(key);
        }
    }
    if (items.isEmpty()) {
        requireNothing(object, file,
                       "holds no choice of a catalogue: an object with id, label, enum and dispSeq "
                       "in the list of an item");
    }
    choices.items += items;
    std::sort(choices.items.begin(), choices.items.end());
    choices.items.removeDuplicates();
}

std::vector<subItem> sortedChoices(const subItemList& choices, const QStringList& items) {
    std::vector<subItem> sorted;
    for (const QString& item : items) {
        std::unordered_map<std::string, subItem> found;
        choices.getSubItemsById(item.toStdString(), found);
        for (auto& entry : found) {
            sorted.push_back(std::move(entry.second));
        }
    }
    std::sort(sorted.begin(), sorted.end(), [](const subItem& a, const subItem& b) {
        return std::tie(a.itemId, a.dispSeq, a.enumValue, a.id) <
               std::tie(b.itemId, b.dispSeq, b.enumValue, b.id);
    });
    return sorted;
}

}  // namespace rfu

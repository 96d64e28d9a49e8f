#include <rfUtils/catalogues/subItemList.h>

#include <rfUtils/catalogues/detail/existingFile.h>
#include <rfUtils/platform/VemoJsonDocument.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <locale>
#include <optional>
#include <utility>

namespace {

constexpr char kNoId[] = "None";
constexpr int kNoCode = -999;

/// Valid in the classic locale only, where no other bytes than a to z have an upper case.
void upperCaseAscii(std::string& text) {
    for (char& byte : text) {
        byte = byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte;
    }
}

/// The key of a choice in its item's map. Ids of up to 15 bytes fit into std::string's own buffer:
/// queries by them allocate nothing.
std::string choiceKey(const std::string& subItemId) {
    std::string key = subItemId;
    const std::locale locale;
    if (locale == std::locale::classic()) {
        upperCaseAscii(key);
        return key;
    }
    // One call per byte: an application's facet may override do_toupper for single bytes only.
    const auto& letters = std::use_facet<std::ctype<char>>(locale);
    for (char& byte : key) {
        byte = letters.toupper(byte);
    }
    return key;
}

/// The choice that an object describes, without `itemId`; nothing when it lacks a member.
std::optional<subItem> choiceOf(const QJsonObject& object) {
    const auto label = object.find(QLatin1String("label"));
    const auto id = object.find(QLatin1String("id"));
    const auto enumValue = object.find(QLatin1String("enum"));
    const auto dispSeq = object.find(QLatin1String("dispSeq"));
    const auto none = object.end();
    if (label == none || id == none || enumValue == none || dispSeq == none) {
        return std::nullopt;
    }
    return subItem{std::string(), id.value().toString().toStdString(),
                   label.value().toString().toStdString(), enumValue.value().toInt(),
                   dispSeq.value().toInt()};
}

template <typename Choices>
void put(Choices& choices, subItem choice) {
    std::string key = choiceKey(choice.id);
    choices.insert_or_assign(std::move(key), std::move(choice));
}

/// Puts a choice into the choices of its item, which it returns. Strong exception guarantee: a new
/// item is inserted with its first choice or not at all.
template <typename Items>
auto& put(Items& items, const std::string& itemId, subItem choice) {
    const auto known = items.find(itemId);
    if (known != items.end()) {
        put(known->second, std::move(choice));
        return known->second;
    }
    typename Items::mapped_type choices;
    put(choices, std::move(choice));
    return items.emplace(itemId, std::move(choices)).first->second;
}

/// The id of the first record accepted by the predicate, else `none`.
template <typename Choices, typename Predicate>
std::string idOfFirst(const Choices* choices, Predicate matches, const char* none) {
    if (choices == nullptr) {
        return none;
    }
    const auto found = std::find_if(choices->begin(), choices->end(),
                                    [&](const auto& entry) { return matches(entry.second); });
    return found == choices->end() ? none : found->second.id;
}

}  // namespace

bool subItemList::loadJson(const std::string& path) {
    const QString file = QString::fromStdString(path);
    if (!rfu::detail::existingFile(file)) {
        return false;
    }
    VemoJsonDocument document;
    document.readFile(file);
    if (document.hasError()) {
        return false;
    }
    const QJsonObject items = document.object();
    for (auto item = items.begin(); item != items.end(); ++item) {
        if (!item.value().isArray()) {
            continue;
        }
        const std::string itemId = item.key().toStdString();
        const QJsonArray elements = item.value().toArray();
        Choices* choices = nullptr;  // those of the item, from its first usable one on
        for (const QJsonValue element : elements) {
            // toObject() of any other type is empty, and an empty object is skipped
            auto choice = choiceOf(element.toObject());
            if (choice && choices == nullptr) {
                choices = &put(itemList, itemId, std::move(*choice));
            } else if (choice) {
                put(*choices, std::move(*choice));
            }
        }
        if (itemListCount < std::numeric_limits<std::int32_t>::max()) {
            ++itemListCount;
        }
    }
    return true;
}

bool subItemList::addSubItem(const std::string& itemId, const std::string& label,
                             const std::string& id, int enumValue, int dispSeq) {
    store({itemId, id, label, enumValue, dispSeq});
    return true;
}

bool subItemList::addFromSubItem(const subItem& item) {
    store(item);
    return true;
}

void subItemList::store(subItem item) {
    const std::string itemId = std::exchange(item.itemId, std::string());
    put(itemList, itemId, std::move(item));
}

const subItemList::Choices* subItemList::findItem(const std::string& itemId) const {
    const auto item = itemList.find(itemId);
    return item == itemList.end() ? nullptr : &item->second;
}

const subItem* subItemList::findSubItem(const std::string& itemId,
                                        const std::string& subItemId) const {
    const Choices* choices = findItem(itemId);
    if (choices == nullptr) {
        return nullptr;
    }
    const auto found = choices->find(choiceKey(subItemId));
    return found == choices->end() ? nullptr : &found->second;
}

bool subItemList::getSubItemsById(const std::string& itemId,
                                  std::unordered_map<std::string, subItem>& out) const {
    const auto item = itemList.find(itemId);
    if (item == itemList.end()) {
        return false;
    }
    out.clear();  // what remains if the copy throws; `itemId` may have been in it
    Choices copy(item->second);
    for (auto& entry : copy) {
        entry.second.itemId = item->first;
    }
    out = std::move(copy);
    return true;
}

std::string subItemList::getSubItemIdFromOrder(const std::string& itemId, int order) const {
    return idOfFirst(
        findItem(itemId), [&](const subItem& item) { return item.enumValue == order; }, kNoId);
}

std::string subItemList::getSubItemIdFromLabel(const std::string& itemId,
                                               const std::string& label) const {
    return idOfFirst(
        findItem(itemId), [&](const subItem& item) { return item.label == label; }, "");
}

int subItemList::getOrderFromSubItemId(const std::string& itemId,
                                       const std::string& subItemId) const {
    const subItem* found = findSubItem(itemId, subItemId);
    return found == nullptr ? kNoCode : found->enumValue;
}

std::string subItemList::getLabelFromSubItemId(const std::string& itemId,
                                               const std::string& subItemId) const {
    const subItem* found = findSubItem(itemId, subItemId);
    return found == nullptr ? std::string() : found->label;
}

bool subItemList::getSubItemEnumDataFromId(const std::string& itemId, const std::string& subItemId,
                                           std::string& id, int& enumValue) const {
    const subItem* found = findSubItem(itemId, subItemId);
    if (found == nullptr || found->dispSeq == 0) {
        return false;
    }
    id = found->id;
    enumValue = found->enumValue;
    return true;
}

bool subItemList::deleteItemById(const std::string& itemId) {
    return itemList.erase(itemId) != 0;
}

bool subItemList::deleteSubItemById(const std::string& itemId, const std::string& subItemId) {
    const auto item = itemList.find(itemId);
    return item != itemList.end() && item->second.erase(choiceKey(subItemId)) != 0;
}

bool subItemList::checkAllSubitem() {
    int number = 0;
    for (const auto& [itemId, choices] : itemList) {
        for (const auto& [key, item] : choices) {
            std::printf("%d \"%s\" \"%s\" \"%s\" \"%s\" %d %d \n", ++number, key.c_str(),
                        itemId.c_str(), item.label.c_str(), item.id.c_str(), item.enumValue,
                        item.dispSeq);
        }
    }
    return true;
}

// subItemList::loadJson. Holds for any bytes, and for JSON made from bytes:
// - the load succeeds exactly where Qt's parser takes them;
// - the catalogue then holds the choices that a plain walk over the document finds, added to what
// it
//   held, and after a refused load what it held;
// - members that are no usable item make none;
// - a second load changes nothing.
#include "support/choiceModel.h"
#include "support/jsonText.h"
#include "support/scratchFile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <cstdint>
#include <limits>

using namespace rfu::fuzz;

namespace {

const subItem kBefore = {"before", "Kept", "held before", 7, 1};

/// Whole numbers that fit, else 0.
int integerOf(const QJsonValue& value) {
    using Limits = std::numeric_limits<int>;
    const double number = value.isDouble() ? value.toDouble() : 0.0;
    const bool fits =
        number == std::floor(number) && number >= Limits::min() && number <= Limits::max();
    return fits ? static_cast<int>(number) : 0;
}

std::string textOf(const QJsonValue& value) {
    return value.isString() ? value.toString().toStdString() : std::string();
}

void addChoices(const QString& item, const QJsonArray& elements, CatalogueModel& model) {
    for (int i = 0; i < elements.size(); ++i) {
        const QJsonObject object = elements.at(i).toObject();
        bool complete = true;
        for (const char* member : {"label", "id", "enum", "dispSeq"}) {
            complete = complete && object.contains(QLatin1String(member));
        }
        if (complete) {
            const auto member = [&](const char* name) { return object[QLatin1String(name)]; };
            const std::string id = textOf(member("id"));
            model[item.toStdString()][upper(id)] = {item.toStdString(), id, textOf(member("label")),
                                                    integerOf(member("enum")),
                                                    integerOf(member("dispSeq"))};
        }
    }
}

void requireNoOtherItems(const QJsonObject& items, const subItemList& list,
                         const CatalogueModel& model) {
    for (const QString& key : items.keys()) {
        const std::string item = key.toStdString();
        std::unordered_map<std::string, subItem> choices;
        REQUIRE(list.getSubItemsById(item, choices) == (model.count(item) > 0));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ScratchFile file("catalogue.json");
    const std::string text = jsonTextOf(data, size);
    file.write(text.data(), text.size());
    const QByteArray bytes = QByteArray::fromStdString(text);
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    const QJsonObject items = document.object();
    CatalogueModel model;
    model[kBefore.itemId][upper(kBefore.id)] = kBefore;
    // By place, not by key: Qt gives a key that begins with a byte-order mark without the mark, and
    // then finds nothing under it.
    for (auto item = items.begin(); item != items.end(); ++item) {
        addChoices(item.key(), item.value().toArray(), model);
    }

    subItemList list;
    list.addFromSubItem(kBefore);
    for (int load = 0; load < 2; ++load) {
        REQUIRE(list.loadJson(file.path().toStdString()) == !document.isNull());
        requireSameChoices(list, model);
        requireNoOtherItems(items, list, model);
    }
    return 0;
}

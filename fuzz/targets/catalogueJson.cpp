// subItemList::loadJson on any bytes, and on JSON made from bytes, against a walk over QJsonDocument:
// - the load succeeds if and only if Qt parses the bytes;
// - the catalogue holds the choices that the walk finds, merged into those it held, and no other
//   items of the file; a refused load leaves it unchanged;
// - a second load changes nothing.
#include <rfUtils/catalogues/subItemList.h>

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <unordered_map>

#include "support/choiceModel.h"
#include "support/jsonText.h"
#include "support/require.h"
#include "support/scratchFile.h"

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

void addChoices(const std::string& item, const QJsonArray& elements, CatalogueModel& model) {
    for (int i = 0; i < elements.size(); ++i) {
        const QJsonObject object = elements.at(i).toObject();
        const auto member = [&](const char* name) { return object[QLatin1String(name)]; };
        bool complete = true;
        for (const char* name : {"label", "id", "enum", "dispSeq"}) {
            complete = complete && object.contains(QLatin1String(name));
        }
        if (complete) {
            const std::string id = textOf(member("id"));
            model[item][upper(id)] = {item, id, textOf(member("label")), integerOf(member("enum")),
                                      integerOf(member("dispSeq"))};
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ScratchFile file("catalogue.json");
    const std::string text = jsonTextOf(data, size);
    file.write(text.data(), text.size());
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(text));
    const QJsonObject items = document.object();
    CatalogueModel model;
    model[kBefore.itemId][upper(kBefore.id)] = kBefore;
    // By iterator: Qt strips a leading byte order mark from a key and then does not find it.
    for (auto item = items.begin(); item != items.end(); ++item) {
        addChoices(item.key().toStdString(), item.value().toArray(), model);
    }

    subItemList list;
    list.addFromSubItem(kBefore);
    for (int load = 0; load < 2; ++load) {
        REQUIRE(list.loadJson(file.path().toStdString()) == !document.isNull());
        requireSameChoices(list, model);
        for (const QString& key : items.keys()) {
            const std::string item = key.toStdString();
            std::unordered_map<std::string, subItem> choices;
            REQUIRE(list.getSubItemsById(item, choices) == (model.count(item) > 0));
        }
    }
    return 0;
}

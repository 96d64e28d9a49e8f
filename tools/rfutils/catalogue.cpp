#include <rfUtils/catalogues/subItemList.h>

#include <QString>
#include <QStringList>
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "analysis/catalogues/choices.h"
#include "analysis/support/inputError.h"
#include "analysis/support/words.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/format.h"
#include "support/table.h"

namespace rfu::command {

namespace {

template <typename Predicate>
void keepOnly(std::vector<subItem>& choices, Predicate matches) {
    choices.erase(std::remove_if(choices.begin(), choices.end(),
                                 [&](const subItem& choice) { return !matches(choice); }),
                  choices.end());
}

void print(const std::vector<subItem>& choices, Format format) {
    Table<subItem> table(format,
                         {{"item", [](const subItem& choice) { return choice.itemId; }},
                          {"dispSeq", [](const subItem& choice) { return choice.dispSeq; }},
                          {"enum", [](const subItem& choice) { return choice.enumValue; }},
                          {"id", [](const subItem& choice) { return choice.id; }},
                          {"label", [](const subItem& choice) { return choice.label; }},
                          {"offered", [](const subItem& choice) { return choice.dispSeq != 0; }}});
    for (const subItem& choice : choices) {
        table.add(choice);
    }
    table.finish();
}

/// What --id, --code and --label ask for.
struct Query {
    explicit Query(const CommandLine& line) : code(line.find<int>("code")) {
        if (line.isSet("id")) {
            id = line.text("id").toStdString();
        }
        if (line.isSet("label")) {
            label = line.text("label").toStdString();
        }
        const int asked = int{id.has_value()} + int{code.has_value()} + int{label.has_value()};
        if (asked > 1) {
            throw UsageError("only one of --id, --code and --label can be asked for");
        }
        if (asked == 1 && !line.isSet("item")) {
            throw UsageError("--id, --code and --label need --item");
        }
    }

    bool matches(const subItem& choice) const {
        return (!id || isSameWord(choice.id, *id)) && (!code || choice.enumValue == *code) &&
               (!label || choice.label == *label);
    }

    std::string description() const {
        return id      ? "id " + rfu::quoted(*id)
               : label ? "label " + rfu::quoted(*label)
                       : "code " + std::to_string(code.value_or(0));
    }

    std::optional<std::string> id;
    std::optional<int> code;
    std::optional<std::string> label;
};

void runCatalogue(const CommandLine& line) {
    const QString file = line.text("FILE");
    const QString item = line.text("item");
    const Query query(line);

    ItemChoices catalogue;
    addChoices(catalogue, file);
    std::vector<subItem> choices =
        sortedChoices(catalogue.choices, line.isSet("item") ? QStringList(item) : catalogue.items);
    if (line.isSet("item") && choices.empty()) {
        throw InputError(file, "there is no item " + rfu::quoted(item.toStdString()));
    }
    keepOnly(choices, [&](const subItem& choice) { return query.matches(choice); });
    if (line.isSet("item") && choices.empty()) {
        throw InputError(file, "item " + rfu::quoted(item.toStdString()) + " has no choice with " +
                                   query.description());
    }
    print(choices, line.format());
}

}  // namespace

// clang-format off
constexpr Subcommand kCatalogue = {
    "catalogue", "Show the items of a catalogue file and their choices",
    "Show the items of a catalogue file (JSON) and the choices of each.\n"
    "Choices are sorted by item, display sequence, code and id. A display sequence of 0 means "
    "that the choice is not offered to the operator.",
    {{"FILE", Kind::JsonFile}},
    {{"item", "ITEM", Kind::Item, "Only this item, spelled as in the file."},
     {"id", "ID", Kind::Text, "Only the choice of the item with this id, in any letter case."},
     {"code", "N", Kind::Integer, "Only the choices of the item with this code."},
     {"label", "TEXT", Kind::Text, "Only the choices of the item with exactly this label."}},
    {"rfutils catalogue catalogue.json",
     "rfutils catalogue catalogue.json --item detector",
     "rfutils catalogue catalogue.json --item attenuation --id auto",
     "rfutils catalogue catalogue.json --item attenuation --code 1 --format json",
     "rfutils catalogue catalogue.json --item detector --label \"Quasi-peak\""},
    runCatalogue};
// clang-format on

}  // namespace rfu::command

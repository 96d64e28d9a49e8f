#include "analysis/catalogues/catalogueCheck.h"

#include <rfUtils/catalogues/subItemList.h>
#include <QJsonValue>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "analysis/catalogues/jsonCheck.h"
#include "analysis/catalogues/jsonRules.h"
#include "analysis/support/inputError.h"

namespace rfu {

namespace {

// clang-format off
constexpr Rule kItemEmpty = {
    "item-empty", Severity::Warning,
    "An item without a choice is not created: to the instrument it is unknown.",
    "{\"attenuation\": []}",
    "Fill the list or delete it."};

constexpr Rule kNumberNotRead = {
    "number-not-read", Severity::Error,
    "enum and dispSeq are read as 0 unless they are whole numbers of 32 bits, without quotes: from "
    "-2147483648 to 2147483647. A choice with dispSeq 0 is not offered.",
    "{\"label\": \"Auto\", \"id\": \"auto\", \"enum\": 1.5, \"dispSeq\": \"2\"}",
    "Write a whole number, without quotes."};

constexpr Rule kTextHalfCharacter = {
    "text-half-character", Severity::Warning,
    "One half of a pair of escapes that make a character stands alone. The catalogue holds a question "
    "mark for it.",
    "{\"label\": \"Auto \\ud83d\", ...",
    "Write the character itself, or both halves: \\ud83d\\ude00."};

constexpr Rule kIdReplaces = {
    "id-replaces", Severity::Warning,
    "Ids of choices are compared in upper case. Of choices of an item with the same id the last one "
    "counts; those before it are not on the instrument.",
    "[{\"label\": \"Fast\", \"id\": \"auto\", ...},\n {\"label\": \"Slow\", \"id\": \"Auto\", ...}]",
    "Give each choice of an item an id of its own, different in more than letter case."};

constexpr Rule kChoiceHidden = {
    "choice-hidden", Severity::Note,
    "A choice with dispSeq 0 is not offered, though it is found by its code and by its label.",
    "{\"label\": \"Service\", \"id\": \"service\", \"enum\": 9, \"dispSeq\": 0}",
    "Nothing if it is meant so; else give it a place in the order, from 1 on."};

constexpr Rule kCodeRepeated = {
    "code-repeated", Severity::Note,
    "Two choices of an item have the same enum. Which of them is found by that code is not defined.",
    "{\"id\": \"slow\", \"enum\": 1, ...}, {\"id\": \"fast\", \"enum\": 1, ...}",
    "Give each choice of an item a code of its own."};

constexpr Rule kSequenceRepeated = {
    "sequence-repeated", Severity::Note,
    "Two choices of an item have the same dispSeq. Which of them is shown first is up to the view: "
    "the library keeps no order.",
    "{\"id\": \"slow\", \"dispSeq\": 1, ...}, {\"id\": \"fast\", \"dispSeq\": 1, ...}",
    "Number the choices of an item from 1 on."};

constexpr Rule kLabelRepeated = {
    "label-repeated", Severity::Note,
    "Two choices of an item have the same label. Which of them is found by it is not defined.",
    "{\"label\": \"Auto\", \"id\": \"auto\", ...}, {\"label\": \"Auto\", \"id\": \"auto2\", ...}",
    "Give each choice of an item a label of its own."};

constexpr Rule kAnswerOfAbsence = {
    "answer-of-absence", Severity::Note,
    "The library answers \"None\" for the id of an unknown code, an empty text for an unknown label or "
    "id, and -999 for the code of an unknown id. A choice with such a value cannot be told from none.",
    "{\"label\": \"No value\", \"id\": \"None\", \"enum\": -999, \"dispSeq\": 1}",
    "Choose another value."};

constexpr Rule kItemCase = {
    "item-case", Severity::Note,
    "Unlike the ids of choices, the ids of items are compared letter by letter: two that differ in "
    "letter case, or in blanks around them, are two items.",
    "{\"trigger\": [...], \"Trigger\": [...]}",
    "Spell both alike and join the lists, if one item is meant."};
// clang-format on

constexpr Rule kRules[] = {
    kJsonEncoding,    kJsonSyntax,       kJsonTopLevel,      kJsonOddity,      kJsonByteOrderMark,
    kTextMarkDropped, kNothingLoaded,    kListIgnored,       kElementSkipped,  kMemberMissing,
    kMemberMisspelt,  kMemberUnknown,    kMemberRepeated,    kElementReplaced, kTextNotRead,
    kItemEmpty,       kNumberNotRead,    kTextHalfCharacter, kIdReplaces,      kChoiceHidden,
    kCodeRepeated,    kSequenceRepeated, kLabelRepeated,     kAnswerOfAbsence, kItemCase};

enum Member : std::size_t { kLabel, kId, kEnum, kDispSeq };

constexpr int kNoCode = -999;

bool isFlag(char first) {
    return first == 't' || first == 'f' || first == 'n';
}

/// Qt writes a question mark for half a character.
bool hasHalfCharacter(const QString& text) {
    return text.toUtf8().count('?') != text.count(QLatin1Char('?'));
}

/// Whether a value is read as the number that it is: toInt() gives the default for any other.
bool isRead(const QJsonValue& value) {
    return value.toInt(0) == value.toInt(1);
}

class CatalogueCheck : public JsonCheck {
public:
    explicit CatalogueCheck(const QString& file)
        : JsonCheck(file, catalogueRules(),
                    {"item",
                     "choice",
                     {QStringLiteral("label"), QStringLiteral("id"), QStringLiteral("enum"),
                      QStringLiteral("dispSeq")}}) {}

private:
    struct Choice {
        std::string id;
        std::string label;
        int code;
        int sequence;
        std::int64_t place;
        std::int64_t labelPlace;
        std::int64_t codePlace;
        std::int64_t sequencePlace;
        bool isReplaced;
    };

    /// The choices of an item.
    struct Item {
        std::vector<Choice> choices;
        subItemList
            last;  ///< the index of the last choice with an id as its code: the library compares ids
    };

    void takeList(const JsonList& list) override {
        if (list.elements == 0) {
            report(kItemEmpty, list.place.begin,
                   "the item " + rfu::quoted(list.key.toStdString()) +
                       " is not created: its list is empty");
        }
        if (losesMark(list.place)) {
            report(kTextMarkDropped, list.place.begin + 1,
                   "an invisible byte-order mark in front of the key: read as " +
                       rfu::quoted(list.key.toStdString()),
                   list.isAlone ? std::vector<Edit>{{list.place.begin + 1, kMarkLength, ""}}
                                : std::vector<Edit>());
        }
        if (hasHalfCharacter(list.key)) {
            report(kTextHalfCharacter, list.place.begin,
                   "the id of the item has a question mark for half a character");
        }
        const auto [other, isNew] =
            itemPlaces_.emplace(list.key.trimmed().toLower(), list.place.begin);
        if (!isNew) {
            report(kItemCase, list.place.begin,
                   "another item than that of line " + std::to_string(lineOf(other->second)) +
                       ": ids of items are compared letter by letter");
        }
    }

    void checkValues(const JsonElement& element) override {
        for (const Member member : {kLabel, kId}) {
            checkText(element, member);
            checkHalf(element, member);
        }
        for (const Member member : {kEnum, kDispSeq}) {
            checkNumber(element, member);
        }
    }

    void takeElement(const JsonList& list, const JsonElement& element) override {
        const QJsonObject& object = element.object;
        const Choice choice = {object[QLatin1String("id")].toString().toStdString(),
                               object[QLatin1String("label")].toString().toStdString(),
                               object[QLatin1String("enum")].toInt(),
                               object[QLatin1String("dispSeq")].toInt(),
                               element.place.begin,
                               element.values[kLabel].begin,
                               element.values[kEnum].begin,
                               element.values[kDispSeq].begin,
                               false};
        checkAbsence(element, choice);
        if (choice.sequence == 0 && isRead(object[QLatin1String("dispSeq")])) {
            report(kChoiceHidden, choice.sequencePlace, "hidden: dispSeq is 0");
        }
        put(items_[list.key.toStdString()], choice);
    }

    void checkHalf(const JsonElement& element, Member member) {
        if (hasHalfCharacter(element.object[names_[member]].toString())) {
            report(kTextHalfCharacter, element.values[member].begin,
                   std::string("the ") + names_[member].data() +
                       " has a question mark for half a character");
        }
    }

    void checkNumber(const JsonElement& element, Member member) {
        const QJsonValue value = element.object[names_[member]];
        if (isRead(value)) {
            return;
        }
        const JsonPlace& place = element.values[member];
        const char first = bytesAt(place).front();
        std::string reason = " is no number";
        std::vector<Edit> mend;
        if (value.isDouble()) {
            const double number = value.toDouble();
            reason =
                number == std::floor(number) ? " does not fit 32 bits" : " is not a whole number";
        } else if (first == '"') {
            reason = " is a text; numbers stand without quotes";
            bool isNumber = false;
            const int number = value.toString().toInt(&isNumber);
            if (isNumber) {
                mend.push_back({place.begin, place.end - place.begin, std::to_string(number)});
            }
        } else if (!isFlag(first)) {
            reason = ", not a number";
        }
        report(kNumberNotRead, place.begin,
               std::string(names_[member].data()) + " is read as 0" +
                   (member == kDispSeq ? ", which hides the choice: " : ": ") + shown(place) +
                   reason,
               std::move(mend));
    }

    void checkAbsence(const JsonElement& element, const Choice& choice) {
        const auto check = [&](Member member, bool isAnswer, const char* shownAs) {
            if (isAnswer) {
                report(kAnswerOfAbsence, element.values[member].begin,
                       std::string(shownAs) + " is also the answer for an unknown choice");
            }
        };
        check(kId, choice.id == "None", "the id \"None\"");
        check(kId, choice.id.empty() && element.object[names_[kId]].isString(), "an empty id");
        check(kLabel, choice.label.empty() && element.object[names_[kLabel]].isString(),
              "an empty label");
        check(kEnum, choice.code == kNoCode, "the enum -999");
    }

    void put(Item& item, const Choice& choice) {
        const int earlier = item.last.getOrderFromSubItemId(std::string(), choice.id);
        if (earlier != kNoCode) {
            Choice& replaced = item.choices[static_cast<std::size_t>(earlier)];
            replaced.isReplaced = true;
            report(kIdReplaces, choice.place,
                   "replaces the choice at line " + std::to_string(lineOf(replaced.place)) +
                       (replaced.id == choice.id ? ", which has the same id"
                                                 : ": ids are compared in upper case"));
            report(kElementReplaced, replaced.place,
                   "not loaded: the choice at line " + std::to_string(lineOf(choice.place)) +
                       " has the same id" + (replaced.id == choice.id ? "" : " in upper case"));
        }
        item.last.addSubItem(std::string(), std::string(), choice.id,
                             static_cast<int>(item.choices.size()), 0);
        item.choices.push_back(choice);
    }

    void finish() override {
        for (const auto& entry : items_) {
            checkRepeated(entry.second.choices);
        }
    }

    void checkRepeated(const std::vector<Choice>& choices) {
        std::unordered_map<int, std::int64_t> codes;
        std::unordered_map<int, std::int64_t> sequences;
        std::unordered_map<std::string_view, std::int64_t> labels;
        for (const Choice& choice : choices) {
            if (choice.isReplaced) {
                continue;
            }
            checkFirst(codes, choice.code, kCodeRepeated, choice, choice.codePlace,
                       "enum " + std::to_string(choice.code) + " finds this choice or ");
            if (choice.sequence != 0) {
                checkFirst(sequences, choice.sequence, kSequenceRepeated, choice,
                           choice.sequencePlace,
                           "dispSeq " + std::to_string(choice.sequence) + " is also that of ");
            }
            checkFirst<std::string_view>(labels, choice.label, kLabelRepeated, choice,
                                         choice.labelPlace, "the label finds this choice or ");
        }
    }

    template <typename Key, typename Places>
    void checkFirst(Places& places, const Key& key, const Rule& rule, const Choice& choice,
                    std::int64_t place, const std::string& text) {
        const auto [first, isNew] = places.emplace(key, choice.place);
        if (!isNew) {
            report(rule, place, text + "the one at line " + std::to_string(lineOf(first->second)));
        }
    }

    const QLatin1String names_[4] = {QLatin1String("label"), QLatin1String("id"),
                                     QLatin1String("enum"), QLatin1String("dispSeq")};
    std::unordered_map<std::string, Item> items_;
    std::map<QString, std::int64_t>
        itemPlaces_;  // by their keys in lower case, without blanks around
};

}  // namespace

RuleTable catalogueRules() {
    return kRules;
}

Findings checkCatalogue(const QString& file) {
    return CatalogueCheck(file).run(
        [](const QString& name) { return subItemList().loadJson(name.toStdString()); });
}

}  // namespace rfu

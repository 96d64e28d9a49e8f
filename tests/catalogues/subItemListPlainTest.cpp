// Plain catalogue files are read without Qt's parser. Whatever the bytes, the catalogue holds what a
// walk over Qt's document finds: around plain files, where one byte decides, most of all.
#include "catalogueContent.h"
#include "plainSamples.h"

#include <support/allocations.h>
#include <support/tempFiles.h>

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <locale>
#include <optional>
#include <string>

namespace {

using namespace std::string_literals;

using Model = std::map<std::string, Content>;

std::string keyOf(std::string id) {
    const std::locale locale;
    for (char& c : id) {
        c = std::toupper(c, locale);
    }
    return id;
}

Content choicesOf(const std::string& item, const QJsonArray& elements) {
    Content choices;
    for (int i = 0; i < elements.size(); ++i) {
        const QJsonObject object = elements.at(i).toObject();
        const auto value = [&](const char* name) { return object.value(QLatin1String(name)); };
        if (value("label").isUndefined() || value("id").isUndefined() ||
            value("enum").isUndefined() || value("dispSeq").isUndefined()) {
            continue;
        }
        const std::string id = value("id").toString().toStdString();
        choices[keyOf(id)] = {item, id, value("label").toString().toStdString(),
                              value("enum").toInt(), value("dispSeq").toInt()};
    }
    return choices;
}

/// What a file of these bytes says; nothing where Qt refuses it.
std::optional<Model> modelOf(const std::string& bytes) {
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(bytes));
    if (document.isNull()) {
        return std::nullopt;
    }
    Model model;
    const QJsonObject items = document.object();
    for (auto item = items.begin(); item != items.end(); ++item) {
        const std::string id = item.key().toStdString();
        Content choices = choicesOf(id, item.value().toArray());
        if (!choices.empty()) {
            model[id] = choices;
        }
    }
    return model;
}

class SubItemListPlain : public testing::Test {
protected:
    void expectAsQt(const std::string& bytes) {
        const std::optional<Model> model = modelOf(bytes);
        subItemList list;
        ASSERT_EQ(list.loadJson(files_.write("file.json", bytes)), model.has_value()) << bytes;
        std::size_t lines = 0;
        for (const auto& [item, expected] : model.value_or(Model())) {
            ASSERT_EQ(contentOf(list, item), expected) << bytes;
            lines += linesOf(expected);
        }
        ASSERT_EQ(dumpOf(list).size(), lines) << bytes;
    }

private:
    /// How many lines the dump takes, one for each choice and more for texts of several lines.
    static std::size_t linesOf(const Content& choices) {
        std::string texts;
        for (const auto& [key, choice] : choices) {
            texts += key + choice.itemId + choice.label + choice.id + '\n';
        }
        return static_cast<std::size_t>(std::count(texts.begin(), texts.end(), '\n'));
    }

    TempFiles files_;
};

std::string choice(const std::string& label, const std::string& code) {
    return R"({"label":")" + label + R"(","id":"auto","enum":)" + code + R"(,"dispSeq":1})";
}

std::string file(const std::string& choices) {
    return "{\"item\": [" + choices + "]}";
}

TEST_F(SubItemListPlain, ReadsNumbersAndWordsAsQtDoes) {
    forEachOf(
        {kPlainNumbers, kOtherNumbers, kPlainWords, kOtherWords}, [&](const std::string& value) {
            expectAsQt(file(choice("Auto", value)));
            expectAsQt(file(R"({"other":)" + value + ',' + choice("Auto", "3").substr(1)));
            expectAsQt(file(R"({"label":)" + value + R"(,"id":"auto","enum":1,"dispSeq":1})"));
        });
}

TEST_F(SubItemListPlain, ReadsTextsAsQtDoes) {
    const auto expectTextAsQt = [&](const std::string& text) {
        expectAsQt(file(choice(text, "1")));
        expectAsQt(file(R"({"label":"Auto","id":")" + text + R"(","enum":1,"dispSeq":1})"));
        expectAsQt("{\"" + text + "\": [" + choice("Auto", "1") + "]}");
        expectAsQt(file("{\"" + text + "\":1," + choice("Auto", "3").substr(1)));
    };
    forEachOf({kPlainTexts, kOtherTexts}, expectTextAsQt);
    expectTextAsQt("a\0b"s);
}

TEST_F(SubItemListPlain, ReadsKeysWithEscapesAsQtDoes) {
    expectAsQt(file(R"({"l\u0061bel":"Auto","id":"auto","enum":1,"dispSeq":1})"));
    expectAsQt(R"({"\u0061":[)" + choice("One", "1") + R"(],"a":[)" + choice("Two", "2") + "]}");
}

/// A document takes an allocation for each element; elements of the same id take none.
TEST_F(SubItemListPlain, ReadsPlainFilesWithoutADocument) {
    const TempFiles files;
    const auto expectNoDocument = [&](const std::string& element) {
        constexpr std::size_t kElements = 1000;
        const std::string name = files.write("plain.json", file(listOf(kElements, element)));
        subItemList list;
        const Allocations allocations;
        ASSERT_TRUE(list.loadJson(name)) << element;
        EXPECT_LT(allocations.count(), kElements / 2) << element;
    };
    expectNoDocument("{}");
    expectNoDocument(choice("Auto", "1"));
    forEachOf({kPlainNumbers}, [&](const std::string& number) {
        expectNoDocument(choice("Auto", number));
        expectNoDocument("{\"other\":" + number + '}');
    });
    forEachOf({kPlainWords},
              [&](const std::string& word) { expectNoDocument("{\"other\":" + word + '}'); });
    forEachOf({kPlainTexts}, [&](const std::string& text) {
        expectNoDocument(choice(text, "1"));
        expectNoDocument("{\"other\":\"" + text + "\"}");
    });
}

TEST_F(SubItemListPlain, ReadsMembersAndItemsThatRepeatAsQtDoes) {
    const std::string one = choice("One", "1");
    const std::string two = choice("Two", "2");
    expectAsQt(file(one + ',' + two));
    expectAsQt(R"({"a":[)" + one + R"(],"b":[],"a":[)" + two + "]}");
    expectAsQt(R"({"a":[)" + one + R"(],"b":[],"a":[{"id":"man"}]})");
    expectAsQt(R"({"a":1,"a":[)" + one + "]}");
    for (const char* again : {"label", "id", "enum", "dispSeq", "other"}) {
        for (const char* value : {"5", "\"five\""}) {
            const std::string member = '"' + std::string(again) + "\":" + value;
            expectAsQt(file('{' + member + ',' + one.substr(1)));
            expectAsQt(file('{' + member + ',' + member + '}'));
        }
    }
}

TEST_F(SubItemListPlain, ReadsChangedFilesAsQtDoes) {
    const std::string base =
        "\t{ \"p\": [{\"label\":\"L\xC2\xB5\",\"id\":\"i\",\"enum\":-10,\"dispSeq\": "
        "0,\"x\":\"\"}, "
        "{}],\r\n\"q\":[],\"r\":[{\"id\":\"I\",\"label\":\"\",\"dispSeq\":2,\"enum\":3}]}\n";
    ASSERT_EQ(modelOf(base)->size(), 2U);
    expectAsQt(base);
    forEachChange(base, [&](const std::string& changed) { expectAsQt(changed); });
}

TEST_F(SubItemListPlain, MergesIntoItemsThatAreThere) {
    const TempFiles files;
    subItemList list;
    list.addSubItem("item", "Before", "AUTO", 1, 1);
    list.addSubItem("item", "Other", "other", 2, 1);
    list.addSubItem("kept", "Kept", "auto", 3, 1);
    ASSERT_TRUE(list.loadJson(files.write("plain.json", R"({"item":[)" + choice("Auto", "4") +
                                                            R"(],"new":[)" + choice("New", "5") +
                                                            R"(],"empty":[],"kept":[]})")));
    EXPECT_EQ(contentOf(list, "item"),
              (Content{{keyOf("auto"), {"item", "auto", "Auto", 4, 1}},
                       {keyOf("other"), {"item", "other", "Other", 2, 1}}}));
    EXPECT_EQ(contentOf(list, "kept"), (Content{{keyOf("auto"), {"kept", "auto", "Kept", 3, 1}}}));
    EXPECT_EQ(contentOf(list, "new"), (Content{{keyOf("auto"), {"new", "auto", "New", 5, 1}}}));
    std::unordered_map<std::string, subItem> choices;
    EXPECT_FALSE(list.getSubItemsById("empty", choices));
}

}  // namespace

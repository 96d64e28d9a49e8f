#include "analysis/catalogues/choices.h"

#include <gtest/gtest.h>
#include <support/tempFiles.h>

#include <string>
#include <vector>

#include "analysis/support/inputError.h"

namespace rfu::test {
namespace {

std::string choice(const char* id, const char* label, int code, int sequence) {
    return std::string("{\"id\": \"") + id + "\", \"label\": \"" + label +
           "\", \"enum\": " + std::to_string(code) + ", \"dispSeq\": " + std::to_string(sequence) +
           "}";
}

std::vector<std::string> idsOf(const ItemChoices& choices, const QStringList& items) {
    std::vector<std::string> ids;
    for (const subItem& found : sortedChoices(choices.choices, items)) {
        ids.push_back(found.itemId + '/' + found.id);
    }
    return ids;
}

class Choices : public testing::Test {
protected:
    void add(const std::string& json) {
        addChoices(choices_, QString::fromStdString(files_.write("catalogue.json", json)));
    }

    TempFiles files_;
    ItemChoices choices_;
};

}  // namespace

TEST_F(Choices, AreSortedBySequenceCodeAndId) {
    add("{\"a\": [" + choice("c", "", 2, 1) + "," + choice("b", "", 1, 1) + "," +
        choice("a", "", 1, 1) + "," + choice("d", "", 0, 2) + "," + choice("e", "", 9, 0) + "]}");
    EXPECT_EQ(idsOf(choices_, {"a"}),
              (std::vector<std::string>{"a/e", "a/a", "a/b", "a/c", "a/d"}));
    EXPECT_EQ(idsOf(choices_, {"b"}), std::vector<std::string>());
}

TEST_F(Choices, OfSeveralFilesAreMerged) {
    add("{\"b\": [" + choice("x", "old", 1, 1) + "], \"c\": [], \"version\": 3}");
    add("{\"b\": [" + choice("X", "new", 2, 2) + "," + choice("y", "", 1, 1) + "], \"a\": [" +
        choice("z", "", 1, 1) + "]}");
    EXPECT_EQ(choices_.items, (QStringList{"a", "b"}));
    EXPECT_EQ(idsOf(choices_, choices_.items), (std::vector<std::string>{"a/z", "b/y", "b/X"}));
}

TEST_F(Choices, RefuseOtherFiles) {
    add("{}");
    add("{\"a\": []}");
    for (const char* json : {"", "[]", "{\"a\": 1}", R"({"a": [{"id": "x", "label": "X"}]})"}) {
        EXPECT_THROW(add(json), InputError) << json;
    }
}

}  // namespace rfu::test

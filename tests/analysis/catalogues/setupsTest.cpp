#include "analysis/catalogues/setups.h"

#include <gtest/gtest.h>
#include <rfUtils/catalogues/ResultSetup.h>
#include <support/messageLog.h>
#include <support/tempFiles.h>

#include <string>
#include <vector>

#include "analysis/catalogues/jsonFile.h"
#include "analysis/support/inputError.h"

namespace rfu::test {
namespace {

std::string textOf(const SetupEntry& setup) {
    return (setup.group + '/' + setup.id + '=' + setup.label).toStdString();
}

std::vector<std::string> setupsIn(const std::string& file) {
    const QString name = QString::fromStdString(file);
    std::vector<std::string> texts;
    for (const SetupEntry& setup : setupsOf(readJsonObject(name), name)) {
        texts.push_back(textOf(setup));
    }
    return texts;
}

const struct {
    const char* name;
    const char* json;
    std::vector<std::string> setups;
} kFiles[] = {
    {"by key, in order",
     R"({"b": [{"id": "z", "label": "Z"}, {"id": "y", "label": "Y"}], "a": [{"id": "x", "label": "X"}]})",
     {"a/x=X", "b/z=Z", "b/y=Y"}},
    {"without texts",
     R"({"a": [{"id": 1, "label": null}, {"id": "", "label": []}]})",
     {"a/=", "a/="}},
    {"the same twice",
     R"({"a": [{"id": "x", "label": "X"}, {"id": "x", "label": "X"}]})",
     {"a/x=X", "a/x=X"}},
    {"skipped",
     R"({"a": [7, {}, {"id": "x"}, {"label": "X"}, {"id": "y", "label": "Y"}], "n": 3, "o": {"id": "", "label": ""}})",
     {"a/y=Y"}},
    {"nothing", "{}", {}},
    {"empty groups", R"({"a": [], "b": []})", {}}};

}  // namespace

TEST(Setups, HaveTheirGroups) {
    const TempFiles files;
    for (const auto& row : kFiles) {
        EXPECT_EQ(setupsIn(files.write("setups.json", row.json)), row.setups) << row.name;
    }
}

TEST(Setups, AreThoseOfTheLibrary) {
    const MessageLog log;
    const TempFiles files;
    for (const auto& row : kFiles) {
        SCOPED_TRACE(row.name);
        const QString name = QString::fromStdString(files.write("setups.json", row.json));
        ResultSetup library;
        ASSERT_TRUE(library.loadJson(name));
        const auto setups = setupsOf(readJsonObject(name), name);
        for (int i = 0; i < static_cast<int>(setups.size()); ++i) {
            const SetupEntry& setup = setups[static_cast<std::size_t>(i)];
            EXPECT_EQ(setup.id, library.setupId(i));
            EXPECT_EQ(setup.label, library.setupLabel(i));
            EXPECT_EQ(setup.id.isNull(), library.setupId(i).isNull());
        }
        EXPECT_TRUE(library.setupId(static_cast<int>(setups.size())).isNull());
    }
}

TEST(Setups, RefuseOtherFiles) {
    const TempFiles files;
    for (const char* json : {R"({"a": 1})", R"({"a": [{"id": "x", "Label": "X"}]})"}) {
        EXPECT_THROW(setupsIn(files.write("setups.json", json)), InputError) << json;
    }
}

}  // namespace rfu::test

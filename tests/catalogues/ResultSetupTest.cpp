#include <rfUtils/catalogues/ResultSetup.h>
#include <support/deadline.h>
#include <support/messageLog.h>
#include <support/tempFiles.h>

#include <gtest/gtest.h>

#include <QPointer>
#include <QString>

#include <filesystem>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using Setups = std::vector<std::pair<std::string, std::string>>;  // id, label

QString qString(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

Setups setupsOf(const ResultSetup& list) {
    Setups setups;
    for (int index = 0; !list.setupId(index).isNull() || !list.setupLabel(index).isNull();
         ++index) {
        setups.emplace_back(list.setupId(index).toStdString(),
                            list.setupLabel(index).toStdString());
    }
    return setups;
}

/// The lines logged since the last call, after a check that all are plain debug lines.
std::vector<std::string> debugLines() {
    std::vector<std::string> lines;
    for (const LoggedMessage& message : MessageLog::take()) {
        EXPECT_EQ(message, (LoggedMessage{QtDebugMsg, message.text, "default"}));
        lines.push_back(message.text);
    }
    return lines;
}

using Lines = std::vector<std::string>;

TEST(ResultSetup, StartsEmpty) {
    const MessageLog log;
    const ResultSetup list;
    EXPECT_EQ(list.parent(), nullptr);
    EXPECT_TRUE(list.setupId(0).isNull());
    EXPECT_TRUE(list.setupLabel(0).isNull());
    EXPECT_EQ(debugLines(), Lines());
}

TEST(ResultSetup, BelongsToItsParent) {
    auto parent = std::make_unique<QObject>();
    const QPointer<ResultSetup> list = new ResultSetup(parent.get());
    EXPECT_EQ(list->parent(), parent.get());
    parent.reset();
    EXPECT_TRUE(list.isNull());
    EXPECT_FALSE((std::is_convertible<QObject*, ResultSetup>::value));
}

TEST(ResultSetup, DeclaresItsClassAndNothingMore) {
    ResultSetup list;
    const QMetaObject* meta = list.metaObject();
    EXPECT_EQ(meta, &ResultSetup::staticMetaObject);
    EXPECT_STREQ(meta->className(), "ResultSetup");
    EXPECT_EQ(meta->superClass(), &QObject::staticMetaObject);
    EXPECT_EQ(meta->methodCount(), meta->methodOffset());
    EXPECT_EQ(meta->propertyCount(), meta->propertyOffset());
    EXPECT_EQ(meta->enumeratorCount(), meta->enumeratorOffset());
    EXPECT_EQ(meta->constructorCount(), 0);
    EXPECT_EQ(list.qt_metacast("ResultSetup"), &list);
    EXPECT_EQ(list.qt_metacast("QObject"), static_cast<QObject*>(&list));
    EXPECT_EQ(list.qt_metacast("resultSetup"), nullptr);
    EXPECT_EQ(list.qt_metacast(nullptr), nullptr);
}

TEST(ResultSetup, RecordHoldsIdAndLabel) {
    const ResultSetup::SetupInfo info{qString("id"), qString("label")};
    EXPECT_EQ(info.id, qString("id"));
    EXPECT_EQ(info.label, qString("label"));
    EXPECT_TRUE(std::is_aggregate_v<ResultSetup::SetupInfo>);
}

TEST(ResultSetup, LoadsSetupsInTheOrderOfTheFile) {
    const TempFiles files;
    const MessageLog log;
    ResultSetup list;
    EXPECT_TRUE(list.loadJson(qString(files.write("power.json", R"({"power": [
        {"id": "obw", "label": "Occupied Bandwidth", "other": 5},
        {"id": "chp", "label": "Channel Power"}]})"))));
    EXPECT_EQ(setupsOf(list), (Setups{{"obw", "Occupied Bandwidth"}, {"chp", "Channel Power"}}));
    EXPECT_EQ(debugLines(), Lines{R"("power")"});
}

TEST(ResultSetup, TakesGroupsInKeyOrder) {
    const TempFiles files;
    const MessageLog log;
    ResultSetup list;
    EXPECT_TRUE(
        list.loadJson(qString(files.write("groups.json", R"({"b": [{"id": "b1", "label": "B1"}],
                                       "a": [{"id": "a2", "label": "A2"},
                                             {"id": "a1", "label": "A1"}]})"))));
    EXPECT_EQ(setupsOf(list), (Setups{{"a2", "A2"}, {"a1", "A1"}, {"b1", "B1"}}));
    EXPECT_EQ(debugLines(), (Lines{R"("a")", R"("b")"}));
}

TEST(ResultSetup, OrdersKeysByCharacterCode) {
    const TempFiles files;
    const MessageLog log;
    ResultSetup list;
    EXPECT_TRUE(list.loadJson(qString(files.write(
        "keys.json", R"({"é":{},"z":{},"aa":{},"a":{},"Z":{},"9":{},"10":{},"":{}})"))));
    EXPECT_EQ(debugLines(), (Lines{R"("")", R"("10")", R"("9")", R"("Z")", R"("a")", R"("aa")",
                                   R"("z")", R"("é")"}));
}

TEST(ResultSetup, ReportsTopLevelMembersByTheirType) {
    const struct {
        const char* name;
        const char* json;
        Lines lines;
    } kCases[] = {
        {"array", R"({"key": []})", {R"("key")"}},
        {"object", R"({"key": {"id": "x", "label": "X"}})", {R"("key")"}},
        {"text", R"({"key": "a text"})", {R"("key")", R"("a text")"}},
        {"empty text", R"({"key": ""})", {R"("key")", R"("")"}},
        {"number", R"({"key": 12})", {R"("key")", R"("")"}},
        {"boolean", R"({"key": true})", {R"("key")", R"("")"}},
        {"null", R"({"key": null})", {R"("key")", R"("")"}},
        {"no member", "{}", {}},
        {"array at the top", R"([{"id": "x", "label": "X"}])", {}},
        {"escapes as QDebug writes them",
         R"({"a\u0000\"\n\\µ": "\t"})",
         {R"("a\u0000\"\n\\µ")", R"("\t")"}},
    };
    const TempFiles files;
    const MessageLog log;
    for (const auto& row : kCases) {
        ResultSetup list;
        EXPECT_TRUE(list.loadJson(qString(files.write("members.json", row.json)))) << row.name;
        EXPECT_EQ(debugLines(), row.lines) << row.name;
        EXPECT_EQ(setupsOf(list), Setups()) << row.name;
    }
}

TEST(ResultSetup, ReportsEntriesThatLackAMember) {
    const struct {
        const char* name;
        const char* entries;
        Lines lines;
        Setups setups;
    } kCases[] = {
        {"no id, then a good entry",
         R"({"label": "X"}, {"id": "x", "label": "X"})",
         {R"(Not found property at json.[id] ->  "key")"},
         {{"x", "X"}}},
        {"no label after a good entry",
         R"({"id": "x", "label": "X"}, {"id": "y"})",
         {R"(Not found property at json.[label] ->  "x")"},
         {{"x", "X"}}},
        {"no id after a good entry",
         R"({"id": "x", "label": "X"}, {"label": "Y"})",
         {R"(Not found property at json.[id] ->  "x")"},
         {{"x", "X"}}},
        {"neither: only the label is missed",
         R"({"other": 1})",
         {R"(Not found property at json.[label] ->  "key")"},
         {}},
        {"names in other letter case",
         R"({"Label": "X", "Id": "x"})",
         {R"(Not found property at json.[label] ->  "key")"},
         {}},
        {"elements that are no objects",
         R"(5, "x", null, true, [], [{"id": "x", "label": "X"}])",
         Lines(6, R"(Not found property at json.[label] ->  "key")"),
         {}},
        {"the last appended one is named",
         R"({"id": "x", "label": "X"}, 1, {"id": "y", "label": "Y"}, {"label": "Z"},
            {"id": "z", "label": "Z"})",
         {R"(Not found property at json.[label] ->  "x")",
          R"(Not found property at json.[id] ->  "y")"},
         {{"x", "X"}, {"y", "Y"}, {"z", "Z"}}},
        {"an appended empty id is named",
         R"({"id": 5, "label": "X"}, {})",
         {R"(Not found property at json.[label] ->  "")"},
         {{"", "X"}}},
    };
    const TempFiles files;
    const MessageLog log;
    for (const auto& row : kCases) {
        ResultSetup list;
        EXPECT_TRUE(list.loadJson(
            qString(files.write("entries.json", std::string("{\"key\": [") + row.entries + "]}"))))
            << row.name;
        Lines expected = row.lines;
        expected.insert(expected.begin(), R"("key")");
        EXPECT_EQ(debugLines(), expected) << row.name;
        EXPECT_EQ(setupsOf(list), row.setups) << row.name;
    }
}

TEST(ResultSetup, StartsARecordForEachGroup) {
    const TempFiles files;
    const MessageLog log;
    ResultSetup list;
    EXPECT_TRUE(list.loadJson(qString(
        files.write("groups.json", R"({"a": [{"id": "x", "label": "X"}], "b": [{}], "c": 5})"))));
    EXPECT_EQ(debugLines(),
              (Lines{R"("a")", R"("b")", R"(Not found property at json.[label] ->  "b")", R"("c")",
                     R"("")"}));
}

TEST(ResultSetup, AppendsOtherTypesAsEmptyTexts) {
    const TempFiles files;
    const MessageLog log;
    ResultSetup list;
    EXPECT_TRUE(list.loadJson(qString(files.write("types.json", R"({"key": [
        {"id": 1, "label": null}, {"id": ["x"], "label": "L"}, {"id": "i", "label": {}},
        {"id": "n", "label": 5}, {"id": "b", "label": true}, {"id": false, "label": "F"},
        {"id": "", "label": ""}, {"id": "end", "label": "End"}]})"))));
    const Setups expected{{"", ""},  {"", "L"}, {"i", ""}, {"n", ""},
                          {"b", ""}, {"", "F"}, {"", ""},  {"end", "End"}};
    for (std::size_t index = 0; index < expected.size(); ++index) {
        const int position = static_cast<int>(index);
        EXPECT_EQ(list.setupId(position).toStdString(), expected[index].first) << index;
        EXPECT_EQ(list.setupLabel(position).toStdString(), expected[index].second) << index;
    }
    EXPECT_TRUE(list.setupId(8).isNull());
    EXPECT_EQ(debugLines(), Lines{R"("key")"});
}

TEST(ResultSetup, KeepsTextsAsTheyAre) {
    const TempFiles files;
    ResultSetup list;
    ASSERT_TRUE(list.loadJson(qString(files.write("texts.json", R"({"key": [
        {"id": "Größe", "label": "µ 中 😀"}, {"id": "a\u0000b", "label": "\ud800x"}]})"))));
    EXPECT_EQ(list.setupId(0), QString::fromUtf8("Größe"));
    EXPECT_EQ(list.setupLabel(0), QString::fromUtf8("µ 中 😀"));
    EXPECT_EQ(list.setupId(1), QString::fromUtf8("a\0b", 3));
    EXPECT_EQ(list.setupLabel(1), QString(QChar(0xD800)) + QLatin1Char('x'));
}

TEST(ResultSetup, KeepsTheLastOfMembersWithTheSameKey) {
    const TempFiles files;
    const MessageLog log;
    ResultSetup list;
    EXPECT_TRUE(list.loadJson(qString(files.write("twice.json", R"({"a": "no array",
                          "a": [{"id": "y", "id": "z", "label": "Z"}]})"))));
    EXPECT_EQ(setupsOf(list), (Setups{{"z", "Z"}}));
    EXPECT_EQ(debugLines(), Lines{R"("a")"});
}

TEST(ResultSetup, AnswersNullOutsideTheList) {
    const TempFiles files;
    const MessageLog log;
    ResultSetup list;
    ASSERT_TRUE(list.loadJson(qString(files.write(
        "two.json", R"({"a": [{"id": "x", "label": "X"}, {"id": "y", "label": "Y"}]})"))));
    debugLines();
    EXPECT_EQ(list.setupId(1), qString("y"));
    EXPECT_EQ(list.setupLabel(1), qString("Y"));
    for (const int index :
         {-1, 2, 3, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_TRUE(list.setupId(index).isNull()) << index;
        EXPECT_TRUE(list.setupLabel(index).isNull()) << index;
    }
    EXPECT_EQ(debugLines(), Lines());
}

TEST(ResultSetup, AppendsWithEveryLoad) {
    const TempFiles files;
    const QString first = qString(files.write(
        "first.json", R"({"a": [{"id": "x", "label": "X"}, {"id": "y", "label": "Y"}]})"));
    const QString second =
        qString(files.write("second.json", R"({"a": [{"id":"x","label":"Z"}]})"));
    ResultSetup list;
    EXPECT_TRUE(list.loadJson(first));
    EXPECT_TRUE(list.loadJson(first));
    EXPECT_TRUE(list.loadJson(second));
    EXPECT_EQ(setupsOf(list), (Setups{{"x", "X"}, {"y", "Y"}, {"x", "X"}, {"y", "Y"}, {"x", "Z"}}));
}

TEST(ResultSetup, ReportsAMissingFile) {
    const TempFiles files;
    const std::string good = files.write("good.json", R"({"a": [{"id": "x", "label": "X"}]})");
    const MessageLog log;
    ResultSetup list;
    ASSERT_TRUE(list.loadJson(qString(good)));
    debugLines();
    const struct {
        std::string path;
        std::string quoted;
    } kCases[] = {
        {files.path("none.json"), files.path("none.json")},
        {good + "/none", good + "/none"},
        {"", ""},
        {good + "\"", good + R"(\")"},
        {good + std::string("\0", 1), good + R"(\u0000)"},
        {files.makeLink("dangling", files.path("none.json")), files.path("dangling")},
    };
    for (const auto& row : kCases) {
        EXPECT_FALSE(list.loadJson(qString(row.path))) << row.path;
        EXPECT_EQ(debugLines(), Lines{"Not found json file. -> \"" + row.quoted + '"'});
    }
    EXPECT_EQ(setupsOf(list), (Setups{{"x", "X"}}));
}

TEST(ResultSetup, ReportsAnUnreadableFileWithTheReadersText) {
    const Deadline deadline;
    const TempFiles files;
    const MessageLog log;
    ResultSetup list;
    ASSERT_TRUE(
        list.loadJson(qString(files.write("good.json", R"({"a": [{"id": "x", "label": "X"}]})"))));
    debugLines();
    const struct {
        std::string path;
        const char* line;
    } kCases[] = {
        {files.write("empty", ""), R"("illegal value")"},
        {files.write("bom", "\xEF\xBB\xBF"), R"("illegal value")"},
        {files.write("garbage", R"({"a": [{"id": "y", "label": "Y"}]} x)"),
         R"("garbage at the end of the document")"},
        {files.write("comma", R"({"a": [{"id": "y", "label": "Y"}],})"),
         R"("object is missing after a comma")"},
        {files.write("latin1", "{\"a\": \"gr\xF6\xDF\"}"), R"("invalid UTF8 string")"},
        {files.write("deep", "{\"a\":" + std::string(1024, '[') + std::string(1024, ']') + "}"),
         R"("too deeply nested document")"},
        {files.makeFolder("folder"), R"("not a regular file")"},
        {files.makeFifo("fifo"), R"("not a regular file")"},
        {"/dev/zero", R"("not a regular file")"},
    };
    for (const auto& row : kCases) {
        EXPECT_FALSE(list.loadJson(qString(row.path))) << row.path;
        EXPECT_EQ(debugLines(), Lines{row.line}) << row.path;
    }
    EXPECT_EQ(setupsOf(list), (Setups{{"x", "X"}}));
}

TEST(ResultSetup, RefusesAFileCutAnywhere) {
    const TempFiles files;
    const std::string good = R"({"a": [{"id": "x", "label": "X"}], "b": 5})";
    const MessageLog log;
    ResultSetup list;
    for (std::size_t size = 0; size < good.size(); ++size) {
        EXPECT_FALSE(list.loadJson(qString(files.write("cut", good.substr(0, size))))) << size;
        EXPECT_EQ(debugLines().size(), 1U) << size;
    }
    EXPECT_EQ(setupsOf(list), Setups());
    EXPECT_TRUE(list.loadJson(qString(files.write("cut", good))));
    EXPECT_EQ(setupsOf(list), (Setups{{"x", "X"}}));
}

}  // namespace

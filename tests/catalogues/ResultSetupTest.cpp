#include <rfUtils/catalogues/ResultSetup.h>
#include <support/deadline.h>
#include <support/messageLog.h>
#include <support/tempFiles.h>

#include <gtest/gtest.h>

#include <QChar>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using Setups = std::vector<std::pair<std::string, std::string>>;  // id, label
using Lines = std::vector<std::string>;

QString qString(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

/// A list, and the files and the log of its loads.
struct Loader {
    bool load(const std::string& path) { return list.loadJson(qString(path)); }

    bool loadText(std::string_view json) { return load(files.write("setups.json", json)); }

    Setups setups() const {
        Setups setups;
        for (int index = 0; !list.setupId(index).isNull(); ++index) {
            setups.emplace_back(list.setupId(index).toStdString(),
                                list.setupLabel(index).toStdString());
        }
        return setups;
    }

    /// The lines logged since the last call, after a check that all are debug lines.
    Lines lines() const {
        Lines lines;
        for (const LoggedMessage& message : MessageLog::take()) {
            EXPECT_EQ(message, (LoggedMessage{QtDebugMsg, message.text, "default"}));
            lines.push_back(message.text);
        }
        return lines;
    }

    ResultSetup list;
    TempFiles files;
    MessageLog log;
};

/// Loads JSON into a new list and compares what it logs and holds.
void expectLoad(const char* json, const Lines& lines, const Setups& setups) {
    Loader loader;
    EXPECT_TRUE(loader.loadText(json)) << json;
    EXPECT_EQ(loader.lines(), lines) << json;
    EXPECT_EQ(loader.setups(), setups) << json;
}

TEST(ResultSetup, StartsEmpty) {
    Loader loader;
    EXPECT_EQ(loader.list.parent(), nullptr);
    EXPECT_TRUE(loader.list.setupId(0).isNull());
    EXPECT_TRUE(loader.list.setupLabel(0).isNull());
    EXPECT_EQ(loader.lines(), Lines());
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
    expectLoad(R"({"power": [{"id": "obw", "label": "Occupied Bandwidth", "other": 5},
                             {"id": "chp", "label": "Channel Power"}]})",
               {R"("power")"}, {{"obw", "Occupied Bandwidth"}, {"chp", "Channel Power"}});
}

TEST(ResultSetup, TakesGroupsInKeyOrder) {
    expectLoad(R"({"b": [{"id": "b1", "label": "B1"}],
                   "a": [{"id": "a2", "label": "A2"}, {"id": "a1", "label": "A1"}]})",
               {R"("a")", R"("b")"}, {{"a2", "A2"}, {"a1", "A1"}, {"b1", "B1"}});
}

TEST(ResultSetup, OrdersKeysByCharacterCode) {
    expectLoad(R"({"é":{},"z":{},"aa":{},"a":{},"Z":{},"9":{},"10":{},"":{}})",
               {R"("")", R"("10")", R"("9")", R"("Z")", R"("a")", R"("aa")", R"("z")", R"("é")"},
               {});
}

TEST(ResultSetup, ReportsTopLevelMembersByTheirType) {
    const struct {
        const char* json;
        Lines lines;
    } kCases[] = {
        {R"({"key": []})", {R"("key")"}},
        {R"({"key": {"id": "x", "label": "X"}})", {R"("key")"}},
        {R"({"key": "a text"})", {R"("key")", R"("a text")"}},
        {R"({"key": ""})", {R"("key")", R"("")"}},
        {R"({"key": 12})", {R"("key")", R"("")"}},
        {R"({"key": true})", {R"("key")", R"("")"}},
        {R"({"key": null})", {R"("key")", R"("")"}},
        {"{}", {}},
        {R"([{"id": "x", "label": "X"}])", {}},
        {R"({"a\u0000\"\n\\µ": "\t"})", {R"("a\u0000\"\n\\µ")", R"("\t")"}},
    };
    for (const auto& row : kCases) {
        expectLoad(row.json, row.lines, {});
    }
}

TEST(ResultSetup, ReportsEntriesThatLackAMember) {
    const std::string noLabel = "Not found property at json.[label] ->  ";
    const std::string noId = "Not found property at json.[id] ->  ";
    const struct {
        const char* name;
        const char* entries;
        Lines lines;
        Setups setups;
    } kCases[] = {
        {"no id, then a good entry",
         R"({"label": "X"}, {"id": "x", "label": "X"})",
         {noId + R"("key")"},
         {{"x", "X"}}},
        {"no label after a good entry",
         R"({"id": "x", "label": "X"}, {"id": "y"})",
         {noLabel + R"("x")"},
         {{"x", "X"}}},
        {"no id after a good entry",
         R"({"id": "x", "label": "X"}, {"label": "Y"})",
         {noId + R"("x")"},
         {{"x", "X"}}},
        {"neither: only the label is missed", R"({"other": 1})", {noLabel + R"("key")"}, {}},
        {"names in other letter case", R"({"Label": "X", "Id": "x"})", {noLabel + R"("key")"}, {}},
        {"elements that are not objects",
         R"(5, "x", null, true, [], [{"id": "x", "label": "X"}])",
         Lines(6, noLabel + R"("key")"),
         {}},
        {"the last appended one is named",
         R"({"id": "x", "label": "X"}, 1, {"id": "y", "label": "Y"}, {"label": "Z"},
            {"id": "z", "label": "Z"})",
         {noLabel + R"("x")", noId + R"("y")"},
         {{"x", "X"}, {"y", "Y"}, {"z", "Z"}}},
    };
    for (const auto& row : kCases) {
        SCOPED_TRACE(row.name);
        Lines expected = row.lines;
        expected.insert(expected.begin(), R"("key")");
        expectLoad((R"({"key": [)" + std::string(row.entries) + "]}").c_str(), expected,
                   row.setups);
    }
}

TEST(ResultSetup, LogsEntriesThatLackTheSameMemberWithOneSharedText) {
    static std::vector<QString> kept;
    kept.clear();
    const TempFiles files;
    const std::string path = files.write(
        "setups.json",
        R"({"key": [{"id": "x", "label": "X"}, 1, {"label": "L"}, 2, {"label": "L"}]})");
    const QtMessageHandler before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { kept.push_back(text); });
    ResultSetup list;
    EXPECT_TRUE(list.loadJson(qString(path)));
    qInstallMessageHandler(before);
    ASSERT_EQ(kept.size(), 5U);  // the key first
    EXPECT_EQ(kept[1].constData(), kept[3].constData());
    EXPECT_EQ(kept[2].constData(), kept[4].constData());
    EXPECT_NE(kept[1], kept[2]);
}

TEST(ResultSetup, StartsARecordForEachGroup) {
    expectLoad(
        R"({"a": [{"id": "x", "label": "X"}], "b": [{}], "c": 5})",
        {R"("a")", R"("b")", R"(Not found property at json.[label] ->  "b")", R"("c")", R"("")"},
        {{"x", "X"}});
}

TEST(ResultSetup, AppendsOtherTypesAsEmptyTexts) {
    Loader loader;
    EXPECT_TRUE(loader.loadText(R"({"key": [
        {"id": 1, "label": null}, {}, {"id": ["x"], "label": "L"}, {"id": "i", "label": {}},
        {"id": "n", "label": 5}, {"id": "b", "label": true}, {"id": false, "label": "F"},
        {"id": "", "label": ""}, {"id": "end", "label": "End"}]})"));
    const Setups expected{{"", ""},  {"", "L"}, {"i", ""}, {"n", ""},
                          {"b", ""}, {"", "F"}, {"", ""},  {"end", "End"}};
    for (std::size_t index = 0; index < expected.size(); ++index) {
        const int position = static_cast<int>(index);
        EXPECT_EQ(loader.list.setupId(position).toStdString(), expected[index].first) << index;
        EXPECT_EQ(loader.list.setupLabel(position).toStdString(), expected[index].second) << index;
    }
    EXPECT_TRUE(loader.list.setupId(8).isNull());
    EXPECT_EQ(loader.lines(), (Lines{R"("key")", R"(Not found property at json.[label] ->  "")"}));
}

TEST(ResultSetup, CannotBeCountedByAskingUntilNull) {
    Loader loader;
    ASSERT_TRUE(loader.loadText(
        R"({"key": [{"id": 1, "label": null}, {"id": "", "label": ""}, {"id": "x", "label": "X"}]})"));
    loader.lines();
    EXPECT_TRUE(loader.list.setupId(0).isNull());
    EXPECT_TRUE(loader.list.setupLabel(0).isNull());
    EXPECT_FALSE(loader.list.setupId(1).isNull());
    EXPECT_FALSE(loader.list.setupLabel(1).isNull());
    EXPECT_EQ(loader.list.setupId(2), qString("x"));
    EXPECT_TRUE(loader.list.setupId(3).isNull());
}

TEST(ResultSetup, KeepsTextsAsTheyAre) {
    Loader loader;
    ASSERT_TRUE(loader.loadText(R"({"key": [
        {"id": "Größe", "label": "µ 中 😀"}, {"id": "a\u0000b", "label": "\ud800x"}]})"));
    EXPECT_EQ(loader.list.setupId(0), QString::fromUtf8("Größe"));
    EXPECT_EQ(loader.list.setupLabel(0), QString::fromUtf8("µ 中 😀"));
    EXPECT_EQ(loader.list.setupId(1), QString::fromUtf8("a\0b", 3));
    EXPECT_EQ(loader.list.setupLabel(1), QString(QChar(0xD800)) + QLatin1Char('x'));
}

TEST(ResultSetup, KeepsTheLastOfMembersWithTheSameKey) {
    expectLoad(R"({"a": "no array", "a": [{"id": "y", "id": "z", "label": "Z"}]})", {R"("a")"},
               {{"z", "Z"}});
}

TEST(ResultSetup, AnswersNullOutsideTheList) {
    Loader loader;
    ASSERT_TRUE(
        loader.loadText(R"({"a": [{"id": "x", "label": "X"}, {"id": "y", "label": "Y"}]})"));
    loader.lines();
    EXPECT_EQ(loader.list.setupId(1), qString("y"));
    EXPECT_EQ(loader.list.setupLabel(1), qString("Y"));
    for (const int index :
         {-1, 2, 3, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_TRUE(loader.list.setupId(index).isNull()) << index;
        EXPECT_TRUE(loader.list.setupLabel(index).isNull()) << index;
    }
    EXPECT_EQ(loader.lines(), Lines());
}

TEST(ResultSetup, AppendsWithEveryLoad) {
    Loader loader;
    const std::string two = R"({"a": [{"id": "x", "label": "X"}, {"id": "y", "label": "Y"}]})";
    EXPECT_TRUE(loader.loadText(two));
    EXPECT_TRUE(loader.loadText(two));
    EXPECT_TRUE(loader.loadText(R"({"a": [{"id":"x","label":"Z"}]})"));
    EXPECT_EQ(loader.setups(),
              (Setups{{"x", "X"}, {"y", "Y"}, {"x", "X"}, {"y", "Y"}, {"x", "Z"}}));
}

TEST(ResultSetup, ReportsAMissingFile) {
    Loader loader;
    const TempFiles& files = loader.files;
    const std::string good = files.write("good.json", R"({"a": [{"id": "x", "label": "X"}]})");
    ASSERT_TRUE(loader.load(good));
    loader.lines();
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
        EXPECT_FALSE(loader.load(row.path)) << row.path;
        EXPECT_EQ(loader.lines(), Lines{"Not found json file. -> \"" + row.quoted + '"'});
    }
    EXPECT_EQ(loader.setups(), (Setups{{"x", "X"}}));
}

TEST(ResultSetup, ReportsAnUnreadableFileWithTheReadersText) {
    const Deadline deadline;
    Loader loader;
    const TempFiles& files = loader.files;
    ASSERT_TRUE(loader.loadText(R"({"a": [{"id": "x", "label": "X"}]})"));
    loader.lines();
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
        EXPECT_FALSE(loader.load(row.path)) << row.path;
        EXPECT_EQ(loader.lines(), Lines{row.line}) << row.path;
    }
    EXPECT_EQ(loader.setups(), (Setups{{"x", "X"}}));
}

TEST(ResultSetup, RefusesAFileCutAnywhere) {
    Loader loader;
    const std::string good = R"({"a": [{"id": "x", "label": "X"}], "b": 5})";
    for (std::size_t size = 0; size < good.size(); ++size) {
        EXPECT_FALSE(loader.loadText(good.substr(0, size))) << size;
        EXPECT_EQ(loader.lines().size(), 1U) << size;
    }
    EXPECT_EQ(loader.setups(), Setups());
    EXPECT_TRUE(loader.loadText(good));
    EXPECT_EQ(loader.setups(), (Setups{{"x", "X"}}));
}

}  // namespace

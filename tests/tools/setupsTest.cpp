#include <gtest/gtest.h>

#include <string>

#include "runCommand.h"

namespace {

const char kSetups[] = R"({
  "spectrum": [
    {"label": "no id"},
    {"id": "chp", "label": "Channel power"},
    {"id": "lost"},
    7,
    {"id": "obw", "label": "Occupied, \"99 %\""}
  ],
  "coverage": [{"id": 1, "label": 2}, {"id": "map", "label": "Map"}, {"id": null, "label": null}],
  "a note": "ignored"
}
)";

const char kTable[] =
    "index  id   label\n"
    "    0\n"
    "    1  map  Map\n"
    "    2\n"
    "    3  chp  Channel power\n"
    "    4  obw  Occupied, \"99 %\"\n";

}  // namespace

TEST(Setups, lists) {
    const SampleFolder folder;
    folder.add("s.json", kSetups);
    expectCommands(
        {
            shows("groups by key, also entries without texts", "setups s.json", kTable),
            {"skipped entries on request",
             {"setups", "s.json", "--verbose"},
             "",
             0,
             kTable,
             "rfutils: s.json: skipped an entry without \"id\" after \"spectrum\"\n"
             "rfutils: s.json: skipped an entry without \"label\" after \"chp\"\n"
             "rfutils: s.json: skipped an entry without \"label\" after \"chp\"\n"},
            shows("CSV", "setups s.json --format csv",
                  "index,id,label\n0,,\n1,map,Map\n2,,\n3,chp,Channel power\n"
                  "4,obw,\"Occupied, \"\"99 %\"\"\"\n"),
            shows("JSON", "setups s.json --format json",
                  "[\n"
                  "  {\"index\": 0, \"id\": \"\", \"label\": \"\"},\n"
                  "  {\"index\": 1, \"id\": \"map\", \"label\": \"Map\"},\n"
                  "  {\"index\": 2, \"id\": \"\", \"label\": \"\"},\n"
                  "  {\"index\": 3, \"id\": \"chp\", \"label\": \"Channel power\"},\n"
                  "  {\"index\": 4, \"id\": \"obw\", \"label\": \"Occupied, \\\"99 %\\\"\"}\n"
                  "]\n"),
        },
        folder);
}

// One entry with an id of 100 kB and many without a label: reporting them takes no memory.
TEST(Setups, reportsSkippedEntriesInShort) {
    const SampleFolder folder;
    std::string entries = "{\"id\": \"" + std::string(100000, 'x') + "\", \"label\": \"long\"}";
    std::string reports;
    for (int i = 0; i < 1000; ++i) {
        entries += ", {}";
        reports += "rfutils: s.json: skipped an entry without \"label\" after \"" +
                   std::string(60, 'x') + "...\"\n";
    }
    folder.add("s.json", "{\"a\": [" + entries + "]}");
    qputenv("QT_LOGGING_RULES", "*=false");
    const CommandResult result =
        runCommand({"setups", "s.json", "--verbose", "--format", "csv"}, {}, folder);
    qunsetenv("QT_LOGGING_RULES");
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.errors, reports);
    EXPECT_EQ(result.output, "index,id,label\n0," + std::string(100000, 'x') + ",long\n");
}

TEST(Setups, badFiles) {
    const SampleFolder folder;
    folder.add("empty.json", "");
    folder.add("array.json", "[]");
    folder.add("nothing.json", R"({"a": []})");
    folder.add("misspelt.json", R"({"a": [{"Id": "x", "label": "y"}]})");
    folder.add("truncated.json", std::string(kSetups).substr(0, 40));
    expectCommands(
        {
            fails("missing", "setups none.json", "none.json: No such file or directory"),
            fails("directory", "setups .", ".: Is a directory"),
            fails("empty", "setups empty.json", "empty.json: is empty (illegal value)"),
            fails("no object", "setups array.json", "array.json: the top level is not an object"),
            shows("no setups", "setups nothing.json", "index  id  label\n"),
            fails("misspelt members", "setups misspelt.json",
                  "misspelt.json: holds no result setup: an object with id and label in the list "
                  "of a group"),
            fails("cut off", "setups truncated.json", "truncated.json:3: unterminated array"),
        },
        folder);
}
